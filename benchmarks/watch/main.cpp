// Lets the watcher of uninstalls look at a folder of 500 applications that lose one, and tells what each half of a
// look takes: the job, and the main thread. Then makes 10,000 changes in a watched folder and counts what they cost
// the main thread. Fails when a look holds the main thread for longer than the goal, or when changes are not gathered.
#include "FakeDirectoryWatch.h"
#include "MainQueue.h"
#include "PosixDirectoryWatch.h"
#include "RemovalWorld.h"
#include "TemporaryFolder.h"
#include "UninstallWatcher.h"
#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fmt/core.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

using namespace quillane;
using namespace std::chrono_literals;
using Milliseconds = std::chrono::duration<double, std::milli>;
using SteadyClock = std::chrono::steady_clock;

constexpr int kApps = 500;
constexpr int kRounds = 51;
constexpr int kChanges = 10'000;
constexpr int kMostPosts = 20;
constexpr Milliseconds kGoal{2};

template <class Work>
Milliseconds timeOf(Work work) {
    const auto begin = SteadyClock::now();
    work();
    return SteadyClock::now() - begin;
}

Milliseconds median(std::vector<Milliseconds> times) {
    std::ranges::sort(times);
    return times[times.size() / 2];
}

std::string appPath(int number) {
    return fmt::format("Applications/Application {}.app", number);
}

// Whether the goal was met.
bool look() {
    RemovalWorld world;
    for (int i = 0; i < kApps; ++i) {
        world.disk.folder(appPath(i));
    }
    FakeDirectoryWatch directories{world.runner};
    const Platform platform{.files = world.files,
                            .commands = world.commands,
                            .metadata = world.metadata,
                            .clock = world.clock,
                            .tasks = world.runner,
                            .workspace = world.workspace,
                            .trash = world.trash,
                            .runningApplications = world.running,
                            .defaults = world.defaults,
                            .directories = directories};
    const FileURL folder("/Applications");
    int told = 0;
    UninstallWatcher watcher(platform, {folder}, [&](const auto& removed, const auto&) {
        told += static_cast<int>(removed.size());
    });
    watcher.start();
    world.runner.runAll();
    std::vector<Milliseconds> job;
    std::vector<Milliseconds> main;
    for (int round = 0; round < kRounds; ++round) {
        std::filesystem::remove(world.disk.at(appPath(round)));
        directories.change(folder);
        world.runner.settle();
        world.clock.advanceWithoutRunning(2s);
        Milliseconds onMain = timeOf([&] { world.runner.settle(); });
        job.push_back(timeOf([&] { world.runner.runJob(); }));
        onMain += timeOf([&] { world.runner.settle(); });
        main.push_back(onMain);
    }
    fmt::print(
        "A look at {} applications, median and slowest of {} rounds: the job {:.2f} and {:.2f} ms, the main "
        "thread {:.2f} and {:.2f} ms\n",
        kApps, kRounds, median(job).count(), std::ranges::max(job).count(), median(main).count(),
        std::ranges::max(main).count());
    return told == kRounds && median(main) < kGoal;
}

class CountingRunner final : public TaskRunner {
  public:
    void run(Priority, Job) override {}
    void post(Job job) override {
        ++posts;
        queue.post(std::move(job));
    }
    std::atomic<int> posts = 0;
    MainQueue queue;
};

// The same.
bool gather() {
    const TemporaryFolder disk;
    CountingRunner runner;
    PosixDirectoryWatch watch(runner);
    int told = 0;
    const auto source = watch.watch(disk.url(), [&told] { ++told; });
    const auto path = disk.at("Application.app");
    const auto took = timeOf([&] {
        for (int i = 0; i < kChanges; i += 2) {
            ::mkdir(path.c_str(), 0700);
            ::rmdir(path.c_str());
        }
    });
    runner.queue.runUntil([&] { return told > 0; }, 10'000ms);
    fmt::print("{} changes in {:.0f} ms: {} jobs for the main thread, {} calls\n", kChanges, took.count(),
               runner.posts.load(), told);
    return source && told > 0 && runner.posts < kMostPosts;
}

} // namespace

int main() {
    const bool looked = look();
    const bool gathered = gather();
    return looked && gathered ? 0 : 1;
}
