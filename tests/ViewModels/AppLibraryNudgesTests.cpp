#include "AutomationTest.h"
#include <gmock/gmock.h>
#include <limits>
#include <set>

namespace quillane {
namespace {

namespace Keys = DefaultsKeys;
using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;
using Value = Defaults::Value;

constexpr Bytes kGB = 1'000'000'000;
constexpr std::int64_t kMostInteger = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLeastInteger = std::numeric_limits<std::int64_t>::min();
constexpr PlatformError kUnreadable{ErrorCode::kReadUnknown, std::nullopt};

class AppLibraryNudges : public AutomationTest {
  protected:
    AppLibraryNudges() {
        faulty.pretendSpace({.free = 50, .size = 100});
        beReady();
    }

    // What an evaluation posts.
    std::vector<UserNotification> evaluated() {
        notifications.added.clear();
        library->evaluateNudges();
        return notifications.added;
    }
    Texts evaluatedIdentifiers() {
        (void)evaluated();
        return identifiers();
    }
    Texts evaluatedTitles() {
        Texts titles;
        for (const auto& notification : evaluated()) {
            titles.push_back(notification.title);
        }
        return titles;
    }
    void setFree(Bytes free, Bytes size) { faulty.pretendSpace({.free = free, .size = size}); }
    void turnOnAll() {
        for (const auto key : {Keys::kNudgeOnThreshold, Keys::kNudgeOnLowDisk, Keys::kNudgeOnNewOrphans,
                               Keys::kNudgeOnNewStartup}) {
            turnOn(key);
        }
    }
    // Each nudge has something to tell.
    void makeAllTrue() {
        makeReclaimable(5 * kGB);
        setFree(1, 100);
        defaults.set(Keys::kKnownOrphanVendors, Texts{"com.known"});
        defaults.set(Keys::kKnownStartupLabels, Texts{"com.known"});
        putOrphans({{"com.new", 5}});
        putStartupItems({"com.new"});
    }
};

// When

TEST_F(AppLibraryNudges, AllAreToldInTheirOrder) {
    turnOnAll();
    makeAllTrue();
    EXPECT_THAT(evaluatedIdentifiers(), ElementsAre("threshold", "lowdisk", "orphans-1", "startup-1"));
    EXPECT_THAT(evaluatedIdentifiers(), IsEmpty()) << "once";
}

TEST_F(AppLibraryNudges, WhatIsNotTurnedOnIsNotEvaluatedAndNothingIsRemembered) {
    makeAllTrue();
    EXPECT_THAT(evaluatedIdentifiers(), IsEmpty());
    EXPECT_FALSE(defaults.isStored(Keys::kNudgedThreshold));
    EXPECT_FALSE(defaults.isStored(Keys::kNudgedLowDisk));
    EXPECT_EQ(stored<Texts>(Keys::kKnownOrphanVendors), Texts{"com.known"});
    EXPECT_EQ(stored<Texts>(Keys::kKnownStartupLabels), Texts{"com.known"});
}

TEST_F(AppLibraryNudges, EachStandsForItself) {
    const std::vector<std::pair<std::string_view, std::string>> rows = {
        {Keys::kNudgeOnThreshold, "threshold"},
        {Keys::kNudgeOnLowDisk, "lowdisk"},
        {Keys::kNudgeOnNewOrphans, "orphans-1"},
        {Keys::kNudgeOnNewStartup, "startup-1"}};
    makeAllTrue();
    for (const auto& [key, identifier] : rows) {
        turnOn(key);
        EXPECT_THAT(evaluatedIdentifiers(), ElementsAre(identifier));
        defaults.set(key, false);
    }
}

TEST_F(AppLibraryNudges, OutsideOfReadyNothingIsToldAndNothingChanges) {
    turnOnAll();
    makeAllTrue();
    int writes = 0;
    const auto subscription = defaults.subscribe([&](const std::string&) { ++writes; });
    for (const auto kind :
         {Kind::idle, Kind::scanning, Kind::measuring, Kind::findingOrphans, Kind::findingDeveloperCaches}) {
        library->phase = Phase{kind};
        EXPECT_THAT(evaluatedIdentifiers(), IsEmpty());
    }
    EXPECT_EQ(writes, 0);
    beReady();
    EXPECT_EQ(evaluatedIdentifiers().size(), 4U);
    EXPECT_EQ(writes, 4);
    defaults.unsubscribe(subscription);
}

TEST_F(AppLibraryNudges, WhatIsRememberedAlreadyIsNotWrittenAgain) {
    turnOnAll();
    makeAllTrue();
    library->evaluateNudges();
    int writes = 0;
    const auto subscription = defaults.subscribe([&](const std::string&) { ++writes; });
    library->evaluateNudges();
    EXPECT_EQ(writes, 0);
    defaults.unsubscribe(subscription);
}

class AppLibraryNudgesOfAScan : public AppLibraryNudges,
                                public testing::WithParamInterface<AppLibrary::ScanReason> {};

TEST_P(AppLibraryNudgesOfAScan, TheEndOfEachScanEvaluates) {
    turnOn(Keys::kNudgeOnLowDisk);
    setFree(1, 100);
    library->refresh(GetParam());
    runner.settle();
    EXPECT_THAT(identifiers(), IsEmpty());
    runner.runAll();
    EXPECT_THAT(identifiers(), ElementsAre("lowdisk"));
    EXPECT_EQ(library->phase->kind, Kind::ready);
}

INSTANTIATE_TEST_SUITE_P(EveryReason, AppLibraryNudgesOfAScan,
                         testing::Values(AppLibrary::ScanReason::user, AppLibrary::ScanReason::automatic));

TEST_F(AppLibraryNudges, AScanThatWasSupersededEvaluatesNothing) {
    turnOn(Keys::kNudgeOnLowDisk);
    setFree(1, 100);
    library->refresh(ScanReason::user);
    runner.settle();
    while (runner.waitingJobs() > 0) {
        if (library->phase->kind == Kind::findingDeveloperCaches) {
            AppLibraryTesting::supersede(*library);
        }
        runner.runJob();
        runner.settle();
    }
    EXPECT_EQ(library->phase->kind, Kind::findingDeveloperCaches);
    EXPECT_THAT(identifiers(), IsEmpty());
    EXPECT_FALSE(defaults.isStored(Keys::kNudgedLowDisk));
}

TEST_F(AppLibraryNudges, AScanEvaluatesBeforeAParkedOneBegins) {
    turnOn(Keys::kNudgeOnLowDisk);
    setFree(1, 100);
    library->refresh(ScanReason::user);
    library->refresh(ScanReason::user);
    while (scans() < 2) {
        runner.settle();
        runner.runJob();
        runner.settle();
    }
    EXPECT_THAT(identifiers(), ElementsAre("lowdisk"));
}

// Threshold

TEST_F(AppLibraryNudges, TheThresholdIsPassedWhenItIsReached) {
    turnOn(Keys::kNudgeOnThreshold);
    makeReclaimable(5 * kGB - 1);
    EXPECT_THAT(evaluated(), IsEmpty());
    EXPECT_EQ(stored<bool>(Keys::kNudgedThreshold), false);
    makeReclaimable(5 * kGB);
    EXPECT_THAT(evaluated(),
                ElementsAre(UserNotification{.identifier = "threshold",
                                             .title = "5 GB can be reclaimed",
                                             .body = "That's past the 5 GB you asked to be told about.",
                                             .userInfo = {{"section", "Overview"}}}));
    EXPECT_EQ(stored<bool>(Keys::kNudgedThreshold), true);
}

TEST_F(AppLibraryNudges, TheThresholdIsComparedWithWhatTheTickedCategoriesWouldGive) {
    turnOn(Keys::kNudgeOnThreshold);
    makeReclaimable(9 * kGB);
    library->sweepSelection = std::set{SweepCategory::caches};
    EXPECT_THAT(evaluated(), IsEmpty());
    library->sweepSelection = std::set{SweepCategory::developer};
    EXPECT_THAT(evaluatedTitles(), ElementsAre("9 GB can be reclaimed"));
}

TEST_F(AppLibraryNudges, OverOverUnderOverTellsAtTheFirstAndTheFourth) {
    turnOn(Keys::kNudgeOnThreshold);
    Texts told;
    for (const Bytes bytes : {6 * kGB, 7 * kGB, 4 * kGB, 8 * kGB}) {
        makeReclaimable(bytes);
        const auto titles = evaluatedTitles();
        told.push_back(titles.empty() ? "-" : titles.front());
    }
    EXPECT_THAT(told, ElementsAre("6 GB can be reclaimed", "-", "-", "8 GB can be reclaimed"));
}

// One evaluation of a nudge that remembers whether its condition held.
struct StateRow {
    const char* name;
    bool wasRaised;
    bool holds;
    bool isOn;
    bool tells;
    bool isRaised;
};

const std::vector<StateRow> kStates = {{"QuietAndFalse", false, false, true, false, false},
                                       {"QuietAndTrue", false, true, true, true, true},
                                       {"RaisedAndFalse", true, false, true, false, false},
                                       {"RaisedAndTrue", true, true, true, false, true},
                                       {"OffQuietAndTrue", false, true, false, false, false},
                                       {"OffRaisedAndFalse", true, false, false, false, true}};

class AppLibraryNudgeStates : public AppLibraryNudges, public testing::WithParamInterface<StateRow> {};

TEST_P(AppLibraryNudgeStates, TheThresholdGoesFromStateToState) {
    defaults.set(Keys::kNudgedThreshold, GetParam().wasRaised);
    defaults.set(Keys::kNudgeOnThreshold, GetParam().isOn);
    makeReclaimable(GetParam().holds ? 6 * kGB : kGB);
    EXPECT_EQ(evaluated().size(), GetParam().tells ? 1U : 0U);
    EXPECT_EQ(stored<bool>(Keys::kNudgedThreshold), GetParam().isRaised);
}

TEST_P(AppLibraryNudgeStates, LowDiskGoesFromStateToState) {
    defaults.set(Keys::kNudgedLowDisk, GetParam().wasRaised);
    defaults.set(Keys::kNudgeOnLowDisk, GetParam().isOn);
    setFree(GetParam().holds ? 5 : 50, 100);
    EXPECT_EQ(evaluated().size(), GetParam().tells ? 1U : 0U);
    EXPECT_EQ(stored<bool>(Keys::kNudgedLowDisk), GetParam().isRaised);
}

TEST_P(AppLibraryNudgeStates, LowDiskThatCannotBeReadStaysAsItIs) {
    defaults.set(Keys::kNudgedLowDisk, GetParam().wasRaised);
    turnOn(Keys::kNudgeOnLowDisk);
    faulty.failEvery(FileCall::volumeSpace, kUnreadable);
    EXPECT_THAT(evaluated(), IsEmpty());
    EXPECT_EQ(stored<bool>(Keys::kNudgedLowDisk), GetParam().wasRaised);
}

INSTANTIATE_TEST_SUITE_P(EveryState, AppLibraryNudgeStates, testing::ValuesIn(kStates),
                         [](const auto& row) { return row.param.name; });

// A stored limit and what it means.
struct LimitRow {
    const char* name;
    Value stored;
    std::int64_t means;
};

class AppLibraryNudgeLimits : public AppLibraryNudges, public testing::WithParamInterface<LimitRow> {};

TEST_P(AppLibraryNudgeLimits, AStoredThresholdIsReadAsAWholeNumberOfAtLeastOne) {
    turnOn(Keys::kNudgeOnThreshold);
    defaults.set(Keys::kThresholdGB, GetParam().stored);
    makeReclaimable(GetParam().means * kGB - 1);
    EXPECT_THAT(evaluated(), IsEmpty());
    makeReclaimable(GetParam().means * kGB);
    EXPECT_EQ(evaluated().size(), 1U);
}

TEST_P(AppLibraryNudgeLimits, AStoredPercentIsReadAsAWholeNumberOfAtLeastOne) {
    turnOn(Keys::kNudgeOnLowDisk);
    defaults.set(Keys::kLowDiskPercent, GetParam().stored);
    setFree(GetParam().means * 10, 1'000);
    EXPECT_THAT(evaluated(), IsEmpty()) << "exactly at the limit is not low";
    setFree(GetParam().means * 10 - 1, 1'000);
    EXPECT_EQ(evaluated().size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(
    EveryLimit, AppLibraryNudgeLimits,
    testing::Values(LimitRow{"One", std::int64_t{1}, 1}, LimitRow{"Thirty", std::int64_t{30}, 30},
                    LimitRow{"Zero", std::int64_t{0}, 1}, LimitRow{"Negative", std::int64_t{-5}, 1},
                    LimitRow{"Least", kLeastInteger, 1}, LimitRow{"Text", std::string("7"), 7},
                    LimitRow{"Words", std::string("all"), 1}, LimitRow{"Real", 3.9, 3},
                    LimitRow{"Truth", true, 1}, LimitRow{"ADate", Date{9}, 1},
                    LimitRow{"Data", Defaults::Data{9}, 1}, LimitRow{"Texts", Texts{"9"}, 1}),
    [](const auto& row) { return row.param.name; });

TEST_F(AppLibraryNudges, BeforeTheSettingsWereTouchedTheLimitsAreFiveGigabytesAndTenPercent) {
    turnOnAll();
    makeReclaimable(5 * kGB - 1);
    setFree(10, 100);
    EXPECT_THAT(evaluated(), IsEmpty());
    makeReclaimable(5 * kGB);
    setFree(9, 100);
    EXPECT_THAT(evaluatedIdentifiers(), ElementsAre("threshold", "lowdisk"));
}

TEST_F(AppLibraryNudges, AThresholdBeyondAllBytesIsNeverReached) {
    turnOn(Keys::kNudgeOnThreshold);
    for (const std::int64_t gigabytes : {kMostInteger, kMostInteger / kGB + 1}) {
        defaults.set(Keys::kThresholdGB, gigabytes);
        makeReclaimable(std::numeric_limits<Bytes>::max() - 1);
        EXPECT_THAT(evaluated(), IsEmpty()) << gigabytes;
        EXPECT_EQ(stored<bool>(Keys::kNudgedThreshold), false);
    }
}

TEST_F(AppLibraryNudges, WhatIsRememberedInAnotherTypeIsReadAndMended) {
    turnOnAll();
    makeReclaimable(6 * kGB);
    setFree(1, 100);
    defaults.set(Keys::kNudgedThreshold, std::string("YES"));
    defaults.set(Keys::kNudgedLowDisk, Date{1});
    EXPECT_THAT(evaluatedIdentifiers(), ElementsAre("lowdisk")) << "a date is not true";
    EXPECT_EQ(stored<bool>(Keys::kNudgedThreshold), true);
    EXPECT_EQ(stored<bool>(Keys::kNudgedLowDisk), true);
}

// Low disk

TEST_F(AppLibraryNudges, LowDiskTellsHowMuchIsFreeAndWhatCouldBeReclaimed) {
    turnOn(Keys::kNudgeOnLowDisk);
    makeReclaimable(1'500'000);
    setFree(42, 1'000);
    EXPECT_THAT(evaluated(), ElementsAre(UserNotification{.identifier = "lowdisk",
                                                          .title = "Disk is 4% free",
                                                          .body = "Quillane can reclaim 1.5 MB right now.",
                                                          .userInfo = {{"section", "Overview"}}}));
}

TEST_F(AppLibraryNudges, NothingToReclaimIsSpelledOut) {
    turnOn(Keys::kNudgeOnLowDisk);
    setFree(1, 100);
    ASSERT_EQ(evaluated().size(), 1U);
    EXPECT_EQ(notifications.added.front().body, "Quillane can reclaim Zero KB right now.");
}

TEST_F(AppLibraryNudges, ThePercentIsCutAndNotRounded) {
    turnOn(Keys::kNudgeOnLowDisk);
    const std::vector<std::pair<Bytes, std::string>> rows = {{799, "7"}, {700, "7"}, {699, "6"},
                                                             {99, "0"},  {0, "0"},   {999, "9"}};
    for (const auto& [free, percent] : rows) {
        defaults.set(Keys::kNudgedLowDisk, false);
        setFree(free, 10'000);
        EXPECT_THAT(evaluatedTitles(), ElementsAre("Disk is " + percent + "% free")) << free;
    }
}

TEST_F(AppLibraryNudges, AVolumeThatKeepsNothingTellsNothing) {
    turnOn(Keys::kNudgeOnLowDisk);
    for (const VolumeSpace space : {VolumeSpace{0, 0}, VolumeSpace{5, 0}, VolumeSpace{1, -100}}) {
        faulty.pretendSpace(space);
        EXPECT_THAT(evaluated(), IsEmpty());
        EXPECT_FALSE(defaults.isStored(Keys::kNudgedLowDisk));
    }
}

TEST_F(AppLibraryNudges, AVolumeThatHasMoreFreeThanItHasDoesNotUpsetAnything) {
    turnOn(Keys::kNudgeOnLowDisk);
    setFree(std::numeric_limits<Bytes>::max(), 1);
    EXPECT_THAT(evaluated(), IsEmpty());
    defaults.set(Keys::kLowDiskPercent, kMostInteger);
    setFree(std::numeric_limits<Bytes>::max() / 1'000, 1);
    EXPECT_THAT(evaluatedTitles(), ElementsAre("Disk is 100% free"));
}

TEST_F(AppLibraryNudges, TheVolumeIsThatOfTheHomeFolder) {
    turnOn(Keys::kNudgeOnLowDisk);
    setFree(1, 100);
    faulty.fail(FileURL("/Users/alex"), kUnreadable);
    EXPECT_THAT(evaluated(), IsEmpty());
}

// New orphans

TEST_F(AppLibraryNudges, WhatIsThereAtTheFirstEvaluationIsOnlyRemembered) {
    turnOnAll();
    putOrphans({{"com.b", 5}, {"com.a", 3}, {"com.b", 2}});
    putStartupItems({"two", "one", "two"});
    EXPECT_THAT(evaluated(), IsEmpty());
    EXPECT_EQ(stored<Texts>(Keys::kKnownOrphanVendors), (Texts{"com.a", "com.b"})) << "sorted, each once";
    EXPECT_EQ(stored<Texts>(Keys::kKnownStartupLabels), (Texts{"one", "two"}));
}

TEST_F(AppLibraryNudges, AnOrphanThatAppearsIsToldOnceAndAgainWhenItReturns) {
    turnOn(Keys::kNudgeOnNewOrphans);
    defaults.set(Keys::kKnownOrphanVendors, Texts{"a"});
    putOrphans({{"a", 9'000}, {"b", 1'000}, {"b", 500}});
    EXPECT_THAT(evaluated(), ElementsAre(UserNotification{.identifier = "orphans-1",
                                                          .title = "1 removed app left files behind",
                                                          .body = "2 KB of leftovers from apps you deleted.",
                                                          .userInfo = {{"section", "Orphaned Files"}}}));
    EXPECT_EQ(stored<Texts>(Keys::kKnownOrphanVendors), (Texts{"a", "b"}));
    EXPECT_THAT(evaluated(), IsEmpty());
    putOrphans({{"b", 1'000}});
    EXPECT_THAT(evaluated(), IsEmpty());
    EXPECT_EQ(stored<Texts>(Keys::kKnownOrphanVendors), Texts{"b"});
    putOrphans({{"a", 9'000}, {"b", 1'000}});
    ASSERT_EQ(evaluated().size(), 1U);
    EXPECT_EQ(notifications.added.front().body, "9 KB of leftovers from apps you deleted.") << "a returned";
}

TEST_F(AppLibraryNudges, AnEmptyListOfOrphansForgetsAllAndTheNextOneIsOnlyRemembered) {
    turnOn(Keys::kNudgeOnNewOrphans);
    defaults.set(Keys::kKnownOrphanVendors, Texts{"a"});
    EXPECT_THAT(evaluated(), IsEmpty());
    EXPECT_EQ(stored<Texts>(Keys::kKnownOrphanVendors), Texts{});
    putOrphans({{"b", 1}});
    EXPECT_THAT(evaluated(), IsEmpty());
    EXPECT_EQ(stored<Texts>(Keys::kKnownOrphanVendors), Texts{"b"});
    putOrphans({{"b", 1}, {"c", 1}});
    EXPECT_THAT(evaluatedIdentifiers(), ElementsAre("orphans-1"));
}

TEST_F(AppLibraryNudges, ManyNewOrphansAreCountedByTheirVendors) {
    turnOn(Keys::kNudgeOnNewOrphans);
    defaults.set(Keys::kKnownOrphanVendors, Texts{"known"});
    std::vector<std::pair<std::string, Bytes>> many = {{"known", 1'000'000}};
    for (int i = 0; i < 1'234; ++i) {
        many.emplace_back("com.vendor" + std::to_string(i), 1'000);
        many.emplace_back("com.vendor" + std::to_string(i), 1'000);
    }
    putOrphans(many);
    const auto posted = evaluated();
    ASSERT_EQ(posted.size(), 1U);
    EXPECT_EQ(posted.front().identifier, "orphans-1234") << "an identifier has no groups";
    EXPECT_EQ(posted.front().title, "1,234 removed apps left files behind");
    EXPECT_EQ(posted.front().body, "2.5 MB of leftovers from apps you deleted.");
}

TEST_F(AppLibraryNudges, TwoNewOrphansAreTwoApps) {
    turnOn(Keys::kNudgeOnNewOrphans);
    defaults.set(Keys::kKnownOrphanVendors, Texts{"known"});
    putOrphans({{"a", 0}, {"b", 0}});
    const auto posted = evaluated();
    ASSERT_EQ(posted.size(), 1U);
    EXPECT_EQ(posted.front().title, "2 removed apps left files behind");
    EXPECT_EQ(posted.front().body, "Zero KB of leftovers from apps you deleted.");
}

TEST_F(AppLibraryNudges, WhatIsNoListOfTextsKnowsNobody) {
    turnOnAll();
    putOrphans({{"a", 1}});
    putStartupItems({"a"});
    for (const Value& value : {Value(std::string("b")), Value(std::int64_t{1}), Value(Defaults::Data{1})}) {
        defaults.set(Keys::kKnownOrphanVendors, value);
        defaults.set(Keys::kKnownStartupLabels, value);
        EXPECT_THAT(evaluated(), IsEmpty());
        EXPECT_EQ(stored<Texts>(Keys::kKnownOrphanVendors), Texts{"a"}) << "mended";
        EXPECT_EQ(stored<Texts>(Keys::kKnownStartupLabels), Texts{"a"});
    }
}

TEST_F(AppLibraryNudges, AStoredListInAnyOrderAndWithDoublesIsASet) {
    turnOn(Keys::kNudgeOnNewOrphans);
    defaults.set(Keys::kKnownOrphanVendors, Texts{"c", "a", "c"});
    putOrphans({{"a", 1}, {"c", 1}});
    EXPECT_THAT(evaluated(), IsEmpty());
    EXPECT_EQ(stored<Texts>(Keys::kKnownOrphanVendors), (Texts{"a", "c"}));
}

// New startup items

TEST_F(AppLibraryNudges, FourNewStartupItemsNameTheFirstThreeAndCountAll) {
    turnOn(Keys::kNudgeOnNewStartup);
    defaults.set(Keys::kKnownStartupLabels, Texts{"known"});
    putStartupItems({"delta", "known", "bravo", "alpha", "charlie"});
    EXPECT_THAT(evaluated(), ElementsAre(UserNotification{.identifier = "startup-4",
                                                          .title = "Something new starts automatically",
                                                          .body = "alpha, bravo, charlie",
                                                          .userInfo = {{"section", "Startup"}}}));
    EXPECT_EQ(stored<Texts>(Keys::kKnownStartupLabels),
              (Texts{"alpha", "bravo", "charlie", "delta", "known"}));
    EXPECT_THAT(evaluated(), IsEmpty());
}

TEST_F(AppLibraryNudges, FewerThanThreeNewStartupItemsAreAllNamed) {
    turnOn(Keys::kNudgeOnNewStartup);
    defaults.set(Keys::kKnownStartupLabels, Texts{"known"});
    putStartupItems({"b"});
    EXPECT_EQ(evaluated().at(0).body, "b");
    putStartupItems({"b", "d", "c"});
    EXPECT_EQ(evaluated().at(0).body, "c, d");
    EXPECT_EQ(notifications.added.at(0).identifier, "startup-2");
}

TEST_F(AppLibraryNudges, AnEmptyListOfStartupItemsSaysNothingAndForgetsNothing) {
    turnOn(Keys::kNudgeOnNewStartup);
    defaults.set(Keys::kKnownStartupLabels, Texts{"known"});
    putStartupItems({});
    EXPECT_THAT(evaluated(), IsEmpty());
    EXPECT_EQ(stored<Texts>(Keys::kKnownStartupLabels), Texts{"known"});
    putStartupItems({"known", "new"});
    EXPECT_THAT(evaluatedIdentifiers(), ElementsAre("startup-1"));
}

TEST_F(AppLibraryNudges, AStartupItemThatGoesAndReturnsIsToldAgain) {
    turnOn(Keys::kNudgeOnNewStartup);
    defaults.set(Keys::kKnownStartupLabels, Texts{"a", "b"});
    putStartupItems({"a"});
    EXPECT_THAT(evaluated(), IsEmpty());
    EXPECT_EQ(stored<Texts>(Keys::kKnownStartupLabels), Texts{"a"});
    putStartupItems({"a", "b"});
    EXPECT_EQ(evaluated().at(0).body, "b");
}

TEST_F(AppLibraryNudges, ALabelCannotTurnOrBreakTheLineThatTellsIt) {
    turnOn(Keys::kNudgeOnNewStartup);
    defaults.set(Keys::kKnownStartupLabels, Texts{"known"});
    const std::string hostile = "a\n\xE2\x80\xAE\xFF";
    putStartupItems({hostile});
    EXPECT_EQ(evaluated().at(0).body, "a‹U+000A›‹U+202E›\xEF\xBF\xBD");
    EXPECT_EQ(stored<Texts>(Keys::kKnownStartupLabels), Texts{hostile}) << "its own bytes are remembered";
    EXPECT_THAT(evaluated(), IsEmpty());
}

} // namespace
} // namespace quillane
