#include "AsyncTest.h"
#include "Sleep.h"
#include <chrono>
#include <optional>

namespace quillane {
namespace {

using namespace std::chrono_literals;

class SleepTest : public AsyncTest {
  protected:
    TaskHandle startSleeping(Duration duration) {
        auto handle = scope->start([this, duration](StopToken stop) -> Task<> {
            result = co_await after(duration, stop);
            ++resumptions;
        });
        runner.settle();
        return handle;
    }

    std::optional<bool> result; // what the sleep gave
    int resumptions = 0;
};

TEST_F(SleepTest, EndsAtItsTimeAndNotATickBefore) {
    startSleeping(5s);
    clock.advance(5s - 1ns);
    EXPECT_EQ(result, std::nullopt);
    clock.advance(1ns);
    EXPECT_EQ(result, true);
    clock.advance(1ns);
    EXPECT_EQ(resumptions, 1);
}

TEST_F(SleepTest, IsMeasuredOnTheContinuousClockAndNotOnTheWallClock) {
    startSleeping(5s);
    clock.setNow(clock.now().addingSeconds(3600));
    clock.advance(4s);
    EXPECT_EQ(result, std::nullopt);
    clock.setNow(clock.now().addingSeconds(-7200));
    clock.advance(1s);
    EXPECT_EQ(result, true);
}

TEST_F(SleepTest, OfNoTimeEndsAtALaterTurn) {
    bool within = true;
    bool was = false;
    scope->start([&](StopToken stop) -> Task<> {
        runner.post([&] { was = within; });
        co_await after(0s, stop);
        within = false;
    });
    runner.settle();
    EXPECT_TRUE(was);
    EXPECT_FALSE(within);
}

TEST_F(SleepTest, OfNegativeTimeEndsAtALaterTurn) {
    startSleeping(-1s);
    EXPECT_EQ(result, true);
}

TEST_F(SleepTest, CancellingEndsItSoonButNeverInsideTheCall) {
    const auto handle = startSleeping(5s);
    handle.cancel();
    EXPECT_EQ(result, std::nullopt);
    runner.settle();
    EXPECT_EQ(result, false);
    EXPECT_EQ(clock.sleepers(), 0U);
}

TEST_F(SleepTest, OfATaskThatWasAlreadyCancelledEndsAtALaterTurn) {
    const auto handle = scope->start([this](StopToken stop) -> Task<> { result = co_await after(5s, stop); });
    handle.cancel();
    EXPECT_EQ(result, std::nullopt);
    runner.settle();
    EXPECT_EQ(result, false);
    EXPECT_EQ(clock.sleepers(), 0U);
}

TEST_F(SleepTest, CancelledWhenItsTimeHasComeButNotItsTurnResumesOnce) {
    const auto handle = scope->start([this](StopToken stop) -> Task<> {
        result = co_await after(5s, stop);
        ++resumptions;
        co_await after(5s, {});
        ++resumptions;
    });
    runner.settle();
    clock.advanceWithoutRunning(5s);
    handle.cancel();
    runner.settle();
    EXPECT_EQ(result, false);
    EXPECT_EQ(resumptions, 1);
    clock.advance(5s);
    EXPECT_EQ(resumptions, 2);
}

TEST_F(SleepTest, WithATokenOfNoSourceCannotBeCancelled) {
    const auto handle = scope->start([this](StopToken) -> Task<> { result = co_await after(5s, {}); });
    runner.settle();
    handle.cancel();
    runner.settle();
    EXPECT_EQ(result, std::nullopt);
    clock.advance(5s);
    EXPECT_EQ(result, true);
}

TEST_F(SleepTest, ASleeperWhoseScopeGoesLeavesNoTimerAndIsNotResumed) {
    startSleeping(5s);
    EXPECT_EQ(clock.sleepers(), 1U);
    scope.reset();
    EXPECT_EQ(clock.sleepers(), 0U);
    clock.advance(10s);
    EXPECT_EQ(resumptions, 0);
}

TEST_F(SleepTest, ASleeperWhoseScopeGoesWhenItsTimeHasComeIsNotResumed) {
    startSleeping(5s);
    clock.advanceWithoutRunning(5s);
    scope.reset();
    runner.settle();
    EXPECT_EQ(resumptions, 0);
}

TEST_F(SleepTest, ChainsOfSleepsAdvanceWithinOneStepOfTime) {
    int rounds = 0;
    scope->start([&](StopToken stop) -> Task<> {
        while (rounds < 10) {
            co_await after(3s, stop);
            ++rounds;
        }
    });
    clock.advance(20s);
    EXPECT_EQ(rounds, 6);
}

} // namespace
} // namespace quillane
