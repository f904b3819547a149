#include "Components/RelativeDateTimer.h"
#include "ManualClock.h"
#include "StepTaskRunner.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

using namespace std::chrono_literals;

constexpr auto kNow = Date::fromUnix(1'715'774'400); // 2024-05-15 12:00:00 GMT, a Wednesday

Date ago(Duration age) {
    return kNow.addingSeconds(-std::chrono::duration<double>(age).count());
}

// Never early, and hardly late.
void expectChangeAfter(Duration age, Duration expected) {
    const auto wait = RelativeDateTimer::untilWordsChange(ago(age), kNow, Calendar("GMT"));
    EXPECT_GE(wait, expected) << age.count();
    EXPECT_LE(wait, expected + 100ms) << age.count();
}

TEST(RelativeDateTimer, WaitsForTheNextChangeOfTheWords) {
    // Ages are rounded to whole seconds first.
    expectChangeAfter(0s, 500ms);                  // now, 1 second ago
    expectChangeAfter(30s, 500ms);                 // 30, 31 seconds ago
    expectChangeAfter(60s, 29'500ms);              // 1, 2 minutes ago
    expectChangeAfter(10min, 29'500ms);            // 10, 11 minutes ago
    expectChangeAfter(59min, 29'500ms);            // 59 minutes, 1 hour ago
    expectChangeAfter(5h, 30min - 500ms);          // 5, 6 hours ago
    expectChangeAfter(23h + 20min, 10min - 500ms); // 23 hours ago, yesterday
    expectChangeAfter(-10min, 30'500ms);           // in 10, 9 minutes
}

TEST(RelativeDateTimer, LooksAgainAfterAnHourWhenTheWordsLastLonger) {
    for (const Duration age : {Duration(24h), Duration(24h * 10), Duration(24h * 1000)})
        EXPECT_EQ(RelativeDateTimer::untilWordsChange(ago(age), kNow, Calendar("GMT")), 1h);
}

TEST(RelativeDateTimer, CallsOnlyWhenTheTimeHasComeAndNotAfterItWasStopped) {
    StepTaskRunner runner;
    ManualClock clock(runner);
    int calls = 0;
    RelativeDateTimer timer(clock, [&] { ++calls; });
    EXPECT_EQ(clock.sleepers(), 0U);
    timer.follow(clock.now().addingSeconds(-60));
    clock.advance(29s);
    EXPECT_EQ(calls, 0);
    clock.advance(2s);
    EXPECT_EQ(calls, 1);
    clock.advance(60s);
    EXPECT_EQ(calls, 2);
    timer.stop();
    clock.advance(24h);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(clock.sleepers(), 0U);
}

} // namespace
} // namespace quillane
