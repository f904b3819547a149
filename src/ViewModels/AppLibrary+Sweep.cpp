// Runs a confirmed list to its end, keeps the lists true, records what can be undone, and undoes it.
#include "AppLibrary.h"
#include "Clock.h"
#include "Defaults.h"
#include "DefaultsKeys.h"
#include "Detached.h"
#include "FileFinder.h"
#include "FileSystem.h"
#include "ItemIdentity.h"
#include "StartupFinder.h"
#include "StoredRecords.h"
#include "TrashSweeper.h"
#include "Uninstaller.h"
#include <algorithm>
#include <array>
#include <cstddef>
#include <unordered_set>
#include <utility>

namespace quillane {
namespace {

// The order of work. The Trash is emptied before all of these, so that what they move stays recoverable.
constexpr std::array kMoveOrder = {SweepCategory::caches, SweepCategory::developer, SweepCategory::orphans,
                                   SweepCategory::apps,   SweepCategory::files,     SweepCategory::startup};

void append(std::vector<Uninstaller::Failure>& all, const std::vector<Uninstaller::Failure>& more) {
    all.insert(all.end(), more.begin(), more.end());
}

// Why nothing was begun.
constexpr const char* kSweepRuns = "A cleanup is running";
constexpr const char* kPutBackRuns = "A put back is running";

SweepReport refused(const std::vector<SweepEntry>& entries) {
    SweepReport report;
    for (const auto& entry : entries) {
        report.failures.push_back({entry.url, kPutBackRuns});
    }
    return report;
}

Uninstaller::Report refused(const std::vector<TrashMove>& moves, const char* reason) {
    Uninstaller::Report report;
    for (const auto& move : moves) {
        report.failures.push_back({move.from, reason});
    }
    return report;
}

} // namespace

Task<SweepReport> AppLibrary::runSweep(std::vector<SweepEntry> entries, std::string label) {
    if (*isPuttingBack) {
        co_return refused(entries);
    }
    SweepReport report;
    std::vector<TrashMove> moves;
    m_holders.reset();
    foundAnew();
    isSweeping = true;
    sweepProcessed = 0;
    sweepTotal = static_cast<int>(entries.size());
    sweepReclaimedSoFar = Bytes{0};

    co_await emptyTrashIfAsked(entries, report);
    co_await quitWhatGoes(entries);
    for (const auto category : kMoveOrder) {
        for (const auto& entry : entries) {
            if (entry.category == category) {
                co_await moveOne(entry, report, moves);
            }
        }
    }
    if (!moves.empty()) {
        const auto emptied = report.bytesByCategory.find(SweepCategory::trash);
        const Bytes permanent = emptied == report.bytesByCategory.end() ? 0 : emptied->second;
        record(UndoableOperation{std::move(label), m_platform.clock.now(), std::move(moves),
                                 report.totalBytes() - permanent});
    }
    m_movedBySweep.clear(); // what moved stands in the operation by now
    co_await measureTrash(m_scanGeneration);
    isSweeping = false;
    sweepStatus = std::optional<std::string>();
    co_return report;
}

Task<> AppLibrary::emptyTrashIfAsked(const std::vector<SweepEntry>& entries, SweepReport& report) {
    if (std::ranges::none_of(entries,
                             [](const SweepEntry& e) { return e.category == SweepCategory::trash; })) {
        co_return;
    }
    sweepStatus = std::optional<std::string>("Emptying the Trash");
    const Platform platform = m_platform;
    const auto emptied = co_await detached(platform.tasks, Priority::userInitiated,
                                           [platform] { return TrashSweeper::empty(platform); });
    report.bytesByCategory[SweepCategory::trash] = emptied.reclaimedBytes;
    report.itemsDeleted = static_cast<int>(emptied.trashed.size());
    append(report.failures, emptied.failures);
    sweepProcessed = *sweepProcessed + 1;
    sweepReclaimedSoFar = checkedSum(*sweepReclaimedSoFar, emptied.reclaimedBytes);
}

Task<> AppLibrary::quitWhatGoes(const std::vector<SweepEntry>& entries) {
    for (const auto& entry : entries) {
        if (entry.category != SweepCategory::apps || entry.url.pathExtension() != "app") {
            continue;
        }
        const auto app = appWithID(entry.url);
        if (!app) {
            continue;
        }
        sweepStatus = std::optional<std::string>("Quitting " + app->name);
        co_await Uninstaller::quitIfRunning(m_platform, app->bundleIdentifier);
    }
}

Task<> AppLibrary::moveOne(const SweepEntry& entry, SweepReport& report, std::vector<TrashMove>& moves) {
    followProtection();
    if (isProtected(entry.url)) {
        co_return; // protected while the sheet stood open: neither counted nor reported
    }
    sweepStatus = std::optional<std::string>(entry.title);
    m_movedBySweep.insert(entry.url);
    const Platform platform = m_platform;
    const auto answer = co_await detached(
        platform.tasks, Priority::userInitiated,
        [platform, url = entry.url, bytes = entry.bytes, kept = *protectedPaths] {
            return ItemIdentity::isOneOf(platform.files, url, kept)
                       ? std::nullopt
                       : std::optional(Uninstaller::moveToTrash(platform, {url}, {{url, bytes}}));
        });
    if (!answer) {
        m_movedBySweep.erase(entry.url);
        co_return; // protected by another spelling of its path
    }
    const auto& moved = *answer;
    auto& bytesOfCategory = report.bytesByCategory[entry.category];
    bytesOfCategory = checkedSum(bytesOfCategory, moved.reclaimedBytes);
    report.itemsMovedToTrash += static_cast<int>(moved.trashed.size());
    append(report.failures, moved.failures);
    moves.insert(moves.end(), moved.moves.begin(), moved.moves.end());
    if (moved.trashed.empty()) {
        m_movedBySweep.erase(entry.url);
    }
    forget(moved.trashed);
    noteInaccessible(moved.failures);
    sweepProcessed = *sweepProcessed + 1;
    sweepReclaimedSoFar = checkedSum(*sweepReclaimedSoFar, moved.reclaimedBytes);
}

void AppLibrary::noteInaccessible(const std::vector<Uninstaller::Failure>& failures) {
    for (const auto& failure : failures) {
        if (failure.isAccessDenied && !inaccessible->contains(failure.url)) {
            inaccessible.modify([&](auto& urls) { urls.insert(failure.url); });
        }
    }
}

void AppLibrary::forgetLeftovers(const std::unordered_set<FileURL>& gone) {
    if (!m_holders) {
        m_holders.emplace(*apps);
    }
    const auto losing = m_holders->take(gone);
    if (losing.empty()) {
        return;
    }
    apps.modify([&](std::vector<InstalledApp>& list) {
        for (const auto i : losing) {
            if (i >= list.size()) {
                break; // somebody else shortened the list
            }
            std::erase_if(list[i].leftovers,
                          [&](const LeftoverItem& item) { return gone.contains(item.url); });
        }
    });
}

void AppLibrary::forget(const std::vector<FileURL>& urls) {
    if (urls.empty()) {
        return;
    }
    const std::unordered_set<FileURL> gone(urls.begin(), urls.end());
    forgetLeftovers(gone);
    // Only a bundle can be an application: other paths are not looked for.
    if (std::ranges::any_of(urls, [](const FileURL& url) { return url.path().ends_with(".app"); })) {
        forgetApps(gone);
    }
    forgetFound(gone);
}

void AppLibrary::forgetApps(const std::unordered_set<FileURL>& gone) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < apps->size(); ++i) {
        if (gone.contains((*apps)[i].url)) {
            places.push_back(i);
        }
    }
    if (places.empty()) {
        return;
    }
    apps.modify([&](std::vector<InstalledApp>& list) {
        for (auto place = places.rbegin(); place != places.rend(); ++place) {
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(*place));
        }
    });
    if (m_holders) {
        m_holders->appsLeft(places);
    }
}

void AppLibrary::record(UndoableOperation operation) {
    auto& defaults = m_platform.defaults;
    const auto data = StoredRecords::encode(operation);
    lastOperation = std::move(operation);
    if (data) {
        // Of two cleanups the earlier would be put back after a restart. What another start has recorded by the time
        // that this can be written is the later one.
        defaults.updateOrForget(
            DefaultsKeys::kLastOperation,
            [data, known = defaults.value(DefaultsKeys::kLastOperation)](const auto& stored) {
                return !stored || stored == known ? std::optional<Defaults::Value>(*data) : stored;
            });
        m_knownOperation = *data;
    } else {
        defaults.clear(DefaultsKeys::kLastOperation);
        m_knownOperation = std::nullopt;
    }
}

void AppLibrary::forgetOperation() {
    m_platform.defaults.updateOrForget(
        DefaultsKeys::kLastOperation,
        [undone = m_knownOperation](const auto& stored) { return stored == undone ? std::nullopt : stored; });
    m_knownOperation = std::nullopt;
    lastOperation = std::optional<UndoableOperation>();
}

void AppLibrary::followOperation() {
    if (*isSweeping || *isPuttingBack || !isStoredAnew(DefaultsKeys::kLastOperation, m_knownOperation)) {
        return;
    }
    const auto data = m_platform.defaults.data(DefaultsKeys::kLastOperation);
    auto operation = data ? StoredRecords::decodeUndoableOperation(*data) : std::nullopt;
    // One that is missing was put back by another start. What is lost or damaged is still known.
    if (operation || !(m_knownOperation || m_platform.defaults.hasLost())) {
        lastOperation = std::move(operation);
    }
}

void AppLibrary::noteComeBack(const std::vector<FileURL>& urls) {
    const auto home = m_platform.files.home();
    for (const auto& url : urls) {
        if (FileFinder::isInUserFolders(url, home)) {
            areFilesStale = true;
            areDuplicatesStale = true;
        } else if (StartupFinder::mayHold(url, home)) {
            areStartupItemsStale = true;
        }
    }
}

Task<Uninstaller::Report> AppLibrary::undoLastOperation() {
    followOperation();
    const auto operation = *lastOperation;
    if (!operation) {
        co_return Uninstaller::Report{};
    }
    if (*isSweeping || *isPuttingBack) {
        co_return refused(operation->moves, *isSweeping ? kSweepRuns : kPutBackRuns);
    }
    isPuttingBack = true;
    const Platform platform = m_platform;
    auto report =
        co_await detached(platform.tasks, Priority::userInitiated, [platform, moves = operation->moves] {
            return Uninstaller::putBack(platform, moves);
        });
    forgetOperation(); // an operation can be tried once
    isPuttingBack = false;
    followOperation();
    noteComeBack(report.trashed);
    refresh(ScanReason::user);
    co_return report;
}

} // namespace quillane
