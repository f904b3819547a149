#include "Startup/StartupRow.h"
#include <functional>
#include <string_view>
#include <utility>

namespace quillane {

namespace {

Ranks ranksOf(const std::vector<StartupRecord>& records, StartupSortKey key) {
    const auto by = [&records](auto keyOf) {
        return ranksBy(records, [&](const StartupRecord& record) { return keyOf(*record.item); });
    };
    switch (key) {
    case StartupSortKey::health:
        return by([](const StartupItem& item) { return item.health; });
    case StartupSortKey::label:
        return by([](const StartupItem& item) { return std::string_view(item.label); });
    case StartupSortKey::kind:
        return by([](const StartupItem& item) { return item.kind; });
    }
    __builtin_unreachable();
}

} // namespace

StartupRow StartupRecord::row() const {
    return {item->url,        item->label,    item->kind, item->health, item->ownerName,
            item->schedule(), item->isLoaded, isAtHome,   isProtected};
}

std::vector<StartupRecord> sorted(std::vector<StartupRecord> records,
                                  const std::vector<StartupComparator>& order) {
    return sortedBySteps(std::move(records), order, ranksOf);
}

} // namespace quillane
