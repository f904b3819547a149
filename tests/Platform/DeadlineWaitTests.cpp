#include "DeadlineWait.h"
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <optional>
#include <thread>

namespace quillane {
namespace {

using namespace std::chrono_literals;

// How often a wait came back before its time.
int earlyReturns(DeadlineWait& wait, Duration length) {
    const auto deadline = DeadlineWait::instant() + length;
    int early = -1;
    do {
        wait.wait(deadline);
        ++early;
    } while (DeadlineWait::instant() < deadline);
    return early;
}

TEST(DeadlineWait, AnInterruptEndsOneWaitAndNoOther) {
    DeadlineWait wait;
    wait.interrupt();
    wait.interrupt();
    wait.wait(std::nullopt);
    EXPECT_LE(earlyReturns(wait, 20ms), 3);
}

TEST(DeadlineWait, ADeadlineThatHasPassedEndsOneWaitAndNoOther) {
    DeadlineWait wait;
    wait.wait(DeadlineWait::instant() - 1h);
    EXPECT_LE(earlyReturns(wait, 20ms), 3);
}

TEST(DeadlineWait, WithoutADeadlineOnlyAnInterruptEndsAWait) {
    DeadlineWait wait;
    wait.interrupt();
    wait.wait(DeadlineWait::instant() + 1ms); // which the interrupt ends: the time is still to come
    std::atomic<bool> isInterrupted = false;
    std::thread other([&] {
        DeadlineWait own;
        (void)earlyReturns(own, 20ms);
        isInterrupted = true;
        wait.interrupt();
    });
    int returns = 0;
    do {
        wait.wait(std::nullopt);
        ++returns;
    } while (!isInterrupted);
    other.join();
    EXPECT_LE(returns, 3);
}

} // namespace
} // namespace quillane
