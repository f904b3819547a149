// What is the Mac's own in the watch of folders.
#include "DeadlineWait.h"
#include "FolderEvents.h"
#include "TemporaryFolder.h"
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/event.h>

namespace quillane {
namespace {

namespace fs = std::filesystem;

struct KernelQueueTest : testing::Test {
    KernelQueueTest() { disk.folder("a").folder("b"); }
    static auto openDescriptors() {
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    }
    TemporaryFolder disk;
    FolderEvents events;
};

TEST_F(KernelQueueTest, OfAFolderThatIsTakenOutNothingIsHeard) {
    const auto a = events.add(disk.at("a"));
    const auto b = events.add(disk.at("b"));
    ASSERT_TRUE(a && b);
    events.drop(*a);
    disk.file("a/x").file("b/x");
    const auto happened = events.wait();
    ASSERT_TRUE(happened);
    EXPECT_EQ(happened->marks, std::vector{*b});
}

TEST_F(KernelQueueTest, WhatTakesTheNumberOfAFolderThatIsTakenOutHasAnotherMark) {
    const auto a = events.add(disk.at("a"));
    ASSERT_TRUE(a);
    events.drop(*a);
    const auto b = events.add(disk.at("b"));
    ASSERT_TRUE(b);
    EXPECT_NE(a, b);
    disk.file("b/x");
    const auto happened = events.wait();
    ASSERT_TRUE(happened);
    EXPECT_EQ(happened->marks, std::vector{*b});
}

TEST_F(KernelQueueTest, AFolderHoldsItsDescriptorAsLongAsItIsWatched) {
    const auto before = openDescriptors();
    const auto a = events.add(disk.at("a"));
    ASSERT_TRUE(a);
    EXPECT_EQ(openDescriptors(), before + 1);
    events.drop(*a);
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_FALSE(events.add(disk.at("nothing")));
    EXPECT_EQ(openDescriptors(), before);
}

TEST(DeadlineWaitWithoutATimer, AWaitEndsAtItsTimeAllTheSame) {
    DeadlineWait wait;
    timersAreUsedUp = true;
    const auto deadline = DeadlineWait::instant() + std::chrono::milliseconds(20);
    int returns = 0;
    do {
        wait.wait(deadline);
        ++returns;
    } while (DeadlineWait::instant() < deadline);
    timersAreUsedUp = false;
    EXPECT_LE(returns, 4);
}

} // namespace
} // namespace quillane
