// Files that are twice on the disk: looking for them, showing them, and which of them can go.
#include "AppLibrary.h"
#include "Detached.h"
#include "DuplicateFinder.h"
#include "FileSystem.h"
#include "Formatting.h"
#include "TextComparison.h"
#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace quillane {
namespace {

constexpr std::size_t kFewestCopies = 2;

bool holds(const DuplicateGroup& group, const FileURL& url) {
    return std::ranges::find(group.files, url, &UserFile::url) != group.files.end();
}

// Nothing for a group without files.
std::optional<FileURL> keeperOf(const DuplicateGroup& group,
                                const std::unordered_map<std::string, FileURL>& keeping) {
    // With one that lies elsewhere all copies would go.
    if (const auto chosen = keeping.find(group.id); chosen != keeping.end() && holds(group, chosen->second)) {
        return chosen->second;
    }
    const auto suggested = group.suggestedKeeper();
    return suggested ? std::optional(suggested->url) : std::nullopt;
}

std::string labelForDuplicates(const std::vector<DuplicateGroup>& groups) {
    if (groups.size() == 1) {
        return "Remove copies of " + groups.front().name();
    }
    return "Remove copies in " + Formatting::number(static_cast<std::int64_t>(groups.size())) + " groups";
}

} // namespace

void AppLibrary::loadDuplicates() {
    if (const auto task = *duplicatesTask) {
        task->cancel();
    }
    isLoadingDuplicates = true;
    areDuplicatesStale = false;
    duplicatesTask = m_tasks.start([this](StopToken stop) { return findDuplicates(std::move(stop)); });
}

Task<> AppLibrary::findDuplicates(StopToken stop) {
    // A stop is asked for when the load is replaced and when the library goes, both on the main thread.
    const auto tell = [this, stop, &tasks = m_platform.tasks](const std::string& words) {
        tasks.post([this, stop, words] {
            if (!stop.stopRequested()) {
                duplicateStatus = std::optional(words);
            }
        });
    };
    auto found =
        co_await detached(m_platform.tasks, Priority::userInitiated, [platform = m_platform, stop, tell] {
            return DuplicateFinder::find(platform, Priority::userInitiated, stop, tell);
        });
    if (stop.stopRequested()) {
        co_return;
    }
    foundAnew();
    duplicates = std::move(found);
    isLoadingDuplicates = false;
    duplicateStatus = std::optional<std::string>();
}

std::vector<DuplicateGroup> AppLibrary::visibleDuplicates() const {
    std::vector<DuplicateGroup> groups;
    forEachVisibleDuplicate([&groups](const DuplicateGroup& group) { groups.push_back(group); });
    return groups;
}

void AppLibrary::forEachVisibleDuplicate(FunctionRef<void(const DuplicateGroup&)> visit) const {
    const Text::Search search(*searchText);
    const auto matches = [&](const UserFile& file) { return search.isIn(file.url.path()); };
    for (const auto& group : *duplicates) {
        if (searchText->empty() || std::ranges::any_of(group.files, matches)) {
            visit(group);
        }
    }
}

Bytes AppLibrary::totalWastedBytes() const {
    return DuplicateGroup::wastedBytesOf(*duplicates);
}

BulkRemoval AppLibrary::removalForDuplicates(const std::vector<DuplicateGroup>& groups,
                                             const std::unordered_map<std::string, FileURL>& keeping) const {
    const auto home = m_platform.files.home();
    SweepPlan plan;
    for (const auto& group : groups) {
        const auto keeper = keeperOf(group, keeping);
        for (const auto& file : group.files) {
            if (file.url != keeper && !isProtected(file.url)) {
                plan.add({file.url, SweepCategory::files, file.name(), file.folder(home), file.bytes});
            }
        }
    }
    return BulkRemoval::make(labelForDuplicates(groups), plan.takeRows());
}

void AppLibrary::forgetCopies(const std::unordered_set<FileURL>& gone) {
    const auto isGone = [&](const UserFile& file) { return gone.contains(file.url); };
    const auto losesFile = [&](const DuplicateGroup& group) {
        return std::ranges::any_of(group.files, isGone);
    };
    if (std::ranges::none_of(*duplicates, losesFile)) {
        return;
    }
    duplicates.modify([&](std::vector<DuplicateGroup>& groups) {
        for (auto& group : groups) {
            std::erase_if(group.files, isGone);
        }
        std::erase_if(groups, [](const DuplicateGroup& group) { return group.files.size() < kFewestCopies; });
    });
}

} // namespace quillane
