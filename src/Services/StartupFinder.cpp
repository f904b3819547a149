#include "StartupFinder.h"
#include "Characters.h"
#include "CommandRunner.h"
#include "FileSystem.h"
#include "FootprintCalculator.h"
#include "HomePath.h"
#include "LaunchdJob.h"
#include "VisibleChildren.h"
#include <algorithm>
#include <array>
#include <string_view>
#include <tuple>
#include <utility>

namespace quillane::StartupFinder {
namespace {

using Kind = StartupItem::Kind;
using Health = StartupItem::Health;
using ErrorOutput = CommandRunner::ErrorOutput;

constexpr const char* kProgram = "/bin/launchctl";
// In bytes. A Mac lists some 500 jobs in some 30 KB.
constexpr std::size_t kMostOutput = std::size_t{4} << 20U;
constexpr std::string_view kListExtension = "plist";
constexpr std::string_view kMachineLibrary = "/Library";
constexpr const char* kRefusal = "Only your own launch agents can be stopped without admin rights.";
constexpr const char* kNoAnswer = "launchctl gave no answer that could be read.";

struct Location {
    FileURL url;
    Kind kind;
};

std::array<Location, 4> locations(const FileURL& home) {
    return {{{home.appending("Library/LaunchAgents"), Kind::agent},
             {FileURL("/Library/LaunchAgents"), Kind::agent},
             {FileURL("/Library/LaunchDaemons"), Kind::daemon},
             {FileURL("/Library/PrivilegedHelperTools"), Kind::helper}}};
}

// What launchctl prints, repaired and without the blanks around it. Fails only when it prints too much: what can't be
// started prints nothing.
Result<std::string> run(const Platform& platform, const std::vector<std::string>& arguments,
                        ErrorOutput errors, const StopToken& stop) {
    const auto printed = platform.commands.run(kProgram, arguments, stop, kMostOutput, errors);
    if (!printed && printed.error().code == ErrorCode::kReadTooLarge) {
        return printed.error();
    }
    return printed ? std::string(Text::trimmed(Text::repairedUtf8(*printed))) : std::string();
}

// What stands behind the last mark, those at the end not counted; empty for marks alone.
std::string_view lastPiece(std::string_view text, char mark) {
    const auto end = text.find_last_not_of(mark) + 1;
    const auto before = text.substr(0, end).find_last_of(mark);
    return text.substr(0, end).substr(before == std::string_view::npos ? 0 : before + 1);
}

// Without a label the rest of the target would be the whole of what the user runs.
bool namesService(const std::string& label) {
    return label.find_first_not_of('/') != std::string::npos;
}

bool isThere(const Platform& platform, const std::string& program) {
    return LaunchdJob::isThere(platform, expandingTilde(program, platform.files.home()));
}

Health healthOf(bool claimed) {
    return claimed ? Health::ok : Health::orphaned;
}

Bytes lengthOf(const Platform& platform, const FileURL& url) {
    const auto values = platform.files.resourceValues(url);
    return values ? values->fileSize : 0;
}

// There is no list of a helper: its name is all that tells whose it is.
StartupItem helperAt(const Platform& platform, const FileURL& url, const StartupOwners& owners,
                     const StopToken& stop) {
    StartupItem item;
    item.url = url;
    item.label = url.lastPathComponent();
    item.kind = Kind::helper;
    item.program = url.path();
    const auto claim = owners.ownerName(item.label, std::nullopt);
    item.ownerName = claim.name;
    item.health = healthOf(claim.claimed);
    item.bytes = FootprintCalculator::size(platform, url, stop);
    return item;
}

} // namespace

std::vector<StartupItem> find(const Platform& platform, const std::vector<InstalledApp>& installed,
                              const StopToken& stop) {
    const auto home = platform.files.home();
    const StartupOwners owners(installed, home);
    const auto loaded = loadedUserLabels(platform, stop);
    std::vector<StartupItem> items;
    for (const auto& location : locations(home)) {
        for (const auto& url : visibleChildren(platform, location.url)) {
            if (stop.stopRequested()) {
                return items;
            }
            if (location.kind == Kind::helper) {
                items.push_back(helperAt(platform, url, owners, stop));
            } else if (url.pathExtension() != kListExtension) {
                continue;
            } else if (auto item = describe(platform, url, location.kind, owners, loaded)) {
                items.push_back(*std::move(item));
            }
        }
    }
    std::ranges::stable_sort(items, {},
                             [](const StartupItem& item) { return std::tie(item.health, item.label); });
    return items;
}

std::optional<StartupItem> describe(const Platform& platform, const FileURL& url, Kind kind,
                                    const StartupOwners& owners,
                                    const std::unordered_set<std::string>& loaded) {
    const auto job = LaunchdJob::read(platform, url);
    if (!job) {
        return std::nullopt;
    }
    StartupItem item;
    item.url = url;
    item.label = job->label.value_or(std::string(url.deletingPathExtension().lastPathComponent()));
    item.kind = kind;
    item.program = job->program;
    item.runAtLoad = job->runAtLoad;
    item.keepAlive = job->keepAlive;
    item.interval = job->interval;
    const auto claim = owners.ownerName(item.label, item.program);
    item.ownerName = claim.name;
    item.health =
        item.program && !isThere(platform, *item.program) ? Health::broken : healthOf(claim.claimed);
    if (kind == Kind::agent && !url.path().starts_with(kMachineLibrary)) {
        item.isLoaded = loaded.contains(item.label);
    }
    item.bytes = lengthOf(platform, url);
    return item;
}

std::unordered_set<std::string> loadedUserLabels(const Platform& platform, const StopToken& stop) {
    std::unordered_set<std::string> labels;
    const auto printed = run(platform, {"list"}, ErrorOutput::dropped, stop);
    if (!printed) {
        return labels;
    }
    bool isHeader = true;
    for (std::string_view rest = *printed; !rest.empty();) {
        const auto line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        if (line.empty()) {
            continue;
        }
        const auto label = lastPiece(line, '\t');
        if (!std::exchange(isHeader, false) && !label.empty()) {
            labels.emplace(label);
        }
    }
    return labels;
}

bool mayHold(const FileURL& url, const FileURL& home) {
    const auto folders = locations(home);
    return std::ranges::find(folders, url.deletingLastPathComponent(), &Location::url) != folders.end();
}

std::optional<std::string> unload(const Platform& platform, const StartupItem& item, const StopToken& stop) {
    if (item.kind != Kind::agent || !item.isAtHome(platform.files.home()) || !namesService(item.label)) {
        return kRefusal;
    }
    const auto target = "gui/" + std::to_string(platform.commands.userID()) + "/" + item.label;
    const auto printed = run(platform, {"bootout", target}, ErrorOutput::joined, stop);
    if (!printed) {
        return kNoAnswer;
    }
    return printed->empty() ? std::nullopt : std::optional(*printed);
}

} // namespace quillane::StartupFinder
