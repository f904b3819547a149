#pragma once
#include "Components/StatusRow.h"
#include "Published.h"
#include "Tables/SectionTable.h"
#include "Tables/TableView.h"
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScopedValueRollback>
#include <algorithm>
#include <cstddef>
#include <unordered_set>
#include <utility>
#include <vector>

namespace quillane {

// A section's table whose rows are known by a key, as SectionModel has them. The selection is kept by key, so
// that it survives scans and searches; the order is one step, that of the header that was clicked last.
// `Step` is a SortStep whose keys stand in the order of the model's columns.
template <class Model, class Step>
class KeyedTable : public SectionTable {
  protected:
    using Key = typename Model::Key;

    // Takes over model and footer; selection and order outlive the table.
    KeyedTable(const QString& name, Model* model, std::vector<TableColumn> columns, StatusRow* footer,
               Published<std::unordered_set<Key>>& selection, Published<std::vector<Step>>& order,
               QWidget* parent);

    Model& model() const { return *m_model; }
    // Runs `update`, which brings the model up to date, and selects again what has come back.
    template <class Update>
    void showRows(Update update);
    // The rows that are selected and can be seen, from the top.
    std::vector<Key> selectedKeys() const;

    // The menu is wanted, at a place of the screen, for the rows that are selected and can be seen; for none
    // of them when it is wanted for the empty table.
    virtual void openMenu(const std::vector<Key>& keys, const QPoint& globalPosition) = 0;

  private:
    void restoreSelection();
    void takeOverSelection();
    void showOrder();
    void changeOrder(int column, Qt::SortOrder order);

    Model* m_model;
    Published<std::unordered_set<Key>>& m_selection;
    Published<std::vector<Step>>& m_order;
    bool m_isRendering = false; // what changes the selection now is the model, not the user
};

template <class Model, class Step>
KeyedTable<Model, Step>::KeyedTable(const QString& name, Model* model, std::vector<TableColumn> columns,
                                    StatusRow* footer, Published<std::unordered_set<Key>>& selection,
                                    Published<std::vector<Step>>& order, QWidget* parent)
    : SectionTable(name, model, std::move(columns), footer, parent)
    , m_model(model)
    , m_selection(selection)
    , m_order(order) {
    showOrder();
    table()->setSortingEnabled(true);
    connect(table()->header(), &QHeaderView::sortIndicatorChanged, this,
            [this](int column, Qt::SortOrder direction) { changeOrder(column, direction); });
    connect(table()->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { takeOverSelection(); });
    drawWith([this] { // apart from the rows, which a change of the selection leaves as they are
        (void)m_selection.get();
        showRows([] {});
    });
    connect(table(), &TableView::menuWanted, this, [this](bool forRows, const QPoint& globalPosition) {
        openMenu(forRows ? selectedKeys() : std::vector<Key>(), globalPosition);
    });
}

template <class Model, class Step>
template <class Update>
void KeyedTable<Model, Step>::showRows(Update update) {
    const QScopedValueRollback rendering(m_isRendering, true);
    update();
    restoreSelection();
}

template <class Model, class Step>
std::vector<typename Model::Key> KeyedTable<Model, Step>::selectedKeys() const {
    auto rows = table()->selectionModel()->selectedRows();
    std::ranges::sort(rows, {}, &QModelIndex::row);
    std::vector<Key> keys;
    keys.reserve(static_cast<std::size_t>(rows.size()));
    for (const auto& row : rows) {
        keys.push_back(m_model->keyAt(row.row()));
    }
    return keys;
}

template <class Model, class Step>
void KeyedTable<Model, Step>::restoreSelection() {
    auto* const selection = table()->selectionModel();
    QItemSelection missing;
    for (const Key& key : m_selection.peek()) {
        const auto row = m_model->rowOf(key);
        if (row && !selection->isRowSelected(*row)) {
            missing.select(m_model->index(*row, 0), m_model->index(*row, m_model->columnCount() - 1));
        }
    }
    if (!missing.isEmpty()) {
        selection->select(missing, QItemSelectionModel::Select);
    }
}

template <class Model, class Step>
void KeyedTable<Model, Step>::takeOverSelection() {
    if (m_isRendering) {
        return;
    }
    const auto keys = selectedKeys();
    m_selection = std::unordered_set<Key>(keys.begin(), keys.end());
}

template <class Model, class Step>
void KeyedTable<Model, Step>::showOrder() {
    const Step& first = m_order.get().front();
    const auto direction = first.isReverse ? Qt::DescendingOrder : Qt::AscendingOrder;
    table()->header()->setSortIndicator(static_cast<int>(first.key), direction);
    m_model->describeOrder(static_cast<int>(first.key), direction);
}

template <class Model, class Step>
void KeyedTable<Model, Step>::changeOrder(int column, Qt::SortOrder order) {
    m_model->describeOrder(column, order);
    m_order = std::vector<Step>{{static_cast<typename Step::Key>(column), order == Qt::DescendingOrder}};
}

} // namespace quillane
