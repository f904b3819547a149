#pragma once
#include "OrphanGroup.h"
#include "State/SortStep.h"
#include "Tables/SortOrder.h"
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quillane {

// What the table of orphans shows of a group, reckoned once.
struct OrphanRow {
    std::string vendor;
    std::string title;
    Bytes totalBytes = 0;
    std::size_t itemCount = 0;
    std::optional<Date> lastModified;
    bool requiresAdmin = false;

    // `lastModified`, or the earliest date.
    Date lastModifiedSortKey() const { return lastModified.value_or(Date::distantPast()); }

    static OrphanRow of(const OrphanGroupView& group);
    friend bool operator==(const OrphanRow&, const OrphanRow&) = default;
};

// Sorted by the first comparator, ties by the next one and at last by the order given. Titles sort as the
// Finder sorts names; what has no date is the oldest. `names` remembers the titles of the last call, of the same table.
std::vector<OrphanRow> sorted(std::vector<OrphanRow> rows, const std::vector<OrphanComparator>& order,
                              NameRanks& names);

} // namespace quillane
