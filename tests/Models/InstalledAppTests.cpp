#include "Calendar.h"
#include "InstalledApp.h"
#include <algorithm>
#include <limits>

namespace quillane {
namespace {

constexpr double kDay = 86'400;

LeftoverItem leftover(const std::string& path, Bytes bytes, bool isCache) {
    LeftoverItem item;
    item.url = FileURL(path);
    item.bytes = bytes;
    item.isCache = isCache;
    return item;
}

InstalledApp sample() {
    InstalledApp app;
    app.url = FileURL("/Applications/Editor.app");
    app.name = "Editor";
    app.bundleIdentifier = "com.example.editor";
    app.version = "2.1";
    app.buildVersion = "210";
    app.minimumSystemVersion = "12.0";
    app.architecture = Architecture::universal;
    app.source = AppSource::applications;
    app.lastUsed = Date{700'000'000};
    app.bundleBytes = 1'000;
    app.leftovers = {leftover("/l/Caches/a", 20, true), leftover("/l/Preferences/b", 300, false),
                     leftover("/l/Caches/c", 4'000, true)};
    app.isMeasured = true;
    return app;
}

TEST(InstalledApp, ItsIdentityIsItsBundle) {
    EXPECT_EQ(sample().id(), FileURL("/Applications/Editor.app"));
}

TEST(InstalledApp, ANewOneIsNotMeasured) {
    const InstalledApp app;
    EXPECT_EQ(app.version, "-");
    EXPECT_EQ(app.buildVersion, "-");
    EXPECT_EQ(app.bundleBytes, 0);
    EXPECT_THAT(app.leftovers, testing::IsEmpty());
    EXPECT_FALSE(app.isMeasured);
    EXPECT_EQ(app.totalBytes(), 0);
}

TEST(InstalledApp, TheTotalIsTheBundleAndAllLeftovers) {
    EXPECT_EQ(sample().leftoverBytes(), 4'320);
    EXPECT_EQ(sample().totalBytes(), 5'320);
}

TEST(InstalledApp, WithoutLeftoversTheTotalIsTheBundle) {
    InstalledApp app = sample();
    app.leftovers.clear();
    EXPECT_EQ(app.totalBytes(), app.bundleBytes);
    EXPECT_EQ(app.leftoverBytes(), 0);
}

TEST(InstalledAppDeathTest, ATotalBeyondTheRangeStopsTheProcess) {
    InstalledApp app = sample();
    app.bundleBytes = std::numeric_limits<Bytes>::max();
    EXPECT_DEATH(static_cast<void>(app.totalBytes()), "");
}

TEST(InstalledApp, TheCacheItemsAreTheRegenerableLeftoversInTheirOrder) {
    const auto items = sample().cacheItems();
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].url, FileURL("/l/Caches/a"));
    EXPECT_EQ(items[1].url, FileURL("/l/Caches/c"));
}

TEST(InstalledApp, WhatWasNeverUsedHasNoDayCount) {
    InstalledApp app = sample();
    app.lastUsed.reset();
    EXPECT_EQ(app.daysSinceLastUse(Date{700'000'000}, Calendar("GMT")), std::nullopt);
}

TEST(InstalledApp, WhatWasNeverUsedSortsBeforeEveryDate) {
    InstalledApp never = sample();
    never.lastUsed.reset();
    InstalledApp longAgo = sample();
    longAgo.lastUsed = Date::fromUnix(0);
    EXPECT_EQ(never.lastUsedSortKey(), Date::distantPast());
    EXPECT_EQ(sample().lastUsedSortKey(), Date{700'000'000});

    std::vector<InstalledApp> apps = {sample(), longAgo, never};
    std::ranges::sort(apps, {}, &InstalledApp::lastUsedSortKey);
    EXPECT_THAT(apps, testing::ElementsAre(never, longAgo, sample()));
}

TEST(InstalledApp, AUseEarlierTodayIsZeroDaysAgo) {
    const InstalledApp app = sample();
    const Calendar calendar("GMT");
    EXPECT_EQ(app.daysSinceLastUse(*app.lastUsed, calendar), 0);
    EXPECT_EQ(app.daysSinceLastUse(app.lastUsed->addingSeconds(3 * 3'600), calendar), 0);
}

TEST(InstalledApp, DaysSinceTheLastUseAreWholeOnes) {
    const InstalledApp app = sample();
    const Calendar calendar("GMT");
    EXPECT_EQ(app.daysSinceLastUse(app.lastUsed->addingSeconds(kDay - 1), calendar), 0);
    EXPECT_EQ(app.daysSinceLastUse(app.lastUsed->addingSeconds(kDay), calendar), 1);
    EXPECT_EQ(app.daysSinceLastUse(app.lastUsed->addingSeconds(181 * kDay), calendar), 181);
    EXPECT_EQ(app.daysSinceLastUse(app.lastUsed->addingSeconds(-2 * kDay), calendar), -2);
}

// One entry for each of the thirteen fields.
TEST(InstalledApp, EveryFieldCountsForEqualityAndHash) {
    const auto changed = [](auto change) {
        InstalledApp app = sample();
        change(app);
        return app;
    };
    const std::vector<InstalledApp> others = {
        changed([](InstalledApp& app) { app.url = FileURL("/Applications/Other.app"); }),
        changed([](InstalledApp& app) { app.name = "editor"; }),
        changed([](InstalledApp& app) { app.bundleIdentifier.reset(); }),
        changed([](InstalledApp& app) { app.version = "-"; }),
        changed([](InstalledApp& app) { app.buildVersion = "-"; }),
        changed([](InstalledApp& app) { app.minimumSystemVersion.reset(); }),
        changed([](InstalledApp& app) { app.architecture = Architecture::intel; }),
        changed([](InstalledApp& app) { app.source = AppSource::other; }),
        changed([](InstalledApp& app) { app.isMacAppStore = true; }),
        changed([](InstalledApp& app) { app.lastUsed = Date{700'000'000.5}; }),
        changed([](InstalledApp& app) { app.bundleBytes = 1'001; }),
        changed([](InstalledApp& app) { app.leftovers.pop_back(); }),
        changed([](InstalledApp& app) { app.isMeasured = false; }),
    };
    ASSERT_EQ(others.size(), 13U);
    const std::hash<InstalledApp> hash;
    EXPECT_EQ(sample(), sample());
    EXPECT_EQ(hash(sample()), hash(sample()));
    for (std::size_t i = 0; i < others.size(); ++i) {
        EXPECT_NE(others[i], sample()) << i;
        EXPECT_NE(hash(others[i]), hash(sample())) << i;
    }
}

TEST(InstalledApp, TheOrderOfTheLeftoversCounts) {
    InstalledApp app = sample();
    std::ranges::reverse(app.leftovers);
    EXPECT_NE(app, sample());
    EXPECT_NE(std::hash<InstalledApp>{}(app), std::hash<InstalledApp>{}(sample()));
}

} // namespace
} // namespace quillane
