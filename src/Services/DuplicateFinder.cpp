#include "DuplicateFinder.h"
#include "Characters.h"
#include "ContentComparison.h"
#include "FileFinder.h"
#include "FileSystem.h"
#include "HexadecimalText.h"
#include "SearchProgram.h"
#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace quillane::DuplicateFinder {
namespace {

// Where people keep what they made or fetched, in the home folder.
constexpr std::array<std::string_view, 6> kRoots = {"Desktop", "Documents", "Downloads",
                                                    "Movies",  "Music",     "Pictures"};

// Build products and trees of dependencies hold look-alikes that are not the user's copies.
constexpr std::array<std::string_view, 12> kExcludedSegments = {
    "/bin/",    "/obj/",  "/node_modules/", "/dist/",        "/build/", "/target/",
    "/.build/", "/Pods/", "/vendor/",       "/DerivedData/", "/.venv/", "/venv/"};

constexpr std::string_view kPhotosLibrary = ".photoslibrary/"; // nothing inside it may be touched
constexpr std::string_view kHidden = "/.";

// What stands between path and value in an answer with an attribute.
constexpr std::string_view kSeparator = "   kMDItemFSSize = ";

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r";
    const auto begin = text.find_first_not_of(kBlanks);
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

std::optional<Bytes> parsedSize(std::string_view text) {
    auto digits = trimmed(text);
    if (digits.starts_with('+') && !digits.starts_with("+-")) {
        digits.remove_prefix(1);
    }
    Bytes size = 0;
    const auto* const begin = digits.data();
    const auto* const end = begin + digits.size();
    const auto [stopped, error] = std::from_chars(begin, end, size);
    return error == std::errc() && stopped == end ? std::optional(size) : std::nullopt;
}

std::optional<Line> parsedLine(std::string_view text) {
    const auto at = text.find(kSeparator);
    if (at == std::string_view::npos) {
        return std::nullopt;
    }
    const auto size = parsedSize(text.substr(at + kSeparator.size()));
    return size ? std::optional(Line{std::string(text.substr(0, at)), *size}) : std::nullopt;
}

bool isCandidate(std::string_view path) {
    return !contains(path, kPhotosLibrary) && !contains(path, kHidden) &&
           std::ranges::none_of(kExcludedSegments,
                                [&](std::string_view segment) { return contains(path, segment); });
}

FilesBySize candidates(const Platform& platform, const StopToken& stop) {
    FilesBySize files;
    std::unordered_set<std::string> seen;
    const auto home = platform.files.home();
    for (const auto name : kRoots) {
        const auto root = home.appending(name);
        if (stop.stopRequested() || !platform.files.exists(root)) {
            continue;
        }
        SearchProgram::Below below(platform, root);
        for (auto& line : mdfindWithSize(platform, root, stop)) {
            if (below.holds(line.path) && seen.insert(line.path).second && isCandidate(line.path)) {
                files[line.size].emplace_back(std::move(line.path));
            }
        }
    }
    return files;
}

std::size_t countOfEqualSize(const FilesBySize& files) {
    std::size_t count = 0;
    for (const auto& [size, urls] : files) {
        count += urls.size() > 1 ? urls.size() : 0;
    }
    return count;
}

// Nothing when fewer than two can still be described. A file that is reached on two ways, as where one folder of
// documents is a link into another, is one file: with one of its paths the other would go.
std::optional<DuplicateGroup> described(const Platform& platform,
                                        const ContentComparison::EqualFiles& equal) {
    DuplicateGroup group{hexadecimalText(equal.digest), {}, equal.size};
    std::unordered_set<FileURL> seen;
    for (const auto* const url : equal.urls) {
        auto file = describe(platform, *url);
        if (file && seen.insert(platform.files.resolvingSymlinks(*url)).second) {
            group.files.push_back(std::move(*file));
        }
    }
    std::ranges::stable_sort(group.files, std::ranges::greater(), &UserFile::lastUsedSortKey);
    return group.files.size() > 1 ? std::optional(std::move(group)) : std::nullopt;
}

} // namespace

std::vector<Line> mdfindWithSize(const Platform& platform, const FileURL& folder, const StopToken& stop) {
    std::vector<Line> lines;
    for (const auto& text :
         SearchProgram::lines(platform,
                              {"-onlyin", folder.path(), "-attr", "kMDItemFSSize",
                               "kMDItemFSSize >= " + std::to_string(DuplicateGroup::kLeastBytes) +
                                   " && kMDItemContentType != 'public.folder'"},
                              stop)) {
        if (auto line = parsedLine(text)) {
            lines.push_back(std::move(*line));
        }
    }
    return lines;
}

std::optional<UserFile> describe(const Platform& platform, const FileURL& url) {
    return FileFinder::describeOnThisDisk(platform, url);
}

std::vector<DuplicateGroup> group(const Platform& platform, Priority priority, const FilesBySize& files,
                                  const StopToken& stop) {
    std::vector<DuplicateGroup> groups;
    for (const auto& equal : ContentComparison::equalFiles(platform, priority, files, stop)) {
        if (auto made = described(platform, equal)) {
            groups.push_back(std::move(*made));
        }
    }
    std::ranges::stable_sort(groups, std::ranges::greater(), &DuplicateGroup::wastedBytes);
    return groups;
}

std::vector<DuplicateGroup> find(const Platform& platform, Priority priority, const StopToken& stop,
                                 const Progress& progress) {
    const auto tell = [&](const std::string& words) {
        if (progress) {
            progress(words);
        }
    };
    tell("Listing files");
    const auto files = candidates(platform, stop);
    if (stop.stopRequested()) {
        return {};
    }
    tell("Comparing " + std::to_string(countOfEqualSize(files)) + " files");
    return group(platform, priority, files, stop);
}

} // namespace quillane::DuplicateFinder
