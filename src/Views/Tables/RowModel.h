#pragma once
#include "IndexTable.h"
#include "Tables/RowSteps.h"
#include <QAbstractTableModel>
#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <memory>
#include <numeric>
#include <optional>
#include <utility>
#include <vector>

namespace quillane {

// A flat list of records for a table, each known by a key that stays the same. A new list is published as the
// fewest removals, moves, insertions and changes, or as a new order where RowSteps has too many of them, and never
// as a reset, so that selection, current row, scroll position and focus stay with the rows they belong to. `Row` is
// a value with ==; `Key` has ==, a hash and is what `key` answers. Main thread only.
template <class Row, class Key>
class RowModel : public QAbstractTableModel {
  public:
    // In the order of the screen. Of two rows with one key the first counts.
    void update(std::vector<Row> rows);
    // The same from records that rows are made of only where they are new or have changed. A record is small and
    // need not outlive the call: `key()` is that of its row, `isShownBy(row)` whether the row would become no other,
    // `row()` the row.
    template <class Record>
    void updateFrom(std::vector<Record> records);

    const Row& row(int index) const { return *m_rows[static_cast<std::size_t>(index)]; }
    // The row with this key; nothing when there is none. O(1). Not while an update is being published.
    std::optional<int> rowOf(const Key& wanted) const {
        const auto found = m_places.find(std::hash<Key>()(wanted),
                                         [&](std::size_t place) { return key(*m_rows[place]) == wanted; });
        return found ? std::optional(static_cast<int>(*found)) : std::nullopt;
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
    using Rows = std::vector<std::unique_ptr<Row>>; // a long list closes up a gap at the cost of pointers

    // A row as its own record.
    class Made {
      public:
        Made(const RowModel& model, Row& row)
            : m_model(&model)
            , m_row(&row) {}
        const Key& key() const { return m_model->key(*m_row); }
        bool isShownBy(const Row& shown) const { return shown == *m_row; }
        Row row() const { return *m_row; }

      private:
        const RowModel* m_model;
        const Row* m_row;
    };

    template <class Record>
    static IndexTable takeOutDuplicates(std::vector<Record>& records);
    template <class Record>
    RowSteps stepsTo(const std::vector<Record>& records, const IndexTable& places) const;
    template <class Record>
    static Rows rowsOf(const std::vector<Record>& records, const RowSteps::Range& range);
    void removeRanges(const std::vector<RowSteps::Range>& ranges);
    void removeRange(const RowSteps::Range& range);
    void move(const RowSteps::Move& move);
    void reorder(const std::vector<int>& order);
    template <class Record>
    void insert(const std::vector<RowSteps::Range>& ranges, const std::vector<Record>& records);
    void insertAt(int first, Rows rows);
    template <class Record>
    void replaceChanged(const std::vector<Record>& records);
    auto iteratorAt(int index) { return m_rows.begin() + index; }

    Rows m_rows;
    IndexTable m_places; // of the rows, as the last update left them
};

template <class Row, class Key>
void RowModel<Row, Key>::update(std::vector<Row> rows) {
    std::vector<Made> records;
    records.reserve(rows.size());
    for (auto& row : rows) {
        records.emplace_back(*this, row);
    }
    updateFrom(std::move(records));
}

template <class Row, class Key>
template <class Record>
void RowModel<Row, Key>::updateFrom(std::vector<Record> records) {
    IndexTable places = takeOutDuplicates(records);
    const RowSteps steps = stepsTo(records, places);
    removeRanges(steps.removals);
    if (steps.reorders) {
        reorder(steps.order);
    }
    for (const auto& step : steps.moves) {
        move(step);
    }
    insert(steps.insertions, records);
    m_places = std::move(places);
    replaceChanged(records);
}

// And finds where those that stay stand.
template <class Row, class Key>
template <class Record>
IndexTable RowModel<Row, Key>::takeOutDuplicates(std::vector<Record>& records) {
    IndexTable places(records.size());
    std::size_t kept = 0;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const Key& key = records[i].key();
        const auto place = places.findOrAdd(std::hash<Key>()(key), kept,
                                            [&](std::size_t other) { return records[other].key() == key; });
        if (place == kept) {
            records[kept++] = records[i];
        }
    }
    records.erase(records.begin() + static_cast<std::ptrdiff_t>(kept), records.end());
    return places;
}

template <class Row, class Key>
template <class Record>
RowSteps RowModel<Row, Key>::stepsTo(const std::vector<Record>& records, const IndexTable& places) const {
    const auto shown = [this](std::size_t i) -> const Key& { return key(*m_rows[i]); };
    const auto wanted = [&](std::size_t i) -> const Key& { return records[i].key(); };
    return quillane::stepsTo(placesAfter(m_rows.size(), shown, records.size(), wanted, places),
                             records.size());
}

template <class Row, class Key>
template <class Record>
auto RowModel<Row, Key>::rowsOf(const std::vector<Record>& records, const RowSteps::Range& range) -> Rows {
    Rows rows;
    rows.reserve(static_cast<std::size_t>(range.count));
    for (int i = range.first; i < range.first + range.count; ++i) {
        rows.push_back(std::make_unique<Row>(records[static_cast<std::size_t>(i)].row()));
    }
    return rows;
}

// Rows that go from all over the list are moved to its end and go from there at once.
template <class Row, class Key>
void RowModel<Row, Key>::removeRanges(const std::vector<RowSteps::Range>& ranges) {
    if (ranges.size() <= RowSteps::kMostRanges) {
        for (const auto& range : ranges) {
            removeRange(range);
        }
        return;
    }
    std::vector<int> order(m_rows.size());
    std::iota(order.begin(), order.end(), 0);
    std::vector<bool> goes(m_rows.size(), false);
    for (const auto& range : ranges) {
        std::fill_n(goes.begin() + range.first, range.count, true);
    }
    const auto stays = [&](int row) { return !goes[static_cast<std::size_t>(row)]; };
    const auto gone = std::ranges::stable_partition(order, stays);
    const int first = static_cast<int>(gone.begin() - order.begin());
    reorder(order);
    removeRange({first, static_cast<int>(gone.size())});
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

// `order` says for each place which row comes there.
template <class Row, class Key>
void RowModel<Row, Key>::reorder(const std::vector<int>& order) {
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    Rows ordered;
    ordered.reserve(m_rows.size());
    std::vector<int> newPlaces(m_rows.size());
    for (const int row : order) {
        newPlaces[static_cast<std::size_t>(row)] = static_cast<int>(ordered.size());
        ordered.push_back(std::move(m_rows[static_cast<std::size_t>(row)]));
    }
    m_rows = std::move(ordered);

    const QModelIndexList from = persistentIndexList();
    QModelIndexList to;
    to.reserve(from.size());
    for (const auto& held : from) {
        to.push_back(index(newPlaces[static_cast<std::size_t>(held.row())], held.column()));
    }
    changePersistentIndexList(from, to);
    emit layoutChanged({}, VerticalSortHint);
}

// Rows that come all over the list come to its end at once and are moved from there.
template <class Row, class Key>
template <class Record>
void RowModel<Row, Key>::insert(const std::vector<RowSteps::Range>& ranges,
                                const std::vector<Record>& records) {
    if (ranges.size() <= RowSteps::kMostRanges) {
        for (const auto& range : ranges) {
            insertAt(range.first, rowsOf(records, range));
        }
        return;
    }
    const int before = rowCount();
    Rows rows;
    std::vector<int> order(records.size(), kGone);
    for (const auto& range : ranges) {
        for (int i = 0; i < range.count; ++i) {
            order[static_cast<std::size_t>(range.first + i)] = before + static_cast<int>(rows.size()) + i;
        }
        std::ranges::move(rowsOf(records, range), std::back_inserter(rows));
    }
    int kept = 0;
    for (int& row : order) {
        row = row == kGone ? kept++ : row;
    }
    insertAt(before, std::move(rows));
    reorder(order);
}

template <class Row, class Key>
void RowModel<Row, Key>::insertAt(int first, Rows rows) {
    beginInsertRows({}, first, first + static_cast<int>(rows.size()) - 1);
    m_rows.insert(iteratorAt(first), std::make_move_iterator(rows.begin()),
                  std::make_move_iterator(rows.end()));
    endInsertRows();
}

template <class Row, class Key>
template <class Record>
void RowModel<Row, Key>::replaceChanged(const std::vector<Record>& records) {
    std::vector<int> changed;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (!records[i].isShownBy(*m_rows[i])) {
            *m_rows[i] = records[i].row();
            changed.push_back(static_cast<int>(i));
        }
    }
    for (const auto& range : rangesOf(changed)) {
        rowsLookDifferent(range.first, range.first + range.count - 1);
    }
}

} // namespace quillane
