#include "AppLibraryTesting.h"
#include "SweepTest.h"
#include <algorithm>

namespace quillane {
namespace {

using namespace std::chrono_literals;

struct Access : SweepTest {
    void scan() {
        library->refresh(AppLibrary::ScanReason::user);
        world.runner.runAll();
    }
    void refuse() { world.trash.refuseListing(PlatformError{ErrorCode::kReadNoPermission, 1}); }
    void grant() { world.trash.refuseListing(std::nullopt); }
    // How often the Trash has been measured since the last call.
    std::size_t measures() {
        std::size_t count = 0;
        for (const auto priority : world.runner.history()) {
            count += priority == Priority::utility ? 1U : 0U;
        }
        world.runner.clearHistory();
        return count;
    }
    void reprobe() {
        library->appBecameActive();
        world.runner.runAll();
    }
    // One probe and nothing of what it starts.
    void reprobeAlone() {
        library->appBecameActive();
        world.runner.settle();
        world.runner.runJob();
        world.runner.settle();
    }
};

TEST_F(Access, AScanMeasuresTheTrashAndAReadableOneStartsNoWatch) {
    file(".Trash/a");
    scan();
    EXPECT_EQ(*library->trashState, TrashSweeper::State::measured(4096, 1));
    EXPECT_FALSE(library->accessWatch->has_value());
    EXPECT_EQ(world.clock.sleepers(), 0U);
}

TEST_F(Access, ARefusedTrashStartsAWatchThatPollsEveryThreeSecondsAndSlowsAfterAMinute) {
    refuse();
    scan();
    EXPECT_TRUE(library->trashState->needsFullDiskAccess);
    EXPECT_TRUE(library->accessWatch->has_value());
    measures();
    world.clock.advance(2999ms);
    EXPECT_EQ(measures(), 0U);
    world.clock.advance(1ms);
    EXPECT_EQ(measures(), 1U);
    world.clock.advance(57s);
    EXPECT_EQ(measures(), 19U);
    world.clock.advance(3s); // elapsed is above 60 seconds only now
    EXPECT_EQ(measures(), 1U);
    world.clock.advance(29999ms);
    EXPECT_EQ(measures(), 0U);
    world.clock.advance(1ms);
    EXPECT_EQ(measures(), 1U);
}

TEST_F(Access, AccessThatIsFoundEndsTheWatchAndIsShownForEightSeconds) {
    refuse();
    scan();
    grant();
    world.clock.advance(3s);
    EXPECT_FALSE(library->trashState->needsFullDiskAccess);
    EXPECT_FALSE(library->accessWatch->has_value());
    EXPECT_TRUE(*library->accessJustGranted);
    EXPECT_EQ(library->phase->kind, Phase::Kind::ready);
    world.clock.advance(7999ms);
    EXPECT_TRUE(*library->accessJustGranted);
    world.clock.advance(1ms);
    EXPECT_FALSE(*library->accessJustGranted);
    EXPECT_EQ(world.clock.sleepers(), 0U);
}

TEST_F(Access, TheApplicationComingToTheFrontLooksAtOnce) {
    refuse();
    scan();
    grant();
    reprobe();
    EXPECT_FALSE(library->trashState->needsFullDiskAccess);
    EXPECT_FALSE(library->accessWatch->has_value());
}

TEST_F(Access, AccessThatIsFoundIsStoredAtOnceAndAnAutomaticScanFollows) {
    refuse();
    scan();
    grant();
    file(".Trash/a");
    reprobeAlone();
    EXPECT_EQ(*library->trashState, TrashSweeper::State::measured(4096, 1));
    EXPECT_TRUE(*library->accessJustGranted);
    EXPECT_FALSE(library->accessWatch->has_value());
    EXPECT_EQ(world.clock.sleepers(), 1U) << "the eight seconds; the watch sleeps no more";
    EXPECT_EQ(library->phase->kind, Phase::Kind::scanning);
    EXPECT_EQ(world.runner.history().back(), Priority::background);
}

TEST_F(Access, AProbeThatFindsTheTrashStillRefusedChangesNothing) {
    refuse();
    scan();
    reprobeAlone();
    EXPECT_TRUE(library->trashState->needsFullDiskAccess);
    EXPECT_FALSE(*library->accessJustGranted);
    EXPECT_TRUE(library->accessWatch->has_value());
    EXPECT_EQ(library->phase->kind, Phase::Kind::ready);
    EXPECT_EQ(world.clock.sleepers(), 1U);
}

TEST_F(Access, OfTwoProbesThatFindItOnlyTheFirstScans) {
    refuse();
    scan();
    const auto jobsOfScans = [this] {
        world.runner.clearHistory();
        world.runner.runAll();
        return std::ranges::count(world.runner.history(), Priority::background);
    };
    library->refresh(AppLibrary::ScanReason::automatic);
    const auto one = jobsOfScans();
    grant();
    library->appBecameActive();
    library->appBecameActive();
    EXPECT_EQ(jobsOfScans(), one);
    EXPECT_EQ(world.clock.sleepers(), 1U) << "the eight seconds, once";
}

TEST_F(Access, HoweverOftenItIsRefusedOneWatchStands) {
    refuse();
    scan();
    scan();
    EXPECT_EQ(world.clock.sleepers(), 1U);
    measures();
    world.clock.advance(3s);
    EXPECT_EQ(measures(), 1U);
}

TEST_F(Access, AWatchThatIsCancelledMakesItsLastProbeAndEnds) {
    refuse();
    scan();
    measures();
    library->accessWatch->value().cancel();
    world.runner.settle();
    world.runner.runJob();
    world.runner.settle();
    EXPECT_EQ(measures(), 1U);
    EXPECT_EQ(world.runner.waitingJobs(), 0U);
    EXPECT_FALSE(library->accessWatch->has_value());
    EXPECT_EQ(world.clock.sleepers(), 0U);
}

TEST_F(Access, WhatTheScanFindsWhenItCanBeReadAgainEndsTheWatchWithoutANotice) {
    refuse();
    scan();
    grant();
    scan();
    EXPECT_FALSE(library->trashState->needsFullDiskAccess);
    EXPECT_FALSE(*library->accessJustGranted);
    world.clock.advance(3s);
    EXPECT_FALSE(library->accessWatch->has_value());
    EXPECT_FALSE(*library->accessJustGranted);
    EXPECT_EQ(world.clock.sleepers(), 0U);
}

TEST_F(Access, AFileInAProtectedFolderIsStillSweptWhenItIsListedItself) {
    const auto inside = file("Library/Caches/tool/data");
    library->setProtected(home("Library/Caches/tool"), true);
    EXPECT_EQ(sweep({entry(inside, SweepCategory::caches, 1)}).itemsMovedToTrash, 1);
}

TEST_F(Access, TakingBackAProtectionThatIsNotThereChangesNothing) {
    library->setProtected(FileURL("/a"), true);
    library->setProtected(FileURL("/b"), false);
    library->setProtected(FileURL("/b"), false);
    EXPECT_EQ(world.defaults.stringArray("protectedPaths"), std::vector<std::string>{"/a"});
}

TEST_F(Access, WhileTheTrashCanBeReadComingToTheFrontDoesNothing) {
    scan();
    measures();
    reprobe();
    EXPECT_EQ(measures(), 0U);
    EXPECT_EQ(world.clock.sleepers(), 0U);
}

TEST_F(Access, DuringAScanThereIsNoProbeAndTheWatchGoesOnPolling) {
    refuse();
    scan();
    library->refresh(AppLibrary::ScanReason::user); // stands before its first job
    world.runner.settle();
    grant();
    world.runner.clearHistory();
    world.clock.advanceWithoutRunning(3s);
    world.runner.settle();
    EXPECT_EQ(world.runner.waitingJobs(), 1U) << "the scan's own";
    EXPECT_TRUE(library->trashState->needsFullDiskAccess);
    EXPECT_TRUE(library->accessWatch->has_value());
    world.runner.runAll(); // the scan makes its own measure
    EXPECT_FALSE(library->trashState->needsFullDiskAccess);
    world.clock.advance(3s);
    EXPECT_FALSE(library->accessWatch->has_value());
}

TEST_F(Access, AMeasureThatANewerScanHasOvertakenChangesNothing) {
    const auto a = file("a");
    scan();
    refuse();
    startSweep({entry(a, SweepCategory::caches, 1)});
    world.runner.settle();
    world.runner.runJob(); // the move; the sweep's own measure waits next
    world.runner.settle();
    ASSERT_EQ(world.runner.waitingJobs(), 1U);
    AppLibraryTesting::supersede(*library);
    world.runner.runAll();
    EXPECT_FALSE(library->trashState->needsFullDiskAccess);
    EXPECT_FALSE(library->accessWatch->has_value());
}

TEST_F(Access, TheLibraryMayEndWhileTheWatchSleeps) {
    refuse();
    scan();
    library.reset();
    world.runner.runAll();
    EXPECT_EQ(world.clock.sleepers(), 0U);
}

TEST_F(Access, QuittingWithoutAnIdentifierDoesNothing) {
    AppLibrary::quit(world.platform, std::nullopt);
    EXPECT_TRUE(world.running.asked.empty());
    AppLibrary::quit(world.platform, "com.example.tool");
    EXPECT_EQ(world.running.asked, std::vector<std::string>{"com.example.tool"});
}

TEST_F(Access, TheSettingsAndANewInstanceAreTheDesktopsBusiness) {
    AppLibrary::openFullDiskAccessSettings(world.platform);
    AppLibrary::relaunch(world.platform);
    EXPECT_EQ(world.workspace.settingsOpened(), 1);
    EXPECT_EQ(world.workspace.relaunches(), 1);
}

} // namespace
} // namespace quillane
