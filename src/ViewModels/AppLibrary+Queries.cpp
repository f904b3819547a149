#include "AppLibrary.h"
#include "Clock.h"
#include "TextComparison.h"
#include <algorithm>

namespace quillane {

namespace {

constexpr int kUnusedDays = 180;           // shown as "6 Months"
constexpr Bytes kLargeBytes = 500'000'000; // decimal, as all sizes that are shown

bool runsOnIntelOnly(Architecture architecture) {
    return architecture == Architecture::intel || isDead(architecture);
}

// An application without a usable count of days passes.
bool isUnused(const InstalledApp& app, Date now, const Calendar& calendar) {
    const auto days = app.daysSinceLastUse(now, calendar);
    return !days || *days > kUnusedDays;
}

bool passes(AppFilter filter, const InstalledApp& app, const Clock& clock) {
    switch (filter) {
    case AppFilter::all:
        return true;
    case AppFilter::thirdParty:
        return app.source != AppSource::system;
    case AppFilter::rosetta:
        return runsOnIntelOnly(app.architecture);
    case AppFilter::unused:
        return isUnused(app, clock.now(), clock.calendar());
    case AppFilter::large:
        return app.totalBytes() > kLargeBytes;
    }
    return false;
}

bool matches(const InstalledApp& app, const Text::Search& search) {
    return search.isEmpty() || search.isIn(app.name) ||
           (app.bundleIdentifier && search.isIn(*app.bundleIdentifier));
}

} // namespace

void AppLibrary::forEachVisibleApp(FunctionRef<void(const InstalledApp&)> visit) const {
    const Text::Search search(*searchText);
    const auto chosen = *filter;
    for (const auto& app : *apps) {
        if (passes(chosen, app, m_platform.clock) && matches(app, search)) {
            visit(app);
        }
    }
}

std::vector<InstalledApp> AppLibrary::visibleApps() const {
    std::vector<InstalledApp> visible;
    forEachVisibleApp([&visible](const InstalledApp& app) { visible.push_back(app); });
    return visible;
}

bool AppLibrary::hasFilteredApps() const {
    const auto chosen = *filter;
    return std::ranges::any_of(
        *apps, [&](const InstalledApp& app) { return passes(chosen, app, m_platform.clock); });
}

int AppLibrary::visibleAppCount() const {
    int count = 0;
    forEachVisibleApp([&count](const InstalledApp&) { ++count; });
    return count;
}

Bytes AppLibrary::totalVisibleBytes() const {
    Bytes total = 0;
    forEachVisibleApp([&total](const InstalledApp& app) { total = checkedSum(total, app.totalBytes()); });
    return total;
}

std::optional<InstalledApp> AppLibrary::appWithID(const std::optional<FileURL>& id) const {
    if (!id) {
        return std::nullopt;
    }
    const auto found = std::ranges::find(*apps, *id, &InstalledApp::url);
    return found == apps->end() ? std::nullopt : std::optional(*found);
}

} // namespace quillane
