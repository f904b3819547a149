#include "StoredRecords.h"
#include "SweepTest.h"
#include <cmath>

namespace quillane {
namespace {

using namespace std::chrono_literals;

constexpr PlatformError kNoAccess{ErrorCode::kWriteNoPermission, 1};
constexpr PlatformError kOther{ErrorCode::kWriteUnknown, 18};

struct Sweep : SweepTest {};

TEST_F(Sweep, EachRowMovesToTheTrashAndIsCreditedByItsSize) {
    const auto a = file("a");
    const auto b = file("b");
    const auto done = sweep({entry(a, SweepCategory::caches, 10), entry(b, SweepCategory::apps, 100)});
    EXPECT_EQ(done.bytesByCategory,
              (std::map<SweepCategory, Bytes>{{SweepCategory::caches, 10}, {SweepCategory::apps, 100}}));
    EXPECT_EQ(done.itemsMovedToTrash, 2);
    EXPECT_EQ(done.totalBytes(), 110);
    EXPECT_FALSE(world.isThere(a));
    EXPECT_EQ(library->trashState->count, 2);
    EXPECT_FALSE(*library->isSweeping);
    EXPECT_FALSE(library->sweepStatus->has_value());
    EXPECT_EQ(*library->sweepProcessed, 2);
    EXPECT_EQ(*library->sweepTotal, 2);
    EXPECT_EQ(*library->sweepReclaimedSoFar, 110);
}

TEST_F(Sweep, CategoriesAreWorkedInTheirOrderAndRowsInTheirs) {
    std::vector<std::string> order;
    world.trash.before = [&](int, const FileURL& url) { order.emplace_back(url.lastPathComponent()); };
    std::vector<SweepEntry> entries;
    for (const auto& [name, category] :
         {std::pair("startup", SweepCategory::startup), std::pair("files", SweepCategory::files),
          std::pair("apps", SweepCategory::apps), std::pair("orphans", SweepCategory::orphans),
          std::pair("developer", SweepCategory::developer), std::pair("first cache", SweepCategory::caches),
          std::pair("second cache", SweepCategory::caches), std::pair("more files", SweepCategory::files),
          std::pair("more startup", SweepCategory::startup)}) {
        entries.push_back(entry(file(name), category, 1));
    }
    sweep(entries);
    EXPECT_EQ(order, (std::vector<std::string>{"first cache", "second cache", "developer", "orphans", "apps",
                                               "files", "more files", "startup", "more startup"}));
}

TEST_F(Sweep, TheTrashIsEmptiedFirstSoThatWhatMovesStaysRecoverable) {
    file(".Trash/old");
    const auto a = file("a");
    const auto done = sweep({entry(a, SweepCategory::caches, 10), trashRow()});
    EXPECT_EQ(done.itemsDeleted, 1);
    EXPECT_EQ(done.bytesByCategory.at(SweepCategory::trash), 4096);
    EXPECT_FALSE(world.isThere(home(".Trash/old")));
    EXPECT_TRUE(world.isThere(home(".Trash/a")));
    ASSERT_TRUE(library->lastOperation->has_value());
    EXPECT_EQ((*library->lastOperation)->bytes, 10); // what was emptied can't come back
}

TEST_F(Sweep, OfTheTrashTheItemsAreCountedThatReallyWent) {
    for (const char* item : {".Trash/one", ".Trash/two/a", ".Trash/two/b", ".Trash/three"}) {
        file(item);
    }
    world.trash.failStep(1, kOther);
    const auto done = sweep({trashRow()});
    EXPECT_EQ(done.itemsDeleted, 2);
    EXPECT_EQ(done.itemsMovedToTrash, 0);
    EXPECT_EQ(done.failures.size(), 1U);
}

TEST_F(Sweep, TheTrashIsEmptiedAtThePriorityOfTheUserAndMeasuredAtALowerOne) {
    file(".Trash/old");
    sweep({trashRow()});
    EXPECT_EQ(world.runner.history(), (std::vector{Priority::userInitiated, Priority::utility}));
}

TEST_F(Sweep, AMoveThatDoesNotSayWhereItLandedCountsAndIsNoPartOfWhatCanBePutBack) {
    const auto a = file("a");
    const auto b = file("b");
    world.trash.keepLandingOf(a);
    const auto done = sweep({entry(a, SweepCategory::caches, 10), entry(b, SweepCategory::caches, 5)});
    EXPECT_EQ(done.itemsMovedToTrash, 2);
    EXPECT_EQ(done.totalBytes(), 15);
    EXPECT_EQ(*library->sweepReclaimedSoFar, 15);
    EXPECT_TRUE(done.failures.empty());
    ASSERT_TRUE(library->lastOperation->has_value());
    EXPECT_EQ((*library->lastOperation)->moves, (std::vector{TrashMove{b, home(".Trash/b")}}));
    EXPECT_EQ((*library->lastOperation)->bytes, 15);
}

TEST_F(Sweep, WhenNoMoveSaysWhereItLandedTheOperationBeforeStays) {
    const auto before = UndoableOperation{"Before", Date{1}, {}, 5};
    library->lastOperation = before;
    const auto a = file("a");
    OrphanItem orphan;
    orphan.url = a;
    library->orphans = std::vector{orphan};
    world.trash.keepLandingOf(a);
    sweep({entry(a, SweepCategory::orphans, 10)});
    EXPECT_FALSE(world.isThere(a));
    EXPECT_TRUE(library->orphans->empty()) << "it has gone from the list all the same";
    EXPECT_EQ(*library->lastOperation, before);
}

TEST_F(Sweep, WhatTheTrashHeldCountsAsReclaimedWhileTheRestMoves) {
    file(".Trash/old");
    const auto a = file("a");
    startSweep({entry(a, SweepCategory::caches, 10), trashRow()});
    world.runner.settle();
    EXPECT_EQ(*library->sweepStatus, "Emptying the Trash");
    EXPECT_EQ(*library->sweepReclaimedSoFar, 0);
    world.runner.runJob();
    world.runner.settle();
    EXPECT_EQ(*library->sweepStatus, "a");
    EXPECT_EQ(*library->sweepReclaimedSoFar, 4096);
    world.runner.runAll();
    EXPECT_EQ(*library->sweepReclaimedSoFar, 4106);
    sweep({entry(file("b"), SweepCategory::caches, 3)});
    EXPECT_EQ(*library->sweepReclaimedSoFar, 3) << "each sweep begins at nothing";
}

TEST_F(Sweep, AnOperationThatCannotBeToldInTheSettingsLeavesNoOlderOneThere) {
    sweep({entry(file("a"), SweepCategory::caches, 1)});
    ASSERT_TRUE(world.defaults.isStored("lastOperation"));
    world.clock.setNow(Date{std::nan("")});
    sweep({entry(file("b"), SweepCategory::caches, 1)});
    EXPECT_FALSE(world.defaults.isStored("lastOperation"));
    EXPECT_TRUE(library->lastOperation->has_value()) << "as long as the program runs";
}

TEST_F(Sweep, LeftoversThatAScanBringsDuringASweepAreForgottenToo) {
    const auto shared = cache("Library/Caches/com.example.one", 10);
    world.disk.file("Applications/One.app/Contents/Info.plist",
                    R"(<plist version="1.0"><dict><key>CFBundleIdentifier</key>)"
                    "<string>com.example.one</string></dict></plist>");
    std::vector<SweepEntry> entries;
    for (int i = 0; i < 100; ++i) { // enough for the scan to end before
        entries.push_back(entry(file("Downloads/" + std::to_string(i)), SweepCategory::caches, 1));
    }
    entries.push_back(entry(shared.url, SweepCategory::caches, 10));
    startSweep(entries);
    world.runner.settle();
    world.runner.runJob();
    library->refresh(AppLibrary::ScanReason::user);
    ASSERT_TRUE(world.runner.runUntil(
        [&] { return library->apps->size() == 1 && !library->apps->front().leftovers.empty(); }));
    ASSERT_TRUE(world.isThere(shared.url));
    world.runner.runAll();
    EXPECT_FALSE(world.isThere(shared.url));
    EXPECT_TRUE(library->apps->front().leftovers.empty());
}

TEST_F(Sweep, AListWithOnlyTheTrashIsOneStepAndRecordsNothing) {
    file(".Trash/old");
    const auto before = UndoableOperation{"Before", Date{1}, {}, 5};
    library->lastOperation = before;
    const auto done = sweep({trashRow()});
    EXPECT_EQ(*library->sweepProcessed, 1);
    EXPECT_EQ(done.totalBytes(), 4096);
    EXPECT_EQ(*library->lastOperation, before);
    EXPECT_FALSE(world.defaults.isStored("lastOperation"));
}

TEST_F(Sweep, AFailureToEmptyTheTrashIsReportedAndMakesNothingInaccessible) {
    file(".Trash/old");
    world.trash.refuseListing(kNoAccess);
    const auto done = sweep({trashRow()});
    ASSERT_EQ(done.failures.size(), 1U);
    EXPECT_TRUE(done.failures[0].isAccessDenied);
    EXPECT_TRUE(library->inaccessible->empty());
    EXPECT_TRUE(library->trashState->needsFullDiskAccess);
    EXPECT_TRUE(world.isThere(home(".Trash/old")));
}

TEST_F(Sweep, APathProtectedDuringTheReviewStaysAndIsNeitherCountedNorReported) {
    const auto a = file("a");
    const auto b = file("b");
    library->setProtected(a, true);
    const auto done = sweep({entry(a, SweepCategory::caches, 10), entry(b, SweepCategory::caches, 5)});
    EXPECT_TRUE(world.isThere(a));
    EXPECT_EQ(*library->sweepProcessed, 1);
    EXPECT_EQ(*library->sweepTotal, 2);
    EXPECT_TRUE(done.failures.empty());
    EXPECT_EQ(done.totalBytes(), 5);
}

TEST_F(Sweep, WhatIsProtectedByAnotherSpellingOfItsPathStaysToo) {
    const auto kept = file("Code/x/node_modules");
    const auto other = file("Code/y/node_modules");
    world.disk.link("Users/alex/code", "Code");
    library->setProtected(kept, true);
    const auto told = sweep({entry(home("code/x/node_modules"), SweepCategory::developer, 10),
                             entry(home("code/y/node_modules"), SweepCategory::developer, 20)});
    EXPECT_TRUE(world.platform.files.exists(kept));
    EXPECT_FALSE(world.platform.files.exists(other));
    EXPECT_EQ(told.itemsMovedToTrash, 1);
    EXPECT_TRUE(told.failures.empty());
    EXPECT_EQ(*library->sweepProcessed, 1);
}

TEST_F(Sweep, APathProtectedWhileTheSweepRunsStaysToo) {
    const auto a = file("a");
    const auto b = file("b");
    startSweep({entry(a, SweepCategory::caches, 10), entry(b, SweepCategory::caches, 5)});
    world.runner.settle();
    library->setProtected(b, true); // the first move is under way
    world.runner.runAll();
    EXPECT_FALSE(world.isThere(a));
    EXPECT_TRUE(world.isThere(b));
}

TEST_F(Sweep, OneMoveIsInFlightAtATimeAtThePriorityOfTheUser) {
    const auto a = file("a");
    const auto b = file("b");
    startSweep({entry(a, SweepCategory::caches, 10), entry(b, SweepCategory::caches, 5)});
    world.runner.settle();
    EXPECT_EQ(world.runner.waitingJobs(), 1U);
    EXPECT_EQ(world.runner.waitingPriority(0), Priority::userInitiated);
    EXPECT_EQ(*library->sweepStatus, "a");
    EXPECT_TRUE(*library->isSweeping);
    world.runner.runJob();
    world.runner.settle();
    EXPECT_EQ(world.runner.waitingJobs(), 1U);
    EXPECT_EQ(*library->sweepProcessed, 1);
    EXPECT_EQ(*library->sweepReclaimedSoFar, 10);
    world.runner.runAll();
}

TEST_F(Sweep, ACategoryWhoseMovesAllFailedHasAKeyWithNothingInIt) {
    const auto a = file("a");
    world.trash.failStep(0, kOther);
    const auto done = sweep({entry(a, SweepCategory::caches, 10)});
    EXPECT_EQ(done.bytesByCategory, (std::map<SweepCategory, Bytes>{{SweepCategory::caches, 0}}));
    EXPECT_EQ(done.failures, (std::vector{Uninstaller::Failure{a, "Failed", false}}));
    EXPECT_EQ(*library->sweepProcessed, 1);
    EXPECT_FALSE(library->lastOperation->has_value());
}

TEST_F(Sweep, TwoRowsOfOneLocationCountOnceAndTheSecondFails) {
    const auto a = file("a");
    const auto done = sweep({entry(a, SweepCategory::caches, 10), entry(a, SweepCategory::caches, 10)});
    EXPECT_EQ(done.totalBytes(), 10);
    EXPECT_EQ(done.failures, (std::vector{Uninstaller::Failure{a, "Failed", false}}));
}

TEST_F(Sweep, ARefusedPathBecomesInaccessibleAndOneThatFailedOtherwiseDoesNot) {
    const auto a = file("a");
    const auto b = file("b");
    world.trash.failStep(0, kNoAccess);
    sweep({entry(a, SweepCategory::caches, 10)});
    EXPECT_EQ(*library->inaccessible, std::unordered_set{a});
    world.trash.failStep(1, kOther);
    sweep({entry(b, SweepCategory::caches, 10)});
    EXPECT_EQ(*library->inaccessible, std::unordered_set{a});
}

TEST_F(Sweep, WhatMovedLeavesTheListsAtOnce) {
    library->apps = {app("One", {cache("Library/Caches/one", 10), cache("Library/Logs/one", 5)}), app("Two")};
    world.disk.file("Applications/Two.app/x", "x");
    startSweep({entry(home("Library/Caches/one"), SweepCategory::caches, 10),
                entry(FileURL("/Applications/Two.app"), SweepCategory::apps, 1)});
    world.runner.settle();
    world.runner.runJob();
    world.runner.settle();
    EXPECT_EQ(library->apps->size(), 2U);
    EXPECT_EQ(library->apps->front().leftovers.size(), 1U);
    world.runner.runAll();
    ASSERT_EQ(library->apps->size(), 1U);
    EXPECT_EQ(library->apps->front().name, "One");
    EXPECT_EQ(*library->phase, Phase{}); // no rescan follows
}

TEST_F(Sweep, ALeftoverOfTwoApplicationsLeavesBothAndListsStayTrueWhenAScanReplacesThem) {
    const auto shared = cache("Library/Caches/shared", 10);
    const auto later = cache("Library/Caches/later", 5);
    library->apps = {app("One", {shared}), app("Two", {shared})};
    startSweep({entry(shared.url, SweepCategory::caches, 10), entry(later.url, SweepCategory::caches, 5)});
    world.runner.settle();
    world.runner.runJob();
    world.runner.settle();
    EXPECT_TRUE(library->apps->front().leftovers.empty());
    EXPECT_TRUE(library->apps->back().leftovers.empty());
    // A scan publishes in the middle of the sweep, with what was there when it looked.
    library->refresh(AppLibrary::ScanReason::automatic);
    world.runner.runAll();
    EXPECT_FALSE(world.isThere(later.url));
    EXPECT_TRUE(library->apps->empty()); // the volume has no applications
}

TEST_F(Sweep, AnApplicationGoesWhileItsLeftoversFollowAndTheOthersStay) {
    library->apps = {app("One", {cache("Library/Caches/one", 1)}),
                     app("Two", {cache("Library/Caches/two", 2)}),
                     app("Three", {cache("Library/Caches/three", 3)})};
    world.disk.file("Applications/One.app/x", "x");
    sweep({entry(FileURL("/Applications/One.app"), SweepCategory::apps, 1),
           entry(home("Library/Caches/one"), SweepCategory::apps, 1),
           entry(home("Library/Caches/three"), SweepCategory::apps, 3)});
    ASSERT_EQ(library->apps->size(), 2U);
    EXPECT_EQ(library->apps->front().leftovers.size(), 1U);
    EXPECT_TRUE(library->apps->back().leftovers.empty());
}

TEST_F(Sweep, SeveralApplicationsGoAndWhatTheOthersLoseIsTheirOwn) {
    std::vector<InstalledApp> all;
    for (const std::string name : {"A", "B", "C", "D", "E", "F"}) {
        all.push_back(app(name, {cache("Library/Caches/" + name, 1), cache("Library/Logs/" + name, 1)}));
        world.disk.file("Applications/" + name + ".app/x", "x");
    }
    library->apps = all;
    std::vector<SweepEntry> entries;
    for (const std::string path :
         {"/Applications/C.app", "/Users/alex/Library/Caches/D", "/Applications/A.app",
          "/Users/alex/Library/Caches/A", "/Users/alex/Library/Logs/E", "/Applications/F.app",
          "/Users/alex/Library/Caches/B"}) {
        entries.push_back(entry(FileURL(path), SweepCategory::apps, 1));
    }
    EXPECT_TRUE(sweep(entries).failures.empty());
    std::vector<std::string> left;
    for (const auto& one : *library->apps) {
        for (const auto& item : one.leftovers) {
            left.push_back(one.name + " " + item.url.path());
        }
    }
    EXPECT_EQ(left, (std::vector<std::string>{"B /Users/alex/Library/Logs/B", "D /Users/alex/Library/Logs/D",
                                              "E /Users/alex/Library/Caches/E"}));
}

TEST_F(Sweep, AnApplicationIsAskedToQuitBeforeAnythingMovesAndAnEndlessOneIsMovedAllTheSame) {
    auto one = app("One");
    library->apps = {one};
    world.disk.file("Applications/One.app/x", "x");
    world.running.start("com.example.One", true);
    const auto a = file("a");
    startSweep({entry(a, SweepCategory::caches, 1), entry(one.url, SweepCategory::apps, 1)});
    world.runner.runAll();
    EXPECT_EQ(*library->sweepStatus, "Quitting One");
    EXPECT_TRUE(world.isThere(a));
    world.clock.advance(2999ms);
    EXPECT_TRUE(world.isThere(a));
    world.clock.advance(1ms);
    EXPECT_FALSE(world.isThere(a));
    EXPECT_FALSE(world.isThere(one.url));
}

TEST_F(Sweep, LeftoversOfApplicationsAreNotAskedToQuit) {
    library->apps = {app("One", {cache("Library/Caches/one", 10)})};
    world.running.start("com.example.One");
    sweep({entry(home("Library/Caches/one"), SweepCategory::apps, 10)});
    EXPECT_TRUE(world.running.asked.empty());
}

TEST_F(Sweep, OnlyARowOfApplicationsAsksAnApplicationToQuit) {
    const auto one = app("One");
    library->apps = {one};
    world.disk.file("Applications/One.app/x", "x");
    world.running.start("com.example.One");
    for (const auto category : {SweepCategory::caches, SweepCategory::developer, SweepCategory::orphans,
                                SweepCategory::files, SweepCategory::startup}) {
        library->setProtected(one.url, true); // so that it is there for the next
        sweep({entry(one.url, category, 1)});
    }
    EXPECT_TRUE(world.running.asked.empty());
    startSweep({entry(one.url, SweepCategory::apps, 1)});
    world.runner.runAll();
    EXPECT_EQ(world.running.asked, std::vector<std::string>{"com.example.One"});
    world.clock.advance(1s);
    EXPECT_TRUE(report.has_value());
}

TEST_F(Sweep, TheOperationIsRecordedWithLabelDateMovesAndBytesAndSurvivesARestart) {
    const auto a = file("a");
    sweep({entry(a, SweepCategory::caches, 10)}, "Clean One cache");
    const UndoableOperation expected{"Clean One cache", world.clock.now(), {{a, home(".Trash/a")}}, 10};
    EXPECT_EQ(*library->lastOperation, expected);
    library = std::make_unique<AppLibrary>(world.platform);
    EXPECT_EQ(*library->lastOperation, expected);
    EXPECT_EQ(undo().trashed, std::vector{a});
    EXPECT_EQ(world.content(a), "a");
}

TEST_F(Sweep, ANewSweepReplacesTheOperationAndOneThatMovedNothingDoesNot) {
    const auto a = file("a");
    const auto b = file("b");
    sweep({entry(a, SweepCategory::caches, 10)}, "First");
    world.trash.failStep(1, kOther);
    sweep({entry(b, SweepCategory::caches, 10)}, "Nothing moved");
    EXPECT_EQ((*library->lastOperation)->label, "First");
    sweep({entry(b, SweepCategory::caches, 10)}, "Second");
    EXPECT_EQ((*library->lastOperation)->label, "Second");
}

TEST_F(Sweep, APutBackRestoresEverythingForgetsTheOperationAndScansAgain) {
    const auto a = file("a");
    const auto b = file("deep/b");
    sweep({entry(a, SweepCategory::caches, 10), entry(b, SweepCategory::caches, 5)});
    const auto undone = undo();
    EXPECT_EQ(undone.trashed.size(), 2U);
    EXPECT_EQ(world.content(b), "deep/b");
    EXPECT_FALSE(library->lastOperation->has_value());
    EXPECT_FALSE(world.defaults.isStored("lastOperation"));
    EXPECT_EQ(library->phase->kind, Phase::Kind::ready);
}

TEST_F(Sweep, APartlyFailedPutBackForgetsTheOperationAllTheSame) {
    const auto a = file("a");
    const auto b = file("b");
    sweep({entry(a, SweepCategory::caches, 10), entry(b, SweepCategory::caches, 5)});
    file("a");
    const auto undone = undo();
    EXPECT_EQ(undone.trashed, std::vector{b});
    EXPECT_EQ(undone.failures.size(), 1U);
    EXPECT_FALSE(library->lastOperation->has_value());
}

TEST_F(Sweep, DuringAPutBackNoSweepBeginsAndEachRowIsToldAsFailed) {
    const auto a = file("a");
    const auto b = file("b");
    sweep({entry(a, SweepCategory::caches, 10)}, "First");
    std::optional<Uninstaller::Report> undone;
    library->tasks().start([&](StopToken) -> Task<> { undone = co_await library->undoLastOperation(); });
    world.runner.settle(); // the put back waits for its thread, and meanwhile:
    EXPECT_TRUE(*library->isPuttingBack);
    startSweep({trashRow(), entry(b, SweepCategory::caches, 5)}, "Second");
    world.runner.settle();
    ASSERT_TRUE(report.has_value());
    EXPECT_EQ(report->failures,
              (std::vector<Uninstaller::Failure>{{FileURL("/.Trash"), "A put back is running", false},
                                                 {b, "A put back is running", false}}));
    EXPECT_EQ(report->totalBytes(), 0);
    EXPECT_FALSE(*library->isSweeping);
    EXPECT_EQ(*library->sweepTotal, 1) << "that of the first";
    world.runner.runAll();
    EXPECT_EQ(undone.value().trashed, std::vector{a});
    EXPECT_TRUE(world.isThere(a)) << "it was not emptied with the Trash";
    EXPECT_TRUE(world.isThere(b));
    EXPECT_FALSE(*library->isPuttingBack);
    EXPECT_EQ(sweep({entry(b, SweepCategory::caches, 5)}).itemsMovedToTrash, 1) << "afterwards it can";
}

TEST_F(Sweep, DuringASweepNothingIsPutBackAndTheOperationStays) {
    const auto a = file("a");
    const auto b = file("b");
    sweep({entry(a, SweepCategory::caches, 10)}, "First");
    startSweep({entry(b, SweepCategory::caches, 5)}, "Second");
    world.runner.settle();
    std::optional<Uninstaller::Report> undone;
    library->tasks().start([&](StopToken) -> Task<> { undone = co_await library->undoLastOperation(); });
    world.runner.settle();
    ASSERT_TRUE(undone.has_value());
    EXPECT_EQ(undone->failures, (std::vector<Uninstaller::Failure>{{a, "A cleanup is running", false}}));
    EXPECT_EQ((*library->lastOperation)->label, "First");
    EXPECT_EQ(library->phase->kind, Phase::Kind::idle) << "nor is anything scanned";
    world.runner.runAll();
    EXPECT_EQ((*library->lastOperation)->label, "Second");
    EXPECT_FALSE(world.isThere(a));
}

TEST_F(Sweep, ASecondPutBackMovesNothingWhileTheFirstRuns) {
    const auto a = file("a");
    sweep({entry(a, SweepCategory::caches, 10)});
    std::vector<Uninstaller::Report> reports;
    for (int i = 0; i < 2; ++i) {
        library->tasks().start(
            [&](StopToken) -> Task<> { reports.push_back(co_await library->undoLastOperation()); });
    }
    world.runner.runAll();
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_EQ(reports[0].failures, (std::vector<Uninstaller::Failure>{{a, "A put back is running", false}}));
    EXPECT_EQ(reports[1].trashed, std::vector{a});
    EXPECT_FALSE(library->lastOperation->has_value());
    EXPECT_FALSE(*library->isPuttingBack);
}

TEST_F(Sweep, WhatComesBackMarksTheListsThatNoScanFindsAndTheNextLoadTakesTheMarkAway) {
    const auto stale = [this] {
        return std::array{*library->areFilesStale, *library->areDuplicatesStale,
                          *library->areStartupItemsStale};
    };
    struct Case {
        const char* path;
        std::array<bool, 3> stale;
    };
    for (const auto& [path, expected] :
         {Case{"Documents/deep/a", {true, true, false}},
          Case{"Library/LaunchAgents/a.plist", {false, false, true}},
          Case{"Library/Caches/a", {false, false, false}}, Case{"Documents2/a", {false, false, false}}}) {
        const auto a = file(path);
        sweep({entry(a, SweepCategory::files, 10)});
        EXPECT_EQ(stale(), (std::array{false, false, false})) << path;
        EXPECT_EQ(undo().trashed, std::vector{a});
        EXPECT_EQ(stale(), expected) << path;
        library->loadFiles();
        library->loadDuplicates();
        library->loadStartupItems();
        EXPECT_EQ(stale(), (std::array{false, false, false})) << path;
        world.runner.runAll();
    }
}

TEST_F(Sweep, WhatCouldNotComeBackMarksNothing) {
    const auto a = file("Documents/a");
    sweep({entry(a, SweepCategory::files, 10)});
    file("Documents/a");
    EXPECT_TRUE(undo().trashed.empty());
    EXPECT_FALSE(*library->areFilesStale);
}

TEST_F(Sweep, APutBackIsFollowedByAScanOfTheUsers) {
    const auto a = file("a");
    sweep({entry(a, SweepCategory::caches, 10)});
    library->tasks().start([&](StopToken) -> Task<> { (void)co_await library->undoLastOperation(); });
    world.runner.settle();
    world.runner.runJob();
    world.runner.settle();
    ASSERT_EQ(library->phase->kind, Phase::Kind::scanning);
    EXPECT_EQ(world.runner.waitingPriority(0), Priority::userInitiated);
    world.runner.runAll();
}

TEST_F(Sweep, PuttingBackWithNothingRecordedStartsNoScan) {
    EXPECT_EQ(undo(), Uninstaller::Report{});
    EXPECT_EQ(library->phase->kind, Phase::Kind::idle);
}

TEST_F(Sweep, DamagedOrTamperedDataIsNoOperationAndStaysUntilItIsOverwritten) {
    for (const std::string text :
         {"", "garbage", "[]", "{}", R"({"label":1,"date":0,"moves":[],"bytes":0})",
          R"({"label":"x","date":"0","moves":[],"bytes":0})",
          R"({"label":"x","date":0,"moves":{},"bytes":0})",
          R"({"label":"x","date":0,"moves":[{"from":"file:///a"}],"bytes":0})",
          R"({"label":"x","date":0,"moves":[{"from":"/a","to":"/b"}],"bytes":0})",
          R"({"label":"x","date":0,"moves":[],"bytes":1.5})", R"({"label":"x","date":0,"moves":[]})"}) {
        world.defaults.set("lastOperation", Defaults::Data(text.begin(), text.end()));
        library = std::make_unique<AppLibrary>(world.platform);
        EXPECT_FALSE(library->lastOperation->has_value()) << text;
        EXPECT_TRUE(world.defaults.isStored("lastOperation"));
    }
    world.defaults.set("lastOperation", std::string("no data"));
    library = std::make_unique<AppLibrary>(world.platform);
    EXPECT_FALSE(library->lastOperation->has_value());
}

TEST_F(Sweep, ATamperedRecordMovesNothingThatIsNotInTheTrash) {
    const auto secret = file("secret");
    library->lastOperation = UndoableOperation{"x", Date{0}, {{home("stolen"), secret}}, 0};
    const auto undone = undo();
    EXPECT_EQ(undone.failures.size(), 1U);
    EXPECT_TRUE(world.isThere(secret));
    EXPECT_FALSE(world.isThere(home("stolen")));
}

TEST_F(Sweep, EachStepThatFailsInTurnEndsWithATrueReport) {
    const std::vector<PlatformError> errors = {
        {ErrorCode::kWriteNoPermission, 13}, {ErrorCode::kWriteReadOnlyVolume, 30},
        {ErrorCode::kWriteNoSpace, 28},      {ErrorCode::kNoSuchFileWriting, 2},
        {ErrorCode::kWriteUnknown, 18},      {ErrorCode::kWriteFileExists, 17}};
    int round = 0;
    for (const auto& error : errors) {
        for (int step = 0; step < 4; ++step) {
            std::vector<SweepEntry> entries;
            for (int i = 0; i < 4; ++i) {
                const auto name = "r" + std::to_string(round) + "-" + std::to_string(i);
                entries.push_back(entry(file(name), SweepCategory::caches, 1));
            }
            ++round;
            world.trash.failStep(world.trash.steps() + step, error);
            const auto done = sweep(entries);
            EXPECT_EQ(done.itemsMovedToTrash, 3);
            ASSERT_EQ(done.failures.size(), 1U);
            EXPECT_EQ(done.failures[0].url, entries[static_cast<std::size_t>(step)].url);
            EXPECT_EQ(done.totalBytes(), 3);
            EXPECT_EQ(*library->sweepProcessed, 4);
            for (int i = 0; i < 4; ++i) {
                EXPECT_EQ(world.isThere(entries[static_cast<std::size_t>(i)].url), i == step);
            }
            EXPECT_EQ((*library->lastOperation)->moves.size(), 3U);
        }
    }
}

TEST_F(Sweep, AFileThatVanishesRightBeforeItsMoveIsReportedAndTheRestGoesOn) {
    const auto a = file("a");
    const auto b = file("b");
    world.trash.before = [&](int step, const FileURL& url) {
        if (step == 0) {
            (void)world.realTrash.moveToTrash(url);
        }
    };
    const auto done = sweep({entry(a, SweepCategory::caches, 10), entry(b, SweepCategory::caches, 5)});
    EXPECT_EQ(done.failures, (std::vector{Uninstaller::Failure{a, "Failed", false}}));
    EXPECT_EQ(done.totalBytes(), 5);
}

TEST_F(Sweep, APathSwappedForALinkMovesTheLinkAndNotWhatItPointsTo) {
    const auto a = file("folder/a");
    world.trash.before = [&](int, const FileURL&) {
        (void)world.realTrash.moveToTrash(home("folder/a"));
        world.disk.file("Users/alex/precious", "kept").link("Users/alex/folder/a", "../precious");
        world.trash.before = nullptr;
    };
    sweep({entry(a, SweepCategory::caches, 10)});
    EXPECT_EQ(world.content(home("precious")), "kept");
}

TEST(StoredRecords, AnOperationReadsBackWithAllItsFields) {
    const UndoableOperation operation{"Clean \"é\" / \n cache",
                                      Date{738000000.125},
                                      {{FileURL("/a b/é"), FileURL("/t/1%")}},
                                      StoredRecords::kMostStoredBytes};
    const auto data = StoredRecords::encode(operation);
    ASSERT_TRUE(data);
    EXPECT_EQ(StoredRecords::decodeUndoableOperation(*data), operation);
}

TEST(StoredRecords, TheTextIsWhatThePlatformsEncoderWrites) {
    const UndoableOperation operation{"a/b", Date{700000000}, {{FileURL("/a b"), FileURL("/t/é")}}, 42};
    const auto data = StoredRecords::encode(operation).value();
    EXPECT_EQ(
        std::string(data.begin(), data.end()),
        R"({"label":"a\/b","date":700000000,"moves":[{"from":"file:\/\/\/a%20b","to":"file:\/\/\/t\/%C3%A9"}],"bytes":42})");
}

TEST(StoredRecords, ADateThatIsNoNumberCannotBeStored) {
    EXPECT_FALSE(StoredRecords::encode(UndoableOperation{"x", Date{std::nan("")}, {}, 0}));
}

} // namespace
} // namespace quillane
