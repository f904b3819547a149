#include "AsyncTest.h"
#include "Detached.h"
#include <memory>
#include <stdexcept>
#include <string>

namespace quillane {
namespace {

class DetachedTest : public AsyncTest {};

TEST_F(DetachedTest, TheJobGoesToTheRunnerWithItsPriority) {
    scope->start([this](StopToken) -> Task<> { co_await detached(runner, Priority::background, [] {}); });
    runner.settle();
    ASSERT_EQ(runner.waitingJobs(), 1U);
    EXPECT_EQ(runner.waitingPriority(0), Priority::background);
}

TEST_F(DetachedTest, TheValueArrivesAtALaterTurnOfTheMainThread) {
    std::string value;
    scope->start([&](StopToken) -> Task<> {
        auto text = co_await detached(runner, Priority::utility, [] { return std::string("value"); });
        value = std::move(text);
    });
    runner.settle();
    runner.runJob();
    EXPECT_EQ(value, "");
    runner.turn();
    EXPECT_EQ(value, "value");
}

TEST_F(DetachedTest, AValueThatCanOnlyBeMovedArrives) {
    int value = 0;
    scope->start([&](StopToken) -> Task<> {
        auto owned = co_await detached(runner, Priority::utility, [] { return std::make_unique<int>(7); });
        value = *owned;
    });
    runner.runAll();
    EXPECT_EQ(value, 7);
}

TEST_F(DetachedTest, AnExceptionInTheJobIsThrownToWhoeverAwaits) {
    std::string caught;
    scope->start([&](StopToken) -> Task<> {
        try {
            co_await detached(runner, Priority::utility, []() -> int { throw std::runtime_error("job"); });
        } catch (const std::exception& exception) {
            caught = exception.what();
        }
    });
    runner.runAll();
    EXPECT_EQ(caught, "job");
    EXPECT_EQ(scope->count(), 0U);
}

TEST_F(DetachedTest, AJobWhoseCoroutineIsGoneRunsAndItsValueIsDropped) {
    bool ran = false;
    bool resumed = false;
    scope->start([&](StopToken) -> Task<> {
        co_await detached(runner, Priority::utility, [&ran] { ran = true; });
        resumed = true;
    });
    runner.settle();
    scope.reset();
    runner.runAll();
    EXPECT_TRUE(ran);
    EXPECT_FALSE(resumed);
}

TEST_F(DetachedTest, ACoroutineDestroyedBetweenTheJobAndItsTurnIsNotResumed) {
    bool resumed = false;
    scope->start([&](StopToken) -> Task<> {
        co_await detached(runner, Priority::utility, [] {});
        resumed = true;
    });
    runner.settle();
    runner.runJob();
    scope.reset();
    runner.settle();
    EXPECT_FALSE(resumed);
}

TEST(DetachedJob, DroppedByItsRunnerIsFreedWithItsCoroutine) {
    auto owned = std::make_shared<int>(1);
    const std::weak_ptr<int> watch = owned;
    auto runner = std::make_unique<StepTaskRunner>();
    auto scope = std::make_unique<TaskScope>(*runner);
    scope->start([&runner, owned = std::move(owned)](StopToken) mutable -> Task<> {
        co_await detached(*runner, Priority::utility, [owned = std::move(owned)] {});
    });
    runner->settle();
    scope.reset();
    EXPECT_FALSE(watch.expired());
    runner.reset();
    EXPECT_TRUE(watch.expired());
}

} // namespace
} // namespace quillane
