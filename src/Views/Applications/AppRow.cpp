#include "Applications/AppRow.h"
#include "Tables/SortOrder.h"
#include <string_view>
#include <utility>

namespace quillane {

namespace {

Ranks ranksOf(const std::vector<InstalledApp>& apps, AppSortKey key) {
    switch (key) {
    case AppSortKey::name:
        return ranksByName(apps, &InstalledApp::name);
    case AppSortKey::totalBytes:
        return ranksBy(apps, &InstalledApp::totalBytes);
    case AppSortKey::lastUsed:
        return ranksBy(apps, &InstalledApp::lastUsedSortKey);
    case AppSortKey::architecture:
        return ranksBy(apps, &InstalledApp::architecture);
    case AppSortKey::version:
        return ranksByName(apps, &InstalledApp::version);
    }
    __builtin_unreachable();
}

} // namespace

AppRow AppRow::of(const InstalledApp& app, bool isProtected) {
    return {app.url,      app.name,         app.isMacAppStore, app.isMeasured, app.totalBytes(),
            app.lastUsed, app.architecture, app.version,       isProtected};
}

std::vector<InstalledApp> sorted(std::vector<InstalledApp> apps, const std::vector<AppComparator>& order) {
    return sortedBySteps(std::move(apps), order, ranksOf);
}

} // namespace quillane
