#include "TrialHome.h"
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <utility>

namespace quillane {
namespace {

namespace fs = std::filesystem;

constexpr int kItemsAtHome = 18;
constexpr const char* kFolders[] = {"Applications",      "Documents",    "Documents/deep",
                                    "Documents/deep/er", "Downloads",    "Library",
                                    "Library/Caches",    "Library/Logs", "Library/Application Support"};
// Gone when they are empty: the deepest first.
constexpr const char* kPassingFolders[] = {"Documents/deep/er", "Documents/deep"};
constexpr const char* kPlaces[] = {"Applications",   "Documents/deep/er", "Downloads",
                                   "Library/Caches", "Library/Logs",      "Library/Application Support"};

// Some that are hard to write down, and few enough to meet again.
const std::vector<std::string>& names() {
    static const std::vector<std::string> names = {"com.example.a",
                                                   "com.example.b",
                                                   "report.txt",
                                                   "One.app",
                                                   "Two.app",
                                                   ".hidden",
                                                   "a b  c",
                                                   "\xC3\xA9 100% \xFF.txt",
                                                   "line\nfeed",
                                                   "-rf",
                                                   "\xF4\x8F\xB9\x81",
                                                   "%41",
                                                   std::string(240, 'n'),
                                                   std::string(255, 'l')};
    return names;
}

void require(bool holds, const std::string& path) {
    if (!holds) {
        std::perror(path.c_str());
        std::_Exit(3);
    }
}

} // namespace

TrialHome::TrialHome(std::string home, Random& random)
    : m_home(std::move(home))
    , m_random(random) {
    for (const char* folder : kFolders) {
        fs::create_directories(path(folder));
    }
    layFolder(path(kProtected), 1);
    layFolder(path("Documents/letters"), 2);
    layFile(path("Library/Caches/bystander"), 5000, 0640);
    m_others = treeAt(m_home);
    fill();
}

bool TrialHome::mayBeMissing(const std::string& folder) const {
    return std::ranges::find(kPassingFolders, folder) != std::end(kPassingFolders);
}

void TrialHome::fill() {
    for (auto count = std::ranges::count_if(m_items, &TrialItem::isAtHome); count < kItemsAtHome; ++count) {
        layItem(freePath());
    }
}

std::string TrialHome::freePath() {
    for (;;) {
        const std::string folder = kPlaces[upTo(m_random, static_cast<int>(std::size(kPlaces)) - 1)];
        const auto& name =
            names()[static_cast<std::size_t>(upTo(m_random, static_cast<int>(names().size()) - 1))];
        auto candidate = folder + "/" + name;
        if (!fs::exists(fs::symlink_status(path(candidate)))) {
            return candidate;
        }
    }
}

void TrialHome::layItem(const std::string& below) {
    const auto whole = path(below);
    fs::create_directories(fs::path(whole).parent_path());
    ++m_laid;
    constexpr mode_t kModes[] = {0644, 0600, 0444, 0755};
    switch (below.ends_with(".app") ? 0 : upTo(m_random, 5)) {
    case 0:
    case 1:
        layFolder(whole, 2);
        break;
    case 2:
        layLink(whole);
        break;
    case 3:
        layFile(whole, 0, 0644);
        break;
    default:
        layFile(whole, static_cast<std::size_t>(upTo(m_random, 30'000)), kModes[upTo(m_random, 3)]);
    }
    m_items.push_back({below, treeAt(whole), {}});
}

void TrialHome::layFile(const std::string& whole, std::size_t size, mode_t mode) {
    const auto begin = "piece " + std::to_string(m_pieces) + "\n";
    {
        std::ofstream stream(whole, std::ios::binary);
        for (std::size_t written = 0; written < size; written += begin.size()) {
            stream << begin;
        }
        require(stream.flush().good(), whole);
    }
    require(::chmod(whole.c_str(), mode) == 0, whole);
    setDates(whole);
}

void TrialHome::layLink(const std::string& whole) {
    fs::create_symlink(upTo(m_random, 1) == 0 ? "/nowhere/" + std::to_string(m_pieces) : "../Library", whole);
    setDates(whole);
}

void TrialHome::layFolder(const std::string& whole, int depth) { // NOLINT(misc-no-recursion): two levels
    fs::create_directory(whole);
    const int count = upTo(m_random, 5);
    for (int i = 0; i < count; ++i) {
        layFile(whole + "/file " + std::to_string(i), static_cast<std::size_t>(upTo(m_random, 10'000)), 0644);
    }
    if (upTo(m_random, 2) == 0) {
        layLink(whole + "/link");
    }
    if (depth > 0) {
        layFolder(whole + "/folder", depth - 1);
    }
    setDates(whole);
}

// The date tells each piece from all others, also where there is no content.
void TrialHome::setDates(const std::string& whole) {
    const auto number = static_cast<long>(m_pieces++);
    const timespec date = {1'600'000'000 + number / 1'000, number % 1'000 * 1'000'003};
    const timespec dates[] = {date, date};
    require(::utimensat(AT_FDCWD, whole.c_str(), dates, AT_SYMLINK_NOFOLLOW) == 0, whole);
}

void TrialHome::removeEmptiedFolders() const {
    for (const char* folder : kPassingFolders) {
        std::error_code notEmpty;
        fs::remove(path(folder), notEmpty);
    }
}

} // namespace quillane
