#include "Developer/DeveloperRow.h"
#include <functional>
#include <string_view>
#include <tuple>
#include <utility>

namespace quillane {

namespace {

Ranks ranksOf(const std::vector<DeveloperRecord>& records, DeveloperSortKey key, NameRanks& names) {
    const auto by = [&records](auto keyOf) {
        return ranksBy(records,
                       [&](const DeveloperRecord& record) { return std::invoke(keyOf, *record.item); });
    };
    const auto byName = [&](auto nameOf) {
        return names.of(records, [&](const DeveloperRecord& record) -> std::string_view {
            return std::invoke(nameOf, *record.item);
        });
    };
    switch (key) {
    case DeveloperSortKey::tool:
        return byName(&DevCacheItem::tool);
    case DeveloperSortKey::kind:
        return byName(&DevCacheItem::kind);
    case DeveloperSortKey::bytes:
        return by(&DevCacheItem::bytes);
    case DeveloperSortKey::sweep:
        return by(&DevCacheItem::sweepSortKey);
    case DeveloperSortKey::lastModified:
        return by(&DevCacheItem::lastModifiedSortKey);
    }
    __builtin_unreachable();
}

} // namespace

DeveloperRow DeveloperRecord::row() const {
    return {item->url,          item->tool,        item->kind, item->bytes,
            item->lastModified, item->safeToSweep, isProtected};
}

bool DeveloperRecord::isShownBy(const DeveloperRow& shown) const {
    return std::tie(shown.url, shown.tool, shown.kind, shown.bytes, shown.lastModified, shown.safeToSweep,
                    shown.isProtected) == std::tie(item->url, item->tool, item->kind, item->bytes,
                                                   item->lastModified, item->safeToSweep, isProtected);
}

std::vector<DeveloperRecord> sorted(std::vector<DeveloperRecord> records,
                                    const std::vector<DeveloperComparator>& order, NameRanks& names) {
    return sortedBySteps(std::move(records), order, [&names](const auto& sortees, DeveloperSortKey key) {
        return ranksOf(sortees, key, names);
    });
}

} // namespace quillane
