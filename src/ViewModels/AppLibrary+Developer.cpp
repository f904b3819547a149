// What tools of developers can make or fetch again: looking for it, showing it, and what of it can go.
#include "AppLibrary.h"
#include "Clock.h"
#include "Detached.h"
#include "DeveloperCacheFinder.h"
#include "FileSystem.h"
#include "Formatting.h"
#include "ScanPace.h"
#include "TextComparison.h"
#include <string>
#include <utility>

namespace quillane {
namespace {

bool matches(const DevCacheItem& item, const Text::Search& search) {
    return search.isEmpty() || search.isIn(item.tool) || search.isIn(item.kind);
}

std::string labelForDeveloperItems(const std::vector<DevCacheItem>& items) {
    if (items.size() == 1) {
        return "Remove " + items.front().kind;
    }
    return "Remove " + Formatting::number(static_cast<std::int64_t>(items.size())) + " developer locations";
}

} // namespace

// An empty list is walked again every time, and so is one that a clock which has been set back tells to be of a time
// to come.
bool AppLibrary::mayReuseDeveloperCaches(ScanReason reason) const {
    const Date now = m_platform.clock.now();
    return reason == ScanReason::automatic && m_developerCachesMeasuredAt &&
           *m_developerCachesMeasuredAt <= now &&
           now < m_developerCachesMeasuredAt->addingSeconds(developerCacheTTL) && !developerCaches->empty();
}

Task<> AppLibrary::findDeveloperCaches(int generation, ScanReason reason, StopToken stop) {
    phase = Phase{Phase::Kind::findingDeveloperCaches};
    const auto priority = ScanPace::of(reason).searching;
    auto found = co_await detached(m_platform.tasks, priority,
                                   [platform = m_platform, priority, stop = std::move(stop)] {
                                       return DeveloperCacheFinder::find(platform, priority, stop);
                                   });
    if (!isStale(generation)) {
        foundAnew();
        developerCaches = std::move(found);
        m_developerCachesMeasuredAt = m_platform.clock.now();
    }
}

std::vector<DevCacheItem> AppLibrary::visibleDeveloperCaches() const {
    std::vector<DevCacheItem> items;
    forEachVisibleDeveloperCache([&items](const DevCacheItem& item) { items.push_back(item); });
    return items;
}

void AppLibrary::forEachVisibleDeveloperCache(FunctionRef<void(const DevCacheItem&)> visit) const {
    const Text::Search search(*searchText);
    for (const auto& item : *developerCaches) {
        if (matches(item, search)) {
            visit(item);
        }
    }
}

Bytes AppLibrary::totalDeveloperBytes() const {
    return sumOfBytes(*developerCaches, [](const DevCacheItem& item) { return item.bytes; });
}

std::vector<DevCacheItem> AppLibrary::sweepableDeveloperCaches() const {
    std::vector<DevCacheItem> items;
    forEachSweepableDeveloperCache([&items](const DevCacheItem& item) { items.push_back(item); });
    return items;
}

void AppLibrary::forEachSweepableDeveloperCache(FunctionRef<void(const DevCacheItem&)> visit) const {
    for (const auto& item : *developerCaches) {
        if (item.safeToSweep && !isProtected(item.url) && !inaccessible->contains(item.url)) {
            visit(item);
        }
    }
}

SweepPlan AppLibrary::developerPlan(SweepPlan::Keeps keeps) const {
    const auto home = m_platform.files.home();
    SweepPlan plan(keeps);
    forEachSweepableDeveloperCache([&](const DevCacheItem& item) {
        plan.add(item.url, item.bytes, [&] { return SweepRows::rowFor(item, home); });
        plan.countOne();
    });
    return plan;
}

BulkRemoval AppLibrary::removalForDeveloperItems(const std::vector<DevCacheItem>& items) const {
    const auto home = m_platform.files.home();
    SweepPlan plan;
    for (const auto& item : items) {
        if (!isProtected(item.url)) {
            plan.add(SweepRows::rowFor(item, home));
        }
    }
    return BulkRemoval::make(labelForDeveloperItems(items), plan.takeRows());
}

} // namespace quillane
