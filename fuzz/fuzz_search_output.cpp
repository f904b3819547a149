#include "AppScanner.h"
#include "Characters.h"
#include "CommandRunner.h"
#include "FakeMetadata.h"
#include "FakeRunningApplications.h"
#include "FakeWorkspace.h"
#include "ManualClock.h"
#include "MemoryDefaults.h"
#include "RemovalFakes.h"
#include "SettledFiles.h"
#include "StepTaskRunner.h"
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

using namespace quillane;

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// Whatever is asked for has an empty property list; the folders of applications are empty.
class AnyBundle final : public SettledFiles {
  public:
    Result<std::string> read(const FileURL& url, std::size_t) const override {
        require(url.path().ends_with("/Contents/Info.plist"));
        return std::string("<plist><dict/></plist>");
    }
};

class Search final : public CommandRunner {
  public:
    explicit Search(std::string_view output)
        : m_output(output) {}
    std::uint32_t userID() const override { return 501; }

  protected:
    Result<std::string> outputOf(const Run&) override { return std::string(m_output); }

  private:
    std::string_view m_output;
};

std::vector<InstalledApp> scanned(std::string_view output) {
    AnyBundle files;
    Search commands(output);
    FakeMetadata metadata;
    FakeWorkspace workspace;
    StepTaskRunner runner;
    ManualClock clock(runner);
    NoTrash trash;
    FakeRunningApplications running;
    MemoryDefaults defaults;
    return AppScanner::scanMetadata(
        {files, commands, metadata, clock, runner, workspace, trash, running, defaults});
}

// Each line of the text with the place of its first occurrence, as the paths that they name.
std::vector<std::string> linesOf(std::string_view output) {
    const auto text = Text::repairedUtf8(output) + '\n';
    std::vector<std::string> lines(1);
    for (const char c : text) {
        if (c == '\n') {
            lines.back() = FileURL(lines.back()).path();
            lines.emplace_back();
        } else {
            lines.back() += c;
        }
    }
    return lines;
}

// "/Applications/A.app" and the like: nothing speaks against such a line, so it must be told.
bool isPlain(const std::string& line) {
    constexpr std::string_view kFolder = "/Applications/";
    constexpr std::string_view kSuffix = ".app";
    return line.starts_with(kFolder) && line.ends_with(kSuffix) &&
           line.size() > kFolder.size() + kSuffix.size() &&
           std::ranges::all_of(line.substr(kFolder.size(), line.size() - kFolder.size() - kSuffix.size()),
                               [](char c) { return c >= 'a' && c <= 'z'; });
}

void requireSound(const std::vector<InstalledApp>& apps, const std::vector<std::string>& lines) {
    std::unordered_set<std::string> told;
    auto place = lines.begin();
    for (const auto& app : apps) {
        const auto& path = app.url.path();
        place = std::find(place, lines.end(), path);
        require(place != lines.end()); // no path but one of a line, and in their order
        require(told.insert(path).second);
        require(path.starts_with('/') && path.ends_with(".app") && path.find(".app/") == std::string::npos);
        require(!path.starts_with("/System/Library/") && !path.starts_with("/Users/anna/Library/"));
    }
    for (const auto& line : lines) {
        require(!isPlain(line) || told.contains(line));
    }
}

} // namespace

// The input is what the system's search printed.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view output(reinterpret_cast<const char*>(bytes), size);
    requireSound(scanned(output), linesOf(output));
    return 0;
}
