#include "AsyncTest.h"
#include "Group.h"
#include <stdexcept>
#include <string>
#include <vector>

namespace quillane {
namespace {

class GroupTest : public AsyncTest {
  protected:
    using Children = std::vector<Group<int>::Child>;

    // Awaits the children and keeps their values, or the message of what was thrown.
    void await(Children children) {
        scope->start([this, children = std::move(children)](StopToken) mutable -> Task<> {
            try {
                values = co_await Group<int>(runner, Priority::utility, std::move(children));
                ended = true;
            } catch (const std::exception& exception) {
                caught = exception.what();
            }
        });
        runner.settle();
    }
    static Group<int>::Child returning(int value) {
        return [value] { return value; };
    }

    std::vector<int> values;
    bool ended = false;
    std::string caught;
};

TEST_F(GroupTest, AllChildrenAreGivenToTheRunnerInOrderAndAtOnce) {
    await({returning(1), returning(2), returning(3)});
    EXPECT_EQ(runner.waitingJobs(), 3U);
    EXPECT_EQ(runner.history(), (std::vector{Priority::utility, Priority::utility, Priority::utility}));
}

TEST_F(GroupTest, ValuesComeInTheOrderOfCompletion) {
    await({returning(1), returning(2), returning(3)});
    runner.runJob(2);
    runner.runJob(0);
    runner.runJob(0);
    runner.settle();
    EXPECT_EQ(values, (std::vector{3, 1, 2}));
}

TEST_F(GroupTest, NothingIsResumedBeforeTheLastChildHasEnded) {
    await({returning(1), returning(2)});
    runner.runJob();
    runner.settle();
    EXPECT_FALSE(ended);
    runner.runJob();
    runner.settle();
    EXPECT_TRUE(ended);
}

TEST_F(GroupTest, AnEmptyGroupGoesOnAtOnce) {
    await({});
    EXPECT_TRUE(ended);
    EXPECT_TRUE(values.empty());
    EXPECT_EQ(runner.waitingJobs(), 0U);
}

TEST_F(GroupTest, AnExceptionIsThrownAfterAllChildrenHaveEnded) {
    await({returning(1), []() -> int { throw std::runtime_error("second"); }, returning(3)});
    runner.runJob(1);
    runner.settle();
    EXPECT_EQ(caught, "");
    runner.runAll();
    EXPECT_EQ(caught, "second");
}

TEST_F(GroupTest, OfSeveralExceptionsTheFirstIsThrown) {
    await({[]() -> int { throw std::runtime_error("first child"); },
           []() -> int { throw std::runtime_error("second child"); }});
    runner.runJob(1);
    runner.runJob(0);
    runner.settle();
    EXPECT_EQ(caught, "second child");
}

TEST_F(GroupTest, ChildrenThatEndAfterTheirCoroutineIsGoneResumeNobody) {
    await({returning(1), returning(2), returning(3)});
    runner.runJob();
    scope.reset();
    runner.runAll();
    EXPECT_FALSE(ended);
}

TEST_F(GroupTest, ACoroutineDestroyedAfterTheLastChildIsNotResumed) {
    await({returning(1)});
    runner.runJob();
    scope.reset();
    runner.settle();
    EXPECT_FALSE(ended);
}

} // namespace
} // namespace quillane
