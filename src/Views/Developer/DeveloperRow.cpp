#include "Developer/DeveloperRow.h"
#include "Tables/SortOrder.h"
#include <utility>

namespace quillane {

namespace {

Ranks ranksOf(const std::vector<DevCacheItem>& items, DeveloperSortKey key) {
    switch (key) {
    case DeveloperSortKey::tool:
        return ranksByName(items, &DevCacheItem::tool);
    case DeveloperSortKey::kind:
        return ranksByName(items, &DevCacheItem::kind);
    case DeveloperSortKey::bytes:
        return ranksBy(items, &DevCacheItem::bytes);
    case DeveloperSortKey::sweep:
        return ranksBy(items, &DevCacheItem::sweepSortKey);
    case DeveloperSortKey::lastModified:
        return ranksBy(items, &DevCacheItem::lastModifiedSortKey);
    }
    __builtin_unreachable();
}

} // namespace

std::vector<DevCacheItem> sorted(std::vector<DevCacheItem> items,
                                 const std::vector<DeveloperComparator>& order) {
    return sortedBySteps(std::move(items), order, ranksOf);
}

} // namespace quillane
