#include "Detached.h"
#include "Group.h"
#include "MainQueue.h"
#include "TaskScope.h"
#include "ThreadTaskRunner.h"
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <future>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace quillane {
namespace {

using namespace std::chrono_literals;

constexpr auto kLimit = 20'000ms; // no test comes near it

// Counts the threads that have arrived and blocks until a number of them has.
class Meeting {
  public:
    void arrive() {
        const std::lock_guard lock(m_mutex);
        ++m_arrived;
        m_changed.notify_all();
    }
    bool waitFor(std::size_t count) {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, kLimit, [&] { return m_arrived >= count; });
    }
    std::size_t arrived() {
        const std::lock_guard lock(m_mutex);
        return m_arrived;
    }

  private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::size_t m_arrived = 0;
};

class PoolLimits : public testing::TestWithParam<Priority> {};

TEST_P(PoolLimits, APoolRunsItsLimitOfJobsSideBySideAndNoMore) {
    MainQueue queue;
    Meeting meeting;
    std::promise<void> gate;
    const std::shared_future<void> opened = gate.get_future().share();
    const auto limit = ThreadTaskRunner::limit(GetParam());
    Meeting ended;
    {
        ThreadTaskRunner runner(queue);
        for (std::size_t i = 0; i < limit + 1; ++i) {
            runner.run(GetParam(), [&, opened] {
                meeting.arrive();
                opened.wait();
                ended.arrive();
            });
        }
        EXPECT_TRUE(meeting.waitFor(limit));
        EXPECT_EQ(meeting.arrived(), limit);
        gate.set_value();
        EXPECT_TRUE(ended.waitFor(limit + 1));
    }
}

INSTANTIATE_TEST_SUITE_P(EveryPriority, PoolLimits,
                         testing::Values(Priority::userInitiated, Priority::utility, Priority::background));

TEST(ThreadTaskRunner, ABlockedPoolDoesNotHoldUpTheOthers) {
    MainQueue queue;
    std::promise<void> gate;
    const std::shared_future<void> opened = gate.get_future().share();
    Meeting blocked;
    ThreadTaskRunner runner(queue);
    const auto limit = ThreadTaskRunner::limit(Priority::background);
    for (std::size_t i = 0; i < limit; ++i) {
        runner.run(Priority::background, [&, opened] {
            blocked.arrive();
            opened.wait();
        });
    }
    ASSERT_TRUE(blocked.waitFor(limit));
    Meeting free;
    runner.run(Priority::userInitiated, [&] { free.arrive(); });
    EXPECT_TRUE(free.waitFor(1));
    gate.set_value();
}

TEST(ThreadTaskRunner, StoppingWaitsForWhatHasBegunAndDropsWhatHasNot) {
    MainQueue queue;
    std::promise<void> gate;
    const std::shared_future<void> opened = gate.get_future().share();
    const auto limit = ThreadTaskRunner::limit(Priority::background);
    Meeting began;
    Meeting ended;
    auto owned = std::make_shared<int>(1);
    const std::weak_ptr<int> watch = owned;
    std::optional<ThreadTaskRunner> runner(std::in_place, queue);
    for (std::size_t i = 0; i < limit; ++i) {
        runner->run(Priority::background, [&, opened] {
            began.arrive();
            opened.wait();
            ended.arrive();
        });
    }
    ASSERT_TRUE(began.waitFor(limit));
    bool droppedRan = false;
    runner->run(Priority::background, [&droppedRan, owned = std::move(owned)] { droppedRan = true; });
    // The stop is on its way once the waiting job is freed; only then may the others end.
    std::thread opener([&] {
        while (!watch.expired()) {
            std::this_thread::yield();
        }
        gate.set_value();
    });
    runner.reset();
    opener.join();
    EXPECT_EQ(ended.arrived(), limit);
    EXPECT_FALSE(droppedRan);
    EXPECT_TRUE(watch.expired());
}

TEST(ThreadTaskRunner, AJobMayAskForMoreWhileTheRunnerStops) {
    MainQueue queue;
    Meeting began;
    std::promise<void> gate;
    const std::shared_future<void> opened = gate.get_future().share();
    auto waiting = std::make_shared<int>(1);
    const std::weak_ptr<int> watch = waiting;
    std::optional<ThreadTaskRunner> runner(std::in_place, queue);
    bool ran = false;
    for (std::size_t i = 0; i < ThreadTaskRunner::limit(Priority::background); ++i) {
        runner->run(Priority::background, [&, opened] {
            began.arrive();
            opened.wait();
            runner->run(Priority::background, [&ran] { ran = true; });
        });
    }
    ASSERT_TRUE(began.waitFor(ThreadTaskRunner::limit(Priority::background)));
    runner->run(Priority::background, [waiting = std::move(waiting)] {});
    std::thread opener([&] {
        while (!watch.expired()) {
            std::this_thread::yield();
        }
        gate.set_value();
    });
    runner.reset();
    opener.join();
    EXPECT_FALSE(ran);
}

TEST(ThreadTaskRunner, ARunnerThatNeverRanAnythingStops) {
    MainQueue queue;
    const ThreadTaskRunner runner(queue);
}

TEST(ThreadTaskRunner, GroupsAndDetachedJobsWorkOnRealThreads) {
    MainQueue queue;
    ThreadTaskRunner runner(queue);
    int rounds = 0;
    bool allThere = true;
    TaskScope scope(runner);
    scope.start([&](StopToken) -> Task<> {
        while (rounds < 50) {
            const int base =
                co_await detached(runner, Priority::userInitiated, [round = rounds] { return round; });
            std::vector<Group<int>::Child> children;
            for (int i = 0; i < 6; ++i) {
                children.emplace_back([base, i] { return base + i; });
            }
            const auto values = co_await Group<int>(runner, Priority::utility, std::move(children));
            allThere = allThere && values.size() == 6;
            ++rounds;
        }
    });
    EXPECT_TRUE(queue.runUntil([&] { return rounds == 50; }, kLimit));
    EXPECT_TRUE(allThere);
}

TEST(ThreadTaskRunner, AScopeMayGoWhileItsJobsRun) {
    for (int round = 0; round < 50; ++round) {
        MainQueue queue;
        std::promise<void> gate;
        const std::shared_future<void> opened = gate.get_future().share();
        Meeting began;
        std::atomic<int> stopsSeen = 0;
        std::optional<ThreadTaskRunner> runner(std::in_place, queue);
        auto scope = std::make_unique<TaskScope>(*runner);
        scope->start([&, opened](StopToken stop) -> Task<> {
            std::vector<Group<int>::Child> children;
            for (int i = 0; i < 4; ++i) {
                children.emplace_back([&, opened, stop] {
                    began.arrive();
                    opened.wait();
                    stopsSeen += stop.stopRequested() ? 1 : 0;
                    return 0;
                });
            }
            co_await Group<int>(*runner, Priority::utility, std::move(children));
        });
        queue.drain();
        ASSERT_TRUE(began.waitFor(4));
        scope.reset();
        gate.set_value();
        runner.reset(); // waits for the jobs
        queue.drain();
        EXPECT_EQ(stopsSeen, 4);
    }
}

} // namespace
} // namespace quillane
