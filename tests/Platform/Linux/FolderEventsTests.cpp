// The queue of the system, read by hand: no thread, so nothing depends on when one comes.
#include "FolderEvents.h"
#include "TemporaryFolder.h"
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace quillane {
namespace {

using testing::Each;

struct FolderEventsTest : testing::Test {
    FolderEventsTest() { disk.folder("a").folder("b"); }
    void happen(const std::string& name, int count = 1) const {
        const auto path = disk.at(name + "/x");
        for (int i = 0; i < count; ++i) {
            ASSERT_EQ(::close(::open(path.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600)), 0);
            ASSERT_EQ(::unlink(path.c_str()), 0);
        }
    }
    TemporaryFolder disk;
    FolderEvents events;
};

TEST_F(FolderEventsTest, TellTheMarkOfTheFolder) {
    const auto a = events.add(disk.at("a"));
    const auto b = events.add(disk.at("b"));
    ASSERT_TRUE(a && b);
    EXPECT_NE(a, b);
    happen("b");
    const auto happened = events.wait();
    ASSERT_TRUE(happened);
    EXPECT_THAT(happened->marks, Each(*b));
    EXPECT_FALSE(happened->marks.empty());
    EXPECT_FALSE(happened->anywhere);
}

TEST_F(FolderEventsTest, ManyChangesOfOneFolderAreOneMark) {
    const auto a = events.add(disk.at("a"));
    happen("a", 500);
    const auto happened = events.wait();
    ASSERT_TRUE(happened);
    EXPECT_EQ(happened->marks, std::vector{*a});
}

TEST_F(FolderEventsTest, MoreThanTheSystemKeepsMayHaveBeenAnywhere) {
    int queued = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> queued;
    ASSERT_TRUE(events.add(disk.at("a")));
    happen("a", queued / 2 + 50);
    bool anywhere = false;
    while (!anywhere) {
        const auto happened = events.wait(); // would block for ever if the loss were not told
        ASSERT_TRUE(happened);
        anywhere = happened->anywhere;
    }
}

TEST_F(FolderEventsTest, OfAFolderThatIsTakenOutOnlyThatIsHeard) {
    const auto a = events.add(disk.at("a"));
    const auto b = events.add(disk.at("b"));
    events.drop(*a);
    happen("a");
    happen("b");
    const auto happened = events.wait();
    ASSERT_TRUE(happened);
    EXPECT_EQ(happened->marks, (std::vector{*a, *b})) << "its end, and nothing after it";
}

TEST_F(FolderEventsTest, OfAFolderThatHasGoneTheEndIsToldAndItIsTakenOutWithoutHarm) {
    const auto a = events.add(disk.at("a"));
    ASSERT_EQ(::rmdir(disk.at("a").c_str()), 0);
    const auto happened = events.wait();
    ASSERT_TRUE(happened);
    EXPECT_EQ(happened->marks, std::vector{*a});
    disk.folder("a");
    const auto anew = events.add(disk.at("a"));
    EXPECT_NE(anew, a);
    events.drop(*a);
    happen("a");
    const auto later = events.wait();
    ASSERT_TRUE(later);
    EXPECT_EQ(later->marks, std::vector{*anew});
}

TEST_F(FolderEventsTest, AnInterruptEndsAWaitForGood) {
    const auto a = events.add(disk.at("a"));
    ASSERT_TRUE(a);
    happen("a");
    events.interrupt();
    EXPECT_FALSE(events.wait());
    EXPECT_FALSE(events.wait());
}

} // namespace
} // namespace quillane
