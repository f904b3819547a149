#include "LibraryTest.h"

namespace quillane {
namespace {

class AppLibraryScan : public LibraryTest {};

TEST_F(AppLibraryScan, ANewLibraryIsIdleAndEmptyAndScansNothing) {
    runner.settle();
    EXPECT_EQ(*library->phase, Phase{});
    EXPECT_TRUE(library->apps->empty());
    EXPECT_EQ(*library->searchText, "");
    EXPECT_EQ(*library->filter, AppFilter::thirdParty);
    EXPECT_EQ(runner.waitingJobs(), 0U);
}

TEST_F(AppLibraryScan, RefreshReturnsAtOnceAndTheScanBeginsAtALaterTurn) {
    library->refresh(ScanReason::user);
    EXPECT_EQ(library->phase->kind, Kind::scanning);
    EXPECT_EQ(runner.waitingJobs(), 0U);
    runner.turn();
    EXPECT_EQ(runner.waitingJobs(), 1U);
}

TEST_F(AppLibraryScan, AMachineWithoutApplicationsIsReadyWithoutMeasuring) {
    const PhaseLog log(*library);
    const ChangeCounter apps([this] { (void)library->apps.get(); });
    scan();
    EXPECT_EQ(log.kinds(),
              (std::vector{Kind::scanning, Kind::findingOrphans, Kind::findingDeveloperCaches, Kind::ready}));
    EXPECT_TRUE(library->apps->empty());
    EXPECT_EQ(apps.changes, 0) << "an equal list notifies nobody";
}

TEST_F(AppLibraryScan, AScanGoesThroughItsPhasesInOrder) {
    addApps(2);
    const PhaseLog log(*library);
    scan();
    EXPECT_EQ(log.phases(), (std::vector<Phase>{{Kind::scanning, 0, 0},
                                                {Kind::measuring, 0, 2},
                                                {Kind::measuring, 2, 2},
                                                {Kind::findingOrphans, 0, 0},
                                                {Kind::findingDeveloperCaches, 0, 0},
                                                {Kind::ready, 0, 0}}));
}

TEST_F(AppLibraryScan, TheListIsPublishedBeforeAnythingIsMeasured) {
    addApps(3);
    scanToMeasuring(ScanReason::user);
    ASSERT_EQ(library->apps->size(), 3U);
    for (const auto& app : *library->apps) {
        EXPECT_FALSE(app.isMeasured);
        EXPECT_EQ(app.bundleBytes, 0);
        EXPECT_TRUE(app.leftovers.empty());
    }
    EXPECT_EQ(runner.waitingJobs(), 3U) << "nothing was measured yet";
}

TEST_F(AppLibraryScan, TheListIsPublishedOnceInOnePiece) {
    addApps(3);
    const ChangeCounter apps([this] { (void)library->apps.get(); });
    scanToMeasuring(ScanReason::user);
    EXPECT_EQ(apps.changes, 1);
}

TEST_F(AppLibraryScan, ApplicationsAreSortedByNameAsTheFinderSorts) {
    for (const char* name : {"Zebra", "app 10", "App 2", "alpha", "Éclair", "Beta"}) {
        addApp("Applications/" + std::string(name) + ".app");
    }
    scan();
    EXPECT_EQ(names(), (std::vector<std::string>{"alpha", "App 2", "app 10", "Beta", "Éclair", "Zebra"}));
}

TEST_F(AppLibraryScan, ApplicationsOfOneNameKeepTheOrderOfTheirDiscovery) {
    addApp("Users/alex/Applications/Same.app", "home", "Same");
    addApp("System/Applications/Same.app", "system", "Same");
    addApp("Applications/Same.app", "applications", "Same");
    scan();
    std::vector<std::string> identifiers;
    for (const auto& app : *library->apps) {
        identifiers.push_back(app.bundleIdentifier.value_or(""));
    }
    EXPECT_EQ(identifiers, (std::vector<std::string>{"applications", "system", "home"}));
}

struct PaceRow {
    AppLibrary::ScanReason reason;
    Priority searching;
    Priority measuring;
    std::size_t bundlesAtOnce;
};

class AppLibraryScanPace : public LibraryTest, public testing::WithParamInterface<PaceRow> {};

TEST_P(AppLibraryScanPace, TheReasonSetsPrioritiesAndBatchSizeOfTheWholeScan) {
    const auto& row = GetParam();
    addApps(7);
    library->refresh(row.reason);
    runner.settle();
    EXPECT_EQ(runner.history(), std::vector{row.searching});
    runner.runJob();
    runner.settle();
    EXPECT_EQ(runner.waitingJobs(), row.bundlesAtOnce);
    runner.runAll();
    std::vector<Priority> expected{row.searching};
    expected.insert(expected.end(), 7, row.measuring);
    expected.push_back(row.searching);     // orphans
    expected.push_back(row.searching);     // developer caches
    expected.push_back(Priority::utility); // the Trash, whoever asked
    EXPECT_EQ(runner.history(), expected);
}

INSTANTIATE_TEST_SUITE_P(EveryReason, AppLibraryScanPace,
                         testing::Values(PaceRow{AppLibrary::ScanReason::user, Priority::userInitiated,
                                                 Priority::utility, 6},
                                         PaceRow{AppLibrary::ScanReason::automatic, Priority::background,
                                                 Priority::background, 2}));

// Requests made while a scan runs, and the one that is left.
struct ParkingRow {
    const char* name;
    std::vector<AppLibrary::ScanReason> requests;
    AppLibrary::ScanReason parked;
};

class AppLibraryParking : public LibraryTest, public testing::WithParamInterface<ParkingRow> {
  protected:
    void request() {
        for (const auto reason : GetParam().requests) {
            library->refresh(reason);
        }
    }
};

TEST_P(AppLibraryParking, ARequestDuringAScanIsParkedAndTheUsersOutranksTheOther) {
    addApps(1);
    scanToMeasuring(ScanReason::automatic);
    request();
    EXPECT_EQ(AppLibraryTesting::parked(*library), GetParam().parked);
    EXPECT_EQ(AppLibraryTesting::generation(*library), 1);
    EXPECT_EQ(*library->phase, (Phase{Kind::measuring, 0, 1}));
}

TEST_P(AppLibraryParking, OneFurtherScanRunsAfterReadyAndNotTwo) {
    addApps(1);
    library->refresh(ScanReason::automatic);
    request();
    const PhaseLog log(*library);
    runner.runAll();
    EXPECT_EQ(AppLibraryTesting::generation(*library), 2);
    EXPECT_EQ(AppLibraryTesting::currentReason(*library), GetParam().parked);
    EXPECT_EQ(AppLibraryTesting::parked(*library), std::nullopt);
    const std::vector kindsOfOne{Kind::measuring, Kind::measuring, Kind::findingOrphans,
                                 Kind::findingDeveloperCaches, Kind::ready};
    auto expected = kindsOfOne;
    expected.push_back(Kind::scanning);
    expected.insert(expected.end(), kindsOfOne.begin(), kindsOfOne.end());
    EXPECT_EQ(log.kinds(), expected);
}

TEST_P(AppLibraryParking, TheParkedScanRunsAtThePriorityOfItsOwnReason) {
    library->refresh(ScanReason::automatic);
    request();
    runner.runAll();
    const auto parked =
        GetParam().parked == ScanReason::user ? Priority::userInitiated : Priority::background;
    // Applications, orphans, developer caches, and the Trash, whoever asked.
    EXPECT_EQ(runner.history(), (std::vector{Priority::background, Priority::background, Priority::background,
                                             Priority::utility, parked, parked, parked, Priority::utility}));
}

constexpr auto kUser = AppLibrary::ScanReason::user;
constexpr auto kAutomatic = AppLibrary::ScanReason::automatic;

INSTANTIATE_TEST_SUITE_P(EveryOrder, AppLibraryParking,
                         testing::Values(ParkingRow{"User", {kUser}, kUser},
                                         ParkingRow{"Automatic", {kAutomatic}, kAutomatic},
                                         ParkingRow{"AutomaticThenUser", {kAutomatic, kUser}, kUser},
                                         ParkingRow{"UserThenAutomatic", {kUser, kAutomatic}, kUser},
                                         ParkingRow{"AutomaticTwice", {kAutomatic, kAutomatic}, kAutomatic},
                                         ParkingRow{"UserTwice", {kUser, kUser}, kUser}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(AppLibraryScan, ARequestWhenReadyStartsAtOnce) {
    scan();
    library->refresh(ScanReason::automatic);
    EXPECT_EQ(library->phase->kind, Kind::scanning);
    EXPECT_EQ(AppLibraryTesting::generation(*library), 2);
    EXPECT_EQ(AppLibraryTesting::parked(*library), std::nullopt);
}

TEST_F(AppLibraryScan, IdleIsNeverEnteredAgain) {
    const PhaseLog log(*library);
    scan();
    scan();
    EXPECT_EQ(std::ranges::count(log.kinds(), Kind::idle), 0);
}

TEST_F(AppLibraryScan, ANewScanReplacesTheFormerHandleWithoutCancellingIt) {
    scan();
    const auto former = AppLibraryTesting::scanTask(*library);
    ASSERT_TRUE(former.has_value());
    library->refresh(ScanReason::user);
    EXPECT_FALSE(former->isCancelled());
    AppLibraryTesting::scanTask(*library)->cancel();
    EXPECT_FALSE(former->isCancelled()) << "the handle in the library is that of the new scan";
}

TEST_F(AppLibraryScan, AnotherScanFindsWhatIsThereNow) {
    addApp("Applications/Old.app");
    scan();
    ASSERT_EQ(names(), std::vector<std::string>{"Old"});
    addApp("Applications/New.app");
    scanToMeasuring(ScanReason::user);
    EXPECT_EQ(names(), (std::vector<std::string>{"New", "Old"}));
    EXPECT_EQ(measuredCount(), 0) << "figures are found anew";
    runner.runAll();
    EXPECT_EQ(measuredCount(), 2);
}

TEST_F(AppLibraryScan, ALateListIsDropped) {
    addApps(2);
    library->refresh(ScanReason::user);
    runner.settle();
    AppLibraryTesting::supersede(*library);
    runner.runAll();
    EXPECT_TRUE(library->apps->empty());
    EXPECT_EQ(*library->phase, (Phase{Kind::scanning, 0, 0}));
}

TEST_F(AppLibraryScan, ALateBatchIsDroppedAndTheScanEndsWithoutTouchingThePhase) {
    addApps(3);
    scanToMeasuring(ScanReason::user);
    AppLibraryTesting::supersede(*library);
    const PhaseLog log(*library);
    runner.runAll();
    EXPECT_EQ(measuredCount(), 0);
    EXPECT_TRUE(log.phases().empty());
}

TEST_F(AppLibraryScan, AStaleScanStartsNoFurtherBatch) {
    addApps(5);
    scanToMeasuring(ScanReason::automatic);
    ASSERT_EQ(runner.waitingJobs(), 2U);
    AppLibraryTesting::supersede(*library);
    runner.runAll();
    EXPECT_EQ(runner.history().size(), 3U);
}

TEST_F(AppLibraryScan, AStaleScanServesNoParkedRequest) {
    addApps(1);
    scanToMeasuring(ScanReason::user);
    library->refresh(ScanReason::user);
    AppLibraryTesting::supersede(*library);
    runner.runAll();
    EXPECT_EQ(AppLibraryTesting::parked(*library), ScanReason::user);
}

TEST_F(AppLibraryScan, AScanThatIsStaleBeforeTheTrashDoesNotMeasureIt) {
    disk.file("Users/alex/.Trash/a");
    library->refresh(ScanReason::user);
    ASSERT_TRUE(runner.runUntil([&] { return library->phase->kind == Kind::findingDeveloperCaches; }));
    AppLibraryTesting::supersede(*library);
    runner.runAll();
    EXPECT_EQ(std::ranges::count(runner.history(), Priority::utility), 0) << "the Trash was measured";
    EXPECT_EQ(*library->phase, Phase{Kind::findingDeveloperCaches});
}

TEST_F(AppLibraryScan, AScanThatIsStaleAfterTheTrashIsNeverReadyPrunesNothingAndServesNothing) {
    (void)IconCache::shared().icon(urlOfApp(2));
    runner.runAll();
    library->refresh(ScanReason::user);
    ASSERT_TRUE(runner.runUntil(
        [&] { return runner.waitingJobs() == 1 && runner.waitingPriority(0) == Priority::utility; }));
    ASSERT_EQ(*library->phase, Phase{Kind::findingDeveloperCaches});
    library->refresh(ScanReason::user);
    AppLibraryTesting::supersede(*library);
    runner.runAll();
    EXPECT_EQ(*library->phase, Phase{Kind::findingDeveloperCaches});
    EXPECT_EQ(IconCache::shared().count(), 1U);
    EXPECT_EQ(AppLibraryTesting::parked(*library), ScanReason::user);
}

// What comes of a scan must not depend on whether its library is still there.
class AppLibraryLifetime : public LibraryTest, public testing::WithParamInterface<int> {};

TEST_P(AppLibraryLifetime, TheLibraryMayGoAtAnyMomentOfAScan) {
    addApps(3);
    addApp("Applications/Cached.app", "com.example.cached");
    disk.allocated("Users/alex/Library/Caches/com.example.cached/data", 4096);
    library->refresh(ScanReason::automatic);
    // Each step is either one turn of the main thread or one job of a pool.
    for (int step = 0; step < GetParam(); ++step) {
        if (step % 2 == 0) {
            runner.turn();
        } else if (runner.waitingJobs() > 0) {
            runner.runJob();
        }
    }
    library.reset();
    runner.runAll();
    EXPECT_EQ(runner.waitingJobs(), 0U);
    EXPECT_EQ(clock.sleepers(), 0U);
}

INSTANTIATE_TEST_SUITE_P(EveryStep, AppLibraryLifetime, testing::Range(0, 16));

TEST_F(AppLibraryScan, JobsOfALibraryThatIsGoneAreAskedToStop) {
    addApps(1);
    scanToMeasuring(ScanReason::user);
    const auto handle = AppLibraryTesting::scanTask(*library);
    EXPECT_FALSE(handle->isCancelled());
    library.reset();
    EXPECT_TRUE(handle->isCancelled());
    runner.runAll();
}

TEST_F(AppLibraryScan, IconsOfApplicationsThatAreGoneLeaveTheCacheAtTheEndOfAScan) {
    addApps(1);
    auto& icons = IconCache::shared();
    (void)icons.icon(urlOfApp(1));
    (void)icons.icon(urlOfApp(2));
    runner.runAll();
    ASSERT_EQ(icons.count(), 2U);
    scanToMeasuring(ScanReason::user);
    EXPECT_EQ(icons.count(), 2U) << "not before the end";
    runner.runAll();
    EXPECT_EQ(icons.count(), 1U);
    EXPECT_NE(icons.icon(urlOfApp(1)), nullptr);
}

// Counts the icons at the moment at which the scan is ready.
class IconsWhenReady final : public Observer {
  public:
    explicit IconsWhenReady(const AppLibrary& library)
        : m_library(library) {
        const Tracking tracking(*this);
        (void)library.phase.get();
    }
    void fieldDidChange() override {
        if (m_library.phase->kind == AppLibrary::Phase::Kind::ready) {
            icons = IconCache::shared().count();
        }
    }
    std::optional<std::size_t> icons;

  private:
    const AppLibrary& m_library;
};

TEST_F(AppLibraryScan, AScanIsReadyBeforeItPrunesTheIcons) {
    (void)IconCache::shared().icon(urlOfApp(2));
    runner.runAll();
    const IconsWhenReady whenReady(*library);
    scan();
    EXPECT_EQ(whenReady.icons, 1U);
    EXPECT_EQ(IconCache::shared().count(), 0U);
}

TEST_F(AppLibraryScan, AStaleScanPrunesNoIcons) {
    addApps(1);
    (void)IconCache::shared().icon(urlOfApp(2));
    runner.runAll();
    scanToMeasuring(ScanReason::user);
    AppLibraryTesting::supersede(*library);
    runner.runAll();
    EXPECT_EQ(IconCache::shared().count(), 1U);
}

} // namespace
} // namespace quillane
