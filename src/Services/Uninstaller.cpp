#include "Uninstaller.h"
#include "FileSystem.h"
#include "FootprintCalculator.h"
#include "RunningApplications.h"
#include "Sleep.h"
#include "Trash.h"
#include <cerrno>

namespace quillane::Uninstaller {
namespace {

using namespace std::chrono_literals;

constexpr int kQuitPolls = 30;
constexpr Duration kQuitPollInterval = 100ms;

Bytes sizeOf(const Platform& platform, const FileURL& url, const std::unordered_map<FileURL, Bytes>& sizes) {
    const auto known = sizes.find(url);
    return known != sizes.end() ? known->second : FootprintCalculator::size(platform, url);
}

// Links count as they stand: a link that leads nowhere is there, is put back and is never overwritten.
bool isThere(const Platform& platform, const FileURL& url) {
    return platform.files.resourceValues(url).ok();
}

// Such as what lies behind a folder that is in a cloud alone: nobody knows whether it is there.
bool couldNotBeAsked(const Result<ResourceValues>& values) {
    return !values && values.error().underlying == EDEADLK;
}

// Nothing when the item is back in its place.
std::optional<Failure> putBackOne(const Platform& platform, const TrashMove& move) {
    const auto inTrash = platform.files.resourceValues(move.to);
    if (couldNotBeAsked(inTrash)) {
        return Failure::fromError(move.from, inTrash.error());
    }
    const auto isIt = inTrash ? platform.trash.cameFrom(move.to, move.from) : false;
    if (isIt && !*isIt) { // gone, or the Trash was emptied and another item has its name by now
        return Failure{move.from, "No longer in the Trash.", false};
    }
    if (isThere(platform, move.from)) {
        return Failure{move.from, "Something else now exists at the original location.", false};
    }
    if (!isIt) {
        return Failure::fromError(move.from, isIt.error());
    }
    const auto parent = move.from.deletingLastPathComponent();
    if (const auto created = platform.files.createDirectories(parent); !created) {
        return Failure::fromError(move.from, created.error());
    }
    if (const auto moved = platform.trash.moveOut(move.to, move.from); !moved) {
        return Failure::fromError(move.from, moved.error());
    }
    return std::nullopt;
}

} // namespace

Report moveToTrash(const Platform& platform, const std::vector<FileURL>& urls,
                   const std::unordered_map<FileURL, Bytes>& sizes) {
    Report report;
    for (const auto& url : urls) {
        const Bytes bytes = sizeOf(platform, url, sizes); // afterwards the path no longer exists
        const auto landed = platform.trash.moveToTrash(url);
        if (!landed) {
            report.failures.push_back(Failure::fromError(url, landed.error()));
            continue;
        }
        report.trashed.push_back(url);
        report.reclaimedBytes = checkedSum(report.reclaimedBytes, bytes);
        if (const auto& place = landed.value()) {
            report.moves.push_back({url, *place});
        }
    }
    return report;
}

Report putBack(const Platform& platform, const std::vector<TrashMove>& moves) {
    Report report;
    for (const auto& move : moves) {
        if (auto failure = putBackOne(platform, move)) {
            report.failures.push_back(std::move(*failure));
        } else {
            report.trashed.push_back(move.from);
        }
    }
    return report;
}

Task<bool> quitIfRunning(const Platform& platform, std::optional<std::string> bundleIdentifier) {
    auto& running = platform.runningApplications;
    if (!bundleIdentifier || !running.isRunning(*bundleIdentifier)) {
        co_return true;
    }
    running.terminate(*bundleIdentifier);
    for (int poll = 0; poll < kQuitPolls; ++poll) {
        co_await Sleep(platform, kQuitPollInterval, StopToken());
        if (!running.isRunning(*bundleIdentifier)) {
            co_return true;
        }
    }
    co_return false;
}

} // namespace quillane::Uninstaller
