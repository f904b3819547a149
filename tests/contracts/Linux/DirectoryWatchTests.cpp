// What becomes of watched folders by calls that Linux alone has, and what watches them there.
#include "../WatchedFolder.h"
#include "OwnVolume.h"
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/mount.h>
#include <unistd.h>

namespace quillane {
namespace {

namespace fs = std::filesystem;

class WatchedFolderOfLinux : public WatchedFolder {};

TEST_F(WatchedFolderOfLinux, ThatAnotherFolderTakesItsPlaceIsTold) {
    disk.folder("elsewhere/other");
    ASSERT_EQ(
        ::renameat2(AT_FDCWD, disk.at("elsewhere/other").c_str(), AT_FDCWD, disk.at("watched").c_str(), 2),
        0);
    EXPECT_TRUE(isTold());
}

// In a process of its own, whose mounts nobody else sees.
TEST(WatchedVolume, AnUnmountIsTold) {
    testing::FLAGS_gtest_death_test_style = "fast";
    TemporaryFolder disk;
    disk.folder("volume");
    EXPECT_EXIT(
        {
            mountOwnVolume(disk.at("volume"));
            MainThread runner;
            PosixDirectoryWatch watch(runner);
            int told = 0;
            const auto source = watch.watch(disk.url("volume"), [&] { ++told; });
            const bool isGone = ::umount(disk.at("volume").c_str()) == 0;
            std::_Exit(source && isGone && runner.runUntil([&] { return told > 0; }) ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

// As many as the system keeps for whoever does not read, and some more: what comes then is lost.
int moreThanTheQueueHolds() {
    int queued = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> queued;
    return queued + 100;
}

TEST_F(WatchedFolderOfLinux, AFolderWhoseChangeWasLostAmongTooManyIsToldAllTheSame) {
    int toldOfOther = 0;
    const auto other = counting("elsewhere", toldOfOther);
    runner.hold(true);
    disk.folder("watched/First.app");
    ASSERT_TRUE(runner.waitForPosts(1)); // the thread that reads stands still
    const auto name = disk.at("watched/changing");
    for (int i = 0; i < moreThanTheQueueHolds(); i += 2) {
        ASSERT_EQ(::close(::open(name.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600)), 0);
        ASSERT_EQ(::unlink(name.c_str()), 0);
    }
    disk.folder("elsewhere/Lost.app");
    runner.hold(false);
    EXPECT_TRUE(runUntil([&] { return toldOfOther > 0; }));
}

TEST_F(WatchedFolderOfLinux, NoProgramThatIsStartedInheritsWhatWatches) {
    int descriptors = 0;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code gone; // the iterator's own
        const auto target = fs::read_symlink(entry.path(), gone).string();
        if (target.find("inotify") != std::string::npos || target.find("eventfd") != std::string::npos) {
            ++descriptors;
            EXPECT_NE(::fcntl(std::stoi(entry.path().filename()), F_GETFD) & FD_CLOEXEC, 0) << target;
        }
    }
    EXPECT_GE(descriptors, 2);
}

} // namespace
} // namespace quillane
