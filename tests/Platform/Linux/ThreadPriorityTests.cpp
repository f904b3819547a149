#include "MainQueue.h"
#include "ThreadTaskRunner.h"
#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <optional>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace quillane {
namespace {

// The kernel's values, told once more: which call counts a thread, where the class stands, and the idle one.
constexpr int kWhoProcess = 1;
constexpr int kClassShift = 13;
constexpr int kClassIdle = 3;

struct ThreadState {
    int nice = 0;
    int diskClass = 0;
};

// What the kernel says of the calling thread.
ThreadState stateOfCurrentThread() {
    const auto thread = static_cast<int>(::syscall(SYS_gettid));
    const auto disk = ::syscall(SYS_ioprio_get, kWhoProcess, thread);
    return {::getpriority(PRIO_PROCESS, static_cast<id_t>(thread)), static_cast<int>(disk) >> kClassShift};
}

ThreadState stateOfAJob(Priority priority) {
    MainQueue queue;
    ThreadTaskRunner runner(queue);
    std::optional<ThreadState> state;
    runner.run(priority, [&] { runner.post([&state, now = stateOfCurrentThread()] { state = now; }); });
    EXPECT_TRUE(queue.runUntil([&] { return state.has_value(); }, std::chrono::seconds(20)));
    return state.value_or(ThreadState{});
}

TEST(ThreadPriority, BackgroundJobsHaveTheLowestNiceValueAndTheIdleDiskClass) {
    const auto state = stateOfAJob(Priority::background);
    EXPECT_EQ(state.nice, 19);
    EXPECT_EQ(state.diskClass, kClassIdle);
}

TEST(ThreadPriority, UtilityJobsAreALittleNiceAndKeepTheDiskClassOfTheProcess) {
    const auto own = stateOfCurrentThread();
    const auto state = stateOfAJob(Priority::utility);
    EXPECT_EQ(state.nice, std::max(own.nice, 5));
    EXPECT_EQ(state.diskClass, own.diskClass);
}

TEST(ThreadPriority, JobsThatTheUserWaitsForRunAsTheProcessDoes) {
    const auto own = stateOfCurrentThread();
    const auto state = stateOfAJob(Priority::userInitiated);
    EXPECT_EQ(state.nice, own.nice);
    EXPECT_EQ(state.diskClass, own.diskClass);
}

TEST(ThreadPriority, JobsLeaveTheMainThreadAsItIs) {
    const auto before = stateOfCurrentThread();
    stateOfAJob(Priority::background);
    const auto after = stateOfCurrentThread();
    EXPECT_EQ(before.nice, after.nice);
    EXPECT_EQ(before.diskClass, after.diskClass);
}

} // namespace
} // namespace quillane
