#pragma once
#include "DevCacheItem.h"
#include "Tables/SortOrder.h"
#include <vector>

namespace quillane {

// A row of the developer table.
struct DeveloperRow {
    DevCacheItem item;
    bool isProtected = false;
    friend bool operator==(const DeveloperRow&, const DeveloperRow&) = default;
};

enum class DeveloperSortKey { tool, kind, bytes, sweep, lastModified };

// One step of the order of the table.
using DeveloperComparator = SortStep<DeveloperSortKey>;

// The order that the table begins with: largest first.
inline const std::vector<DeveloperComparator> kInitialDeveloperOrder = {{DeveloperSortKey::bytes, true}};

// Sorted by the first comparator, ties by the next one and at last by the order given. Words sort as the
// Finder sorts names; what has no date is the oldest.
std::vector<DevCacheItem> sorted(std::vector<DevCacheItem> items,
                                 const std::vector<DeveloperComparator>& order);

} // namespace quillane
