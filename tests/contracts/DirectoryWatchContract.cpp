// What every watch of folders promises, whatever it runs on; and what becomes of folders on the disk.
#include "FakeDirectoryWatch.h"
#include "OrdinaryUser.h"
#include "PosixFileSystem.h"
#include "WatchedFolder.h"
#include <filesystem>
#include <fstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillane {
namespace {

namespace fs = std::filesystem;

class ByHand {
  public:
    explicit ByHand(TaskRunner& runner)
        : watch(runner) {}

    FileURL folder(const std::string& name) { return FileURL("/" + name); }
    FileURL unwatchable(const std::string& name) {
        watch.refuse(folder(name));
        return folder(name);
    }
    void happen(const std::string& name) { watch.change(folder(name)); }

    FakeDirectoryWatch watch;
};

using Subjects = testing::Types<OnDisk, ByHand>;
TYPED_TEST_SUITE(DirectoryWatchContract, Subjects);

TYPED_TEST(DirectoryWatchContract, WhatHappensInAFolderIsTold) {
    int told = 0;
    const auto source = this->counting("a", told);
    ASSERT_TRUE(source);
    for (int round = 1; round <= 3; ++round) {
        this->subject.happen("a");
        const int before = told;
        EXPECT_TRUE(this->runUntil([&] { return told > before; })) << round;
    }
}

TYPED_TEST(DirectoryWatchContract, ItIsToldAtATurnOfTheMainThreadAndNotBefore) {
    int told = 0;
    const auto source = this->counting("a", told);
    this->subject.happen("a");
    ASSERT_TRUE(this->runner.waitForPosts(1));
    EXPECT_EQ(told, 0);
    EXPECT_TRUE(this->runUntil([&] { return told > 0; }));
}

TYPED_TEST(DirectoryWatchContract, WhatHappensInAnotherFolderIsNotTold) {
    int told = 0;
    const auto source = this->counting("a", told);
    this->subject.happen("b");
    ASSERT_TRUE(this->catchUp());
    EXPECT_EQ(told, 0);
}

TYPED_TEST(DirectoryWatchContract, EachOfTwoSourcesOfOneFolderIsTold) {
    int first = 0;
    int second = 0;
    const auto one = this->counting("a", first);
    auto other = this->counting("a", second);
    this->subject.happen("a");
    EXPECT_TRUE(this->runUntil([&] { return first > 0 && second > 0; }));
}

TYPED_TEST(DirectoryWatchContract, OfTwoSourcesOfOneFolderTheOneThatStaysIsToldOn) {
    int first = 0;
    int second = 0;
    auto one = this->counting("a", first);
    const auto other = this->counting("a", second);
    one.reset();
    ASSERT_TRUE(this->catchUp());
    second = 0; // a call may come for nothing when the other goes
    this->subject.happen("a");
    EXPECT_TRUE(this->runUntil([&] { return second > 0; }));
    EXPECT_EQ(first, 0);
}

TYPED_TEST(DirectoryWatchContract, ASourceThatWasLetGoIsNotToldWhatHappensAfterwards) {
    int told = 0;
    this->counting("a", told).reset();
    this->subject.happen("a");
    ASSERT_TRUE(this->catchUp());
    EXPECT_EQ(told, 0);
}

TYPED_TEST(DirectoryWatchContract, ASourceThatWasLetGoIsNotToldWhatHappenedBefore) {
    int told = 0;
    auto source = this->counting("a", told);
    this->subject.happen("a");
    ASSERT_TRUE(this->runner.waitForPosts(1));
    source.reset();
    ASSERT_TRUE(this->catchUp());
    EXPECT_EQ(told, 0);
}

TYPED_TEST(DirectoryWatchContract, AHandlerMayLetItsOwnSourceGo) {
    int told = 0;
    std::unique_ptr<DirectoryWatch::Source> source;
    const auto kept = std::make_shared<int>(0); // goes with the handler
    source = this->subject.watch.watch(this->subject.folder("a"), [&source, &told, kept] {
        source.reset();
        told += 1 + *kept;
    });
    this->subject.happen("a");
    ASSERT_TRUE(this->runUntil([&] { return told > 0; }));
    this->subject.happen("a");
    ASSERT_TRUE(this->catchUp());
    EXPECT_EQ(told, 1);
}

TYPED_TEST(DirectoryWatchContract, AHandlerMayLetAnotherSourceGoThatWasAboutToBeTold) {
    std::unique_ptr<DirectoryWatch::Source> one;
    std::unique_ptr<DirectoryWatch::Source> other;
    int told = 0;
    one = this->subject.watch.watch(this->subject.folder("a"), [&] {
        ++told;
        other.reset();
    });
    other = this->subject.watch.watch(this->subject.folder("b"), [&] {
        ++told;
        one.reset();
    });
    this->subject.happen("a");
    this->subject.happen("b");
    ASSERT_TRUE(this->catchUp());
    EXPECT_TRUE((one == nullptr) != (other == nullptr));
    EXPECT_GE(told, 1);
}

TYPED_TEST(DirectoryWatchContract, AHandlerMayWatchAnotherFolder) {
    int told = 0;
    std::unique_ptr<DirectoryWatch::Source> more;
    const auto source = this->subject.watch.watch(this->subject.folder("a"), [&] {
        if (!more) {
            more = this->counting("b", told);
        }
    });
    this->subject.happen("a");
    ASSERT_TRUE(this->runUntil([&] { return more != nullptr; }));
    this->subject.happen("b");
    EXPECT_TRUE(this->runUntil([&] { return told > 0; }));
}

TYPED_TEST(DirectoryWatchContract, AFolderThatCanNotBeWatchedHasNoSourceAndTheOthersHave) {
    int told = 0;
    EXPECT_FALSE(this->subject.watch.watch(this->subject.unwatchable("missing"), [] {}));
    const auto source = this->counting("a", told);
    ASSERT_TRUE(source);
    this->subject.happen("a");
    EXPECT_TRUE(this->runUntil([&] { return told > 0; }));
}

TEST_F(WatchedFolder, EverythingThatChangesWhatLiesInItIsTold) {
    disk.folder("elsewhere/New.app/Contents");
    const auto in = [&](const char* name) { return disk.at(std::string("watched/") + name); };
    struct Step {
        const char* what;
        std::function<void()> act;
    };
    const Step steps[] = {
        {"a folder is made", [&] { fs::create_directory(in("Made.app")); }},
        {"a file is made", [&] { std::ofstream(in("file")).put('x'); }},
        {"a link is made", [&] { fs::create_symlink("/nowhere", in("Link.app")); }},
        {"one is moved in", [&] { fs::rename(disk.at("elsewhere/New.app"), in("New.app")); }},
        {"one is renamed", [&] { fs::rename(in("New.app"), in("Old.app")); }},
        {"one is moved out", [&] { fs::rename(in("Old.app"), disk.at("elsewhere/Old.app")); }},
        {"one takes the place of another", [&] { fs::rename(in("file"), in("Link.app")); }},
        {"one is removed", [&] { fs::remove(in("Made.app")); }},
    };
    for (const auto& step : steps) {
        forget();
        step.act();
        EXPECT_TRUE(isTold()) << step.what;
    }
}

TEST_F(WatchedFolder, WhatHappensDeeperIsNotTold) {
    disk.folder("watched/Tool.app/Contents").file("watched/note", "x");
    forget();
    disk.file("watched/Tool.app/Contents/Info.plist", "x").folder("watched/Tool.app/Contents/MacOS");
    fs::remove(disk.at("watched/Tool.app/Contents/Info.plist"));
    std::ofstream(disk.at("watched/note"), std::ios::app) << "more";
    ASSERT_TRUE(catchUp());
    EXPECT_EQ(told, 0);
}

TEST_F(WatchedFolder, ItsRemovalIsToldAndTheFolderThatIsMadeAnewIsNotWatched) {
    fs::remove(disk.at("watched"));
    ASSERT_TRUE(isTold());
    disk.folder("watched");
    forget();
    disk.folder("watched/New.app");
    ASSERT_TRUE(catchUp());
    EXPECT_EQ(told, 0);
    source.reset(); // of a folder that is no more
    source = counting("watched", told);
    disk.folder("watched/Other.app");
    EXPECT_TRUE(isTold());
}

TEST_F(WatchedFolder, ItsRenamingIsToldAndItIsWatchedWhereItLiesNow) {
    fs::rename(disk.at("watched"), disk.at("elsewhere/renamed"));
    ASSERT_TRUE(isTold());
    forget();
    disk.folder("elsewhere/renamed/New.app");
    EXPECT_TRUE(isTold());
}

TEST_F(WatchedFolder, ThatALinkTakesItsPlaceIsTold) {
    fs::rename(disk.at("watched"), disk.at("elsewhere/renamed"));
    fs::create_directory_symlink(disk.at("elsewhere"), disk.at("watched"));
    EXPECT_TRUE(isTold());
}

TEST_F(WatchedFolder, ALinkAtTheEndIsFollowed) {
    fs::create_directory_symlink(disk.at("watched"), disk.at("link"));
    int toldOfLink = 0;
    const auto link = subject.watch.watch(disk.url("link"), [&] { ++toldOfLink; });
    ASSERT_TRUE(link);
    disk.folder("watched/New.app");
    EXPECT_TRUE(runUntil([&] { return toldOfLink > 0; }));
    EXPECT_TRUE(isTold()) << "and by its own name too";
}

TEST_F(WatchedFolder, WhatIsNoFolderHasNoSource) {
    disk.file("file", "x");
    fs::create_symlink(disk.at("file"), disk.at("linkToFile"));
    fs::create_symlink(disk.at("nothing"), disk.at("linkToNothing"));
    for (const char* name : {"nothing", "file", "file/below", "linkToFile", "linkToNothing"}) {
        EXPECT_FALSE(subject.watch.watch(disk.url(name), [] {})) << name;
    }
    EXPECT_FALSE(subject.watch.watch(FileURL(disk.at("watched") + std::string("\0hidden", 7)), [] {}))
        << "a path that is cut short would be another folder";
}

TEST_F(WatchedFolder, AFolderThatMayNotBeReadHasNoSource) {
    disk.folder("locked");
    fs::permissions(disk.at("locked"), fs::perms::none);
    const OrdinaryUser user;
    EXPECT_FALSE(subject.watch.watch(disk.url("locked"), [] {}));
    EXPECT_TRUE(subject.watch.watch(disk.url("watched"), [] {}));
}

TEST_F(WatchedFolder, TenThousandChangesArePostedOnceUntilTheMainThreadTakesThem) {
    constexpr int kChanges = 10'000;
    const auto name = disk.at("watched/changing");
    for (int i = 0; i < kChanges; i += 2) {
        ASSERT_EQ(::mkdir(name.c_str(), 0700), 0);
        ASSERT_EQ(::rmdir(name.c_str()), 0);
    }
    ASSERT_TRUE(runner.waitForPosts(1));
    EXPECT_EQ(runner.posts(), 1);
    ASSERT_TRUE(catchUp());
    // What was not read yet comes in portions of some thousands.
    EXPECT_LT(runner.posts(), 20);
    EXPECT_LT(told, 20);
}

TEST_F(WatchedFolder, AJobThatIsPostedMayRunWhenTheWatchHasGone) {
    int toldLate = 0;
    {
        PosixDirectoryWatch watch(runner);
        const auto late = watch.watch(disk.url("elsewhere"), [&] { ++toldLate; });
        disk.folder("elsewhere/New.app");
        ASSERT_TRUE(runner.waitForPosts(1));
    }
    ASSERT_TRUE(catchUp());
    EXPECT_EQ(toldLate, 0);
}

TEST_F(WatchedFolder, OnAVolumeInAFolderPathsAndLinksBeginThere) {
    disk.folder("volume/Other/Apps");
    fs::create_directory_symlink("/Other/Apps", disk.at("volume/Applications"));
    const PosixFileSystem volume(disk.at("volume"), FileURL("/Users/alex"));
    PosixDirectoryWatch watch(
        runner, [&](const FileURL& folder) { return volume.hostPath(volume.resolvingSymlinks(folder)); });
    int toldOfVolume = 0;
    const auto applications = watch.watch(FileURL("/Applications"), [&] { ++toldOfVolume; });
    ASSERT_TRUE(applications);
    disk.folder("volume/Other/Apps/New.app");
    EXPECT_TRUE(runUntil([&] { return toldOfVolume > 0; }));
}

TEST_F(WatchedFolder, WhereTheSystemHasNoRoomThereIsNoSourceAndLaterThereIs) {
    rlimit usual{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &usual), 0);
    const rlimit none{0, usual.rlim_max};
    const auto elsewhere =
        disk.url("elsewhere"); // nothing else is asked of the process while it is that poor
    PosixDirectoryWatch watch(runner);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    const auto refused = watch.watch(elsewhere, [] {});
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &usual), 0);
    EXPECT_FALSE(refused);
    int toldLater = 0;
    const auto later = watch.watch(elsewhere, [&] { ++toldLater; });
    ASSERT_TRUE(later);
    disk.folder("elsewhere/New.app");
    EXPECT_TRUE(runUntil([&] { return toldLater > 0; }));
}

} // namespace
} // namespace quillane
