#include "AwaitedPicture.h"
#include "ContinuousClock.h"
#include "FakeWorkspace.h"
#include "MainQueue.h"
#include <gtest/gtest.h>
#include <memory>
#include <thread>

namespace quillane {
namespace {

using namespace std::chrono_literals;

// Time that passes as it is looked at, so that nobody waits for it.
class PassingClock final : public Clock {
  public:
    Date now() const override { return {}; }
    Calendar calendar() const override { return Calendar("GMT"); }
    Instant instant() const override {
        const auto now = m_now;
        m_now += 1s;
        return now;
    }
    TimerId callAt(Instant /*when*/, Job /*job*/) override { return 0; }
    void cancel(TimerId /*timer*/) override {}
    Duration passed() const { return m_now - Instant(); }

  private:
    mutable Instant m_now;
};

TEST(AwaitedPicture, WhatHasBeenGivenIsThereAtOnce) {
    AwaitedPicture awaited;
    const auto picture = FakeWorkspace::grey(7);
    awaited.give(picture);
    const PassingClock clock;
    EXPECT_EQ(awaited.wait({}, clock, 0s, 0s), picture);
}

TEST(AwaitedPicture, NoPictureIsAnAnswerToo) {
    AwaitedPicture awaited;
    awaited.give(nullptr);
    const PassingClock clock;
    const auto answer = awaited.wait({}, clock, 5s, 0s);
    ASSERT_TRUE(answer.has_value());
    EXPECT_EQ(*answer, nullptr);
}

TEST(AwaitedPicture, TheFirstOneCounts) {
    AwaitedPicture awaited;
    const auto picture = FakeWorkspace::grey(7);
    awaited.give(picture);
    awaited.give(nullptr);
    const PassingClock clock;
    EXPECT_EQ(awaited.wait({}, clock, 5s, 0s), picture);
}

TEST(AwaitedPicture, PatienceHasAnEnd) {
    AwaitedPicture awaited;
    const PassingClock clock;
    EXPECT_EQ(awaited.wait({}, clock, 5s, 0s), std::nullopt);
    EXPECT_GE(clock.passed(), 5s);
    EXPECT_LE(clock.passed(), 7s);
}

TEST(AwaitedPicture, AStopEndsAWaitThatHasNoOtherEnd) {
    AwaitedPicture awaited;
    const StopSource stop;
    MainQueue queue;
    const ContinuousClock clock(queue);
    std::thread stopper([&] { stop.requestStop(); });
    EXPECT_EQ(awaited.wait(stop.token(), clock, 24h * 365, 1ms), std::nullopt);
    stopper.join();
}

TEST(AwaitedPicture, AfterAStopThereIsNoAnswerEvenIfItHasCome) {
    AwaitedPicture awaited;
    awaited.give(FakeWorkspace::grey(7));
    const StopSource stop;
    stop.requestStop();
    const PassingClock clock;
    EXPECT_EQ(awaited.wait(stop.token(), clock, 5s, 0s), std::nullopt);
}

TEST(AwaitedPicture, WhatIsGivenOnAnotherThreadWakesTheOneWhoWaits) {
    const auto awaited = std::make_shared<AwaitedPicture>();
    const auto picture = FakeWorkspace::grey(7);
    MainQueue queue;
    const ContinuousClock clock(queue);
    std::thread giver([awaited, picture] { awaited->give(picture); });
    EXPECT_EQ(awaited->wait({}, clock, 24h * 365, 24h * 365), picture);
    giver.join();
}

} // namespace
} // namespace quillane
