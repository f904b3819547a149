#pragma once
#include "DevCacheItem.h"
#include "State/SortStep.h"
#include <vector>

namespace quillane {

// A row of the developer table.
struct DeveloperRow {
    DevCacheItem item;
    bool isProtected = false;
    friend bool operator==(const DeveloperRow&, const DeveloperRow&) = default;
};

// Sorted by the first comparator, ties by the next one and at last by the order given. Words sort as the
// Finder sorts names; what has no date is the oldest.
std::vector<DevCacheItem> sorted(std::vector<DevCacheItem> items,
                                 const std::vector<DeveloperComparator>& order);

} // namespace quillane
