#include "SweepTest.h"
#include <random>
#include <string>
#include <unordered_set>
#include <vector>

namespace quillane {
namespace {

struct Plans : SweepTest {
    LeftoverItem item(const std::string& below, Bytes bytes, bool isCache = true) {
        return {home(below), "Caches", LeftoverItem::Confidence::high, bytes, false, isCache};
    }
};

TEST_F(Plans, TheCachePlanHoldsTheCachesOfEachApplicationInOrder) {
    library->apps = {app("One", {item("Library/Caches/one", 10), item("Library/Preferences/one", 99, false),
                                 item("Library/Logs/one", 5)}),
                     app("Two", {item("Library/Caches/two", 7)})};
    const auto plan = library->plan(SweepCategory::caches);
    ASSERT_EQ(plan.size(), 3U);
    EXPECT_EQ(plan[0],
              (SweepEntry{home("Library/Caches/one"), SweepCategory::caches, "One", "Caches - one", 10}));
    EXPECT_EQ(plan[1].url, home("Library/Logs/one"));
    EXPECT_EQ(plan[2].title, "Two");
    EXPECT_EQ(library->bytes(SweepCategory::caches), 22);
    EXPECT_EQ(library->itemCount(SweepCategory::caches), 2);
}

TEST_F(Plans, TheFigureOfACategoryIsThatOfItsRows) {
    std::mt19937 random(5);
    const auto oneOf = [&random](int count) {
        return std::to_string(random() % static_cast<unsigned>(count));
    };
    for (int round = 0; round < 20; ++round) {
        std::vector<InstalledApp> apps;
        std::vector<OrphanItem> orphans;
        std::vector<DevCacheItem> locations;
        for (int i = 0; i < 12; ++i) { // some of them at the same place
            apps.push_back(app("App " + std::to_string(i), {item("Library/Caches/" + oneOf(9), i)}));
            orphans.push_back({home("Library/Logs/" + oneOf(9)), "Logs", "a.b." + oneOf(3), "a.b" + oneOf(4),
                               i, std::nullopt, random() % 4 == 0});
            locations.push_back({home(oneOf(9)), "npm", "Cache", i, std::nullopt, random() % 3 != 0, ""});
        }
        library->apps = apps;
        library->orphans = orphans;
        library->developerCaches = locations;
        library->setProtected(home(oneOf(9)), true);
        library->setProtected(home("Library/Logs/" + oneOf(9)), true);
        library->inaccessible = std::unordered_set{home("Library/Caches/" + oneOf(9)), home(oneOf(9))};
        for (const auto category :
             {SweepCategory::caches, SweepCategory::orphans, SweepCategory::developer}) {
            const auto rows = library->plan(category);
            EXPECT_EQ(library->bytes(category),
                      sumOfBytes(rows, [](const SweepEntry& row) { return row.bytes; }));
        }
    }
}

TEST_F(Plans, AProtectedApplicationHasNoRowsAndIsNotCounted) {
    library->apps = {app("One", {item("Library/Caches/one", 10)}),
                     app("Two", {item("Library/Caches/two", 7)})};
    library->setProtected(FileURL("/Applications/One.app"), true);
    EXPECT_EQ(library->plan(SweepCategory::caches).size(), 1U);
    EXPECT_EQ(library->itemCount(SweepCategory::caches), 1);
    EXPECT_EQ(library->apps->front().cacheItems().size(), 1U);
    EXPECT_TRUE(library->reclaimableCache(library->apps->front()).empty());
}

TEST_F(Plans, AProtectedCacheDropsOutAloneAndByItsExactPath) {
    library->apps = {app("One", {item("Library/Caches/one", 10), item("Library/Logs/one", 5)})};
    library->setProtected(home("Library/Caches/one"), true);
    library->setProtected(home("Library/Logs"), true); // a folder does not protect what lies in it
    EXPECT_EQ(library->reclaimableCacheBytes(library->apps->front()), 5);
}

TEST_F(Plans, AnUnreachableCacheLeavesThePlanUntilTheNextScan) {
    library->apps = {app("One", {item("Library/Caches/one", 10)})};
    library->inaccessible = std::unordered_set{home("Library/Caches/one")};
    EXPECT_EQ(library->bytes(SweepCategory::caches), 0);
    library->refresh(AppLibrary::ScanReason::user);
    world.runner.runAll();
    EXPECT_TRUE(library->inaccessible->empty());
}

TEST_F(Plans, TheTrashIsOneRowWithItsCountAndSize) {
    library->trashState = TrashSweeper::State::measured(1500000, 3);
    EXPECT_EQ(library->plan(SweepCategory::trash),
              (std::vector{SweepEntry{FileURL("/.Trash"), SweepCategory::trash, "Everything in the Trash",
                                      "3 item(s), deleted permanently", 1500000}}));
    EXPECT_EQ(library->itemCount(SweepCategory::trash), 3);
}

TEST_F(Plans, NumbersInLabelsAndRowsAreGrouped) {
    library->trashState = TrashSweeper::State::measured(1, 12345);
    EXPECT_EQ(library->plan(SweepCategory::trash).front().subtitle, "12,345 item(s), deleted permanently");
    EXPECT_EQ(library->removalForApps(std::vector(1200, app("One"))).label, "Uninstall 1,200 apps");
    EXPECT_EQ(library->removalForOrphanGroups(std::vector<OrphanGroup>(1200)).label,
              "Remove leftovers of 1,200 apps");
    EXPECT_EQ(library->removalForDeveloperItems(std::vector<DevCacheItem>(1200)).label,
              "Remove 1,200 developer locations");
}

TEST_F(Plans, ATrashThatIsEmptyOrCannotBeReadIsNotPlanned) {
    EXPECT_TRUE(library->plan(SweepCategory::trash).empty());
    library->trashState = TrashSweeper::State::refused();
    EXPECT_TRUE(library->plan(SweepCategory::trash).empty());
    EXPECT_EQ(library->bytes(SweepCategory::trash), 0);
    EXPECT_EQ(library->itemCount(SweepCategory::trash), 0);
}

TEST_F(Plans, ATrashOfEmptyFilesIsPlannedAllTheSame) {
    library->trashState = TrashSweeper::State::measured(0, 2);
    EXPECT_EQ(library->plan(SweepCategory::trash).size(), 1U);
    EXPECT_EQ(library->itemCount(SweepCategory::trash), 2);
}

TEST_F(Plans, TheFullPlanWalksTheTickedCategoriesInDeclaredOrder) {
    library->apps = {app("One", {item("Library/Caches/one", 10)})};
    library->trashState = TrashSweeper::State::measured(100, 1);
    EXPECT_EQ(library->selectedSweepBytes(), 10);
    EXPECT_EQ(library->fullPlan().size(), 1U);
    library->sweepSelection = std::set{SweepCategory::trash, SweepCategory::caches};
    ASSERT_EQ(library->fullPlan().size(), 2U);
    EXPECT_EQ(library->fullPlan()[1].category, SweepCategory::trash);
    EXPECT_EQ(library->selectedSweepBytes(), 110);
    library->sweepSelection = std::set<SweepCategory>();
    EXPECT_EQ(library->selectedSweepBytes(), 0);
    EXPECT_TRUE(library->fullPlan().empty());
}

TEST_F(Plans, ApplicationsFilesAndStartupItemsAreNeverPlannedWithoutBeingAsked) {
    library->apps = {app("One", {item("Library/Caches/one", 10)})};
    for (const auto category : {SweepCategory::apps, SweepCategory::files, SweepCategory::startup}) {
        EXPECT_TRUE(library->plan(category).empty());
        EXPECT_EQ(library->itemCount(category), 0);
    }
}

TEST_F(Plans, UninstallingThreeApplicationsOfWhichOneIsTheSystemsHasRowsForTwo) {
    auto system = app("System");
    system.source = AppSource::system;
    const auto removal = library->removalForApps({app("One"), system, app("Two")});
    EXPECT_EQ(removal.label, "Uninstall 3 apps");
    ASSERT_EQ(removal.entries.size(), 2U);
    EXPECT_EQ(removal.entries[0].subtitle, "Application bundle");
    EXPECT_EQ(removal.entries[1].title, "Two");
}

TEST_F(Plans, UninstallingNothingHasALabelAndNoRows) {
    const auto removal = library->removalForApps({});
    EXPECT_EQ(removal.label, "Uninstall 0 apps");
    EXPECT_TRUE(removal.entries.empty());
}

TEST_F(Plans, UninstallingListsTheBundleAndWhatBelongsToItButNothingProtectedOrOfAdministrators) {
    auto one = app("One", {item("Library/Caches/one", 10), item("Library/Logs/one", 5),
                           LeftoverItem{FileURL("/Library/Caches/one"), "Caches (shared)",
                                        LeftoverItem::Confidence::high, 3, true, true}});
    one.bundleBytes = 1000;
    library->setProtected(home("Library/Logs/one"), true);
    const auto removal = library->removalForApps({one});
    EXPECT_EQ(removal.label, "Uninstall One");
    ASSERT_EQ(removal.entries.size(), 2U);
    EXPECT_EQ(removal.entries[0],
              (SweepEntry{one.url, SweepCategory::apps, "One", "Application bundle", 1000}));
    EXPECT_EQ(removal.entries[1],
              (SweepEntry{home("Library/Caches/one"), SweepCategory::apps, "One", "Caches - one", 10}));
    EXPECT_TRUE(removal.initiallyExcluded.empty());
}

TEST_F(Plans, AProtectedApplicationIsLeftOutWithAllItsLeftovers) {
    const auto one = app("One", {item("Library/Caches/one", 10)});
    library->setProtected(one.url, true);
    EXPECT_TRUE(library->removalForApps({one}).entries.empty());
}

TEST_F(Plans, AMatchByNameAloneIsListedButStartsUnticked) {
    auto byName = item("Library/Application Support/One", 10);
    byName.confidence = LeftoverItem::Confidence::medium;
    const auto removal = library->removalForApps({app("One", {byName})});
    EXPECT_EQ(removal.entries.size(), 2U);
    EXPECT_EQ(removal.initiallyExcluded, std::unordered_set{byName.url});
}

// One path, one row

TEST_F(Plans, ACacheOfTwoApplicationsHasOneRowUnderTheFirstAndCountsOnce) {
    const auto shared = item("Library/Caches/shared", 10);
    library->apps = {app("One", {shared, item("Library/Logs/one", 5)}), app("Two", {shared}),
                     app("Three", {shared, item("Library/Logs/three", 3)})};
    const auto plan = library->plan(SweepCategory::caches);
    ASSERT_EQ(plan.size(), 3U);
    EXPECT_EQ(plan[0].url, shared.url);
    EXPECT_EQ(plan[0].title, "One");
    EXPECT_EQ(library->bytes(SweepCategory::caches), 18);
    EXPECT_EQ(library->itemCount(SweepCategory::caches), 3) << "each of them has a cache to give";
}

TEST_F(Plans, APathOfTwoCategoriesHasOneRowInTheFullPlanAndTheFigureIsThatOfItsRows) {
    library->apps = {app("Homebrew", {item("Library/Caches/Homebrew", 10)})};
    library->developerCaches = {
        DevCacheItem{home("Library/Caches/Homebrew"), "Homebrew", "Download cache", 11, std::nullopt, true,
                     ""},
        DevCacheItem{home(".npm/_cacache"), "npm", "Package cache", 5, std::nullopt, true, ""}};
    const auto all = library->fullPlan();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].category, SweepCategory::caches) << "the first stays";
    EXPECT_EQ(all[1].url, home(".npm/_cacache"));
    EXPECT_EQ(library->selectedSweepBytes(), 15);
    EXPECT_EQ(library->bytes(SweepCategory::developer), 16) << "what a sweep of it alone would take";
    library->sweepSelection = std::set{SweepCategory::developer};
    EXPECT_EQ(library->selectedSweepBytes(), 16);
    EXPECT_EQ(library->fullPlan().size(), 2U);
}

TEST_F(Plans, WhatTheFigurePromisesIsWhatASweepOfAllRowsGives) {
    const auto shared = cache("Library/Caches/shared", 10);
    library->apps = {app("One", {shared}), app("Two", {shared, cache("Library/Logs/two", 3)})};
    library->developerCaches = {
        DevCacheItem{shared.url, "Tool", "Cache", 10, std::nullopt, true, ""},
        DevCacheItem{file(".npm/_cacache"), "npm", "Package cache", 5, std::nullopt, true, ""}};
    const auto promised = library->selectedSweepBytes();
    const auto done = sweep(library->fullPlan());
    EXPECT_EQ(done.totalBytes(), promised);
    EXPECT_TRUE(done.failures.empty());
    EXPECT_EQ(*library->sweepReclaimedSoFar, 18);
}

TEST_F(Plans, UninstallingTwoCopiesListsWhatTheyShareOnce) {
    const auto shared = item("Library/Caches/shared", 10);
    const auto removal = library->removalForApps({app("One", {shared}), app("Two", {shared}), app("One")});
    ASSERT_EQ(removal.entries.size(), 3U) << "two bundles, each once, and one cache";
    EXPECT_EQ(removal.entries[1].url, shared.url);
    EXPECT_EQ(removal.entries[1].title, "One");
    EXPECT_EQ(removal.entries[2].url, FileURL("/Applications/Two.app"));
}

TEST_F(Plans, TheRowOfAPathStartsUntickedWhicheverOfItsFindingsAsksForIt) {
    const auto sure = item("Library/Caches/shared", 10);
    auto byName = sure;
    byName.confidence = LeftoverItem::Confidence::medium;
    for (const auto& [first, second] : {std::pair(sure, byName), std::pair(byName, sure)}) {
        const auto removal = library->removalForApps({app("One", {first}), app("Two", {second})});
        EXPECT_EQ(removal.entries.size(), 3U);
        EXPECT_EQ(removal.initiallyExcluded, std::unordered_set{sure.url});
    }
}

TEST_F(Plans, ACacheThatIsListedTwiceIsCleanedOnce) {
    const auto one = item("Library/Caches/one", 10);
    EXPECT_EQ(library->removalForCache(app("One", {one, one})).entries.size(), 1U);
}

// Leftovers that several applications claim

TEST_F(Plans, WhatAnApplicationThatStaysListsTooIsListedButStartsUnticked) {
    const auto shared = item("Library/Caches/shared", 10);
    const auto own = item("Library/Logs/one", 5);
    library->apps = {app("One", {shared, own}), app("Two", {shared})};
    const auto removal = library->removalForApps({library->apps->front()});
    EXPECT_EQ(removal.entries.size(), 3U);
    EXPECT_EQ(removal.initiallyExcluded, std::unordered_set{shared.url});
}

TEST_F(Plans, WhatOnlyApplicationsThatGoClaimStartsTicked) {
    const auto shared = item("Library/Caches/shared", 10);
    library->apps = {app("One", {shared}), app("Two", {shared}), app("Three")};
    EXPECT_TRUE(
        library->removalForApps({app("One", {shared}), app("Two", {shared})}).initiallyExcluded.empty());
}

TEST_F(Plans, AnApplicationThatIsAskedForAndStaysKeepsItsClaim) {
    const auto shared = item("Library/Caches/shared", 10);
    auto system = app("System", {shared});
    system.source = AppSource::system;
    const auto kept = app("Kept", {shared});
    library->setProtected(kept.url, true);
    for (const auto& other : {system, kept}) {
        library->apps = {app("One", {shared}), other};
        EXPECT_EQ(library->removalForApps({app("One", {shared}), other}).initiallyExcluded,
                  std::unordered_set{shared.url})
            << other.name;
    }
}

TEST_F(Plans, AnIdentifierClaimsWhatItNamesBeforeAScanHasListedIt) {
    auto other = app("Other");
    other.isMeasured = false;
    const auto named = [&](const std::string& name) {
        const auto leftover = item("Library/Preferences/" + name, 1, false);
        const auto one = app("One", {leftover});
        library->apps = {one, other};
        return library->removalForApps({one}).initiallyExcluded.contains(leftover.url);
    };
    other.bundleIdentifier = "com.example.tool"; // that of another copy, or one that begins it
    EXPECT_TRUE(named("com.example.tool"));
    EXPECT_TRUE(named("com.example.tool.plist"));
    EXPECT_TRUE(named("com.example.tool.pro.plist"));
    EXPECT_TRUE(named("ABCDE12345.com.example.tool"));
    EXPECT_FALSE(named("com.example.toolbox"));
    EXPECT_FALSE(named("com.example"));
    other.bundleIdentifier = "";
    EXPECT_FALSE(named("com.example.tool"));
    other.bundleIdentifier = std::nullopt;
    EXPECT_FALSE(named("com.example.tool"));
}

TEST_F(Plans, WhatASweepCouldNotReachIsListedForItsApplicationAllTheSame) {
    const auto unreachable = item("Library/Caches/one", 10);
    library->inaccessible = std::unordered_set{unreachable.url, FileURL("/Applications/One.app")};
    const auto removal = library->removalForApps({app("One", {unreachable})});
    ASSERT_EQ(removal.entries.size(), 2U);
    EXPECT_EQ(removal.entries[1].url, unreachable.url);
    EXPECT_TRUE(removal.initiallyExcluded.empty());
}

TEST_F(Plans, CleaningACacheTakesWhatIsReclaimableAndNothingElse) {
    const auto one = app("One", {item("Library/Caches/one", 10), item("Library/Preferences/one", 99, false)});
    const auto removal = library->removalForCache(one);
    EXPECT_EQ(removal.label, "Clean One cache");
    ASSERT_EQ(removal.entries.size(), 1U);
    EXPECT_EQ(removal.entries[0].category, SweepCategory::caches);
    EXPECT_TRUE(removal.initiallyExcluded.empty());
}

TEST_F(Plans, EachRemovalHasAnIdOfItsOwn) {
    EXPECT_NE(library->removalForApps({}).id, library->removalForApps({}).id);
}

TEST_F(Plans, ManyPathsAreProtectedAndReleasedWithOneWriteEach) {
    int writes = 0;
    world.defaults.subscribe([&](const std::string&) { ++writes; });
    library->setProtected(FileURL("/c"), true);
    library->setProtected(std::vector{FileURL("/b"), FileURL("/a")}, true);
    EXPECT_EQ(world.defaults.stringArray("protectedPaths"), (std::vector<std::string>{"/a", "/b", "/c"}));
    library->setProtected(std::vector{FileURL("/a"), FileURL("/c"), FileURL("/d")}, false);
    EXPECT_EQ(world.defaults.stringArray("protectedPaths"), (std::vector<std::string>{"/b"}));
    EXPECT_EQ(writes, 3);
}

TEST_F(Plans, ProtectionIsStoredSortedAndReadBackAtTheNextLaunch) {
    library->setProtected(FileURL("/b"), true);
    library->setProtected(FileURL("/a"), true);
    library->setProtected(FileURL("/a"), true);
    EXPECT_EQ(world.defaults.stringArray("protectedPaths"), (std::vector<std::string>{"/a", "/b"}));
    library = std::make_unique<AppLibrary>(world.platform);
    EXPECT_TRUE(library->isProtected(FileURL("/a")));
    library->setProtected(FileURL("/a"), false);
    EXPECT_EQ(world.defaults.stringArray("protectedPaths"), (std::vector<std::string>{"/b"}));
    EXPECT_FALSE(library->isProtected(FileURL("/a")));
}

} // namespace
} // namespace quillane
