#include "FootprintCalculator.h"
#include "LibraryTest.h"

namespace quillane {
namespace {

class AppLibraryMeasure : public LibraryTest {};

TEST_F(AppLibraryMeasure, ThirteenApplicationsOfAUsersScanComeInThreeBatches) {
    addApps(13);
    const PhaseLog log(*library);
    scan(ScanReason::user);
    EXPECT_EQ(log.measured(), (std::vector{0, 6, 12, 13}));
}

TEST_F(AppLibraryMeasure, ThirteenApplicationsOfAnAutomaticScanComeInSevenBatches) {
    addApps(13);
    const PhaseLog log(*library);
    scan(ScanReason::automatic);
    EXPECT_EQ(log.measured(), (std::vector{0, 2, 4, 6, 8, 10, 12, 13}));
}

TEST_F(AppLibraryMeasure, ABatchThatIsJustFullIsTheLast) {
    addApps(6);
    const PhaseLog log(*library);
    scan(ScanReason::user);
    EXPECT_EQ(log.measured(), (std::vector{0, 6}));
}

TEST_F(AppLibraryMeasure, TheTotalNeverChanges) {
    addApps(13);
    const PhaseLog log(*library);
    scan(ScanReason::user);
    for (const auto& phase : log.phases()) {
        if (phase.kind == Kind::measuring) {
            EXPECT_EQ(phase.total, 13);
        }
    }
}

TEST_F(AppLibraryMeasure, EveryApplicationGetsTheFootprintOfItsBundle) {
    addApps(3);
    disk.allocated("Applications/App 2.app/Contents/more", 1024 * 1024);
    scan();
    for (const auto& app : *library->apps) {
        EXPECT_TRUE(app.isMeasured);
        EXPECT_EQ(app.bundleBytes, FootprintCalculator::size(platform, app.url));
    }
    EXPECT_GE(library->appWithID(urlOfApp(2))->bundleBytes,
              library->appWithID(urlOfApp(1))->bundleBytes + 1024 * 1024);
}

TEST_F(AppLibraryMeasure, TheSlowestOfABatchHoldsBackTheWholeBatch) {
    addApps(13);
    scanToMeasuring(ScanReason::user);
    for (int i = 0; i < 5; ++i) {
        runner.runJob(1); // all but the first
    }
    runner.settle();
    EXPECT_EQ(runner.waitingJobs(), 1U) << "the next batch never overlaps";
    EXPECT_EQ(measuredCount(), 0);
    EXPECT_EQ(*library->phase, (Phase{Kind::measuring, 0, 13}));
    runner.runJob();
    runner.settle();
    EXPECT_EQ(measuredCount(), 6);
    EXPECT_EQ(*library->phase, (Phase{Kind::measuring, 6, 13}));
    EXPECT_EQ(runner.waitingJobs(), 6U);
}

TEST_F(AppLibraryMeasure, TheOrderOfCompletionMakesNoDifference) {
    addApps(4);
    scanToMeasuring(ScanReason::user);
    while (runner.waitingJobs() > 0) {
        runner.runJob(runner.waitingJobs() - 1);
    }
    runner.settle();
    EXPECT_EQ(measuredCount(), 4);
    EXPECT_EQ(names(), (std::vector<std::string>{"App 1", "App 2", "App 3", "App 4"}));
}

TEST_F(AppLibraryMeasure, BatchesGoInTheOrderOfTheList) {
    addApps(4);
    scanToMeasuring(ScanReason::automatic);
    runner.runJob();
    runner.runJob();
    runner.settle();
    EXPECT_TRUE(library->appWithID(urlOfApp(1))->isMeasured);
    EXPECT_TRUE(library->appWithID(urlOfApp(2))->isMeasured);
    EXPECT_FALSE(library->appWithID(urlOfApp(3))->isMeasured);
}

TEST_F(AppLibraryMeasure, EachApplicationIsWrittenInPlaceAndNotifies) {
    addApps(6);
    scanToMeasuring(ScanReason::user);
    const ChangeCounter apps([this] { (void)library->apps.get(); });
    runner.runAll();
    EXPECT_EQ(apps.changes, 6);
}

TEST_F(AppLibraryMeasure, ASystemApplicationIsMeasuredAndNeverCarriesLeftovers) {
    addApp("System/Applications/Mail.app", "com.example.mail");
    addApp("Applications/Notes.app", "com.example.notes");
    disk.allocated("Users/alex/Library/Caches/com.example.mail/data", 4096);
    disk.allocated("Users/alex/Library/Caches/com.example.notes/data", 4096);
    scan();
    const auto mail = library->appWithID(FileURL("/System/Applications/Mail.app"));
    ASSERT_TRUE(mail.has_value());
    EXPECT_EQ(mail->source, AppSource::system);
    EXPECT_TRUE(mail->isMeasured);
    EXPECT_GT(mail->bundleBytes, 0);
    EXPECT_TRUE(mail->leftovers.empty());
    const auto notes = library->appWithID(FileURL("/Applications/Notes.app"));
    ASSERT_TRUE(notes.has_value());
    ASSERT_EQ(notes->leftovers.size(), 1U);
    EXPECT_EQ(notes->leftovers.front().url, FileURL("/Users/alex/Library/Caches/com.example.notes"));
}

TEST_F(AppLibraryMeasure, AnApplicationThatLeftTheEndOfTheListIsSkippedAndProgressReachesTheTotal) {
    addApps(3);
    const PhaseLog log(*library);
    scanToMeasuring(ScanReason::user);
    library->apps.modify([](auto& list) { list.pop_back(); });
    runner.runAll();
    EXPECT_EQ(names(), (std::vector<std::string>{"App 1", "App 2"}));
    EXPECT_EQ(measuredCount(), 2);
    EXPECT_EQ(log.measured(), (std::vector{0, 3}));
    EXPECT_EQ(library->phase->kind, Kind::ready);
}

TEST_F(AppLibraryMeasure, WhatMovedUpInTheListGetsItsOwnFigures) {
    addApps(4);
    disk.allocated("Applications/App 3.app/Contents/more", 1024 * 1024);
    const PhaseLog log(*library);
    scanToMeasuring(ScanReason::user);
    library->apps.modify([](auto& list) { list.erase(list.begin() + 1); });
    runner.runAll();
    ASSERT_EQ(names(), (std::vector<std::string>{"App 1", "App 3", "App 4"}));
    for (const auto& app : *library->apps) {
        EXPECT_TRUE(app.isMeasured) << app.name;
        EXPECT_EQ(app.bundleBytes, FootprintCalculator::size(platform, app.url)) << app.name;
    }
    EXPECT_EQ(log.measured(), (std::vector{0, 4}));
}

TEST_F(AppLibraryMeasure, AtReadyNothingIsUnmeasuredHoweverManyLeftBetweenTheBatches) {
    addApps(13);
    const PhaseLog log(*library);
    scanToMeasuring(ScanReason::automatic);
    for (const auto place : {0, 3, 3, 7}) {
        runner.runJob();
        runner.runJob();
        runner.settle();
        library->apps.modify([place](auto& list) { list.erase(list.begin() + place); });
    }
    runner.runAll();
    EXPECT_EQ(library->phase->kind, Kind::ready);
    EXPECT_EQ(library->apps->size(), 9U);
    EXPECT_EQ(measuredCount(), 9);
    EXPECT_EQ(log.measured(), (std::vector{0, 2, 4, 6, 8, 10, 12, 13}));
}

TEST_F(AppLibraryMeasure, AnUninstallDuringAScanLeavesEveryOtherApplicationMeasured) {
    addApps(13);
    disk.folder("Users/alex");
    scanToMeasuring(ScanReason::user);
    library->tasks().start([&](StopToken) -> Task<> {
        const auto removal = library->removalForApps({*library->appWithID(urlOfApp(2))});
        (void)co_await library->runSweep(removal.entries, removal.label);
    });
    runner.runAll();
    EXPECT_EQ(library->phase->kind, Kind::ready);
    EXPECT_EQ(library->apps->size(), 12U);
    EXPECT_EQ(measuredCount(), 12);
}

TEST_F(AppLibraryMeasure, AnApplicationRemovedInAnEarlierBatchDoesNotStopTheLaterOnes) {
    addApps(5);
    const PhaseLog log(*library);
    scanToMeasuring(ScanReason::automatic);
    library->apps.modify([](auto& list) { list.pop_back(); });
    runner.runAll();
    EXPECT_EQ(measuredCount(), 4);
    EXPECT_EQ(log.measured(), (std::vector{0, 2, 4, 5}));
}

TEST_F(AppLibraryMeasure, OfTwoEntriesAtOneLocationTheLaterIsFilledIn) {
    addApps(1);
    InstalledApp app;
    app.url = urlOfApp(1);
    InstalledApp other;
    other.url = urlOfApp(9);
    library->apps = std::vector{app, other, app};
    const PhaseLog log(*library);
    AppLibraryTesting::measure(*library, ScanReason::user);
    runner.runAll();
    EXPECT_FALSE(library->apps->at(0).isMeasured);
    EXPECT_TRUE(library->apps->at(1).isMeasured);
    EXPECT_TRUE(library->apps->at(2).isMeasured);
    EXPECT_EQ(log.measured(), (std::vector{0, 3}));
}

TEST_F(AppLibraryMeasure, WithoutApplicationsTheStageEndsAtOnceAndLeavesThePhase) {
    library->refresh(ScanReason::user);
    AppLibraryTesting::measure(*library, ScanReason::user);
    const PhaseLog log(*library);
    runner.settle();
    EXPECT_TRUE(log.phases().empty());
    EXPECT_EQ(library->phase->kind, Kind::scanning);
}

TEST_F(AppLibraryMeasure, AnApplicationWhoseBundleVanishedIsMeasuredAsNothing) {
    InstalledApp app;
    app.url = FileURL("/Applications/Gone.app");
    library->apps = std::vector{app};
    AppLibraryTesting::measure(*library, ScanReason::user);
    runner.runAll();
    EXPECT_TRUE(library->apps->front().isMeasured);
    EXPECT_EQ(library->apps->front().bundleBytes, 0);
}

} // namespace
} // namespace quillane
