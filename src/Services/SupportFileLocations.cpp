#include "SupportFileLocations.h"
#include "Characters.h"
#include "FileSystem.h"
#include <array>
#include <optional>

namespace quillane::SupportFileLocations {
namespace {

struct Row {
    std::string_view path; // in the home folder unless it begins with a slash
    std::string_view category;
    bool allowsNameMatch;
    bool isCache;
};

// The words are settled as they stand, singular and plural.
constexpr std::array<Row, 21> kRows = {{
    {"Library/Application Support", "Application Support", true, false},
    {"Library/Caches", "Caches", true, true},
    {"Library/Preferences", "Preferences", false, false},
    {"Library/Preferences/ByHost", "Preferences (ByHost)", false, false},
    {"Library/Containers", "Container", false, false},
    {"Library/Group Containers", "Group Container", false, false},
    {"Library/Saved Application State", "Saved State", false, true},
    {"Library/HTTPStorages", "HTTP Storage", false, false},
    {"Library/WebKit", "WebKit Data", false, false},
    {"Library/Cookies", "Cookies", false, false},
    {"Library/Logs", "Logs", true, true},
    {"Library/LaunchAgents", "Launch Agent", false, false},
    {"Library/Application Scripts", "Application Scripts", false, false},
    {"Library/Internet Plug-Ins", "Internet Plug-In", true, false},
    {"Library/PreferencePanes", "Preference Pane", true, false},
    {"/Library/Application Support", "Application Support (shared)", true, false},
    {"/Library/Caches", "Caches (shared)", false, true},
    {"/Library/Preferences", "Preferences (shared)", false, false},
    {"/Library/LaunchAgents", "Launch Agent (shared)", false, false},
    {"/Library/LaunchDaemons", "Launch Daemon", false, false},
    {"/Library/PrivilegedHelperTools", "Privileged Helper", false, false},
}};

constexpr std::array<std::string_view, 3> kSuffixes = {".plist", ".savedState", ".binarycookies"};
constexpr std::size_t kTeamIdentifierLength = 10;
constexpr int kMaxPasses = 3;

// The name without what the system puts in front of an identifier; nothing when there is none.
std::optional<std::string> stripped(const std::string& name) {
    const auto dot = name.find('.');
    if (dot != std::string::npos && dot + 1 < name.size() &&
        Text::isUppercaseOrNumbers(std::string_view(name).substr(0, dot), kTeamIdentifierLength)) {
        return name.substr(dot + 1);
    }
    for (const std::string_view prefix : {"group.", "groups."}) {
        if (name.starts_with(prefix)) {
            return name.substr(prefix.size());
        }
    }
    return std::nullopt;
}

} // namespace

std::vector<Location> all(const Platform& platform) {
    const auto home = platform.files.home();
    std::vector<Location> locations;
    locations.reserve(kRows.size());
    for (const auto& row : kRows) {
        auto url = row.path.starts_with('/') ? FileURL(std::string(row.path)) : home.appending(row.path);
        locations.push_back({std::move(url), std::string(row.category), row.allowsNameMatch, row.isCache});
    }
    return locations;
}

std::vector<std::string> identifierCandidates(std::string_view name) {
    for (const auto suffix : kSuffixes) {
        if (name.ends_with(suffix)) {
            name.remove_suffix(suffix.size());
            break;
        }
    }
    std::vector<std::string> candidates{std::string(name)};
    for (int pass = 0; pass < kMaxPasses; ++pass) {
        auto next = stripped(candidates.back());
        if (!next) {
            break;
        }
        candidates.push_back(std::move(*next));
    }
    return candidates;
}

} // namespace quillane::SupportFileLocations
