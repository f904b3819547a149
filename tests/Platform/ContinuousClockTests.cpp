#include "ContinuousClock.h"
#include "MainQueue.h"
#include <chrono>
#include <ctime>
#include <future>
#include <gtest/gtest.h>
#include <optional>
#include <time.h> // clock_gettime, which <ctime> need not declare

namespace quillane {
namespace {

using namespace std::chrono_literals;

constexpr auto kLimit = 20'000ms; // no test comes near it

TEST(ContinuousClock, TheWallClockIsTheSystems) {
    MainQueue queue;
    const ContinuousClock clock(queue);
    const auto before = std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch());
    const auto told = clock.now().secondsSince1970();
    const auto after = std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch());
    EXPECT_GE(told, before.count() - 0.001); // a double of this size holds microseconds
    EXPECT_LE(told, after.count() + 0.001);
}

// The CPU time that the whole process has used.
std::chrono::nanoseconds processorTime() {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

TEST(ContinuousClock, WaitingForADistantTimerUsesNoProcessorTime) {
    MainQueue queue;
    ContinuousClock clock(queue);
    clock.callAt(clock.instant() + 24h, [] {});
    const auto before = processorTime();
    EXPECT_FALSE(queue.runUntil([] { return false; }, 50ms));
    EXPECT_LT(processorTime() - before, 25ms);
}

TEST(ContinuousClock, AThousandTimersSetAndTakenBackLeaveTheOneThatStays) {
    MainQueue queue;
    ContinuousClock clock(queue);
    int ran = 0;
    for (int i = 0; i < 1000; ++i) {
        clock.cancel(clock.callAt(clock.instant() + 1ms, [&] { ++ran; }));
    }
    bool done = false;
    clock.callAt(clock.instant() + 2ms, [&] { done = true; });
    EXPECT_TRUE(queue.runUntil([&] { return done; }, kLimit));
    EXPECT_EQ(ran, 0);
}

TEST(ContinuousClock, ATimerThatWasPostedBeforeTheClockWentDoesNotRun) {
    MainQueue queue;
    std::promise<void> posted;
    queue.setWake([&] { posted.set_value(); });
    std::optional<ContinuousClock> clock(std::in_place, queue);
    bool ran = false;
    clock->callAt(clock->instant(), [&] { ran = true; });
    ASSERT_EQ(posted.get_future().wait_for(kLimit), std::future_status::ready);
    clock.reset();
    EXPECT_TRUE(queue.drain());
    EXPECT_FALSE(ran);
}

} // namespace
} // namespace quillane
