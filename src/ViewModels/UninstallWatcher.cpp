#include "UninstallWatcher.h"
#include "Detached.h"
#include "FileSystem.h"
#include "Sleep.h"
#include <algorithm>
#include <iterator>
#include <utility>

namespace quillane {
namespace {

using namespace std::chrono_literals;

constexpr Duration kQuiet = 2s; // a copy that goes on for a minute is one change

bool isVisibleBundle(const DirectoryEntry& entry) {
    return !entry.isHidden() && pathExtensionOf(entry.name) == "app";
}

std::set<FileURL> without(const std::set<FileURL>& all, const std::set<FileURL>& less) {
    std::set<FileURL> rest;
    std::ranges::set_difference(all, less, std::inserter(rest, rest.end()));
    return rest;
}

} // namespace

UninstallWatcher::UninstallWatcher(const Platform& platform, std::vector<FileURL> directories,
                                   OnChange onChange)
    : m_platform(platform)
    , m_directories(std::move(directories))
    , m_onChange(std::move(onChange))
    , m_known(m_directories.size())
    , m_tasks(platform.tasks) {
    // Not the pending diff: a change that comes meanwhile must not take this look back, or it would be lost.
    m_tasks.start([this](StopToken stop) { return diff(std::move(stop)); });
}

void UninstallWatcher::start() {
    stop();
    for (const auto& directory : m_directories) {
        if (auto source = m_platform.directories.watch(directory, [this] { scheduleDiff(); })) {
            m_sources.push_back(std::move(source));
        }
    }
}

void UninstallWatcher::stop() {
    m_sources.clear();
    if (const auto pending = std::exchange(m_debounce, std::nullopt)) {
        pending->cancel();
    }
}

void UninstallWatcher::scheduleDiff() {
    if (m_debounce) {
        m_debounce->cancel();
    }
    m_debounce = m_tasks.start([this](StopToken stop) { return diffWhenQuiet(std::move(stop)); });
}

Task<> UninstallWatcher::diffWhenQuiet(StopToken stop) {
    co_await Sleep(m_platform, kQuiet, stop);
    if (!stop.stopRequested()) {
        co_await diff(stop);
    }
}

Task<> UninstallWatcher::diff(StopToken stop) {
    m_waiting = std::move(stop);
    if (m_isListing) {
        co_return; // whoever lists goes on with it
    }
    while (const auto due = std::exchange(m_waiting, std::nullopt)) {
        if (due->stopRequested()) {
            continue;
        }
        m_isListing = true;
        const auto current = co_await detached(m_platform.tasks, Priority::utility,
                                               [platform = m_platform, directories = m_directories] {
                                                   return listBundles(platform, directories);
                                               });
        m_isListing = false;
        // A bundle that moved while the folders were read may have been seen in neither. That move is what asked the
        // diff to stop, and the one that follows it finds the folders quiet.
        if (!due->stopRequested()) {
            compare(current);
        }
    }
}

void UninstallWatcher::compare(const Bundles& current) {
    std::set<FileURL> before;
    std::set<FileURL> now;
    for (std::size_t folder = 0; folder < current.size(); ++folder) {
        auto& known = m_known[folder];
        const auto& listed = current[folder];
        if (!known) {
            known = listed; // what it holds the first time that it can be read is no news
        }
        if (!known) {
            continue;
        }
        before.insert(known->begin(), known->end());
        if (listed) {
            known = listed;
        }
        now.insert(known->begin(), known->end());
    }
    const auto removed = without(before, now);
    const auto added = without(now, before);
    if (!removed.empty() || !added.empty()) {
        m_onChange(removed, added);
    }
}

UninstallWatcher::Bundles UninstallWatcher::listBundles(const Platform& platform,
                                                        const std::vector<FileURL>& directories) {
    Bundles bundles;
    for (const auto& directory : directories) {
        const auto entries = platform.files.list(directory);
        if (!entries && entries.error().code != ErrorCode::kReadNoSuchFile) {
            bundles.emplace_back();
            continue;
        }
        std::set<FileURL> found;
        for (std::size_t i = 0; entries && i < entries->size(); ++i) {
            if (const auto& entry = (*entries)[i]; isVisibleBundle(entry)) {
                found.insert(platform.files.standardized(directory.appending(entry.name)));
            }
        }
        bundles.emplace_back(std::move(found));
    }
    return bundles;
}

} // namespace quillane
