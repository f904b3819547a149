// Scans a volume of 300 applications on real threads, and tells when the list stood, when the first figure
// came, when all was done, and what the longest job of the main thread took of its processor. Fails when the list
// came with figures, or when a job takes longer than a frame.
#include "AppLibrary.h"
#include "ContinuousClock.h"
#include "FakeMetadata.h"
#include "FakeWorkspace.h"
#include "IconCache.h"
#include "MainQueue.h"
#include "PosixFileSystem.h"
#include "ProcessorTime.h"
#include "RemovalFakes.h"
#include "SampleMac.h"
#include "ScriptedCommandRunner.h"
#include "TemporaryFolder.h"
#include "ThreadTaskRunner.h"
#include <algorithm>
#include <chrono>
#include <fmt/core.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillane {
namespace {

using namespace std::chrono_literals;
using Milliseconds = std::chrono::duration<double, std::milli>;
using SteadyClock = std::chrono::steady_clock;

constexpr int kApps = 300;
constexpr int kRounds = 5;
constexpr Milliseconds kFrame{16};

// Times every job of the main thread.
class TimedRunner final : public TaskRunner {
  public:
    explicit TimedRunner(MainQueue& queue)
        : m_runner(queue) {}
    void run(Priority priority, Job job) override { m_runner.run(priority, std::move(job)); }
    void post(Job job) override {
        m_runner.post([this, job = std::move(job)] {
            const auto begin = processorTime();
            job();
            m_durations.push_back(processorTime() - begin);
        });
    }
    void reset() { m_durations.clear(); }
    std::size_t jobs() const { return m_durations.size(); }
    Milliseconds longest() const {
        return m_durations.empty() ? Milliseconds{} : *std::ranges::max_element(m_durations);
    }
    Milliseconds total() const {
        Milliseconds sum{};
        for (const auto duration : m_durations) {
            sum += duration;
        }
        return sum;
    }

  private:
    std::vector<Milliseconds> m_durations; // main thread only
    ThreadTaskRunner m_runner;             // last: joined before what its jobs use goes
};

// Notes when the list first stood and when the first application was measured, as views see it.
class Milestones final : public Observer {
  public:
    explicit Milestones(const AppLibrary& library)
        : m_library(library) {
        const Tracking tracking(*this);
        (void)library.apps.get();
    }
    void fieldDidChange() override {
        if (firstFigure) {
            return;
        }
        const auto& apps = *m_library.apps;
        const auto measured = std::ranges::count_if(apps, &InstalledApp::isMeasured);
        if (!listed) {
            listed = SteadyClock::now();
            measuredWhenListed = static_cast<int>(measured);
        } else if (measured > 0) {
            firstFigure = SteadyClock::now();
        }
    }

    std::optional<SteadyClock::time_point> listed;
    std::optional<SteadyClock::time_point> firstFigure;
    int measuredWhenListed = 0;

  private:
    const AppLibrary& m_library;
};

// One scan of a library that has just been made. True when it kept its promises.
bool scanOnce(const Platform& platform, MainQueue& queue, TimedRunner& runner,
              AppLibrary::ScanReason reason) {
    runner.reset();
    AppLibrary library(platform);
    Milestones milestones(library);
    const auto begin = SteadyClock::now();
    library.refresh(reason);
    const bool ready =
        queue.runUntil([&library] { return library.phase->kind == AppLibrary::Phase::Kind::ready; }, 120s);
    const auto end = SteadyClock::now();
    if (!ready || !milestones.listed || !milestones.firstFigure) {
        fmt::print("the scan did not end\n");
        return false;
    }
    const auto after = [begin](SteadyClock::time_point time) { return Milliseconds(time - begin).count(); };
    fmt::print("{:9}  list {:7.1f} ms  first figure {:7.1f} ms  ready {:7.1f} ms  "
               "main thread: {} jobs, {:.1f} ms in all, longest {:.2f} ms\n",
               reason == AppLibrary::ScanReason::user ? "user" : "automatic", after(*milestones.listed),
               after(*milestones.firstFigure), after(end), runner.jobs(), runner.total().count(),
               runner.longest().count());
    return milestones.measuredWhenListed == 0 && milestones.listed < milestones.firstFigure &&
           runner.longest() < kFrame;
}

int run() {
    TemporaryFolder disk;
    SampleMac::manyApplications(kApps).build(disk.path());
    PosixFileSystem files(disk.path(), FileURL(std::string(SampleMac::kHome)));
    ScriptedCommandRunner commands; // no metadata search: the fixed folders alone
    FakeMetadata metadata;
    FakeWorkspace workspace;
    MainQueue queue;
    ContinuousClock clock(queue);
    TimedRunner runner(queue);
    RemovalFakes fakes;
    const Platform platform{files,     commands,    metadata,      clock,         runner,
                            workspace, fakes.trash, fakes.running, fakes.defaults};

    bool allKept = true;
    for (int round = 0; round < kRounds; ++round) {
        allKept = scanOnce(platform, queue, runner, AppLibrary::ScanReason::user) && allKept;
        allKept = scanOnce(platform, queue, runner, AppLibrary::ScanReason::automatic) && allKept;
    }
    return allKept ? 0 : 1;
}

} // namespace
} // namespace quillane

int main() {
    return quillane::run();
}
