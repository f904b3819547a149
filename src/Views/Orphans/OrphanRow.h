#pragma once
#include "OrphanGroup.h"
#include "State/SortStep.h"
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
    Date lastModifiedSortKey;
    bool requiresAdmin = false;

    static OrphanRow of(const OrphanGroup& group);
    friend bool operator==(const OrphanRow&, const OrphanRow&) = default;
};

// Sorted by the first comparator, ties by the next one and at last by the order given. Titles sort as the
// Finder sorts names; what has no date is the oldest.
std::vector<OrphanRow> sorted(std::vector<OrphanRow> rows, const std::vector<OrphanComparator>& order);

} // namespace quillane
