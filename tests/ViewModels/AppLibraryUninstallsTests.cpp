// Applications that vanish behind the library's back.
#include "DefaultsKeys.h"
#include "FakeDirectoryWatch.h"
#include "LibraryTest.h"
#include "PosixDirectoryWatch.h"
#include "RecordingNotifications.h"
#include "StoredRecords.h"
#include <condition_variable>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <limits>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillane {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class AppLibraryUninstalls : public LibraryTest {
  protected:
    AppLibraryUninstalls() {
        library = std::make_unique<AppLibrary>(watched);
        addApp("Applications/Alpha.app", "com.acme.alpha", "Alpha");
        addApp("Applications/Beta.app", "com.acme.beta", "Beta");
        disk.folder("Users/alex/Applications").folder("Users/alex/.Trash");
    }
    ~AppLibraryUninstalls() override { library.reset(); } // before the ports that stand here

    // A scan has ended, and the folders are watched.
    void begin() {
        scan();
        library->syncUninstallWatcher();
        runner.runAll();
    }
    static FileURL app(const std::string& name) { return FileURL("/Applications/" + name + ".app"); }
    static FileURL home(const std::string& below) { return FileURL("/Users/alex/" + below); }
    // A support file of this size that is found by the identifier.
    FileURL leave(const std::string& below, std::int64_t bytes) {
        disk.allocated("Users/alex/" + below, bytes);
        return home(below);
    }
    bool isThere(const FileURL& url) const { return fs::exists(disk.at(url.path())); }
    void remove(const FileURL& url) { disk.remove(url.path()); }
    void trash(const std::string& name) { disk.rename("Applications/" + name, "Users/alex/.Trash/" + name); }
    void tellChange() { directories.change(FileURL("/Applications")); }
    // Two seconds and all that follows from them.
    void comeDue() {
        tellChange();
        clock.advance(2s);
    }
    // The same up to the diff, with every job that it starts still waiting.
    void comeDueWithJobsWaiting() {
        tellChange();
        runner.settle();
        clock.advanceWithoutRunning(2s);
        runner.settle();
        runner.runJob(runner.waitingJobs() - 1); // the listing, which came last
        runner.settle();
    }
    int scans() const { return AppLibraryTesting::generation(*library); }
    std::vector<std::string> recorded() const {
        std::vector<std::string> names;
        for (const auto& record : *library->recentUninstalls) {
            names.push_back(record.name);
        }
        return names;
    }
    std::optional<std::vector<RecentUninstall>> stored() const {
        const auto data = defaults.data("recentUninstalls");
        return data ? StoredRecords::decodeRecentUninstalls(*data) : std::nullopt;
    }
    static RecentUninstall record(const std::string& name,
                                  std::vector<RecentUninstall::Leftover> leftovers = {}) {
        return {name, "com.acme." + name, Date{700'000'000}, std::move(leftovers)};
    }
    Task<> undo() { co_await library->undoLastOperation(); }

    FakeDirectoryWatch directories{runner};
    RecordingNotifications notifications{runner};
    const Platform watched{.files = files,
                           .commands = commands,
                           .metadata = metadata,
                           .clock = clock,
                           .tasks = runner,
                           .workspace = workspace,
                           .trash = LibraryTest::trash,
                           .runningApplications = running,
                           .defaults = defaults,
                           .directories = directories,
                           .notifications = notifications};
};

TEST_F(AppLibraryUninstalls, WhatAnotherStartHasRecordedStaysBesideANewRecord) {
    begin();
    defaults.set(DefaultsKeys::kRecentUninstalls, *StoredRecords::encode(std::vector{record("other")}));
    trash("Alpha.app");
    comeDue();
    EXPECT_THAT(recorded(), ElementsAre("Alpha", "other"));
    EXPECT_EQ(stored(), *library->recentUninstalls);
}

// The watcher and its setting

TEST_F(AppLibraryUninstalls, TheApplicationsFoldersAreWatchedUnlessTheSettingIsOff) {
    library->syncUninstallWatcher();
    EXPECT_THAT(directories.watched(), ElementsAre(FileURL("/Applications"), home("Applications")))
        << "nobody has ever touched the setting";
    library->syncUninstallWatcher();
    EXPECT_EQ(directories.watched().size(), 2U) << "one that runs is left alone";
    defaults.set(DefaultsKeys::kWatchUninstalls, false);
    library->syncUninstallWatcher();
    EXPECT_THAT(directories.watched(), IsEmpty());
    library->syncUninstallWatcher();
    EXPECT_THAT(directories.watched(), IsEmpty());
    defaults.set(DefaultsKeys::kWatchUninstalls, true);
    library->syncUninstallWatcher();
    EXPECT_EQ(directories.watched().size(), 2U);
}

TEST_F(AppLibraryUninstalls, ASecondSyncDoesNotForgetAPendingChange) {
    begin();
    trash("Alpha.app");
    tellChange();
    runner.settle();
    library->syncUninstallWatcher();
    clock.advance(2s);
    EXPECT_THAT(recorded(), ElementsAre("Alpha"));
}

TEST_F(AppLibraryUninstalls, WhatVanishesWhileTheSettingIsOffIsNeverReported) {
    begin();
    defaults.set(DefaultsKeys::kWatchUninstalls, false);
    trash("Alpha.app");
    tellChange();
    runner.settle();
    library->syncUninstallWatcher(); // also takes back what is pending
    clock.advance(1h);
    const int before = scans();
    defaults.set(DefaultsKeys::kWatchUninstalls, true);
    library->syncUninstallWatcher();
    runner.runAll();
    comeDue();
    EXPECT_THAT(recorded(), IsEmpty());
    EXPECT_EQ(scans(), before) << "the new watcher begins with a fresh listing";
}

// What is recorded

TEST_F(AppLibraryUninstalls, AnApplicationThatVanishesIsRecordedWithWhatItLeft) {
    const auto caches = leave("Library/Caches/com.acme.alpha", 200'000);
    const auto support = leave("Library/Application Support/Alpha", 100'000);
    begin();
    trash("Alpha.app");
    comeDue();
    ASSERT_THAT(recorded(), ElementsAre("Alpha"));
    const auto& made = library->recentUninstalls->front();
    EXPECT_EQ(made.bundleIdentifier, "com.acme.alpha");
    EXPECT_EQ(made.removedAt, clock.now());
    const auto bytesOf = [&](const FileURL& url) { return disk.allocationOf(url.path()); };
    EXPECT_THAT(
        made.leftovers,
        ElementsAre(RecentUninstall::Leftover{caches, "Caches", bytesOf(caches), true},
                    RecentUninstall::Leftover{support, "Application Support", bytesOf(support), false}));
}

TEST_F(AppLibraryUninstalls, TheScanThatFollowsIsOneAndAutomaticAndNoLongerHasTheApplication) {
    begin();
    const int before = scans();
    trash("Alpha.app");
    comeDue();
    EXPECT_EQ(scans(), before + 1);
    EXPECT_EQ(AppLibraryTesting::currentReason(*library), ScanReason::automatic);
    EXPECT_THAT(names(), ElementsAre("Beta"));
}

TEST_F(AppLibraryUninstalls, ItIsLookedUpBeforeTheListIsMadeAnewHoweverLateItsLeftoversAreFound) {
    leave("Library/Caches/com.acme.alpha", 1000);
    begin();
    trash("Alpha.app");
    comeDueWithJobsWaiting();
    EXPECT_THAT(names(), ElementsAre("Alpha", "Beta"));
    library->apps = std::vector<InstalledApp>(); // as a scan would that overtakes it
    runner.runAll();
    ASSERT_THAT(recorded(), ElementsAre("Alpha"));
    EXPECT_EQ(library->recentUninstalls->front().leftovers.size(), 1U);
}

TEST_F(AppLibraryUninstalls, AMoveToTheOtherFolderWithTheIdentifierIntactIsNoRecordAndOneAutomaticScan) {
    begin();
    const int before = scans();
    disk.rename("Applications/Alpha.app", "Users/alex/Applications/Alpha.app");
    comeDue();
    EXPECT_THAT(recorded(), IsEmpty());
    EXPECT_EQ(scans(), before + 1);
    EXPECT_EQ(AppLibraryTesting::currentReason(*library), ScanReason::automatic);
}

TEST_F(AppLibraryUninstalls, ANewNameForTheSameBundleIsNoRecord) {
    begin();
    disk.rename("Applications/Alpha.app", "Applications/Alpha 2.app");
    comeDue();
    EXPECT_THAT(recorded(), IsEmpty());
}

TEST_F(AppLibraryUninstalls, OfTwoThatVanishOnlyTheOneWhoseIdentifierCameAgainHasMoved) {
    begin();
    disk.rename("Applications/Alpha.app", "Users/alex/Applications/Alpha.app");
    trash("Beta.app");
    comeDue();
    EXPECT_THAT(recorded(), ElementsAre("Beta"));
}

TEST_F(AppLibraryUninstalls, AReplacementInPlaceMakesNothingHappenAtAll) {
    begin();
    const int before = scans();
    trash("Alpha.app");
    tellChange();
    clock.advance(1s);
    addApp("Applications/Alpha.app", "com.acme.alpha", "Alpha");
    tellChange();
    clock.advance(1h);
    EXPECT_THAT(recorded(), IsEmpty());
    EXPECT_EQ(scans(), before);
}

TEST_F(AppLibraryUninstalls, AnApplicationWithoutAnIdentifierIsRecordedByItsNameAndCannotBeToldFromAMove) {
    addApp("Applications/Gamma.app", "", "Gamma");
    begin();
    disk.rename("Applications/Gamma.app", "Users/alex/Applications/Gamma.app");
    comeDue();
    ASSERT_THAT(recorded(), ElementsAre("Gamma"));
    EXPECT_EQ(library->recentUninstalls->front().bundleIdentifier, std::nullopt);
    EXPECT_EQ(library->recentUninstalls->front().id(), "Gamma");
}

TEST_F(AppLibraryUninstalls, ANewApplicationIsNoRecordAndOneScan) {
    begin();
    const int before = scans();
    addApp("Applications/Gamma.app", "com.acme.gamma", "Gamma");
    comeDue();
    EXPECT_THAT(recorded(), IsEmpty());
    EXPECT_EQ(scans(), before + 1);
    EXPECT_THAT(names(), ElementsAre("Alpha", "Beta", "Gamma"));
}

TEST_F(AppLibraryUninstalls, AnApplicationThatCameAndWentBetweenTwoScansIsNoRecord) {
    begin();
    addApp("Applications/Gamma.app", "com.acme.gamma", "Gamma");
    tellChange();
    runner.settle();
    clock.advanceWithoutRunning(2s);
    runner.settle();
    runner.runJob(); // the look that sees it; the scan that would find it does not come to it
    runner.settle();
    trash("Gamma.app");
    const int before = scans();
    comeDue();
    EXPECT_THAT(recorded(), IsEmpty());
    EXPECT_EQ(scans(), before + 1);
}

TEST_F(AppLibraryUninstalls, WhatCannotSayItsIdentifierDoesNotMakeARemovalAMove) {
    struct Row {
        const char* what;
        std::optional<std::string> plist;
    };
    for (const auto& row : {Row{"no list", std::nullopt}, Row{"garbage", "garbage"},
                            Row{"no dictionary", "()"}, Row{"none in it", "{CFBundleName=Alpha;}"},
                            Row{"no text", "{CFBundleIdentifier=(com.acme.alpha);}"},
                            Row{"another's", "{CFBundleIdentifier=\"com.acme.alpha.2\";}"}}) {
        library = std::make_unique<AppLibrary>(watched);
        library->recentUninstalls = std::vector<RecentUninstall>();
        begin();
        trash("Alpha.app");
        disk.folder("Users/alex/Applications/New.app/Contents");
        if (row.plist) {
            disk.file("Users/alex/Applications/New.app/Contents/Info.plist", *row.plist);
        }
        comeDue();
        EXPECT_THAT(recorded(), ElementsAre("Alpha")) << row.what;
        library.reset();
        remove(home("Applications/New.app"));
        disk.rename("Users/alex/.Trash/Alpha.app", "Applications/Alpha.app");
    }
}

TEST_F(AppLibraryUninstalls, ASecondRemovalOfTheSameApplicationReplacesItsRecordInFront) {
    leave("Library/Caches/com.acme.alpha", 1000);
    begin();
    trash("Alpha.app");
    comeDue();
    trash("Beta.app");
    comeDue();
    ASSERT_THAT(recorded(), ElementsAre("Beta", "Alpha"));
    const auto first = library->recentUninstalls->back().removedAt;
    disk.rename("Users/alex/.Trash/Alpha.app", "Applications/Alpha.app");
    comeDue();
    leave("Library/Preferences/com.acme.alpha.plist", 1000);
    trash("Alpha.app");
    comeDue();
    ASSERT_THAT(recorded(), ElementsAre("Alpha", "Beta"));
    EXPECT_GT(library->recentUninstalls->front().removedAt, first);
    EXPECT_EQ(library->recentUninstalls->front().leftovers.size(), 2U);
}

TEST_F(AppLibraryUninstalls, OfSeveralInOneDiffTheOneWhoseLeftoversAreFoundLastIsInFront) {
    begin();
    trash("Alpha.app");
    trash("Beta.app");
    comeDueWithJobsWaiting();
    runner.runJob(); // the identifiers of what came
    runner.settle();
    ASSERT_GE(runner.waitingJobs(), 2U);
    EXPECT_EQ(runner.waitingPriority(0), Priority::userInitiated);
    EXPECT_EQ(runner.waitingPriority(1), Priority::userInitiated);
    runner.runJob(1);
    runner.settle();
    EXPECT_THAT(recorded(), ElementsAre("Beta"));
    runner.runJob(0);
    runner.settle();
    EXPECT_THAT(recorded(), ElementsAre("Alpha", "Beta"));
}

TEST_F(AppLibraryUninstalls, AClockThatJumpsBackLeavesTheNewestInFront) {
    begin();
    trash("Alpha.app");
    comeDue();
    clock.setNow(Date{clock.now().secondsSinceReferenceDate - 1e9});
    trash("Beta.app");
    comeDue();
    EXPECT_THAT(recorded(), ElementsAre("Beta", "Alpha"));
}

// What we did ourselves

TEST_F(AppLibraryUninstalls, WhatTheLastCleanupMovedIsNoRecordAndTheScanStillComes) {
    begin();
    const auto listed = *library->apps;
    library->tasks().start([&](StopToken) -> Task<> {
        co_await library->runSweep({{app("Alpha"), SweepCategory::apps, "Alpha", "", 1}}, "Uninstall Alpha");
    });
    runner.runAll();
    ASSERT_FALSE(isThere(app("Alpha")));
    library->apps = listed; // a scan that had looked before the move
    const int before = scans();
    comeDue();
    EXPECT_THAT(recorded(), IsEmpty());
    EXPECT_EQ(scans(), before + 1);
}

TEST_F(AppLibraryUninstalls, WhatARunningCleanupHasMovedIsNoRecord) {
    const auto note = leave("note", 10);
    begin();
    const auto listed = *library->apps;
    library->tasks().start([&](StopToken) -> Task<> {
        co_await library->runSweep({{app("Alpha"), SweepCategory::apps, "Alpha", "", 1},
                                    {note, SweepCategory::files, "note", "", 1}},
                                   "Uninstall Alpha");
    });
    runner.settle();
    clock.advanceWithoutRunning(0s);
    ASSERT_TRUE(runner.runUntil([&] { return !isThere(app("Alpha")) && runner.waitingJobs() == 1; }));
    ASSERT_TRUE(*library->isSweeping);
    ASSERT_FALSE(library->lastOperation->has_value()) << "which is written at the end";
    library->apps = listed;
    comeDueWithJobsWaiting();
    runner.runAll();
    EXPECT_THAT(recorded(), IsEmpty());
}

TEST_F(AppLibraryUninstalls, WhatARunningCleanupIsMovingIsNoRecord) {
    begin();
    library->tasks().start([&](StopToken) -> Task<> {
        co_await library->runSweep({{app("Alpha"), SweepCategory::apps, "Alpha", "", 1}}, "Uninstall Alpha");
    });
    ASSERT_TRUE(
        runner.runUntil([&] { return *library->sweepStatus == "Alpha" && runner.waitingJobs() == 1; }));
    trash("Alpha.app"); // the rename is done; the report has not come yet
    comeDueWithJobsWaiting();
    runner.runAll();
    EXPECT_THAT(recorded(), IsEmpty());
}

TEST_F(AppLibraryUninstalls, WhatACleanupCouldNotMoveIsRecordedWhenItVanishesLater) {
    disk.permissions("Applications", 0700);
    begin();
    trash("Alpha.app");
    library->tasks().start([&](StopToken) -> Task<> {
        const auto report = co_await library->runSweep({{app("Alpha"), SweepCategory::apps, "Alpha", "", 1},
                                                        {home("gone"), SweepCategory::files, "gone", "", 1}},
                                                       "Uninstall Alpha");
        EXPECT_EQ(report.failures.size(), 2U);
    });
    ASSERT_TRUE(
        runner.runUntil([&] { return *library->sweepStatus == "gone" && runner.waitingJobs() == 1; }));
    comeDueWithJobsWaiting();
    runner.runAll();
    EXPECT_THAT(recorded(), ElementsAre("Alpha"));
}

TEST_F(AppLibraryUninstalls, ACleanupThatHasEndedDoesNotHideLaterRemovals) {
    begin();
    library->tasks().start([&](StopToken) -> Task<> {
        co_await library->runSweep({{app("Alpha"), SweepCategory::apps, "Alpha", "", 1}}, "Uninstall Alpha");
        co_await library->undoLastOperation();
    });
    runner.runAll();
    ASSERT_TRUE(isThere(app("Alpha")));
    comeDue();
    trash("Alpha.app");
    comeDue();
    EXPECT_THAT(recorded(), ElementsAre("Alpha")) << "there is no operation any more that moved it";
}

TEST_F(AppLibraryUninstalls, WhatIsPutBackHasComeAndItsOldRecordStays) {
    leave("Library/Caches/com.acme.alpha", 1000);
    begin();
    trash("Alpha.app");
    comeDue();
    disk.rename("Users/alex/.Trash/Alpha.app", "Applications/Alpha.app");
    comeDue();
    library->tasks().start([&](StopToken) -> Task<> {
        co_await library->runSweep({{app("Alpha"), SweepCategory::apps, "Alpha", "", 1}}, "Uninstall Alpha");
    });
    runner.runAll();
    comeDue();
    library->tasks().start([&](StopToken) { return undo(); });
    runner.runAll();
    ASSERT_TRUE(isThere(app("Alpha")));
    const int before = scans();
    comeDue();
    EXPECT_EQ(scans(), before + 1);
    EXPECT_THAT(recorded(), ElementsAre("Alpha"));
}

// While something else runs

TEST_F(AppLibraryUninstalls, DuringAScanTheRecordIsMadeAndTheScanThatFollowsIsParked) {
    begin();
    scanToMeasuring(ScanReason::user);
    const int before = scans();
    trash("Alpha.app");
    comeDueWithJobsWaiting();
    runner.runJob(runner.waitingJobs() - 1); // the identifiers
    runner.settle();
    EXPECT_EQ(AppLibraryTesting::parked(*library), ScanReason::automatic);
    runner.runJob(runner.waitingJobs() - 1); // the leftovers
    runner.settle();
    EXPECT_NE(library->phase->kind, Kind::ready);
    EXPECT_THAT(recorded(), ElementsAre("Alpha"));
    runner.runAll();
    EXPECT_EQ(scans(), before + 1);
    EXPECT_THAT(recorded(), ElementsAre("Alpha"));
    EXPECT_THAT(names(), ElementsAre("Beta"));
}

TEST_F(AppLibraryUninstalls, ARecordThatIsMadeDuringACleanupOrAPutBackIsNotLost) {
    const auto note = leave("note", 10);
    begin();
    const std::function<Task<>()> works[] = {
        [&]() -> Task<> {
            co_await library->runSweep({{note, SweepCategory::files, "note", "", 1}}, "Remove note");
        },
        [&]() -> Task<> { co_await library->undoLastOperation(); }};
    for (const auto& [name, work] :
         {std::pair{std::string("Alpha.app"), works[0]}, std::pair{std::string("Beta.app"), works[1]}}) {
        library->tasks().start([&begun = work](StopToken) { return begun(); });
        runner.settle();
        ASSERT_TRUE(*library->isSweeping || *library->isPuttingBack);
        ASSERT_EQ(runner.waitingJobs(), 1U);
        trash(name);
        comeDueWithJobsWaiting();
        runner.runJob(1); // the identifiers
        runner.settle();
        runner.runJob(1); // the leftovers
        runner.settle();
        ASSERT_TRUE(*library->isSweeping || *library->isPuttingBack);
        runner.runAll();
    }
    EXPECT_THAT(recorded(), ElementsAre("Beta", "Alpha"));
    EXPECT_EQ(stored(), *library->recentUninstalls);
}

TEST_F(AppLibraryUninstalls, TheLibraryMayGoAtEveryPointOfARecord) {
    leave("Library/Caches/com.acme.alpha", 1000);
    for (int jobs = 0; jobs < 5; ++jobs) {
        library = std::make_unique<AppLibrary>(watched);
        begin();
        trash("Alpha.app");
        tellChange();
        runner.settle();
        clock.advanceWithoutRunning(2s);
        runner.settle();
        for (int i = 0; i < jobs; ++i) {
            runner.runJob();
            runner.settle();
        }
        library.reset();
        runner.runAll();
        EXPECT_THAT(directories.watched(), IsEmpty());
        disk.rename("Users/alex/.Trash/Alpha.app", "Applications/Alpha.app");
    }
}

// On the disk

// Steps of the test's own, but for what the system tells: that is waited for.
class HeardRunner final : public TaskRunner {
  public:
    explicit HeardRunner(StepTaskRunner& steps)
        : m_steps(steps) {}
    void run(Priority priority, Job job) override { m_steps.run(priority, std::move(job)); }
    void post(Job job) override {
        m_steps.post(std::move(job));
        const std::lock_guard lock(m_mutex);
        m_hasHeard = true;
        m_changed.notify_all();
    }
    bool hears() {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, 60s, [this] { return std::exchange(m_hasHeard, false); });
    }

  private:
    StepTaskRunner& m_steps;
    std::mutex m_mutex; // guards what follows
    std::condition_variable m_changed;
    bool m_hasHeard = false;
};

TEST_F(AppLibraryUninstalls, WhatTheSystemTellsOfTheDiskIsRecorded) {
    HeardRunner heard(runner);
    PosixDirectoryWatch onDisk(heard, [this](const FileURL& folder) { return disk.at(folder.path()); });
    const Platform real{.files = files,
                        .commands = commands,
                        .metadata = metadata,
                        .clock = clock,
                        .tasks = runner,
                        .workspace = workspace,
                        .trash = LibraryTest::trash,
                        .runningApplications = running,
                        .defaults = defaults,
                        .directories = onDisk};
    library = std::make_unique<AppLibrary>(real);
    const auto caches = leave("Library/Caches/com.acme.alpha", 1000);
    begin();
    trash("Alpha.app");
    ASSERT_TRUE(heard.hears());
    runner.settle();
    clock.advance(2s);
    ASSERT_THAT(recorded(), ElementsAre("Alpha"));
    EXPECT_EQ(library->recentUninstalls->front().leftovers.front().url, caches);
    library.reset();
}

// Telling the user

TEST_F(AppLibraryUninstalls, TheUserIsToldWhatWasLeftOnlyIfAskedFor) {
    leave("Library/Caches/com.acme.alpha", 1'200'000);
    const auto more = leave("Library/Preferences/com.acme.alpha.plist", 300'000);
    begin();
    trash("Alpha.app");
    comeDue();
    EXPECT_THAT(recorded(), ElementsAre("Alpha"));
    EXPECT_THAT(notifications.added, IsEmpty());
    disk.rename("Users/alex/.Trash/Alpha.app", "Applications/Alpha.app");
    comeDue();
    defaults.set(DefaultsKeys::kNudgeOnNewOrphans, true);
    trash("Alpha.app");
    comeDue();
    EXPECT_THAT(notifications.added,
                ElementsAre(UserNotification{"uninstall-com.acme.alpha",
                                             "Alpha left 1.5 MB behind",
                                             "Open Quillane to review what it left and put the space back.",
                                             {{"section", "Overview"}}}));
}

TEST_F(AppLibraryUninstalls, WhatLeftNothingIsRecordedAndNobodyIsTold) {
    defaults.set(DefaultsKeys::kNudgeOnNewOrphans, true);
    begin();
    trash("Alpha.app");
    comeDue();
    ASSERT_THAT(recorded(), ElementsAre("Alpha"));
    EXPECT_THAT(library->recentUninstalls->front().leftovers, IsEmpty());
    EXPECT_THAT(notifications.added, IsEmpty());
}

// What is kept

TEST_F(AppLibraryUninstalls, EachRecordAndEachDismissalIsStoredAtOnce) {
    begin();
    EXPECT_FALSE(defaults.isStored("recentUninstalls"));
    trash("Alpha.app");
    comeDue();
    EXPECT_EQ(stored(), *library->recentUninstalls);
    trash("Beta.app");
    comeDue();
    ASSERT_THAT(recorded(), ElementsAre("Beta", "Alpha"));
    EXPECT_EQ(stored(), *library->recentUninstalls);
    const AppLibrary next(watched);
    EXPECT_EQ(*next.recentUninstalls, *library->recentUninstalls);
    library->dismissRecentUninstall(library->recentUninstalls->front()); // which goes meanwhile
    EXPECT_THAT(recorded(), ElementsAre("Alpha"));
    EXPECT_EQ(stored(), *library->recentUninstalls);
    library->dismissRecentUninstall(library->recentUninstalls->front());
    const auto data = defaults.data("recentUninstalls").value();
    EXPECT_EQ(std::string(data.begin(), data.end()), "[]");
}

TEST_F(AppLibraryUninstalls, ADismissalTakesEveryRecordOfThatID) {
    auto nameless = record("com.acme.one");
    nameless.bundleIdentifier = std::nullopt; // its name is its id
    auto named = record("one");
    library->recentUninstalls = std::vector{named, record("two"), nameless, named};
    library->dismissRecentUninstall(nameless);
    EXPECT_THAT(recorded(), ElementsAre("two"));
}

TEST_F(AppLibraryUninstalls, ADismissalOfNothingLeavesEvenDamagedDataAlone) {
    const Defaults::Data garbage{'x'};
    defaults.set("recentUninstalls", garbage);
    library = std::make_unique<AppLibrary>(watched);
    library->dismissRecentUninstall(record("one"));
    EXPECT_EQ(defaults.data("recentUninstalls"), garbage);
}

TEST_F(AppLibraryUninstalls, WhatCanNotBeToldInJsonLeavesTheOldStoredValue) {
    begin();
    trash("Alpha.app");
    comeDue();
    const auto before = defaults.data("recentUninstalls");
    clock.setNow(Date{std::numeric_limits<double>::infinity()});
    trash("Beta.app");
    comeDue();
    EXPECT_THAT(recorded(), ElementsAre("Beta", "Alpha"));
    EXPECT_EQ(defaults.data("recentUninstalls"), before);
}

// What of it can go

struct RemovalForRecentUninstall : AppLibraryUninstalls {
    static RecentUninstall::Leftover leftover(const FileURL& url, const std::string& category, Bytes bytes,
                                              bool highConfidence = true) {
        return {url, category, bytes, highConfidence};
    }
    const FileURL caches = leave("Library/Caches/com.acme.gamma", 10);
    const FileURL support = leave("Library/Application Support/Gamma", 10);
    const RecentUninstall gamma = {
        "Gamma",
        "com.acme.gamma",
        Date{700'000'000},
        {leftover(caches, "Caches", 2000), leftover(support, "Application Support", 1000, false)}};
};

TEST_F(RemovalForRecentUninstall, HasARowForEachLeftoverAndWhatOnlyANameTiesStartsUnticked) {
    const auto removal = library->removalForRecentUninstall(gamma);
    EXPECT_EQ(removal.label, "Remove Gamma leftovers");
    EXPECT_THAT(removal.entries, ElementsAre(SweepEntry{caches, SweepCategory::orphans, "Gamma",
                                                        "Caches - com.acme.gamma", 2000},
                                             SweepEntry{support, SweepCategory::orphans, "Gamma",
                                                        "Application Support - Gamma", 1000}));
    EXPECT_THAT(removal.initiallyExcluded, ElementsAre(support));
    EXPECT_NE(library->removalForRecentUninstall(gamma).id, removal.id);
}

TEST_F(RemovalForRecentUninstall, LeavesOutWhatIsGoneAndWhatIsProtected) {
    remove(support);
    EXPECT_EQ(library->removalForRecentUninstall(gamma).entries.size(), 1U);
    EXPECT_THAT(library->removalForRecentUninstall(gamma).initiallyExcluded, IsEmpty());
    library->setProtected(caches, true);
    EXPECT_THAT(library->removalForRecentUninstall(gamma).entries, IsEmpty());
}

TEST_F(RemovalForRecentUninstall, HasNoRowsWhenAllIsGone) {
    remove(support);
    remove(caches);
    EXPECT_THAT(library->removalForRecentUninstall(gamma).entries, IsEmpty());
    EXPECT_EQ(library->removalForRecentUninstall(gamma).label, "Remove Gamma leftovers");
}

TEST_F(RemovalForRecentUninstall, WhatAnInstalledApplicationClaimsStartsUnticked) {
    addApp("Applications/Gamma.app", "com.acme.gamma", "Gamma"); // installed again, or a second copy
    scan();
    const auto removal = library->removalForRecentUninstall(gamma);
    EXPECT_EQ(removal.entries.size(), 2U);
    EXPECT_THAT(removal.initiallyExcluded, testing::UnorderedElementsAre(caches, support));
}

TEST_F(RemovalForRecentUninstall, TheApplicationItselfClaimsNothingThoughItIsStillListed) {
    addApp("Applications/Gamma.app", "com.acme.gamma", "Gamma");
    begin();
    trash("Gamma.app");
    comeDueWithJobsWaiting();
    ASSERT_THAT(names(), ElementsAre("Alpha", "Beta", "Gamma"));
    EXPECT_THAT(library->removalForRecentUninstall(gamma).initiallyExcluded, ElementsAre(support));
}

TEST_F(RemovalForRecentUninstall, ListsAPathOnceHoweverOftenTheRecordNamesIt) {
    auto twice = gamma;
    twice.leftovers.push_back(twice.leftovers.front());
    EXPECT_EQ(library->removalForRecentUninstall(twice).entries.size(), 2U);
}

} // namespace
} // namespace quillane
