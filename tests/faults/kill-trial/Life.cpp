#include "Life.h"
#include "AppLibrary.h"
#include "BundleProcesses.h"
#include "ContinuousClock.h"
#include "DefaultsKeys.h"
#include "FakeWorkspace.h"
#include "FileDefaults.h"
#include "FreedesktopTrash.h"
#include "MainQueue.h"
#include "MetadataSearch.h"
#include "PosixCommandRunner.h"
#include "PosixFileSystem.h"
#include "RecentlyUsedFiles.h"
#include "SearchingCommandRunner.h"
#include "SystemCalls.h"
#include "ThreadTaskRunner.h"
#include <chrono>
#include <csignal>
#include <cstdlib>

namespace quillane {
namespace {

using namespace std::chrono_literals;

// The ports as the program has them; icons and windows of the desktop are nobody's files.
struct Ports {
    MainQueue queue;
    ContinuousClock clock{queue};
    ThreadTaskRunner tasks{queue};
    PosixFileSystem files;
    RecentlyUsedFiles metadata{files, RecentlyUsedFiles::registryOfThisUser(files.home())};
    PosixCommandRunner programs;
    MetadataSearch search{files, metadata, clock, {files.home(), FileURL("/Applications")}};
    SearchingCommandRunner commands{files, search, programs};
    FakeWorkspace workspace;
    FreedesktopTrash trash{FreedesktopTrash::Places::ofThisUser(files.home()), clock};
    BundleProcesses running{files};
    FileDefaults defaults{FileDefaults::userPath(files.home().path())};
    const Platform platform{files, commands, metadata, clock, tasks, workspace, trash, running, defaults};
};

std::vector<SweepEntry> entriesOf(const std::string& home, const Step& step) {
    constexpr SweepCategory kCategories[] = {SweepCategory::caches, SweepCategory::files,
                                             SweepCategory::orphans, SweepCategory::developer};
    std::vector<SweepEntry> entries;
    for (const auto& row : step.rows) {
        const FileURL url(home + "/" + row);
        const auto category =
            url.pathExtension() == "app" ? SweepCategory::apps : kCategories[entries.size() % 4];
        entries.push_back({url, category, row, "subtitle", 10});
    }
    if (step.empties) {
        entries.push_back(
            {FileURL(home + "/.local/share/Trash/files"), SweepCategory::trash, "Trash", "", 10});
    }
    return entries;
}

void writeSettings(Defaults& defaults, int count, Progress& progress) {
    for (int i = 0; i < count; ++i) {
        const auto number = ++progress.writesBegun;
        defaults.set(keyOfWrite(number), valueOfWrite(number));
        progress.writesEnded = number;
    }
}

Task<> work(AppLibrary& library, Ports& ports, const std::string& home, const Plan& plan,
            Progress& progress) {
    for (const auto& step : plan.steps) {
        ++progress.begun;
        if (step.kind == Step::Kind::writes) {
            writeSettings(ports.defaults, step.writes, progress);
        } else if (step.kind == Step::Kind::sweep) {
            const auto report = co_await library.runSweep(entriesOf(home, step), plan.label);
            progress.failures += static_cast<int>(report.failures.size());
        } else {
            co_await library.undoLastOperation(); // what has another in its place fails, rightly
        }
        ++progress.ended;
    }
}

// Counts the calls of this life and ends it when it is time.
class Reaper {
  public:
    Reaper(const Plan& plan, Progress& progress)
        : m_watch(
              [&plan, &progress](const SystemCall& call) {
                  if (call.length != nullptr && ++progress.writeCalls == plan.writesToLive) {
                      *call.length /= 2;
                  }
                  return 0;
              },
              [&plan, &progress](const SystemCall& call, bool) {
                  const bool isLastWrite = call.length != nullptr && progress.writeCalls == plan.writesToLive;
                  if (++progress.calls == plan.callsToLive || isLastWrite) {
                      (void)::raise(SIGKILL);
                  }
              }) {}

  private:
    SystemCallWatch m_watch;
};

} // namespace

std::string_view keyOfWrite(std::int64_t number) {
    constexpr std::string_view kKeys[kKeysOfWrites] = {
        DefaultsKeys::kThresholdGB, DefaultsKeys::kKnownOrphanVendors, DefaultsKeys::kLastScan};
    return kKeys[number % kKeysOfWrites];
}

Defaults::Value valueOfWrite(std::int64_t number) {
    switch (number % kKeysOfWrites) {
    case 0:
        return number;
    case 1: {
        std::vector<std::string> texts;
        for (std::int64_t i = 0; i < number % 100; ++i) {
            texts.push_back("vendor <" + std::to_string(number * 1000 + i) + "> \x01\xFF");
        }
        return texts;
    }
    default:
        return Date{static_cast<double>(number)};
    }
}

void live(const std::string& home, const std::string& protectedPath, const Plan& plan, Progress& progress) {
    // NOLINTBEGIN(concurrency-mt-unsafe): there are no threads yet
    ::setenv("HOME", home.c_str(), 1);
    ::unsetenv("XDG_DATA_HOME");
    ::unsetenv("XDG_CONFIG_HOME");
    // NOLINTEND(concurrency-mt-unsafe)
    const Reaper reaper(plan, progress);
    Ports ports;
    AppLibrary library(ports.platform);
    if (library.protectedPaths->empty()) {
        library.setProtected(FileURL(protectedPath), true);
    }
    bool isDone = false;
    library.tasks().start([&](StopToken) -> Task<> {
        co_await work(library, ports, home, plan, progress);
        isDone = true;
    });
    std::_Exit(ports.queue.runUntil([&] { return isDone; }, 60s) ? 0 : 1);
}

} // namespace quillane
