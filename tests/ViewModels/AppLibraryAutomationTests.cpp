#include "AutomationTest.h"
#include <gmock/gmock.h>
#include <limits>

namespace quillane {
namespace {

namespace Keys = DefaultsKeys;
using testing::ElementsAre;
using testing::IsEmpty;
using Value = Defaults::Value;

constexpr std::int64_t kMostInteger = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLeastInteger = std::numeric_limits<std::int64_t>::min();

class AppLibraryAutomation : public AutomationTest {
  protected:
    void start() {
        library->startAutomationLoop();
        runner.settle();
    }
    void startWithScans() {
        turnOn(Keys::kScheduledScans);
        start();
    }
    // A tick would post this, and nothing else of it.
    void prepareReminder() {
        turnOn(Keys::kWeeklyReminder);
        makeReclaimable(500'000'001);
    }
    bool lastScanIsStored() const { return defaults.isStored(Keys::kLastScan); }
    // The moment at which the next tick will begin, the loop being at rest.
    Date atNextTick() const { return clock.now().addingSeconds(3600); }
    void addAgent(const std::string& label) {
        disk.file("Users/alex/Library/LaunchAgents/" + label + ".plist",
                  "<plist><dict><key>Label</key><string>" + label + "</string></dict></plist>");
    }
};

// The loop

TEST_F(AppLibraryAutomation, TheFirstTickComesAnHourAfterTheStartAndNotAtTheLaunch) {
    prepareReminder();
    start();
    EXPECT_THAT(identifiers(), IsEmpty());
    clock.advance(1h - 1ns);
    EXPECT_THAT(identifiers(), IsEmpty());
    clock.advance(1ns);
    EXPECT_THAT(identifiers(), ElementsAre("weekly"));
}

TEST_F(AppLibraryAutomation, ASecondStartStartsNoSecondLoop) {
    startWithScans();
    library->startAutomationLoop();
    runner.settle();
    EXPECT_EQ(clock.sleepers(), 1U);
    passHour();
    EXPECT_EQ(scans(), 1);
    library->startAutomationLoop();
    runner.settle();
    EXPECT_EQ(clock.sleepers(), 1U);
}

TEST_F(AppLibraryAutomation, AtRestNothingWaitsButTheHour) {
    startWithScans();
    EXPECT_EQ(clock.sleepers(), 1U);
    passHour();
    EXPECT_EQ(clock.sleepers(), 1U);
    EXPECT_EQ(library->tasks().count(), 1U);
}

TEST_F(AppLibraryAutomation, TheNextHourIsCountedFromTheEndOfTheTick) {
    defaults.set(Keys::kScanFrequencyHours, std::int64_t{1});
    startWithScans();
    clock.advance(1h);
    EXPECT_EQ(scans(), 1);
    clock.advance(1h + kScanningTick - 1ns);
    EXPECT_EQ(scans(), 1);
    clock.advance(1ns);
    EXPECT_EQ(scans(), 2);
}

TEST_F(AppLibraryAutomation, ALibraryThatGoesWhileATickWaitsEndsIt) {
    startWithScans();
    clock.advance(1h);
    ASSERT_FALSE(lastScanIsStored()) << "the tick waits for its scan";
    library.reset();
    runner.runAll();
    clock.advance(2h);
    EXPECT_FALSE(lastScanIsStored());
    EXPECT_EQ(clock.sleepers(), 0U);
}

TEST_F(AppLibraryAutomation, ALibraryThatGoesBetweenTicksTakesTheLoopWithIt) {
    prepareReminder();
    start();
    clock.advance(30min);
    library.reset();
    clock.advance(10h);
    EXPECT_THAT(identifiers(), IsEmpty());
    EXPECT_EQ(clock.sleepers(), 0U);
}

// The gate

struct GateRow {
    const char* name;
    AppLibrary::Phase::Kind phase;
    bool isSweeping;
    bool isLowPower;
    bool passes;
};

class AppLibraryAutomationGate : public AppLibraryAutomation, public testing::WithParamInterface<GateRow> {};

TEST_P(AppLibraryAutomationGate, ATickDoesAllOfItsWorkOrNothingAtAll) {
    const auto& row = GetParam();
    prepareReminder();
    turnOn(Keys::kNudgeOnThreshold);
    defaults.set(Keys::kThresholdGB, std::int64_t{1});
    makeReclaimable(1'000'000'000);
    startWithScans();
    defaults.set(Keys::kLastScan, atNextTick()); // no scan is due: it would change the phase
    library->phase = Phase{row.phase};
    library->isSweeping = row.isSweeping;
    power.isLowPower = row.isLowPower;
    passHour();
    const bool isNudged = row.passes && row.phase == Kind::ready;
    std::vector<std::string> expected;
    if (isNudged) {
        expected.emplace_back("threshold");
    }
    if (row.passes) {
        expected.emplace_back("weekly");
    }
    EXPECT_EQ(identifiers(), expected);
    EXPECT_EQ(defaults.isStored(Keys::kLastReminder), row.passes);
    EXPECT_EQ(defaults.isStored(Keys::kNudgedThreshold), isNudged);

    defaults.clear(Keys::kLastScan);
    passHour();
    EXPECT_EQ(scans(), row.passes ? 1 : 0);
    EXPECT_EQ(defaults.isStored(Keys::kLastScan), row.passes);
}

INSTANTIATE_TEST_SUITE_P(
    EveryState, AppLibraryAutomationGate,
    testing::Values(GateRow{"Idle", AppLibrary::Phase::Kind::idle, false, false, true},
                    GateRow{"Ready", AppLibrary::Phase::Kind::ready, false, false, true},
                    GateRow{"Scanning", AppLibrary::Phase::Kind::scanning, false, false, false},
                    GateRow{"Measuring", AppLibrary::Phase::Kind::measuring, false, false, false},
                    GateRow{"FindingOrphans", AppLibrary::Phase::Kind::findingOrphans, false, false, false},
                    GateRow{"FindingDeveloperCaches", AppLibrary::Phase::Kind::findingDeveloperCaches, false,
                            false, false},
                    GateRow{"Sweeping", AppLibrary::Phase::Kind::ready, true, false, false},
                    GateRow{"LowPower", AppLibrary::Phase::Kind::ready, false, true, false},
                    GateRow{"IdleInLowPower", AppLibrary::Phase::Kind::idle, false, true, false}),
    [](const auto& row) { return row.param.name; });

TEST_F(AppLibraryAutomation, AScanThatWasMissedInLowPowerRunsAtTheFirstTickAfterItEnds) {
    startWithScans();
    power.isLowPower = true;
    passHour();
    passHour();
    EXPECT_EQ(scans(), 0);
    power.isLowPower = false;
    clock.advance(59min);
    EXPECT_EQ(scans(), 0) << "nothing hurries";
    passHour();
    EXPECT_EQ(scans(), 1);
}

TEST_F(AppLibraryAutomation, AfterASweepTheNextChanceIsAnHourLater) {
    startWithScans();
    library->isSweeping = true;
    clock.advance(1h);
    library->isSweeping = false;
    clock.advance(1h - 1ns);
    EXPECT_EQ(scans(), 0);
    clock.advance(1ns);
    EXPECT_EQ(scans(), 1);
}

// Scans

TEST_F(AppLibraryAutomation, TheScanIsAnAutomaticOne) {
    addApps(3);
    startWithScans();
    runner.clearHistory();
    clock.advance(1h);
    EXPECT_EQ(AppLibraryTesting::currentReason(*library), ScanReason::automatic);
    ASSERT_FALSE(runner.history().empty());
    EXPECT_EQ(runner.history().front(), Priority::background);
}

TEST_F(AppLibraryAutomation, WithoutALastScanTheFirstTickScans) {
    startWithScans();
    passHour();
    EXPECT_EQ(scans(), 1);
}

TEST_F(AppLibraryAutomation, WithScheduledScansOffNothingIsScanned) {
    start();
    passHour();
    EXPECT_EQ(scans(), 0);
    EXPECT_FALSE(defaults.isStored(Keys::kLastScan));
    EXPECT_FALSE(*library->isLoadingStartup);
    EXPECT_THAT(commands.calls(), IsEmpty());
}

TEST_F(AppLibraryAutomation, TheSettingIsReadAtEachTick) {
    start();
    passHour();
    turnOn(Keys::kScheduledScans);
    passHour();
    EXPECT_EQ(scans(), 1);
    defaults.set(Keys::kScheduledScans, false);
    defaults.clear(Keys::kLastScan);
    passHour();
    EXPECT_EQ(scans(), 1);
}

TEST_F(AppLibraryAutomation, TheMomentAtWhichTheTickBeganIsNotedWhenItsScanHasEnded) {
    startWithScans();
    const auto began = atNextTick();
    clock.advance(1h);
    clock.advance(2s - 1ns);
    EXPECT_FALSE(defaults.isStored(Keys::kLastScan)) << "the tick looks again after two seconds";
    clock.advance(1ns);
    EXPECT_EQ(stored<Date>(Keys::kLastScan), began);
    EXPECT_EQ(library->lastAutomaticScan(), began);
}

TEST_F(AppLibraryAutomation, AScanOfTheUsersIsNoAutomaticOne) {
    startWithScans();
    scan();
    EXPECT_FALSE(defaults.isStored(Keys::kLastScan));
}

// A stored frequency and the period in hours that it makes.
struct PeriodRow {
    const char* name;
    Value frequency;
    double hours;
};

class AppLibraryScanPeriod : public AppLibraryAutomation, public testing::WithParamInterface<PeriodRow> {};

TEST_P(AppLibraryScanPeriod, AScanIsDueWhenThePeriodIsOverAndNotBefore) {
    defaults.set(Keys::kScanFrequencyHours, GetParam().frequency);
    startWithScans();
    const auto due = [&] { return atNextTick().addingSeconds(-GetParam().hours * 3600); };
    defaults.set(Keys::kLastScan, due().addingSeconds(1));
    passHour();
    EXPECT_EQ(scans(), 0) << "a second too early";
    defaults.set(Keys::kLastScan, due());
    passHour();
    EXPECT_EQ(scans(), 1) << "exactly";
    defaults.set(Keys::kLastScan, due().addingSeconds(-1));
    passHour();
    EXPECT_EQ(scans(), 2);
}

INSTANTIATE_TEST_SUITE_P(
    EveryFrequency, AppLibraryScanPeriod,
    testing::Values(PeriodRow{"SixHours", std::int64_t{6}, 6}, PeriodRow{"Daily", std::int64_t{24}, 24},
                    PeriodRow{"Weekly", std::int64_t{168}, 168}, PeriodRow{"One", std::int64_t{1}, 1},
                    PeriodRow{"Odd", std::int64_t{37}, 37}, PeriodRow{"Zero", std::int64_t{0}, 1},
                    PeriodRow{"Negative", std::int64_t{-24}, 1}, PeriodRow{"Least", kLeastInteger, 1},
                    PeriodRow{"Text", std::string("6"), 6}, PeriodRow{"Words", std::string("often"), 1},
                    PeriodRow{"Real", 6.9, 6}, PeriodRow{"Truth", true, 1},
                    PeriodRow{"Data", Defaults::Data{1}, 1}, PeriodRow{"ADate", Date{7200}, 1}),
    [](const auto& row) { return row.param.name; });

TEST_F(AppLibraryAutomation, BeforeTheSettingWasTouchedThePeriodIsADay) {
    startWithScans();
    defaults.set(Keys::kLastScan, atNextTick().addingSeconds(1 - 24 * 3600));
    passHour();
    EXPECT_EQ(scans(), 0);
    passHour();
    EXPECT_EQ(scans(), 1);
}

TEST_F(AppLibraryAutomation, APeriodBeyondAllDatesIsNeverOver) {
    defaults.set(Keys::kScanFrequencyHours, kMostInteger);
    startWithScans();
    defaults.set(Keys::kLastScan, Date::distantPast());
    passHour();
    EXPECT_EQ(scans(), 0);
}

TEST_F(AppLibraryAutomation, WhatIsNoDateIsNoLastScan) {
    startWithScans();
    int expected = 0;
    for (const Value& value : {Value(std::string("2099-01-01T00:00:00Z")), Value(kMostInteger), Value(1e300),
                               Value(true), Value(Defaults::Data{1, 2}), Value(std::vector<std::string>{})}) {
        defaults.set(Keys::kLastScan, value);
        EXPECT_EQ(library->lastAutomaticScan(), std::nullopt);
        const auto began = atNextTick();
        passHour();
        EXPECT_EQ(scans(), ++expected);
        EXPECT_EQ(stored<Date>(Keys::kLastScan), began) << "mended by the scan";
    }
}

TEST_F(AppLibraryAutomation, ALastScanThatIsTakenAwayIsAbsent) {
    library->setLastAutomaticScan(Date{5});
    EXPECT_EQ(stored<Date>(Keys::kLastScan), Date{5});
    EXPECT_EQ(library->lastAutomaticScan(), Date{5});
    library->setLastAutomaticScan(std::nullopt);
    EXPECT_FALSE(defaults.isStored(Keys::kLastScan));
    EXPECT_EQ(library->lastAutomaticScan(), std::nullopt);
}

TEST_F(AppLibraryAutomation, AScanThatTheUserStartsMeanwhileExtendsTheWait) {
    addApps(1);
    startWithScans();
    clock.advanceWithoutRunning(1h);
    runner.settle();
    ASSERT_EQ(library->phase->kind, Kind::scanning);
    library->refresh(ScanReason::user);
    while (scans() < 2) { // to the end of the first scan, where the user's begins
        runner.runJob();
        runner.settle();
    }
    passWithoutJobs(10s);
    EXPECT_FALSE(defaults.isStored(Keys::kLastScan));
    runner.runAll();
    passWithoutJobs(2s);
    EXPECT_TRUE(defaults.isStored(Keys::kLastScan));
}

TEST_F(AppLibraryAutomation, AStuckScanIsGivenUpAfterTenMinutesAndNotStartedAgain) {
    prepareReminder();
    addAgent("com.acme.agent");
    startWithScans();
    const auto began = atNextTick();
    clock.advanceWithoutRunning(1h);
    runner.settle();
    ASSERT_EQ(library->phase->kind, Kind::scanning);
    passWithoutJobs(599s);
    EXPECT_FALSE(defaults.isStored(Keys::kLastScan));
    EXPECT_FALSE(*library->isLoadingStartup);
    passWithoutJobs(1s);
    EXPECT_EQ(stored<Date>(Keys::kLastScan), began);
    EXPECT_TRUE(*library->isLoadingStartup) << "the rest of the tick goes on";
    passWithoutJobs(60s);
    EXPECT_THAT(identifiers(), ElementsAre("weekly"));
    EXPECT_EQ(library->phase->kind, Kind::scanning);
    passWithoutJobs(3h);
    EXPECT_EQ(scans(), 1);
}

// Startup items

TEST_F(AppLibraryAutomation, ATickThatScannedLoadsTheStartupItemsAndThenSeesTheNewOne) {
    turnOn(Keys::kNudgeOnNewStartup);
    defaults.set(Keys::kKnownStartupLabels, std::vector<std::string>{"com.acme.known"});
    addAgent("com.acme.known");
    addAgent("com.acme.new");
    startWithScans();
    clock.advance(1h);
    EXPECT_EQ(library->phase->kind, Kind::ready);
    EXPECT_THAT(identifiers(), IsEmpty()) << "the end of the scan has seen none yet";
    clock.advance(kScanningTick);
    EXPECT_THAT(identifiers(), ElementsAre("startup-1"));
}

TEST_F(AppLibraryAutomation, AStuckLoadIsGivenUpAfterAMinute) {
    turnOn(Keys::kNudgeOnThreshold);
    prepareReminder();
    startWithScans();
    clock.advance(1h); // the scan is over
    makeReclaimable(5'000'000'000);
    passWithoutJobs(2s);
    ASSERT_TRUE(*library->isLoadingStartup);
    passWithoutJobs(59s);
    EXPECT_THAT(identifiers(), IsEmpty());
    passWithoutJobs(1s);
    EXPECT_THAT(identifiers(), ElementsAre("threshold", "weekly"));
    EXPECT_TRUE(*library->isLoadingStartup) << "a launchctl that hangs";
    EXPECT_EQ(clock.sleepers(), 1U) << "the loop is at rest again";
}

TEST_F(AppLibraryAutomation, WhileALoadHangsNoTickBeginsAnother) {
    startWithScans();
    clock.advance(1h); // the scan is over
    passWithoutJobs(2s);
    ASSERT_TRUE(*library->isLoadingStartup);
    const auto waiting = runner.waitingJobs();
    passWithoutJobs(60s);
    defaults.clear(Keys::kLastScan);
    passWithoutJobs(1h);
    passWithoutJobs(601s);
    EXPECT_TRUE(*library->isLoadingStartup);
    EXPECT_LE(runner.waitingJobs(), waiting + 1) << "the next scan waits for a thread, and no other load";
}

TEST_F(AppLibraryAutomation, ATickThatHasNothingToScanLoadsNoStartupItems) {
    startWithScans();
    defaults.set(Keys::kLastScan, atNextTick());
    passHour();
    EXPECT_THAT(commands.calls(), IsEmpty());
}

// The weekly reminder

TEST_F(AppLibraryAutomation, WithoutScansTheReminderGoesByTheFiguresOfTheLastOne) {
    prepareReminder();
    turnOn(Keys::kNudgeOnThreshold);
    makeReclaimable(7'000'000'000);
    beReady();
    start();
    const auto began = atNextTick();
    passHour();
    EXPECT_EQ(scans(), 0);
    EXPECT_THAT(identifiers(), ElementsAre("threshold", "weekly"));
    EXPECT_EQ(notifications.added.at(1),
              (UserNotification{
                  .identifier = "weekly",
                  .title = "7 GB reclaimable",
                  .body = "Open Quillane to review what can go. Nothing is removed until you confirm it.",
                  .userInfo = {{"section", "Overview"}}}));
    EXPECT_EQ(stored<Date>(Keys::kLastReminder), began);
}

TEST_F(AppLibraryAutomation, WithoutItsSettingNothingIsRemindedOf) {
    makeReclaimable(7'000'000'000);
    start();
    passHour();
    EXPECT_THAT(identifiers(), IsEmpty());
    EXPECT_FALSE(defaults.isStored(Keys::kLastReminder));
}

TEST_F(AppLibraryAutomation, OnlyMoreThanFiveHundredMegabytesAreWorthAReminder) {
    turnOn(Keys::kWeeklyReminder);
    start();
    for (const Bytes bytes : {Bytes{0}, Bytes{499'999'999}, Bytes{500'000'000}}) {
        makeReclaimable(bytes);
        passHour();
        EXPECT_THAT(identifiers(), IsEmpty()) << bytes;
        EXPECT_FALSE(defaults.isStored(Keys::kLastReminder)) << bytes;
    }
    makeReclaimable(500'000'001);
    passHour();
    EXPECT_THAT(identifiers(), ElementsAre("weekly"));
}

TEST_F(AppLibraryAutomation, AReminderRepeatsWhenMoreThanAWeekHasPassedAndNotBefore) {
    prepareReminder();
    start();
    for (const double seconds : {0.0, 1.0, 604'799.0, 604'800.0}) {
        const auto last = atNextTick().addingSeconds(-seconds);
        defaults.set(Keys::kLastReminder, last);
        passHour();
        EXPECT_THAT(identifiers(), IsEmpty()) << seconds;
        EXPECT_EQ(stored<Date>(Keys::kLastReminder), last) << "a week is measured from the last one sent";
    }
    defaults.set(Keys::kLastReminder, atNextTick().addingSeconds(-604'801));
    passHour();
    EXPECT_THAT(identifiers(), ElementsAre("weekly"));
}

TEST_F(AppLibraryAutomation, WhatIsNoDateIsNoLastReminder) {
    prepareReminder();
    start();
    std::size_t expected = 0;
    for (const Value& value :
         {Value(std::string("now")), Value(kMostInteger), Value(true), Value(Defaults::Data{1})}) {
        defaults.set(Keys::kLastReminder, value);
        passHour();
        EXPECT_EQ(notifications.added.size(), ++expected);
    }
}

// The wall clock

TEST_F(AppLibraryAutomation, TheHourGoesByTheClockThatNobodySets) {
    prepareReminder();
    start();
    clock.advance(30min);
    clock.setNow(clock.now().addingSeconds(5 * 86'400));
    clock.advance(20min);
    clock.setNow(clock.now().addingSeconds(-9 * 86'400));
    clock.advance(10min - 1ns);
    EXPECT_THAT(identifiers(), IsEmpty());
    clock.advance(1ns);
    EXPECT_THAT(identifiers(), ElementsAre("weekly"));
}

TEST_F(AppLibraryAutomation, AClockThatJumpsForwardMakesOneScanDueAndNotMany) {
    startWithScans();
    passHour();
    ASSERT_EQ(scans(), 1);
    clock.setNow(clock.now().addingSeconds(5 * 86'400));
    passHour();
    EXPECT_EQ(scans(), 2);
    passHour();
    EXPECT_EQ(scans(), 2);
}

TEST_F(AppLibraryAutomation,
       AClockThatJumpsBackByLessThanThePeriodMakesTheScanWaitUntilItsMomentHasComeAgain) {
    startWithScans();
    passHour();
    ASSERT_EQ(scans(), 1);
    clock.setNow(clock.now().addingSeconds(-20 * 3600));
    for (int hour = 0; hour < 20 + 24 - 1; ++hour) {
        passHour();
    }
    EXPECT_EQ(scans(), 1);
    passHour();
    EXPECT_EQ(scans(), 2);
}

TEST_F(AppLibraryAutomation, AClockThatJumpsBackByAYearMakesOneScanDueAndNotMany) {
    startWithScans();
    passHour();
    ASSERT_EQ(scans(), 1);
    clock.setNow(clock.now().addingSeconds(-365 * 86'400));
    for (int hour = 0; hour < 23; ++hour) {
        passHour();
    }
    EXPECT_EQ(scans(), 2);
}

TEST_P(AppLibraryScanPeriod, ALastScanThatLiesFurtherAheadThanThePeriodIsNone) {
    defaults.set(Keys::kScanFrequencyHours, GetParam().frequency);
    startWithScans();
    const auto furthest = atNextTick().addingSeconds(GetParam().hours * 3600);
    defaults.set(Keys::kLastScan, furthest);
    passHour();
    EXPECT_EQ(scans(), 0);
    defaults.set(Keys::kLastScan, atNextTick().addingSeconds(GetParam().hours * 3600 + 1));
    passHour();
    EXPECT_EQ(scans(), 1);
}

TEST_F(AppLibraryAutomation, ALastReminderThatLiesMoreThanAWeekAheadIsNone) {
    prepareReminder();
    start();
    defaults.set(Keys::kLastReminder, atNextTick().addingSeconds(604'800));
    passHour();
    EXPECT_THAT(identifiers(), IsEmpty());
    const auto tick = atNextTick();
    defaults.set(Keys::kLastReminder, tick.addingSeconds(604'801));
    passHour();
    EXPECT_THAT(identifiers(), ElementsAre("weekly"));
    EXPECT_EQ(stored<Date>(Keys::kLastReminder), tick);
}

TEST_F(AppLibraryAutomation, AClockThatJumpsDuringATickLeavesTheMomentAtWhichItBegan) {
    prepareReminder();
    startWithScans();
    const auto began = atNextTick();
    clock.advance(1h);
    makeReclaimable(500'000'001);
    clock.setNow(clock.now().addingSeconds(-30 * 86'400));
    clock.advance(kScanningTick);
    EXPECT_EQ(stored<Date>(Keys::kLastScan), began);
    EXPECT_EQ(stored<Date>(Keys::kLastReminder), began);
}

} // namespace
} // namespace quillane
