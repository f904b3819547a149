// What launchd starts by itself: looking for it, showing it, stopping it, and what of it can go.
#include "AppLibrary.h"
#include "Detached.h"
#include "FileSystem.h"
#include "Formatting.h"
#include "StartupFinder.h"
#include "TextComparison.h"
#include <algorithm>
#include <string>
#include <utility>

namespace quillane {
namespace {

bool matches(const StartupItem& item, const Text::Search& search) {
    return search.isEmpty() || search.isIn(item.label) || search.isIn(item.ownerName.value_or(""));
}

std::string labelForStartupItems(const std::vector<StartupItem>& items) {
    if (items.size() == 1) {
        return "Remove " + items.front().label;
    }
    return "Remove " + Formatting::number(static_cast<std::int64_t>(items.size())) + " startup items";
}

} // namespace

void AppLibrary::loadStartupItems() {
    isLoadingStartup = true;
    areStartupItemsStale = false;
    m_tasks.start(
        [this, installed = *apps](StopToken stop) { return findStartupItems(installed, std::move(stop)); });
}

// A stop is asked for only when the library goes: launchctl must not keep it.
Task<> AppLibrary::findStartupItems(std::vector<InstalledApp> installed, StopToken stop) {
    auto found =
        co_await detached(m_platform.tasks, Priority::userInitiated,
                          [platform = m_platform, installed = std::move(installed), stop = std::move(stop)] {
                              return StartupFinder::find(platform, installed, stop);
                          });
    foundAnew();
    startupItems = std::move(found);
    isLoadingStartup = false;
}

Task<std::optional<std::string>> AppLibrary::stopStartupItem(StartupItem item, StopToken stop) {
    auto message = co_await detached(m_platform.tasks, Priority::userInitiated,
                                     [platform = m_platform, item = std::move(item), stop = std::move(stop)] {
                                         return StartupFinder::unload(platform, item, stop);
                                     });
    if (!message) {
        loadStartupItems();
    }
    co_return message;
}

std::vector<StartupItem> AppLibrary::visibleStartupItems() const {
    std::vector<StartupItem> items;
    forEachVisibleStartupItem([&items](const StartupItem& item) { items.push_back(item); });
    return items;
}

void AppLibrary::forEachVisibleStartupItem(FunctionRef<void(const StartupItem&)> visit) const {
    const Text::Search search(*searchText);
    for (const auto& item : *startupItems) {
        if (matches(item, search)) {
            visit(item);
        }
    }
}

int AppLibrary::startupProblemCount() const {
    return static_cast<int>(std::ranges::count_if(
        *startupItems, [](const StartupItem& item) { return item.health != StartupItem::Health::ok; }));
}

BulkRemoval AppLibrary::removalForStartupItems(const std::vector<StartupItem>& items) const {
    const auto home = m_platform.files.home();
    SweepPlan plan;
    for (const auto& item : items) {
        if (item.isAtHome(home) && !isProtected(item.url)) {
            plan.add(SweepRows::rowFor(item));
        }
    }
    return BulkRemoval::make(labelForStartupItems(items), plan.takeRows());
}

} // namespace quillane
