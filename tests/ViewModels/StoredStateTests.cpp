// What survives a restart, and how it is written.
#include "AutomationSettings.h"
#include "DefaultsKeys.h"
#include "StoredRecords.h"
#include "SweepTest.h"
#include <cstdint>
#include <limits>
#include <set>

namespace quillane {
namespace {

std::string textOf(const std::optional<Defaults::Data>& data) {
    return data ? std::string(data->begin(), data->end()) : "(none)";
}

Defaults::Data dataOf(const std::string& text) {
    return {text.begin(), text.end()};
}

struct StoredState : SweepTest {
    void launch() { library = std::make_unique<AppLibrary>(world.platform); }
};

TEST_F(StoredState, AFirstLaunchHasNothingProtectedNothingToUndoAndNoRecentUninstalls) {
    AutomationSettings::registerDefaults(world.defaults);
    launch();
    EXPECT_TRUE(library->protectedPaths->empty());
    EXPECT_FALSE(library->lastOperation->has_value());
    EXPECT_TRUE(library->recentUninstalls->empty());
    EXPECT_TRUE(world.defaults.boolean(DefaultsKeys::kShowMenuBarExtra));
    EXPECT_FALSE(world.defaults.boolean(DefaultsKeys::kHasSeenOnboarding));
}

TEST_F(StoredState, SettingsHaveTheirValuesBeforeTheUserHasTouchedThem) {
    AutomationSettings::registerDefaults(world.defaults);
    EXPECT_EQ(world.defaults.integer("automation.scanFrequencyHours"), 24);
    EXPECT_EQ(world.defaults.integer("automation.thresholdGB"), 5);
    EXPECT_EQ(world.defaults.integer("automation.lowDiskPercent"), 10);
    EXPECT_TRUE(world.defaults.boolean("automation.watchUninstalls"));
    EXPECT_TRUE(world.defaults.boolean("showMenuBarExtra"));
    for (const char* key : {"automation.scheduledScans", "weeklyReminder", "automation.nudgeOnThreshold",
                            "automation.nudgeOnLowDisk", "automation.nudgeOnNewOrphans",
                            "automation.nudgeOnNewStartup", "nudged.threshold", "nudged.lowDisk"}) {
        EXPECT_FALSE(world.defaults.boolean(key)) << key;
    }
}

TEST_F(StoredState, RegisteringWritesNothing) {
    AutomationSettings::registerDefaults(world.defaults);
    EXPECT_FALSE(world.defaults.isStored("automation.scanFrequencyHours"));
    EXPECT_FALSE(world.defaults.isStored("showMenuBarExtra"));
}

TEST_F(StoredState, TheKeysAreSettledAsTheyStand) {
    using namespace DefaultsKeys;
    const std::set<std::string_view> keys{
        kProtectedPaths,   kLastOperation,      kRecentUninstalls,   kHasSeenOnboarding, kShowMenuBarExtra,
        kScheduledScans,   kScanFrequencyHours, kLastScan,           kWeeklyReminder,    kLastReminder,
        kNudgeOnThreshold, kThresholdGB,        kNudgedThreshold,    kNudgeOnLowDisk,    kLowDiskPercent,
        kNudgedLowDisk,    kNudgeOnNewOrphans,  kKnownOrphanVendors, kNudgeOnNewStartup, kKnownStartupLabels,
        kWatchUninstalls};
    EXPECT_EQ(keys, (std::set<std::string_view>{"protectedPaths",
                                                "lastOperation",
                                                "recentUninstalls",
                                                "hasSeenOnboarding",
                                                "showMenuBarExtra",
                                                "automation.scheduledScans",
                                                "automation.scanFrequencyHours",
                                                "automation.lastScan",
                                                "weeklyReminder",
                                                "lastReminder",
                                                "automation.nudgeOnThreshold",
                                                "automation.thresholdGB",
                                                "nudged.threshold",
                                                "automation.nudgeOnLowDisk",
                                                "automation.lowDiskPercent",
                                                "nudged.lowDisk",
                                                "automation.nudgeOnNewOrphans",
                                                "automation.knownOrphanVendors",
                                                "automation.nudgeOnNewStartup",
                                                "automation.knownStartupLabels",
                                                "automation.watchUninstalls"}));
}

const RecentUninstall kTool{"Tool",
                            "com.example.tool",
                            Date{700000000.5},
                            {{FileURL("/Users/alex/Library/Caches/a b"), "Caches", 42, true}}};

TEST_F(StoredState, RecentUninstallsAreThereAtTheNextLaunch) {
    world.defaults.set("recentUninstalls", *StoredRecords::encode(std::vector{kTool}));
    launch();
    EXPECT_EQ(*library->recentUninstalls, std::vector{kTool});
}

TEST_F(StoredState, GarbageUnderRecentUninstallsDoesNotStopTheLaunchAndStays) {
    for (
        const char* text :
        {"", "garbage", "{}", "[1]", "[{}]", R"([{"name":"x","removedAt":0}])",
         R"([{"name":"x","removedAt":0,"leftovers":[{}]}])",
         R"([{"name":"x","removedAt":0,"leftovers":[{"category":"c","bytes":1,"highConfidence":true}]}])",
         R"([{"name":"x","removedAt":0,"leftovers":[{"url":"file:///a","bytes":1,"highConfidence":true}]}])",
         R"([{"name":"x","removedAt":0,"leftovers":[{"url":"file:///a","category":"c","highConfidence":true}]}])",
         R"([{"name":"x","removedAt":0,"leftovers":[{"url":"file:///a","category":"c","bytes":1}]}])",
         R"([{"name":"x","bundleIdentifier":1,"removedAt":0,"leftovers":[]}])"}) {
        world.defaults.set("recentUninstalls", dataOf(text));
        launch();
        EXPECT_TRUE(library->recentUninstalls->empty()) << text;
        EXPECT_EQ(world.defaults.data("recentUninstalls"), dataOf(text));
    }
}

TEST_F(StoredState, PassingNoOperationTakesTheKeyAway) {
    const auto a = file("a");
    sweep({entry(a, SweepCategory::caches, 1)});
    ASSERT_TRUE(world.defaults.isStored("lastOperation"));
    undo();
    EXPECT_FALSE(world.defaults.isStored("lastOperation"));
}

TEST(StoredRecords, ARecentUninstallIsWrittenFieldByField) {
    EXPECT_EQ(
        textOf(StoredRecords::encode(std::vector{kTool})),
        R"([{"name":"Tool","bundleIdentifier":"com.example.tool","removedAt":700000000.5,"leftovers":[{"url":"file:\/\/\/Users\/alex\/Library\/Caches\/a%20b","category":"Caches","bytes":42,"highConfidence":true}]}])");
    EXPECT_EQ(textOf(StoredRecords::encode(std::vector<RecentUninstall>())), "[]");
}

TEST(StoredRecords, ARecentUninstallWithoutAnIdentifierReadsBackAndHasNoKeyForIt) {
    auto record = kTool;
    record.bundleIdentifier = std::nullopt;
    const auto data = StoredRecords::encode(std::vector{record, kTool});
    EXPECT_EQ(textOf(data).find("bundleIdentifier"), textOf(data).rfind("bundleIdentifier"));
    EXPECT_EQ(StoredRecords::decodeRecentUninstalls(*data), (std::vector{record, kTool}));
    EXPECT_EQ(record.id(), "Tool");
    EXPECT_EQ(kTool.id(), "com.example.tool");
}

TEST(StoredRecords, AnIdentifierThatIsNullCountsAsAbsent) {
    const auto records = StoredRecords::decodeRecentUninstalls(
        dataOf(R"([{"name":"x","bundleIdentifier":null,"removedAt":0,"leftovers":[],"unknown":1}])"));
    ASSERT_TRUE(records);
    EXPECT_EQ(records->front().bundleIdentifier, std::nullopt);
}

std::string leftoverOf(const std::string& bytes) {
    return R"({"url":"file:///a","category":"Caches","highConfidence":true,"bytes":)" + bytes + "}";
}

std::string uninstallOf(const std::string& leftovers) {
    return R"({"name":"x","removedAt":0,"leftovers":[)" + leftovers + "]}";
}

TEST(StoredRecords, WhateverFiguresAreStoredTheirSumIsNotNegativeAndCannotOverflow) {
    const std::string most = std::to_string(std::numeric_limits<std::int64_t>::max());
    const std::string least = std::to_string(std::numeric_limits<std::int64_t>::min());
    const auto hostile = uninstallOf(leftoverOf("5") + "," + leftoverOf(least) + "," + leftoverOf(most));
    const auto records = StoredRecords::decodeRecentUninstalls(dataOf("[" + hostile + "," + hostile + "]"));
    ASSERT_TRUE(records);
    std::vector<Bytes> figures;
    for (const auto& record : *records) {
        for (const auto& leftover : record.leftovers) {
            figures.push_back(leftover.bytes);
        }
    }
    EXPECT_EQ(figures, (std::vector<Bytes>{5, 0, StoredRecords::kMostStoredBytes - 5, 0, 0, 0}));
}

TEST(StoredRecords, AFigureThatCannotBeDoesNotTakeWhatCanBePutBack) {
    struct Case {
        const char* stored;
        Bytes read;
    };
    for (const auto& [stored, read] : {Case{"-1", 0}, Case{"-9223372036854775808", 0}, Case{"42", 42},
                                       Case{"9223372036854775807", StoredRecords::kMostStoredBytes}}) {
        const auto operation = StoredRecords::decodeUndoableOperation(
            dataOf(R"({"label":"x","date":0,"moves":[{"from":"file:///a","to":"file:///b"}],"bytes":)" +
                   std::string(stored) + "}"));
        ASSERT_TRUE(operation) << stored;
        EXPECT_EQ(operation->bytes, read) << stored;
        EXPECT_EQ(operation->moves.size(), 1U) << stored;
    }
}

} // namespace
} // namespace quillane
