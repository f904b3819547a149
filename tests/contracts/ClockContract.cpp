// What every clock promises. The machine's own is asked for waits of a few milliseconds.
#include "Clock.h"
#include "ContinuousClock.h"
#include "MainQueue.h"
#include "ManualClock.h"
#include "StepTaskRunner.h"
#include <algorithm>
#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <vector>

namespace quillane {
namespace {

using namespace std::chrono_literals;

// Each subject gives a clock and a way to let time and the main thread go on until something is true.
class OfTheMachine {
  public:
    Clock& clock() { return *m_clock; }
    bool runUntil(const std::function<bool()>& done) { return m_queue.runUntil(done, 20'000ms); }
    void settle() { m_queue.drain(); }
    void destroyClock() { m_clock.reset(); }

  private:
    MainQueue m_queue;
    std::optional<ContinuousClock> m_clock{std::in_place, m_queue};
};

class ByHand {
  public:
    Clock& clock() { return *m_clock; }
    bool runUntil(const std::function<bool()>& done) {
        for (int milliseconds = 0; milliseconds < 20'000 && !done(); ++milliseconds) {
            m_clock->advance(1ms);
        }
        return done();
    }
    void settle() { m_runner.settle(); }
    void destroyClock() { m_clock.reset(); }

  private:
    StepTaskRunner m_runner;
    std::optional<ManualClock> m_clock{std::in_place, m_runner};
};

template <class Subject>
class ClockContract : public testing::Test {
  protected:
    Subject subject;
    Clock& clock = subject.clock();
};

using Subjects = testing::Types<OfTheMachine, ByHand>;
TYPED_TEST_SUITE(ClockContract, Subjects);

TYPED_TEST(ClockContract, TheContinuousClockNeverGoesBack) {
    auto last = this->clock.instant();
    for (int i = 0; i < 1000; ++i) {
        const auto next = this->clock.instant();
        EXPECT_LE(last, next);
        last = next;
    }
}

TYPED_TEST(ClockContract, ATimerRunsWhenItsTimeHasComeAndNotBefore) {
    const auto when = this->clock.instant() + 3ms;
    std::optional<Instant> ranAt;
    this->clock.callAt(when, [&] { ranAt = this->clock.instant(); });
    ASSERT_TRUE(this->subject.runUntil([&] { return ranAt.has_value(); }));
    EXPECT_GE(*ranAt, when);
}

TYPED_TEST(ClockContract, ATimerRunsOnce) {
    int ran = 0;
    bool later = false;
    this->clock.callAt(this->clock.instant() + 1ms, [&] { ++ran; });
    this->clock.callAt(this->clock.instant() + 3ms, [&] { later = true; });
    ASSERT_TRUE(this->subject.runUntil([&] { return later; }));
    EXPECT_EQ(ran, 1);
}

TYPED_TEST(ClockContract, APastTimeRunsAtALaterTurnAndNotInsideTheCall) {
    bool ran = false;
    this->clock.callAt(this->clock.instant() - 1s, [&] { ran = true; });
    EXPECT_FALSE(ran);
    EXPECT_TRUE(this->subject.runUntil([&] { return ran; }));
}

TYPED_TEST(ClockContract, ATimeBeforeTheClocksZeroRunsToo) {
    bool ran = false;
    this->clock.callAt(Instant::min(), [&] { ran = true; });
    EXPECT_TRUE(this->subject.runUntil([&] { return ran; }));
}

TYPED_TEST(ClockContract, TimersRunInTheOrderOfTheirTimesWhateverTheOrderOfTheirSetting) {
    std::vector<int> order;
    const auto base = this->clock.instant() + 2ms;
    this->clock.callAt(base + 2ms, [&] { order.push_back(3); });
    this->clock.callAt(base, [&] { order.push_back(1); });
    this->clock.callAt(base + 1ms, [&] { order.push_back(2); });
    ASSERT_TRUE(this->subject.runUntil([&] { return order.size() == 3; }));
    EXPECT_EQ(order, (std::vector{1, 2, 3}));
}

TYPED_TEST(ClockContract, TimersOfOneTimeRunInTheOrderOfTheirSetting) {
    std::vector<int> order;
    const auto when = this->clock.instant() + 1ms;
    for (int i = 0; i < 10; ++i) {
        this->clock.callAt(when, [&order, i] { order.push_back(i); });
    }
    ASSERT_TRUE(this->subject.runUntil([&] { return order.size() == 10; }));
    EXPECT_TRUE(std::ranges::is_sorted(order));
}

TYPED_TEST(ClockContract, ATimerTakenBackDoesNotRun) {
    bool cancelled = false;
    bool later = false;
    const auto timer = this->clock.callAt(this->clock.instant() + 1ms, [&] { cancelled = true; });
    this->clock.callAt(this->clock.instant() + 2ms, [&] { later = true; });
    this->clock.cancel(timer);
    ASSERT_TRUE(this->subject.runUntil([&] { return later; }));
    EXPECT_FALSE(cancelled);
}

TYPED_TEST(ClockContract, ATimerTakenBackByOneThatRunsBeforeItInTheSameTurnDoesNotRun) {
    bool ran = false;
    bool later = false;
    const auto when = this->clock.instant() + 1ms;
    Clock::TimerId second = 0;
    this->clock.callAt(when, [&] { this->clock.cancel(second); });
    second = this->clock.callAt(when, [&] { ran = true; });
    this->clock.callAt(when + 1ms, [&] { later = true; });
    ASSERT_TRUE(this->subject.runUntil([&] { return later; }));
    EXPECT_FALSE(ran);
}

TYPED_TEST(ClockContract, TakingBackAnUnknownOrSpentTimerDoesNothing) {
    this->clock.cancel(12345);
    bool ran = false;
    const auto timer = this->clock.callAt(this->clock.instant(), [&] { ran = true; });
    ASSERT_TRUE(this->subject.runUntil([&] { return ran; }));
    this->clock.cancel(timer);
    this->clock.cancel(timer);
}

TYPED_TEST(ClockContract, ATimerMaySetAnother) {
    bool done = false;
    this->clock.callAt(this->clock.instant() + 1ms,
                       [&] { this->clock.callAt(this->clock.instant() + 1ms, [&] { done = true; }); });
    EXPECT_TRUE(this->subject.runUntil([&] { return done; }));
}

TYPED_TEST(ClockContract, AnEarlierTimerSetLaterDoesNotWaitForTheOther) {
    bool early = false;
    this->clock.callAt(this->clock.instant() + 1h, [] {});
    this->clock.callAt(this->clock.instant() + 1ms, [&] { early = true; });
    EXPECT_TRUE(this->subject.runUntil([&] { return early; }));
}

TYPED_TEST(ClockContract, TimersOfAClockThatIsGoneDoNotRun) {
    bool ran = false;
    this->clock.callAt(this->clock.instant(), [&] { ran = true; });
    this->clock.callAt(this->clock.instant() + 1ms, [&] { ran = true; });
    this->subject.destroyClock();
    this->subject.settle();
    EXPECT_FALSE(ran);
}

TYPED_TEST(ClockContract, TheCalendarCountsDays) {
    const auto now = this->clock.now();
    EXPECT_EQ(this->clock.calendar().daysBetween(now, now), 0);
    EXPECT_EQ(this->clock.calendar().daysBetween(now, now.addingSeconds(10 * 86'400.0)), 10);
}

} // namespace
} // namespace quillane
