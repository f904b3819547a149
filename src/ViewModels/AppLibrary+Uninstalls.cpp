// What was uninstalled behind our back: noticing it, recording what it left, and what of that can go.
#include "AppLibrary.h"
#include "AppScanner.h"
#include "Clock.h"
#include "Defaults.h"
#include "DefaultsKeys.h"
#include "Detached.h"
#include "FileSystem.h"
#include "Formatting.h"
#include "LeftoverFinder.h"
#include "StayingClaims.h"
#include "StoredRecords.h"
#include "UserNotifications.h"
#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <variant>

namespace quillane {
namespace {

RecentUninstall recordOf(const InstalledApp& app, const std::vector<LeftoverItem>& items, Date now) {
    RecentUninstall record{app.name, app.bundleIdentifier, now, {}};
    for (const auto& item : items) {
        record.leftovers.push_back(
            {item.url, item.category, item.bytes, item.confidence == LeftoverItem::Confidence::high});
    }
    return record;
}

// Nothing where no list of records is stored.
std::optional<std::vector<RecentUninstall>> recordsIn(const std::optional<Defaults::Value>& stored) {
    const auto* data = stored ? std::get_if<Defaults::Data>(&*stored) : nullptr;
    return data == nullptr ? std::nullopt : StoredRecords::decodeRecentUninstalls(*data);
}

void eraseID(std::vector<RecentUninstall>& records, const std::string& id) {
    std::erase_if(records, [&](const RecentUninstall& record) { return record.id() == id; });
}

std::set<std::string> identifiersOf(const Platform& platform, const std::set<FileURL>& bundles) {
    std::set<std::string> identifiers;
    for (const auto& bundle : bundles) {
        if (auto identifier = AppScanner::bundleIdentifier(platform, bundle)) {
            identifiers.insert(std::move(*identifier));
        }
    }
    return identifiers;
}

} // namespace

void AppLibrary::syncUninstallWatcher() {
    const auto& defaults = m_platform.defaults;
    const bool isWanted =
        !defaults.value(DefaultsKeys::kWatchUninstalls) || defaults.boolean(DefaultsKeys::kWatchUninstalls);
    if (isWanted == (m_uninstallWatcher != nullptr)) {
        return;
    }
    if (!isWanted) {
        m_uninstallWatcher->stop();
        m_uninstallWatcher.reset();
        return;
    }
    m_uninstallWatcher = std::make_unique<UninstallWatcher>(
        m_platform, std::vector{FileURL("/Applications"), m_platform.files.home().appending("Applications")},
        [this](const std::set<FileURL>& removed, const std::set<FileURL>& added) {
            applicationsChanged(removed, added);
        });
    m_uninstallWatcher->start();
}

void AppLibrary::applicationsChanged(const std::set<FileURL>& removed, const std::set<FileURL>& added) {
    auto gone = appsGone(removed);
    if (gone.empty()) {
        refresh(ScanReason::automatic);
        return;
    }
    m_tasks.start(
        [this, gone = std::move(gone), added](const StopToken&) { return recordVanished(gone, added); });
}

std::vector<InstalledApp> AppLibrary::appsGone(const std::set<FileURL>& removed) const {
    std::vector<InstalledApp> gone;
    for (const auto& app : *apps) {
        if (removed.contains(m_platform.files.standardized(app.url)) && !isOwnMove(app.url)) {
            gone.push_back(app);
        }
    }
    return gone;
}

bool AppLibrary::isOwnMove(const FileURL& url) const {
    const auto& operation = *lastOperation;
    return m_movedBySweep.contains(url) ||
           (operation &&
            std::ranges::find(operation->moves, url, &TrashMove::from) != operation->moves.end());
}

// The list of applications was looked at before any of this: what a scan makes of it meanwhile changes nothing here.
Task<> AppLibrary::recordVanished(std::vector<InstalledApp> gone, std::set<FileURL> added) {
    const auto identifiers = co_await detached(
        m_platform.tasks, Priority::userInitiated,
        [platform = m_platform, added = std::move(added)] { return identifiersOf(platform, added); });
    for (auto& app : gone) {
        if (!app.bundleIdentifier || !identifiers.contains(*app.bundleIdentifier)) {
            m_tasks.start([this, app = std::move(app)](StopToken stop) {
                return recordUninstall(app, std::move(stop));
            });
        }
    }
    refresh(ScanReason::automatic);
}

// A stop is asked for only when the library goes.
Task<> AppLibrary::recordUninstall(InstalledApp app, StopToken stop) {
    const auto items = co_await detached(m_platform.tasks, Priority::userInitiated,
                                         [platform = m_platform, app, stop = std::move(stop)] {
                                             return LeftoverFinder::leftovers(platform, app, stop);
                                         });
    const auto record = recordOf(app, items, m_platform.clock.now());
    changeRecentUninstalls([record](std::vector<RecentUninstall>& records) {
        eraseID(records, record.id());
        records.insert(records.begin(), record);
    });
    notify(record);
}

void AppLibrary::notify(const RecentUninstall& record) const {
    if (record.leftovers.empty() || !m_platform.defaults.boolean(DefaultsKeys::kNudgeOnNewOrphans)) {
        return;
    }
    const Bytes left =
        sumOfBytes(record.leftovers, [](const RecentUninstall::Leftover& l) { return l.bytes; });
    m_platform.notifications.add({"uninstall-" + record.id(),
                                  record.name + " left " + Formatting::byteCount(left) + " behind",
                                  "Open Quillane to review what it left and put the space back.",
                                  {{"section", std::string(rawValue(LibrarySection::overview))}}});
}

void AppLibrary::changeRecentUninstalls(const std::function<void(std::vector<RecentUninstall>&)>& change) {
    followUninstalls();
    auto records = *recentUninstalls;
    m_platform.defaults.update(DefaultsKeys::kRecentUninstalls,
                               [change, known = records](const std::optional<Defaults::Value>& stored) {
                                   auto all = recordsIn(stored).value_or(known);
                                   change(all);
                                   const auto data = StoredRecords::encode(all);
                                   return data ? std::optional<Defaults::Value>(*data) : stored;
                               });
    change(records);
    if (const auto data = StoredRecords::encode(records)) {
        m_knownUninstalls = *data;
    }
    recentUninstalls = std::move(records);
    followUninstalls(); // another start may have been quicker
}

void AppLibrary::followUninstalls() {
    if (isStoredAnew(DefaultsKeys::kRecentUninstalls, m_knownUninstalls)) {
        if (auto records = recordsIn(m_knownUninstalls)) { // what is lost or damaged is still known
            recentUninstalls = std::move(*records);
        }
    }
}

void AppLibrary::dismissRecentUninstall(const RecentUninstall& record) {
    std::string id = record.id(); // the record may be one of those that are about to change
    followUninstalls();
    if (std::ranges::find(*recentUninstalls, id, &RecentUninstall::id) != recentUninstalls->end()) {
        changeRecentUninstalls(
            [id = std::move(id)](std::vector<RecentUninstall>& records) { eraseID(records, id); });
    }
}

std::vector<InstalledApp> AppLibrary::vanishedApps(const std::string& id) const {
    std::vector<InstalledApp> vanished;
    for (const auto& app : *apps) {
        if (app.bundleIdentifier.value_or(app.name) == id && !m_platform.files.exists(app.url)) {
            vanished.push_back(app);
        }
    }
    return vanished;
}

BulkRemoval AppLibrary::removalForRecentUninstall(const RecentUninstall& record) const {
    // Until the scan that follows a record has ended, the application is still listed.
    const StayingClaims staying(*apps, vanishedApps(record.id()));
    SweepPlan plan;
    std::unordered_set<FileURL> excluded; // listed, and goes only if the user ticks it
    for (const auto& leftover : record.leftovers) {
        if (isProtected(leftover.url) || !m_platform.files.exists(leftover.url)) {
            continue;
        }
        plan.add(SweepRows::rowFor(leftover, SweepCategory::orphans, record.name));
        if (!leftover.highConfidence || staying.hold(leftover.url)) {
            excluded.insert(leftover.url);
        }
    }
    return BulkRemoval::make("Remove " + record.name + " leftovers", plan.takeRows(), std::move(excluded));
}

} // namespace quillane
