// Reads and judges 1,000 property lists of launchd's, of which half are binary, beside 300 applications that could own
// them, and tells what that takes of the processor and of the clock. Fails when the median of the processor's time is
// above the goal.
#include "ContinuousClock.h"
#include "FakeMetadata.h"
#include "FakeWorkspace.h"
#include "MainQueue.h"
#include "PosixFileSystem.h"
#include "ProcessorTime.h"
#include "PropertyListWriter.h"
#include "RemovalFakes.h"
#include "SampleLaunchctl.h"
#include "ScriptedCommandRunner.h"
#include "StartupFinder.h"
#include "TemporaryFolder.h"
#include "ThreadTaskRunner.h"
#include <algorithm>
#include <chrono>
#include <fmt/core.h>
#include <string>
#include <vector>

namespace {

using namespace quillane;
using Milliseconds = std::chrono::duration<double, std::milli>;
using SteadyClock = std::chrono::steady_clock;

constexpr int kLists = 1'000;
constexpr int kApps = 300;
constexpr int kRounds = 15;
constexpr Milliseconds kGoal{100};

std::vector<InstalledApp> applications() {
    std::vector<InstalledApp> apps(kApps);
    for (int i = 0; i < kApps; ++i) {
        auto& app = apps[static_cast<std::size_t>(i)];
        app.name = fmt::format("Application {}", i);
        app.url = FileURL("/Applications/" + app.name + ".app");
        app.bundleIdentifier = fmt::format("com.vendor{}.App{}", i, i);
    }
    return apps;
}

// A third has its application, a third a program elsewhere and no owner, a third no program any more.
Plist job(int number, const std::string& label) {
    const auto program = number % 3 == 0
                             ? fmt::format("/Applications/Application {}.app/agent", number % kApps)
                         : number % 3 == 1 ? std::string("/opt/tool")
                                           : std::string("/opt/gone");
    return Plist::dictionary({{"Label", label},
                              {"ProgramArguments", Plist::array({program, "--launchd"})},
                              {"EnvironmentVariables", Plist::dictionary({{"PATH", "/usr/bin:/bin"}})},
                              {"StandardErrorPath", "/tmp/" + label + ".log"},
                              {"RunAtLoad", true},
                              {"KeepAlive", Plist::dictionary({{"SuccessfulExit", false}})},
                              {"StartInterval", 3'600}});
}

// The labels of half of the jobs, which launchd has loaded.
std::vector<std::string> lay(TemporaryFolder& disk) {
    std::vector<std::string> loaded;
    disk.file("opt/tool");
    for (int i = 0; i < kApps; ++i) {
        disk.file(fmt::format("Applications/Application {}.app/agent", i));
    }
    for (int i = 0; i < kLists; ++i) {
        const auto label = fmt::format("org.maker{}.job{}", i, i);
        const auto list = job(i, label);
        disk.file("Users/alex/Library/LaunchAgents/" + label + ".plist",
                  i % 2 == 0 ? xmlPropertyList(list) : binaryPropertyList(list));
        if (i % 2 == 0) {
            loaded.push_back(label);
        }
    }
    return loaded;
}

Milliseconds median(std::vector<Milliseconds> times) {
    std::ranges::sort(times);
    return times[times.size() / 2];
}

} // namespace

int main() {
    TemporaryFolder disk;
    ScriptedCommandRunner programs;
    SampleLaunchctl launchctl(lay(disk), programs);
    PosixFileSystem files{disk.path(), FileURL("/Users/alex")};
    FakeMetadata metadata;
    FakeWorkspace workspace;
    RemovalFakes fakes;
    MainQueue queue;
    ContinuousClock clock{queue};
    ThreadTaskRunner threads{queue};
    const Platform platform{files,     launchctl,   metadata,      clock,         threads,
                            workspace, fakes.trash, fakes.running, fakes.defaults};
    const auto apps = applications();
    std::vector<Milliseconds> processor;
    std::vector<Milliseconds> wall;
    for (int round = 0; round < kRounds; ++round) {
        const auto begin = SteadyClock::now();
        const auto processorBegin = processorTime();
        const auto items = StartupFinder::find(platform, apps);
        processor.emplace_back(processorTime() - processorBegin);
        wall.emplace_back(SteadyClock::now() - begin);
        if (items.size() != kLists) {
            fmt::print(stderr, "{} items of {}\n", items.size(), kLists);
            return 1;
        }
    }
    fmt::print(
        "{} lists beside {} applications, median of {} rounds: {:.1f} ms of the processor, {:.1f} ms\n",
        kLists, kApps, kRounds, median(processor).count(), median(wall).count());
    return median(processor) > kGoal ? 1 : 0;
}
