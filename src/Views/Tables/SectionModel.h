#pragma once
#include "Tables/HeaderRole.h"
#include "Tables/RowModel.h"
#include <QString>
#include <cstddef>
#include <utility>
#include <vector>

namespace quillane {

struct ColumnHeading {
    QString title;
    bool isFigure = false;  // stands at the right, and the first click on it sorts the largest first
    bool isSortable = true; // a click on it sorts
};

// The rows of a section's table. It sorts nothing itself: a click on a header is the table's to answer, and
// the table tells the model what assistive tools are to say of the order.
template <class RowType, class KeyType>
class SectionModel : public RowModel<RowType, KeyType> {
  public:
    using Row = RowType;
    using Key = KeyType;

    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_headings.size());
    }
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override {
        if (!this->checkIndex(index, QAbstractItemModel::CheckIndexOption::IndexIsValid)) {
            return {};
        }
        return cellData(this->row(index.row()), index.column(), role);
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    // The heading of this column is now described as the one that the rows are sorted by.
    void describeOrder(int column, Qt::SortOrder order);

  protected:
    SectionModel(std::vector<ColumnHeading> headings, QObject* parent)
        : RowModel<RowType, KeyType>(parent)
        , m_headings(std::move(headings)) {}

    virtual QVariant cellData(const Row& row, int column, int role) const = 0;

  private:
    QString orderWords(bool isFigure) const;

    std::vector<ColumnHeading> m_headings;
    int m_sortedColumn = -1;
    Qt::SortOrder m_order = Qt::AscendingOrder;
};

template <class RowType, class KeyType>
QVariant SectionModel<RowType, KeyType>::headerData(int section, Qt::Orientation orientation,
                                                    int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return {};
    }
    const auto& heading = m_headings[static_cast<std::size_t>(section)];
    switch (role) {
    case Qt::DisplayRole:
        return heading.title;
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter | (heading.isFigure ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::InitialSortOrderRole:
        return static_cast<int>(heading.isFigure ? Qt::DescendingOrder : Qt::AscendingOrder);
    case kSortableRole:
        return heading.isSortable;
    case Qt::AccessibleDescriptionRole:
        return section == m_sortedColumn ? QVariant(orderWords(heading.isFigure)) : QVariant();
    default:
        return {};
    }
}

template <class RowType, class KeyType>
void SectionModel<RowType, KeyType>::describeOrder(int column, Qt::SortOrder order) {
    m_sortedColumn = column;
    m_order = order;
    emit this->headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

template <class RowType, class KeyType>
QString SectionModel<RowType, KeyType>::orderWords(bool isFigure) const {
    const bool isAscending = m_order == Qt::AscendingOrder;
    if (isFigure) {
        return isAscending ? QStringLiteral("Sorted, smallest first")
                           : QStringLiteral("Sorted, largest first");
    }
    return isAscending ? QStringLiteral("Sorted, ascending") : QStringLiteral("Sorted, descending");
}

} // namespace quillane
