#include "FakeMetadata.h"
#include "ManualClock.h"
#include "MetadataSearch.h"
#include "SettledFiles.h"
#include "StepTaskRunner.h"
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

using namespace quillane;

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// A small volume. A name with a full stop is a file, but for a bundle.
constexpr std::string_view kPaths[] = {
    "/Applications",
    "/Applications/One.app",
    "/Applications/One.app/Contents",
    "/Applications/One.app/Contents/Info.plist",
    "/Users",
    "/Users/anna",
    "/Users/anna/.hidden.txt",
    "/Users/anna/Documents",
    "/Users/anna/Documents/report.txt",
    "/Users/anna/Documents/photo.png",
    "/Users/anna/Library",
    "/Users/anna/Library/secret.txt",
};

class SmallVolume final : public SettledFiles {
  public:
    bool exists(const FileURL& url) const override { return isThere(url.path()); }
    Result<std::vector<DirectoryEntry>> list(const FileURL& folder) const override {
        std::vector<DirectoryEntry> entries;
        for (const auto path : kPaths) {
            const FileURL url{std::string(path)};
            if (url.deletingLastPathComponent() == folder && url != folder) {
                entries.push_back({std::string(url.lastPathComponent()), typeOf(url)});
            }
        }
        return entries;
    }
    Result<ResourceValues> resourceValues(const FileURL& url) const override {
        if (!isThere(url.path())) {
            return kMissing;
        }
        ResourceValues values;
        values.type = typeOf(url);
        values.fileSize = 1000;
        values.contentModified = Date{1};
        return values;
    }
    Result<std::string> read(const FileURL&, std::size_t limit) const override {
        return std::string("some words to be found").substr(0, limit);
    }
    static bool isThere(std::string_view path) {
        return path == "/" || std::ranges::find(kPaths, path) != std::end(kPaths);
    }

  private:
    static EntryType typeOf(const FileURL& url) {
        const auto extension = url.pathExtension();
        return extension.empty() || extension == "app" ? EntryType::directory : EntryType::regular;
    }
};

// What stands between NULs.
std::vector<std::string> argumentsIn(std::string_view input) {
    std::vector<std::string> arguments(1);
    for (const char c : input) {
        if (c == '\0') {
            arguments.emplace_back();
        } else {
            arguments.back() += c;
        }
    }
    return arguments;
}

// Each path is told once, in order, and none that the index would not hold.
void requireSound(std::string_view answer, char end) {
    std::string_view last;
    while (!answer.empty()) {
        const auto length = answer.find(end);
        require(length != std::string_view::npos);
        const auto path = answer.substr(0, length);
        require(SmallVolume::isThere(path) && last < path);
        require(path.find("/Library/") == std::string_view::npos &&
                path.find("/.") == std::string_view::npos);
        require(path.find(".app/") == std::string_view::npos);
        last = path;
        answer.remove_prefix(length + 1);
    }
}

} // namespace

// The input is the arguments of a search, as somebody else would pass them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const auto arguments = argumentsIn({reinterpret_cast<const char*>(bytes), size});
    const SmallVolume files;
    const FakeMetadata metadata;
    StepTaskRunner runner;
    const ManualClock clock(runner);
    const MetadataSearch search(files, metadata, clock, {FileURL("/")});
    const auto answer = search.answer(arguments);
    require(search.answer(arguments) == answer); // a search has no memory
    const bool isListing = std::ranges::find(arguments, "-attr") == arguments.end();
    if (isListing && !answer.starts_with("Failed to create query for '")) {
        requireSound(answer, std::ranges::find(arguments, "-0") == arguments.end() ? '\n' : '\0');
    }
    return 0;
}
