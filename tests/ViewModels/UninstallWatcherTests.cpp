#include "FakeDirectoryWatch.h"
#include "RemovalWorld.h"
#include "UninstallWatcher.h"
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quillane {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

using Change = std::pair<std::set<FileURL>, std::set<FileURL>>; // removed, added

struct UninstallWatcherTest : testing::Test {
    UninstallWatcherTest() { world.disk.folder("Applications/Alpha.app").folder("Users/alex/Applications"); }

    static FileURL app(const std::string& name) { return FileURL("/Applications/" + name + ".app"); }
    static FileURL ownApp(const std::string& name) {
        return FileURL("/Users/alex/Applications/" + name + ".app");
    }
    void add(const FileURL& bundle) { world.disk.folder(bundle.path().substr(1)); }
    void remove(const FileURL& bundle) { fs::remove_all(world.disk.at(bundle.path().substr(1))); }
    void move(const FileURL& from, const FileURL& to) {
        fs::rename(world.disk.at(from.path().substr(1)), world.disk.at(to.path().substr(1)));
    }

    void make() {
        watcher = std::make_unique<UninstallWatcher>(
            platform, folders, [this](const std::set<FileURL>& removed, const std::set<FileURL>& added) {
                changes.emplace_back(removed, added);
            });
    }
    // Made, started, and the first look is done.
    void run() {
        make();
        watcher->start();
        world.runner.runAll();
    }
    void somethingHappens() {
        directories.change(folders[0]);
        world.runner.settle();
    }
    // To the moment at which a job that lists waits to be run.
    void comeDue() {
        world.clock.advanceWithoutRunning(2s);
        world.runner.settle();
    }

    RemovalWorld world;
    FakeDirectoryWatch directories{world.runner};
    const Platform platform{.files = world.files,
                            .commands = world.commands,
                            .metadata = world.metadata,
                            .clock = world.clock,
                            .tasks = world.runner,
                            .workspace = world.workspace,
                            .trash = world.trash,
                            .runningApplications = world.running,
                            .defaults = world.defaults,
                            .directories = directories};
    const std::vector<FileURL> folders{FileURL("/Applications"), FileURL("/Users/alex/Applications")};
    std::vector<Change> changes;
    std::unique_ptr<UninstallWatcher> watcher;
};

TEST_F(UninstallWatcherTest, WhatVanishesIsToldTwoSecondsAfterTheLastChange) {
    run();
    remove(app("Alpha"));
    somethingHappens();
    world.clock.advance(1500ms);
    somethingHappens();
    world.clock.advance(1999ms);
    EXPECT_THAT(changes, IsEmpty());
    world.clock.advance(1ms);
    EXPECT_THAT(changes, ElementsAre(Change{{app("Alpha")}, {}}));
    world.clock.advance(1h);
    EXPECT_EQ(changes.size(), 1U) << "once";
}

TEST_F(UninstallWatcherTest, WhatComesIsTold) {
    run();
    add(ownApp("Beta"));
    directories.change(folders[1]);
    world.clock.advance(2s);
    EXPECT_THAT(changes, ElementsAre(Change{{}, {ownApp("Beta")}}));
}

TEST_F(UninstallWatcherTest, WhatMovesFromOneFolderToTheOtherHasGoneAndComeInOneCall) {
    run();
    move(app("Alpha"), ownApp("Alpha"));
    directories.change(folders[0]);
    directories.change(folders[1]);
    world.clock.advance(2s);
    EXPECT_THAT(changes, ElementsAre(Change{{app("Alpha")}, {ownApp("Alpha")}}));
}

TEST_F(UninstallWatcherTest, WhatIsReplacedInItsPlaceIsNotTold) {
    run();
    remove(app("Alpha"));
    somethingHappens();
    world.clock.advance(1s);
    add(app("Alpha"));
    somethingHappens();
    world.clock.advance(1h);
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(UninstallWatcherTest, EachLookIsComparedWithTheOneBefore) {
    run();
    add(app("Beta"));
    somethingHappens();
    world.clock.advance(2s);
    remove(app("Alpha"));
    somethingHappens();
    world.clock.advance(2s);
    EXPECT_THAT(changes, ElementsAre(Change{{}, {app("Beta")}}, Change{{app("Alpha")}, {}}));
}

TEST_F(UninstallWatcherTest, OnlyWhatLiesDirectlyThereInSightAndHasTheExactExtensionCounts) {
    run();
    for (const char* other : {".Hidden.app", ".app", "Tool.APP", "Tool.app.old", "Tool", "Suite/Deep.app"}) {
        world.disk.folder(std::string("Applications/") + other);
    }
    world.disk.file("Applications/File.app", "x");
    fs::create_symlink("/nowhere", world.disk.at("Applications/Link.app"));
    somethingHappens();
    world.clock.advance(2s);
    EXPECT_THAT(changes, ElementsAre(Change{{}, {app("File"), app("Link")}})) << "whatever else they are";
}

TEST_F(UninstallWatcherTest, ABundleThatTheSystemHidesDoesNotCount) {
    world.files.flagHidden(app("Ghost"));
    run();
    add(app("Ghost"));
    add(app("Beta"));
    somethingHappens();
    world.clock.advance(2s);
    EXPECT_THAT(changes, ElementsAre(Change{{}, {app("Beta")}}));
}

TEST_F(UninstallWatcherTest, ABundleIsToldByTheStandardFormOfItsPath) {
    const std::vector<FileURL> others{FileURL("/private/tmp/../Apps")};
    world.disk.folder("private/tmp").folder("private/Apps/Alpha.app").folder("Apps/Alpha.app");
    UninstallWatcher other(platform, others, [this](const auto& removed, const auto& added) {
        changes.emplace_back(removed, added);
    });
    other.start();
    world.runner.runAll();
    world.disk.folder("private/Apps/Beta.app").folder("Apps/Beta.app");
    directories.change(others[0]);
    world.clock.advance(2s);
    EXPECT_THAT(changes, ElementsAre(Change{{}, {FileURL("/Apps/Beta.app")}}));
}

TEST_F(UninstallWatcherTest, WhatVanishedBeforeTheFirstLookIsNotTold) {
    remove(app("Alpha"));
    run();
    somethingHappens();
    world.clock.advance(2s);
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(UninstallWatcherTest, WhatVanishesWhileTheFirstLookIsUnderWayIsTold) {
    make();
    watcher->start();
    world.runner.settle();
    world.runner.runJob(); // it has seen the bundle, and has not said so yet
    remove(app("Alpha"));
    directories.change(folders[0]);
    world.runner.settle();
    world.clock.advance(2s);
    EXPECT_THAT(changes, ElementsAre(Change{{app("Alpha")}, {}}));
}

TEST_F(UninstallWatcherTest, AChangeDoesNotTakeTheFirstLookBack) {
    make();
    watcher->start();
    world.runner.settle();
    somethingHappens();
    comeDue();
    ASSERT_EQ(world.runner.waitingJobs(), 1U) << "the first look, and nothing beside it";
    world.runner.runJob();
    remove(app("Alpha"));
    world.runner.runAll();
    EXPECT_THAT(changes, ElementsAre(Change{{app("Alpha")}, {}}));
}

TEST_F(UninstallWatcherTest, TheFoldersAreListedInJobsAndNeverTwiceAtOnce) {
    run();
    somethingHappens();
    comeDue();
    ASSERT_EQ(world.runner.waitingJobs(), 1U);
    somethingHappens();
    comeDue();
    somethingHappens();
    comeDue();
    EXPECT_EQ(world.runner.waitingJobs(), 1U) << "one that hangs holds up no other thread";
    world.runner.runJob();
    world.runner.settle();
    EXPECT_EQ(world.runner.waitingJobs(), 1U) << "and the one that came due last follows it";
    remove(app("Alpha"));
    world.runner.runAll();
    EXPECT_THAT(changes, ElementsAre(Change{{app("Alpha")}, {}}));
}

TEST_F(UninstallWatcherTest, AMoveThatIsCaughtHalfwayIsToldWhole) {
    run();
    somethingHappens();
    comeDue();
    remove(app("Alpha")); // the folder it comes from was read after it had left,
    directories.change(folders[0]);
    world.runner.settle();
    world.runner.runJob(); // and the one it goes to before it had come
    world.runner.settle();
    EXPECT_THAT(changes, IsEmpty());
    add(ownApp("Alpha"));
    world.clock.advance(2s);
    EXPECT_THAT(changes, ElementsAre(Change{{app("Alpha")}, {ownApp("Alpha")}}));
}

TEST_F(UninstallWatcherTest, AfterAStopNothingIsWatchedAndNothingIsTold) {
    run();
    remove(app("Alpha"));
    somethingHappens();
    watcher->stop();
    EXPECT_THAT(directories.watched(), IsEmpty());
    world.clock.advance(1h);
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(UninstallWatcherTest, AStopTakesBackAListingThatIsUnderWay) {
    run();
    remove(app("Alpha"));
    somethingHappens();
    comeDue();
    ASSERT_EQ(world.runner.waitingJobs(), 1U);
    watcher->stop();
    world.runner.runAll();
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(UninstallWatcherTest, AStartEndsWhatRunsAndWatchesEachFolderOnce) {
    run();
    remove(app("Alpha"));
    somethingHappens();
    watcher->start();
    EXPECT_THAT(directories.watched(), ElementsAre(folders[0], folders[1]));
    world.clock.advance(1h);
    EXPECT_THAT(changes, IsEmpty()) << "the pending look went with it";
    somethingHappens();
    world.clock.advance(2s);
    EXPECT_THAT(changes, ElementsAre(Change{{app("Alpha")}, {}})) << "what was known stays known";
}

TEST_F(UninstallWatcherTest, AFolderThatCanNotBeWatchedIsLeftOutAndStillLookedAt) {
    directories.refuse(folders[1]);
    run();
    EXPECT_THAT(directories.watched(), ElementsAre(folders[0]));
    move(app("Alpha"), ownApp("Alpha"));
    somethingHappens();
    world.clock.advance(2s);
    EXPECT_THAT(changes, ElementsAre(Change{{app("Alpha")}, {ownApp("Alpha")}}));
}

TEST_F(UninstallWatcherTest, AFolderThatIsMissingIsLeftOut) {
    remove(folders[1]);
    run();
    remove(app("Alpha"));
    somethingHappens();
    world.clock.advance(2s);
    EXPECT_THAT(changes, ElementsAre(Change{{app("Alpha")}, {}}));
}

TEST_F(UninstallWatcherTest, AFolderThatCanNotBeReadForAWhileHasLostNothing) {
    run();
    add(ownApp("Beta"));
    for (const auto error : {ErrorCode::kReadNoPermission, ErrorCode::kReadUnknown}) {
        world.files.fail(folders[0], {error, std::nullopt});
        somethingHappens();
        world.clock.advance(2s);
    }
    EXPECT_THAT(changes, ElementsAre(Change{{}, {ownApp("Beta")}})) << "the other folder is told as ever";
}

TEST_F(UninstallWatcherTest, WhatVanishedWhileItsFolderCouldNotBeReadIsToldWhenItCan) {
    run();
    world.files.failNth(FileCall::list, 1, {ErrorCode::kReadNoPermission, std::nullopt});
    remove(app("Alpha"));
    somethingHappens();
    world.clock.advance(2s);
    EXPECT_THAT(changes, IsEmpty());
    somethingHappens();
    world.clock.advance(2s);
    EXPECT_THAT(changes, ElementsAre(Change{{app("Alpha")}, {}}));
}

TEST_F(UninstallWatcherTest, WhatAFolderHoldsThatIsReadForTheFirstTimeHasNotCome) {
    world.files.failNth(FileCall::list, 1, {ErrorCode::kReadNoPermission, std::nullopt});
    run();
    add(app("Beta"));
    somethingHappens();
    world.clock.advance(2s);
    EXPECT_THAT(changes, IsEmpty());
    remove(app("Alpha"));
    somethingHappens();
    world.clock.advance(2s);
    EXPECT_THAT(changes, ElementsAre(Change{{app("Alpha")}, {}}));
}

TEST_F(UninstallWatcherTest, WhatAFolderHeldThatIsMissingNowHasGone) {
    run();
    remove(app("Alpha"));
    fs::remove(world.disk.at("Applications"));
    somethingHappens();
    world.clock.advance(2s);
    EXPECT_THAT(changes, ElementsAre(Change{{app("Alpha")}, {}}));
}

TEST_F(UninstallWatcherTest, ACallForNothingTellsNothing) {
    run();
    somethingHappens();
    world.clock.advance(1h);
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(UninstallWatcherTest, AWallClockThatJumpsNeitherHastensNorDelaysIt) {
    run();
    for (const double jump : {1e9, -2e9, std::numeric_limits<double>::quiet_NaN()}) {
        changes.clear();
        remove(app("Alpha"));
        somethingHappens();
        world.clock.setNow(Date{world.clock.now().secondsSinceReferenceDate + jump});
        world.clock.advance(1999ms);
        EXPECT_THAT(changes, IsEmpty()) << jump;
        world.clock.advance(1ms);
        EXPECT_EQ(changes.size(), 1U) << jump;
        add(app("Alpha"));
        somethingHappens();
        world.clock.advance(2s);
    }
}

TEST_F(UninstallWatcherTest, ItMayGoAtEveryPointOfALook) {
    enum Point { made, started, firstLook, changed, due, listed };
    for (const auto point : {made, started, firstLook, changed, due, listed}) {
        make();
        if (point >= started) {
            watcher->start();
        }
        if (point >= firstLook) {
            world.runner.settle();
        }
        if (point >= changed) {
            world.runner.runAll();
            add(app(std::to_string(point)));
            directories.change(folders[0]);
        }
        if (point >= due) {
            world.runner.settle();
            comeDue();
        }
        if (point >= listed) {
            world.runner.runJob();
        }
        watcher.reset();
        world.runner.runAll();
        world.clock.advance(1h);
        EXPECT_THAT(directories.watched(), IsEmpty()) << point;
    }
    EXPECT_THAT(changes, IsEmpty());
}

} // namespace
} // namespace quillane
