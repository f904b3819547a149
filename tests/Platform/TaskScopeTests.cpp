#include "AsyncTest.h"
#include "Detached.h"
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>

namespace quillane {
namespace {

using namespace std::chrono_literals;

class TaskScopeTest : public AsyncTest {};

Task<int> valueOf(int value) {
    co_return value;
}

Task<int> failing() {
    throw std::runtime_error("no value");
    co_return 0;
}

Task<std::string> nested(int depth) {
    if (depth == 0) {
        co_return "end";
    }
    auto inner = co_await nested(depth - 1);
    co_return inner + "x";
}

TEST_F(TaskScopeTest, ATaskBeginsAtALaterTurnAndNotInsideStart) {
    bool began = false;
    scope->start([&](StopToken) -> Task<> {
        began = true;
        co_return;
    });
    EXPECT_FALSE(began);
    runner.settle();
    EXPECT_TRUE(began);
}

TEST_F(TaskScopeTest, ATaskThatHasEndedIsFreed) {
    scope->start([](StopToken) -> Task<> { co_return; });
    EXPECT_EQ(scope->count(), 1U);
    runner.settle();
    EXPECT_EQ(scope->count(), 0U);
}

TEST_F(TaskScopeTest, ATaskThatIsNeverAwaitedNeverRuns) {
    bool began = false;
    const auto body = [&]() -> Task<> {
        began = true;
        co_return;
    };
    {
        const Task<> task = body();
    }
    EXPECT_FALSE(began);
}

TEST_F(TaskScopeTest, TheCapturesOfABodyLiveAsLongAsTheTaskAndNoLonger) {
    auto captured = std::make_shared<std::string>("text");
    const std::weak_ptr<std::string> watch = captured;
    std::string seen;
    scope->start([this, &seen, captured = std::move(captured)](StopToken) -> Task<> {
        co_await detached(runner, Priority::utility, [] {});
        seen = *captured;
    });
    runner.settle();
    EXPECT_FALSE(watch.expired());
    runner.runAll();
    EXPECT_EQ(seen, "text");
    EXPECT_TRUE(watch.expired());
}

TEST_F(TaskScopeTest, ATaskMayStartAnother) {
    bool innerRan = false;
    scope->start([&](StopToken) -> Task<> {
        scope->start([&innerRan](StopToken) -> Task<> {
            innerRan = true;
            co_return;
        });
        co_return;
    });
    runner.settle();
    EXPECT_TRUE(innerRan);
    EXPECT_EQ(scope->count(), 0U);
}

TEST_F(TaskScopeTest, AnExceptionThatLeavesATaskReachesTheScope) {
    scope->start([this](StopToken) -> Task<> {
        co_await detached(runner, Priority::utility, [] {});
        throw std::logic_error("unhandled");
    });
    runner.runAll();
    EXPECT_EQ(messageOf(error), "unhandled");
    EXPECT_EQ(scope->count(), 0U);
}

TEST_F(TaskScopeTest, AnExceptionOfAnAwaitedTaskIsThrownToWhoeverAwaitsIt) {
    std::string caught;
    scope->start([&](StopToken) -> Task<> {
        try {
            co_await failing();
        } catch (const std::exception& exception) {
            caught = exception.what();
        }
    });
    runner.settle();
    EXPECT_EQ(caught, "no value");
    EXPECT_FALSE(error);
}

TEST(TaskScopeDeathTest, AnExceptionWithNobodyToHearItEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            StepTaskRunner runner;
            TaskScope scope(runner);
            scope.start([](StopToken) -> Task<> {
                throw std::logic_error("unhandled");
                co_return;
            });
            runner.settle();
        },
        "");
}

TEST_F(TaskScopeTest, AChainOfAwaitsReturnsItsValue) {
    std::string result;
    scope->start([&](StopToken) -> Task<> { result = co_await nested(2000); });
    runner.settle();
    EXPECT_EQ(result.size(), 2003U);
}

TEST_F(TaskScopeTest, ALongLoopOfAwaitsDoesNotGrowTheStack) {
    std::int64_t sum = 0;
    scope->start([&](StopToken) -> Task<> {
        for (int i = 0; i < 300'000; ++i) {
            sum += co_await valueOf(1);
        }
    });
    runner.settle();
    EXPECT_EQ(sum, 300'000);
}

TEST_F(TaskScopeTest, CancellingBeforeTheFirstTurnStillRunsTheTaskWithItsTokenSet) {
    bool sawStop = false;
    const auto handle = scope->start([&](StopToken stop) -> Task<> {
        sawStop = stop.stopRequested();
        co_return;
    });
    handle.cancel();
    runner.settle();
    EXPECT_TRUE(sawStop);
    EXPECT_TRUE(handle.isCancelled());
}

TEST_F(TaskScopeTest, CopiesOfAHandleStandForTheSameTask) {
    const auto handle = scope->start([](StopToken) -> Task<> { co_return; });
    const TaskHandle copy = handle; // NOLINT(performance-unnecessary-copy-initialization)
    copy.cancel();
    EXPECT_TRUE(handle.isCancelled());
}

TEST_F(TaskScopeTest, CancellingAnEndedTaskDoesNothing) {
    const auto handle = scope->start([](StopToken) -> Task<> { co_return; });
    runner.settle();
    handle.cancel();
    runner.settle();
    EXPECT_EQ(scope->count(), 0U);
}

TEST_F(TaskScopeTest, AHandleOutlivesItsScope) {
    const auto handle = scope->start([](StopToken) -> Task<> { co_return; });
    scope.reset();
    handle.cancel();
    EXPECT_TRUE(handle.isCancelled());
}

TEST_F(TaskScopeTest, DestroyingTheScopeAsksItsTasksToStop) {
    const auto handle = scope->start([](StopToken) -> Task<> { co_return; });
    scope.reset();
    EXPECT_TRUE(handle.isCancelled());
}

TEST_F(TaskScopeTest, ATaskWhoseScopeGoesBeforeItsFirstTurnNeverBegins) {
    bool began = false;
    scope->start([&](StopToken) -> Task<> {
        began = true;
        co_return;
    });
    scope.reset();
    runner.settle();
    EXPECT_FALSE(began);
}

// Says when it is destroyed.
struct Farewell {
    explicit Farewell(std::string& text, std::string word)
        : log(text)
        , last(std::move(word)) {}
    Farewell(const Farewell&) = delete;
    Farewell& operator=(const Farewell&) = delete;
    ~Farewell() { log += last; }
    std::string& log;
    std::string last;
};

TEST_F(TaskScopeTest, DestroyingTheScopeDestroysSuspendedFramesBeforeTheirCaptures) {
    std::string log;
    scope->start(
        [this, &log, captured = std::make_shared<Farewell>(log, "captures")](StopToken stop) -> Task<> {
            const Farewell local(log, "frame ");
            co_await after(1s, stop);
            log += "resumed ";
        });
    runner.settle();
    scope.reset();
    EXPECT_EQ(log, "frame captures");
    clock.advance(2s);
    EXPECT_EQ(log, "frame captures");
    EXPECT_EQ(clock.sleepers(), 0U);
}

TEST_F(TaskScopeTest, DestroyingTheScopeDestroysFramesSuspendedInsideAnAwaitedTask) {
    std::string log;
    const auto inner = [this, &log]() -> Task<> {
        const Farewell local(log, "inner ");
        co_await detached(runner, Priority::utility, [] {});
    };
    scope->start([&log, inner](StopToken) -> Task<> {
        const Farewell local(log, "outer");
        co_await inner();
    });
    runner.settle();
    scope.reset();
    EXPECT_EQ(log, "inner outer");
    runner.runAll();
}

TEST_F(TaskScopeTest, ManyTasksEndInAnyOrder) {
    int ended = 0;
    for (int i = 0; i < 50; ++i) {
        scope->start([this, i, &ended](StopToken stop) -> Task<> {
            co_await after(std::chrono::seconds((i * 7) % 50), stop);
            ++ended;
        });
    }
    clock.advance(50s);
    EXPECT_EQ(ended, 50);
    EXPECT_EQ(scope->count(), 0U);
}

} // namespace
} // namespace quillane
