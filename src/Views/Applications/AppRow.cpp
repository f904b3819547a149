#include "Applications/AppRow.h"
#include <functional>
#include <string_view>
#include <tuple>
#include <utility>

namespace quillane {

namespace {

Ranks ranksOf(const std::vector<AppRecord>& records, AppSortKey key, NameRanks& names) {
    const auto by = [&records](auto keyOf) {
        return ranksBy(records, [&](const AppRecord& record) { return std::invoke(keyOf, *record.app); });
    };
    switch (key) {
    case AppSortKey::name:
        return names.of(records,
                        [](const AppRecord& record) -> std::string_view { return record.app->name; });
    case AppSortKey::totalBytes:
        return by(&InstalledApp::totalBytes);
    case AppSortKey::lastUsed:
        return by(&InstalledApp::lastUsedSortKey);
    case AppSortKey::architecture:
        return by(&InstalledApp::architecture);
    case AppSortKey::version:
        return names.of(records,
                        [](const AppRecord& record) -> std::string_view { return record.app->version; });
    }
    __builtin_unreachable();
}

} // namespace

AppRow AppRecord::row() const {
    return {app->url,      app->name,         app->isMacAppStore, app->isMeasured, app->totalBytes(),
            app->lastUsed, app->architecture, app->version,       isProtected};
}

bool AppRecord::isShownBy(const AppRow& shown) const {
    return std::tie(shown.url, shown.name, shown.isMacAppStore, shown.isMeasured, shown.lastUsed,
                    shown.architecture, shown.version, shown.isProtected) ==
               std::tie(app->url, app->name, app->isMacAppStore, app->isMeasured, app->lastUsed,
                        app->architecture, app->version, isProtected) &&
           shown.totalBytes == app->totalBytes();
}

std::vector<AppRecord> sorted(std::vector<AppRecord> records, const std::vector<AppComparator>& order,
                              NameRanks& names) {
    return sortedBySteps(std::move(records), order, [&names](const auto& sortees, AppSortKey key) {
        return ranksOf(sortees, key, names);
    });
}

} // namespace quillane
