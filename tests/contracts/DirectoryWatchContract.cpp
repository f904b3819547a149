// What every watch of folders promises, whatever it runs on; and what becomes of folders on the disk.
#include "FakeDirectoryWatch.h"
#include "MainQueue.h"
#include "OrdinaryUser.h"
#include "OwnVolume.h"
#include "PosixDirectoryWatch.h"
#include "PosixFileSystem.h"
#include "TemporaryFolder.h"
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <string>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>
#include <utility>

namespace quillane {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr auto kLimit = 30'000ms; // no test comes near it

// A main thread that counts what is posted to it, and can hold up whoever posts.
class MainThread final : public TaskRunner {
  public:
    void run(Priority, Job) override { std::abort(); } // watching needs no pool
    void post(Job job) override {
        std::unique_lock lock(m_mutex);
        ++m_posts;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return !m_holds; });
        lock.unlock();
        m_queue.post(std::move(job));
    }

    int posts() {
        const std::lock_guard lock(m_mutex);
        return m_posts;
    }
    // False when the limit passes first.
    bool waitForPosts(int count) {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, kLimit, [&] { return m_posts >= count; });
    }
    void hold(bool holds) {
        const std::lock_guard lock(m_mutex);
        m_holds = holds;
        m_changed.notify_all();
    }
    bool runUntil(const std::function<bool()>& done) { return m_queue.runUntil(done, kLimit); }

  private:
    MainQueue m_queue;
    std::mutex m_mutex; // guards what follows
    std::condition_variable m_changed;
    int m_posts = 0;
    bool m_holds = false;
};

// Each subject makes something happen directly inside a folder, which it lays at need.
class OnDisk {
  public:
    explicit OnDisk(TaskRunner& runner)
        : watch(runner) {}

    FileURL folder(const std::string& name) {
        disk.folder(name);
        return disk.url(name);
    }
    FileURL unwatchable(const std::string& name) { return disk.url(name); }
    void happen(const std::string& name) { disk.file(name + "/" + std::to_string(++m_last), "x"); }

    TemporaryFolder disk;
    PosixDirectoryWatch watch;

  private:
    int m_last = 0;
};

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

template <class Subject>
class DirectoryWatchContract : public testing::Test {
  protected:
    using Source = std::unique_ptr<DirectoryWatch::Source>;

    Source counting(const std::string& name, int& told) {
        return subject.watch.watch(subject.folder(name), [&told] { ++told; });
    }
    bool runUntil(const std::function<bool()>& done) { return runner.runUntil(done); }
    // When this returns, all that happened before has been told.
    testing::AssertionResult catchUp() {
        int told = 0;
        const auto source = counting("mark", told);
        subject.happen("mark");
        return runUntil([&] { return told > 0; }) ? testing::AssertionSuccess()
                                                  : testing::AssertionFailure() << "the mark was not told";
    }

    MainThread runner;
    Subject subject{runner};
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

// What becomes of a folder on the disk.
struct WatchedFolder : DirectoryWatchContract<OnDisk> {
    WatchedFolder() {
        disk.folder("watched").folder("elsewhere");
        source = counting("watched", told);
    }
    testing::AssertionResult isTold() {
        return runUntil([&] { return told > 0; }) ? testing::AssertionSuccess()
                                                  : testing::AssertionFailure() << "nothing was told";
    }
    // What was told so far has been heard; only what comes next counts.
    void forget() {
        ASSERT_TRUE(catchUp());
        told = 0;
    }

    TemporaryFolder& disk = subject.disk;
    int told = 0;
    std::unique_ptr<DirectoryWatch::Source> source;
};

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

TEST_F(WatchedFolder, ThatAnotherFolderTakesItsPlaceIsTold) {
    disk.folder("elsewhere/other");
    ASSERT_EQ(
        ::renameat2(AT_FDCWD, disk.at("elsewhere/other").c_str(), AT_FDCWD, disk.at("watched").c_str(), 2),
        0);
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

TEST_F(WatchedFolder, AFolderWhoseChangeWasLostAmongTooManyIsToldAllTheSame) {
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

TEST_F(WatchedFolder, NoProgramThatIsStartedInheritsWhatWatches) {
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
