// What every runner of tasks promises, whatever it runs on.
#include "StepTaskRunner.h"
#include "TaskRunner.h"
#include "ThreadTaskRunner.h"
#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace quillane {
namespace {

using namespace std::chrono_literals;

// Each subject gives a runner and a way to let its main thread work until something is true.
class OnThreads {
  public:
    TaskRunner& runner() { return m_runner; }
    bool runUntil(const std::function<bool()>& done) { return m_queue.runUntil(done, 20'000ms); }

  private:
    MainQueue m_queue;
    ThreadTaskRunner m_runner{m_queue};
};

class ByHand {
  public:
    TaskRunner& runner() { return m_runner; }
    bool runUntil(const std::function<bool()>& done) { return m_runner.runUntil(done); }

  private:
    StepTaskRunner m_runner;
};

template <class Subject>
class TaskRunnerContract : public testing::Test {
  protected:
    Subject subject;
    TaskRunner& runner = subject.runner();
};

using Subjects = testing::Types<OnThreads, ByHand>;
TYPED_TEST_SUITE(TaskRunnerContract, Subjects);

constexpr std::array kPriorities = {Priority::userInitiated, Priority::utility, Priority::background};

TYPED_TEST(TaskRunnerContract, JobsOfEveryPriorityRun) {
    std::atomic<int> ran = 0;
    int told = 0;
    for (const auto priority : kPriorities) {
        this->runner.run(priority, [&, &runner = this->runner] {
            ++ran;
            runner.post([&told] { ++told; });
        });
    }
    EXPECT_TRUE(this->subject.runUntil([&] { return told == 3; }));
    EXPECT_EQ(ran, 3);
}

TYPED_TEST(TaskRunnerContract, PostedJobsRunOnTheMainThreadInOrder) {
    std::vector<int> order;
    const auto main = std::this_thread::get_id();
    bool allOnMain = true;
    for (int i = 0; i < 20; ++i) {
        this->runner.post([&, i] {
            order.push_back(i);
            allOnMain = allOnMain && std::this_thread::get_id() == main;
        });
    }
    EXPECT_TRUE(this->subject.runUntil([&] { return order.size() == 20; }));
    EXPECT_TRUE(std::ranges::is_sorted(order));
    EXPECT_TRUE(allOnMain);
}

TYPED_TEST(TaskRunnerContract, APostNeverRunsInsideTheCall) {
    bool ran = false;
    this->runner.post([&] { ran = true; });
    EXPECT_FALSE(ran);
    EXPECT_TRUE(this->subject.runUntil([&] { return ran; }));
}

TYPED_TEST(TaskRunnerContract, AJobThatPostsToTheMainThreadFromTheMainThreadWaitsForItsTurn) {
    bool inside = false;
    bool nested = false;
    bool done = false;
    this->runner.post([&] {
        inside = true;
        this->runner.post([&] {
            nested = inside;
            done = true;
        });
        inside = false;
    });
    EXPECT_TRUE(this->subject.runUntil([&] { return done; }));
    EXPECT_FALSE(nested);
}

TYPED_TEST(TaskRunnerContract, AJobMayAskForAnotherJob) {
    bool done = false;
    auto& runner = this->runner;
    runner.run(Priority::utility,
               [&] { runner.run(Priority::userInitiated, [&] { runner.post([&] { done = true; }); }); });
    EXPECT_TRUE(this->subject.runUntil([&] { return done; }));
}

TYPED_TEST(TaskRunnerContract, MoreJobsThanThreadsAllRun) {
    int done = 0;
    auto& runner = this->runner;
    for (int i = 0; i < 200; ++i) {
        runner.run(Priority::background, [&] { runner.post([&] { ++done; }); });
    }
    EXPECT_TRUE(this->subject.runUntil([&] { return done == 200; }));
}

TYPED_TEST(TaskRunnerContract, WhatAJobWroteIsSeenByThePostThatFollowsIt) {
    auto& runner = this->runner;
    int plain = 0; // no atomic: the post orders it
    bool done = false;
    runner.run(Priority::utility, [&] {
        plain = 42;
        runner.post([&] { done = plain == 42; });
    });
    EXPECT_TRUE(this->subject.runUntil([&] { return done; }));
}

} // namespace
} // namespace quillane
