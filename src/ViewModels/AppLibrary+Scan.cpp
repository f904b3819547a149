#include "AppLibrary.h"
#include "AppScanner.h"
#include "Detached.h"
#include "IconCache.h"
#include "ScanPace.h"
#include "TextComparison.h"
#include <unordered_set>
#include <utility>

namespace quillane {

bool AppLibrary::isScanning() const {
    const auto kind = phase->kind;
    return kind != Phase::Kind::idle && kind != Phase::Kind::ready;
}

void AppLibrary::refresh(ScanReason reason) {
    if (isScanning()) {
        if (reason == ScanReason::user || !m_pendingRefresh) {
            m_pendingRefresh = reason;
        }
        return;
    }
    const int generation = ++m_scanGeneration;
    m_currentReason = reason;
    phase = Phase{Phase::Kind::scanning};
    m_scanTask = m_tasks.start(
        [this, reason, generation](StopToken stop) { return scan(reason, generation, std::move(stop)); });
}

Task<> AppLibrary::scan(ScanReason reason, int generation, StopToken stop) {
    auto found = co_await detached(m_platform.tasks, ScanPace::of(reason).searching,
                                   [platform = m_platform] { return AppScanner::scanMetadata(platform); });
    if (isStale(generation)) {
        co_return;
    }
    publishUnmeasured(std::move(found));

    // The stages in their order. Each works on what the ones before it published, so each is followed by the
    // test that keeps a superseded scan from going on.
    co_await measureAll(generation, reason, stop);
    if (isStale(generation)) {
        co_return;
    }
    co_await findAll(generation, reason, stop);
    if (isStale(generation)) {
        co_return;
    }
    co_await measureTrash(generation);
    if (isStale(generation)) {
        co_return;
    }

    phase = Phase{Phase::Kind::ready};
    pruneIcons();
    evaluateNudges();
    serveParkedRefresh();
}

void AppLibrary::publishUnmeasured(std::vector<InstalledApp> found) {
    inaccessible = std::unordered_set<FileURL>();
    std::vector<std::string> names;
    names.reserve(found.size());
    for (const auto& app : found) {
        names.push_back(app.name);
    }
    std::vector<InstalledApp> sorted;
    sorted.reserve(found.size());
    for (const auto index : Text::localizedStandardOrder(names)) {
        sorted.push_back(std::move(found[index]));
    }
    m_holders.reset();
    apps = std::move(sorted);
}

void AppLibrary::pruneIcons() const {
    std::unordered_set<FileURL> installed;
    for (const auto& app : *apps) {
        installed.insert(app.url);
    }
    IconCache::shared().prune(installed);
}

// The phase is `ready` by now, so that the scan starts at once.
void AppLibrary::serveParkedRefresh() {
    if (const auto parked = std::exchange(m_pendingRefresh, std::nullopt)) {
        refresh(*parked);
    }
}

} // namespace quillane
