#include "AppComparator.h"
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

std::vector<InstalledApp> sorted(std::vector<InstalledApp> apps, const std::vector<AppComparator>& order) {
    return sortedBySteps(std::move(apps), order, ranksOf);
}

} // namespace quillane
