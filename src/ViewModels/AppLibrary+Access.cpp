// What must never be touched, and what the system does not let us see.
#include "AppLibrary.h"
#include "Clock.h"
#include "CommandRunner.h"
#include "Defaults.h"
#include "DefaultsKeys.h"
#include "Detached.h"
#include "RunningApplications.h"
#include "Sleep.h"
#include "TrashSweeper.h"
#include "Workspace.h"
#include <optional>
#include <set>
#include <utility>
#include <variant>
#include <vector>

namespace quillane {
namespace {

using namespace std::chrono_literals;

constexpr Duration kFirstInterval = 3s; // to catch a user who has just gone to the settings
constexpr Duration kLaterInterval = 30s;
constexpr Duration kFirstIntervalLasts = 60s;
constexpr Duration kGrantedShows = 8s;

using Paths = std::set<std::string>;

// Nothing where no list of text is stored.
std::optional<Paths> pathsIn(const std::optional<Defaults::Value>& stored) {
    const auto* texts = stored ? std::get_if<std::vector<std::string>>(&*stored) : nullptr;
    return texts == nullptr ? std::nullopt : std::optional(Paths(texts->begin(), texts->end()));
}

Paths changed(Paths paths, const std::vector<FileURL>& urls, bool isProtected) {
    for (const auto& url : urls) {
        if (isProtected) {
            paths.insert(url.path());
        } else {
            paths.erase(url.path());
        }
    }
    return paths;
}

std::vector<std::string> sorted(const Paths& paths) {
    return {paths.begin(), paths.end()};
}

} // namespace

bool AppLibrary::isProtected(const FileURL& url) const {
    return protectedPaths->contains(url.path());
}

void AppLibrary::setProtected(const FileURL& url, bool isProtected) {
    setProtected(std::vector{url}, isProtected);
}

void AppLibrary::setProtected(const std::vector<FileURL>& urls, bool isProtected) {
    m_platform.defaults.update(DefaultsKeys::kProtectedPaths,
                               [urls, isProtected, known = *protectedPaths](const auto& stored) {
                                   // Where they were lost, those that are known are stored again.
                                   return std::optional<Defaults::Value>(
                                       sorted(changed(pathsIn(stored).value_or(known), urls, isProtected)));
                               });
    followProtection();
}

void AppLibrary::followProtection() {
    if (isStoredAnew(DefaultsKeys::kProtectedPaths, m_knownPaths)) {
        if (auto paths = pathsIn(m_knownPaths)) { // nobody takes them away: what is lost is still known
            protectedPaths = std::move(*paths);
        }
    }
}

Task<> AppLibrary::measureTrash(int generation) {
    const Platform platform = m_platform;
    const auto state = co_await detached(platform.tasks, Priority::utility,
                                         [platform] { return TrashSweeper::measure(platform); });
    if (generation != m_scanGeneration) {
        co_return; // a newer scan owns the state
    }
    trashState = state;
    if (state.needsFullDiskAccess) {
        watchForAccess();
    }
}

void AppLibrary::watchForAccess() {
    if (accessWatch->has_value()) {
        return;
    }
    accessWatch = m_tasks.start([this](StopToken stop) { return accessWatchLoop(std::move(stop)); });
}

Task<> AppLibrary::accessWatchLoop(StopToken stop) {
    Duration interval = kFirstInterval;
    Duration elapsed = 0s;
    while (!stop.stopRequested() && trashState->needsFullDiskAccess) {
        co_await Sleep(m_platform, interval, stop);
        co_await reprobeAccess();
        elapsed += interval;
        if (elapsed > kFirstIntervalLasts) {
            interval = kLaterInterval;
        }
    }
    accessWatch = std::optional<TaskHandle>();
}

Task<> AppLibrary::reprobeAccess() {
    if (!trashState->needsFullDiskAccess || isScanning()) {
        co_return; // a running scan makes its own measure
    }
    const Platform platform = m_platform;
    const auto state = co_await detached(platform.tasks, Priority::utility,
                                         [platform] { return TrashSweeper::measure(platform); });
    if (state.needsFullDiskAccess || !trashState->needsFullDiskAccess) {
        co_return; // still refused, or another probe or a scan has found it meanwhile
    }
    trashState = state;
    accessJustGranted = true;
    if (const auto watch = *accessWatch) {
        watch->cancel();
        accessWatch = std::optional<TaskHandle>();
    }
    refresh(ScanReason::automatic);
    m_tasks.start([this](StopToken stop) -> Task<> {
        co_await Sleep(m_platform, kGrantedShows, stop);
        accessJustGranted = false;
    });
}

void AppLibrary::appBecameActive() {
    followProtection();
    followOperation();
    followUninstalls();
    m_tasks.start([this](const StopToken&) { return reprobeAccess(); });
}

void AppLibrary::quit(const Platform& platform, const std::optional<std::string>& bundleIdentifier) {
    if (bundleIdentifier) {
        platform.runningApplications.terminate(*bundleIdentifier);
    }
}

void AppLibrary::relaunch(const Platform& platform) {
    platform.workspace.relaunch();
}

void AppLibrary::openFullDiskAccessSettings(const Platform& platform) {
    platform.workspace.openFullDiskAccessSettings();
}

} // namespace quillane
