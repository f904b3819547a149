#pragma once
#include "Tables/RowSteps.h"
#include <QAbstractTableModel>
#include <algorithm>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace quillane {

// A flat list of records for a table, each known by a key that stays the same. A new list is published as the
// fewest removals, moves, insertions and changes, and never as a reset, so that selection, current row,
// scroll position and focus stay with the rows they belong to. `Row` is a value with ==; `Key` has ==, a hash
// and is what `key` answers. Main thread only.
template <class Row, class Key>
class RowModel : public QAbstractTableModel {
  public:
    // In the order of the screen. Of two rows with one key the first counts.
    void update(std::vector<Row> rows);

    const Row& row(int index) const { return m_rows[static_cast<std::size_t>(index)]; }
    const std::vector<Row>& rows() const { return m_rows; }
    // The row with this key; nothing when there is none. O(1). Not while an update is being published.
    std::optional<int> rowOf(const Key& wanted) const {
        const auto found = m_places.find(wanted);
        return found == m_places.end() ? std::nullopt : std::optional(found->second);
    }
    const Key& keyAt(int index) const { return key(row(index)); }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }

  protected:
    explicit RowModel(QObject* parent)
        : QAbstractTableModel(parent) {}
    virtual const Key& key(const Row& row) const = 0;

    // Publishes that these rows look different although their records are the same.
    void rowsLookDifferent(int first, int last) {
        if (first <= last) {
            emit dataChanged(index(first, 0), index(last, columnCount() - 1));
        }
    }

  private:
    void dropDuplicates(std::vector<Row>& rows) const;
    std::vector<Key> keysOf(const std::vector<Row>& rows) const;
    void removeRange(const RowSteps::Range& range);
    void move(const RowSteps::Move& move);
    void reorder(const std::vector<Row>& target);
    void insert(const RowSteps::Range& range, const std::vector<Row>& source);
    void replaceChanged(std::vector<Row>& rows);
    void notePlaces();
    auto iteratorAt(int index) { return m_rows.begin() + index; }

    std::vector<Row> m_rows;
    std::unordered_map<Key, int> m_places;
};

template <class Row, class Key>
void RowModel<Row, Key>::update(std::vector<Row> rows) {
    dropDuplicates(rows);
    const RowSteps steps = rowSteps(keysOf(m_rows), keysOf(rows));
    for (const auto& range : steps.removals) {
        removeRange(range);
    }
    if (steps.reorders) {
        reorder(rows);
    }
    for (const auto& step : steps.moves) {
        move(step);
    }
    for (const auto& range : steps.insertions) {
        insert(range, rows);
    }
    notePlaces();
    replaceChanged(rows);
}

template <class Row, class Key>
void RowModel<Row, Key>::dropDuplicates(std::vector<Row>& rows) const {
    std::unordered_set<Key> seen;
    std::erase_if(rows, [&](const Row& row) { return !seen.insert(key(row)).second; });
}

template <class Row, class Key>
std::vector<Key> RowModel<Row, Key>::keysOf(const std::vector<Row>& rows) const {
    std::vector<Key> keys;
    keys.reserve(rows.size());
    for (const auto& row : rows) {
        keys.push_back(key(row));
    }
    return keys;
}

template <class Row, class Key>
void RowModel<Row, Key>::removeRange(const RowSteps::Range& range) {
    beginRemoveRows({}, range.first, range.first + range.count - 1);
    m_rows.erase(iteratorAt(range.first), iteratorAt(range.first + range.count));
    endRemoveRows();
}

template <class Row, class Key>
void RowModel<Row, Key>::move(const RowSteps::Move& move) {
    const int first = move.rows.first;
    const int end = first + move.rows.count;
    beginMoveRows({}, first, end - 1, {}, move.before);
    if (move.before < first) {
        std::rotate(iteratorAt(move.before), iteratorAt(first), iteratorAt(end));
    } else {
        std::rotate(iteratorAt(first), iteratorAt(end), iteratorAt(move.before));
    }
    endMoveRows();
}

template <class Row, class Key>
void RowModel<Row, Key>::reorder(const std::vector<Row>& target) {
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList from = persistentIndexList();
    std::vector<Key> keys;
    for (const auto& index : from) {
        keys.push_back(keyAt(index.row()));
    }

    notePlaces();
    std::vector<Row> ordered;
    ordered.reserve(m_rows.size());
    for (const auto& row : target) {
        if (const auto place = rowOf(key(row))) {
            ordered.push_back(std::move(m_rows[static_cast<std::size_t>(*place)]));
        }
    }
    m_rows = std::move(ordered);
    notePlaces();

    QModelIndexList to;
    for (qsizetype i = 0; i < from.size(); ++i) {
        to.push_back(index(m_places.at(keys[static_cast<std::size_t>(i)]), from[i].column()));
    }
    changePersistentIndexList(from, to);
    emit layoutChanged({}, VerticalSortHint);
}

template <class Row, class Key>
void RowModel<Row, Key>::insert(const RowSteps::Range& range, const std::vector<Row>& source) {
    beginInsertRows({}, range.first, range.first + range.count - 1);
    m_rows.insert(iteratorAt(range.first), source.begin() + range.first,
                  source.begin() + range.first + range.count);
    endInsertRows();
}

template <class Row, class Key>
void RowModel<Row, Key>::replaceChanged(std::vector<Row>& rows) {
    std::vector<int> changed;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (m_rows[i] == rows[i]) {
            continue;
        }
        m_rows[i] = std::move(rows[i]);
        changed.push_back(static_cast<int>(i));
    }
    for (const auto& range : rangesOf(changed)) {
        rowsLookDifferent(range.first, range.first + range.count - 1);
    }
}

template <class Row, class Key>
void RowModel<Row, Key>::notePlaces() {
    m_places.clear();
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        m_places.emplace(key(m_rows[i]), static_cast<int>(i));
    }
}

} // namespace quillane
