// The stages of a scan that look for what can come back.
#include "AppLibrary.h"
#include "Clock.h"
#include "Detached.h"
#include "DeveloperCacheFinder.h"
#include "OrphanFinder.h"
#include "ScanPace.h"
#include <set>
#include <utility>

namespace quillane {

Task<> AppLibrary::findOrphans(int generation, ScanReason reason, StopToken stop) {
    phase = Phase{Phase::Kind::findingOrphans};
    std::set<std::string> installed;
    for (const auto& app : *apps) {
        if (app.bundleIdentifier) {
            installed.insert(*app.bundleIdentifier);
        }
    }
    auto found =
        co_await detached(m_platform.tasks, ScanPace::of(reason).searching,
                          [platform = m_platform, installed = std::move(installed), stop = std::move(stop)] {
                              return OrphanFinder::orphans(platform, installed, stop);
                          });
    if (!isStale(generation)) {
        m_found.reset();
        orphans = std::move(found);
    }
}

// An empty list is walked again every time.
bool AppLibrary::mayReuseDeveloperCaches(ScanReason reason) const {
    return reason == ScanReason::automatic && m_developerCachesMeasuredAt &&
           m_platform.clock.now() < m_developerCachesMeasuredAt->addingSeconds(developerCacheTTL) &&
           !developerCaches->empty();
}

Task<> AppLibrary::findDeveloperCaches(int generation, ScanReason reason, StopToken stop) {
    if (mayReuseDeveloperCaches(reason)) {
        co_return;
    }
    phase = Phase{Phase::Kind::findingDeveloperCaches};
    const auto priority = ScanPace::of(reason).searching;
    auto found = co_await detached(m_platform.tasks, priority,
                                   [platform = m_platform, priority, stop = std::move(stop)] {
                                       return DeveloperCacheFinder::find(platform, priority, stop);
                                   });
    if (!isStale(generation)) {
        m_found.reset();
        developerCaches = std::move(found);
        m_developerCachesMeasuredAt = m_platform.clock.now();
    }
}

} // namespace quillane
