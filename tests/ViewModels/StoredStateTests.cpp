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

TEST_F(StoredState, HostileRecentUninstallsAreNoneAndNeitherStopTheLaunchNorHoldItUp) {
    constexpr std::size_t kDeep = 20'000;
    const auto record = [](const std::string& fields) { return "[{" + fields + "}]"; };
    const std::string rest = R"(,"removedAt":0,"leftovers":[])";
    const std::string deep = std::string(kDeep, '[') + std::string(kDeep, ']');
    std::string deepObject;
    for (std::size_t i = 0; i < kDeep; ++i) {
        deepObject += R"({"a":)";
    }
    const std::vector<std::string> texts{
        std::string(kDeep, '['),
        deepObject,
        deepObject + "1" + std::string(kDeep, '}'),
        deep,
        record(R"("name":)" + deep + rest),
        record(R"("name":"x","removedAt":0,"leftovers":)" + deep),
        record(R"("name":1)" + rest),
        record(R"("name":null)" + rest),
        record(R"("removedAt":0,"leftovers":[])"),
        record(R"("name":"x","leftovers":[])"),
        record(R"("name":"x","removedAt":"0","leftovers":[])"),
        record(R"("name":"x","removedAt":true,"leftovers":[])"),
        record(R"("name":"x","removedAt":1e400,"leftovers":[])"),
        record(R"("name":"x","removedAt":NaN,"leftovers":[])"),
        record(R"("name":"x","removedAt":0,"leftovers":{})"),
        record(R"("name":"x","removedAt":0,"leftovers":null)"),
        record(R"("name":"x","bundleIdentifier":["x"],"removedAt":0,"leftovers":[])"),
        record("\"name\":\"\xff\xfe\"" + rest),
        record(R"("name":"x")" + rest) + "x",
        record(R"("name":"x")" + rest) + std::string(1, '\0'),
        "\xef\xbb\xbf["};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const auto data = dataOf(texts[i]);
        world.defaults.set("recentUninstalls", data);
        launch();
        EXPECT_TRUE(library->recentUninstalls->empty()) << i;
        EXPECT_TRUE(world.defaults.data("recentUninstalls") == data) << i;
    }
}

TEST_F(StoredState, AHostileLeftoverMakesTheWholeListNone) {
    const auto leftover = [](const std::string& url, const std::string& category, const std::string& bytes,
                             const std::string& confidence) {
        return R"([{"name":"x","removedAt":0,"leftovers":[{"url":)" + url + R"(,"category":)" + category +
               R"(,"bytes":)" + bytes + R"(,"highConfidence":)" + confidence + "}]}]";
    };
    const std::string url = R"("file:///a")";
    ASSERT_TRUE(StoredRecords::decodeRecentUninstalls(dataOf(leftover(url, R"("c")", "1", "true"))));
    for (const auto& text :
         {leftover(R"("https://example.com/a")", R"("c")", "1", "true"),
          leftover(R"("")", R"("c")", "1", "true"), leftover("1", R"("c")", "1", "true"),
          leftover("[]", R"("c")", "1", "true"), leftover(url, "1", "1", "true"),
          leftover(url, "null", "1", "true"), leftover(url, R"("c")", R"("1")", "true"),
          leftover(url, R"("c")", "1.5", "true"), leftover(url, R"("c")", "true", "true"),
          leftover(url, R"("c")", "9223372036854775808", "true"), leftover(url, R"("c")", "1e300", "true"),
          leftover(url, R"("c")", "1", "1"), leftover(url, R"("c")", "1", R"("true")"),
          leftover(url, R"("c")", "1", "null")}) {
        EXPECT_FALSE(StoredRecords::decodeRecentUninstalls(dataOf(text))) << text;
    }
}

TEST(StoredRecords, MoreThanAnybodyKeepsIsNotRead) {
    auto data = dataOf(R"([{"name":"x","removedAt":0,"leftovers":[]}])");
    EXPECT_TRUE(StoredRecords::decodeRecentUninstalls(data));
    data.resize((std::size_t{64} << 20U) + 1, ' ');
    EXPECT_FALSE(StoredRecords::decodeRecentUninstalls(data));
}

TEST(StoredRecords, RecentUninstallsOfAnyTextReadBackAsTheyWere) {
    const std::vector<RecentUninstall> records{
        {"", "", Date{0}, {}},
        {"\xe2\x80\xae \"quoted\" \\ / \n\t\x01", std::nullopt, Date{-1e-7}, {}},
        {"\xf0\x9f\x98\x80",
         "com.example/\xc3\xa9",
         Date{802'000'000.123456},
         {{FileURL("/Users/alex/Library/\xff #?%25"), "Caches", 0, false},
          {FileURL("/"), "", StoredRecords::kMostStoredBytes, true}}}};
    EXPECT_EQ(StoredRecords::decodeRecentUninstalls(*StoredRecords::encode(records)), records);
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
