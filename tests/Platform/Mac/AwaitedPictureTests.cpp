#include "AwaitedPicture.h"
#include "ContinuousClock.h"
#include "FakeWorkspace.h"
#include "MainQueue.h"
#include <future>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
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

// Tells when the one who waits has looked and is about to fall asleep.
class LookingClock final : public Clock {
  public:
    Date now() const override { return {}; }
    Calendar calendar() const override { return Calendar("GMT"); }
    Instant instant() const override {
        if (++m_looks == 2) { // the first is for the end of its patience
            m_hasLooked.set_value();
        }
        return {};
    }
    TimerId callAt(Instant /*when*/, Job /*job*/) override { return 0; }
    void cancel(TimerId /*timer*/) override {}
    void awaitLook() { m_hasLooked.get_future().wait(); }

  private:
    mutable int m_looks = 0;
    mutable std::promise<void> m_hasLooked;
};

// What the thread needs is its own: where nothing wakes it, it stays behind.
struct Sleeper {
    AwaitedPicture awaited;
    LookingClock clock;
    std::promise<std::optional<AwaitedPicture::Picture>> answer;
};

TEST(AwaitedPicture, WhatIsGivenOnAnotherThreadWakesTheOneWhoWaits) {
    const auto sleeper = std::make_shared<Sleeper>();
    auto answer = sleeper->answer.get_future();
    std::thread([sleeper] {
        sleeper->answer.set_value(sleeper->awaited.wait({}, sleeper->clock, 24h * 365, 24h * 365));
    }).detach();
    sleeper->clock.awaitLook();
    const auto picture = FakeWorkspace::grey(7);
    sleeper->awaited.give(picture); // not before it sleeps, as it looks under the lock
    ASSERT_EQ(answer.wait_for(30s), std::future_status::ready);
    EXPECT_EQ(answer.get(), picture);
}

} // namespace
} // namespace quillane
