#include "MainQueue.h"
#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <thread>

namespace quillane {
namespace {

using namespace std::chrono_literals;

constexpr auto kLimit = 20'000ms; // no test comes near it

TEST(MainQueue, OneDrainRunsWhatWaitedOnEntryAndLeavesWhatThatPosts) {
    MainQueue queue;
    std::string order;
    queue.post([&] {
        order += "1";
        queue.post([&] { order += "3"; });
    });
    queue.post([&] { order += "2"; });
    EXPECT_TRUE(queue.drainOnce());
    EXPECT_EQ(order, "12");
    EXPECT_TRUE(queue.drainOnce());
    EXPECT_EQ(order, "123");
    EXPECT_FALSE(queue.drainOnce());
}

TEST(MainQueue, DrainRunsUntilNothingWaits) {
    MainQueue queue;
    std::string order;
    queue.post([&] {
        order += "1";
        queue.post([&] { order += "2"; });
    });
    EXPECT_TRUE(queue.drain());
    EXPECT_EQ(order, "12");
    EXPECT_FALSE(queue.drain());
}

TEST(MainQueue, TheFirstPostWakesAndTheNextOnesDoNot) {
    MainQueue queue;
    int wakes = 0;
    queue.setWake([&] { ++wakes; });
    queue.post([] {});
    queue.post([] {});
    EXPECT_EQ(wakes, 1);
    queue.drainOnce();
}

TEST(MainQueue, AnEmptyQueueNeverWakes) {
    MainQueue queue;
    int wakes = 0;
    queue.setWake([&] { ++wakes; });
    queue.drainOnce();
    EXPECT_EQ(wakes, 0);
}

TEST(MainQueue, WhatIsPostedDuringADrainWakesAgain) {
    MainQueue queue;
    int wakes = 0;
    queue.setWake([&] { ++wakes; });
    queue.post([&] { queue.post([] {}); });
    queue.drainOnce();
    EXPECT_EQ(wakes, 2);
}

TEST(MainQueue, JobsThatWaitedBeforeTheWakeWasSetWakeAtOnce) {
    MainQueue queue;
    int wakes = 0;
    queue.post([] {});
    queue.setWake([&] { ++wakes; });
    EXPECT_EQ(wakes, 1);
}

TEST(MainQueue, AWakeTakenBackIsCalledNoMore) {
    MainQueue queue;
    int wakes = 0;
    queue.setWake([&] { ++wakes; });
    queue.setWake({});
    queue.post([] {});
    EXPECT_EQ(wakes, 0);
}

// A job that opens a dialog runs a loop of its own, which must get the jobs behind it.
TEST(MainQueue, AJobWithALoopOfItsOwnIsWokenForTheJobsBehindIt) {
    MainQueue queue;
    bool woken = false;
    std::string order;
    queue.setWake([&] { woken = true; });
    queue.post([&] {
        order += "1(";
        while (woken) {
            woken = false;
            queue.drainOnce();
        }
        order += ")";
    });
    queue.post([&] { order += "2"; });
    queue.post([&] { order += "3"; });
    woken = false;
    queue.drainOnce();
    EXPECT_EQ(order, "1(23)");
}

TEST(MainQueue, AnOuterDrainDoesNotRunWhatWasPostedAfterItBegan) {
    MainQueue queue;
    std::string order;
    queue.post([&] {
        queue.drainOnce(); // takes the second job away
        queue.post([&] { order += "3"; });
    });
    queue.post([&] { order += "2"; });
    queue.drainOnce();
    EXPECT_EQ(order, "2");
    queue.drainOnce();
    EXPECT_EQ(order, "23");
}

TEST(MainQueue, RunUntilWaitsForJobsOfOtherThreads) {
    MainQueue queue;
    int sum = 0;
    std::thread poster([&] {
        for (int i = 0; i < 100; ++i) {
            queue.post([&sum] { ++sum; });
        }
    });
    EXPECT_TRUE(queue.runUntil([&] { return sum == 100; }, kLimit));
    poster.join();
}

TEST(MainQueue, RunUntilStopsBetweenJobs) {
    MainQueue queue;
    int ran = 0;
    queue.post([&] { ++ran; });
    queue.post([&] { ++ran; });
    EXPECT_TRUE(queue.runUntil([&] { return ran == 1; }, kLimit));
    EXPECT_EQ(ran, 1);
}

TEST(MainQueue, RunUntilGivesUpAtItsLimit) {
    MainQueue queue;
    EXPECT_FALSE(queue.runUntil([] { return false; }, 0ms));
}

TEST(MainQueue, JobsThatNeverRanAreFreedWithTheQueue) {
    auto owned = std::make_shared<int>(1);
    const std::weak_ptr<int> watch = owned;
    {
        MainQueue queue;
        queue.post([owned = std::move(owned)] {});
    }
    EXPECT_TRUE(watch.expired());
}

} // namespace
} // namespace quillane
