#include "CommandRunner.h"
#include "FakeMetadata.h"
#include "FakeRunningApplications.h"
#include "FakeWorkspace.h"
#include "ManualClock.h"
#include "MemoryDefaults.h"
#include "RemovalFakes.h"
#include "SettledFiles.h"
#include "StartupFinder.h"
#include "StepTaskRunner.h"
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

using namespace quillane;

namespace {

using Kind = StartupItem::Kind;
using Health = StartupItem::Health;

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// One list among the agents, and a program at each path of an even length.
class OneList final : public SettledFiles {
  public:
    explicit OneList(std::string_view content)
        : m_content(content) {}
    bool exists(const FileURL& url) const override { return url.path().size() % 2 == 0; }
    Result<std::vector<DirectoryEntry>> list(const FileURL& folder) const override {
        if (folder.path() != "/Users/anna/Library/LaunchAgents") {
            return kMissing;
        }
        return std::vector{DirectoryEntry{"com.example.tool.plist", EntryType::regular}};
    }
    Result<std::string> read(const FileURL&, std::size_t) const override { return std::string(m_content); }

  private:
    std::string_view m_content;
};

class Launchctl final : public CommandRunner {
  public:
    explicit Launchctl(std::string_view output)
        : m_output(output) {}
    std::uint32_t userID() const override { return 501; }

  protected:
    Result<std::string> outputOf(const Run& run) override {
        require(run.path == "/bin/launchctl" && !run.arguments.empty());
        if (run.arguments[0] != "list") {
            constexpr std::string_view kDomain = "gui/501/";
            require(run.arguments[0] == "bootout" && run.arguments.size() == 2);
            require(run.arguments[1].starts_with(kDomain));
            require(run.arguments[1].find_first_not_of('/', kDomain.size()) != std::string::npos);
        }
        return std::string(m_output);
    }

  private:
    std::string_view m_output;
};

std::vector<InstalledApp> applications() {
    InstalledApp app;
    app.url = FileURL("/Applications/Tool.app");
    app.name = "Tool";
    app.bundleIdentifier = "com.example.tool";
    return {app};
}

void requireSound(const StartupItem& item) {
    require(item.kind == Kind::agent && item.isLoaded.has_value());
    require(!item.schedule().empty());
    require(item.health != Health::ok || item.ownerName.has_value());
    require(item.health != Health::orphaned || !item.ownerName);
    require(item.health != Health::broken || item.program.has_value());
}

} // namespace

// The input is a list, and what launchctl prints.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(bytes), size);
    OneList files(input);
    Launchctl commands(input);
    FakeMetadata metadata;
    FakeWorkspace workspace;
    StepTaskRunner runner;
    ManualClock clock(runner);
    NoTrash trash;
    FakeRunningApplications running;
    MemoryDefaults defaults;
    const Platform platform{files, commands, metadata, clock, runner, workspace, trash, running, defaults};
    for (const auto& label : StartupFinder::loadedUserLabels(platform)) {
        require(!label.empty() && label.find_first_of("\n\t") == std::string::npos);
    }
    for (const auto& item : StartupFinder::find(platform, applications())) {
        requireSound(item);
        const auto message = StartupFinder::unload(platform, item);
        require(!message || !message->empty());
    }
    return 0;
}
