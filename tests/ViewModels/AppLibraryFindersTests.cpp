// What the scan's finders bring into the library, and what the library makes of it.
#include "LibraryTest.h"
#include "RecordedPlatform.h"
#include "SweepTest.h"

namespace quillane {
namespace {

using namespace std::chrono_literals;

// The stages

class AppLibraryFinders : public LibraryTest {
  protected:
    // An old folder among the caches.
    void addCache(const std::string& name) {
        const auto below = "Users/alex/Library/Caches/" + name;
        disk.file(below + "/data", "x").modified(below, clock.now().addingSeconds(-100.0 * 24 * 60 * 60));
    }
    void addDependencies(const std::string& project) {
        disk.file("Users/alex/Projects/" + project + "/node_modules/index.js", "x");
    }
    // A new library, which sees the volume through another file system.
    void reopenOver(FileSystem& seen) { library = std::make_unique<AppLibrary>(withFiles(platform, seen)); }
    std::vector<std::string> identifiers() const {
        std::vector<std::string> identifiers;
        for (const auto& item : *library->orphans) {
            identifiers.push_back(item.identifier);
        }
        std::ranges::sort(identifiers); // of equal size, so in any order
        return identifiers;
    }
    bool walksOn(ScanReason reason) {
        const PhaseLog log(*library);
        scan(reason);
        const auto kinds = log.kinds();
        return std::ranges::find(kinds, Kind::findingDeveloperCaches) != kinds.end();
    }
};

TEST_F(AppLibraryFinders, BeforeTheFirstScanNothingIsFound) {
    EXPECT_TRUE(library->orphans->empty());
    EXPECT_TRUE(library->developerCaches->empty());
}

TEST_F(AppLibraryFinders, OrphansAreJudgedByTheApplicationsOfTheSameScan) {
    addApp("Applications/Tool.app", "com.example.tool");
    addApp("Applications/Nameless.app");
    addCache("com.example.helper.data");
    addCache("com.gone.tool");
    scan();
    EXPECT_EQ(identifiers(), std::vector<std::string>{"com.gone.tool"});
    disk.remove("Applications/Tool.app");
    scan();
    EXPECT_EQ(identifiers(), (std::vector<std::string>{"com.example.helper.data", "com.gone.tool"}));
}

TEST_F(AppLibraryFinders, ALateResultOfASupersededScanIsDropped) {
    addCache("com.gone.tool");
    addDependencies("shop");
    library->refresh(ScanReason::user);
    while (library->phase->kind != Kind::findingOrphans) {
        runner.settle();
        if (library->phase->kind != Kind::findingOrphans) {
            runner.runJob();
        }
    }
    AppLibraryTesting::supersede(*library);
    runner.runAll();
    EXPECT_TRUE(library->orphans->empty());
    EXPECT_TRUE(library->developerCaches->empty());
    EXPECT_EQ(library->phase->kind, Kind::findingOrphans);
}

TEST_F(AppLibraryFinders, ALateWalkOfASupersededScanIsDropped) {
    addDependencies("shop");
    library->refresh(ScanReason::user);
    while (library->phase->kind != Kind::findingDeveloperCaches) {
        runner.settle();
        if (library->phase->kind != Kind::findingDeveloperCaches) {
            runner.runJob();
        }
    }
    AppLibraryTesting::supersede(*library);
    runner.runAll();
    EXPECT_TRUE(library->developerCaches->empty());
}

TEST_F(AppLibraryFinders, AnAutomaticScanReusesAWalkOfLessThanFifteenMinutes) {
    addDependencies("shop");
    EXPECT_TRUE(walksOn(ScanReason::automatic)) << "the first";
    addDependencies("atlas");
    clock.advance(899s);
    EXPECT_FALSE(walksOn(ScanReason::automatic));
    EXPECT_EQ(library->developerCaches->size(), 1U) << "the earlier figures stand";
    clock.advance(1s);
    EXPECT_TRUE(walksOn(ScanReason::automatic));
    EXPECT_EQ(library->developerCaches->size(), 2U);
}

TEST_F(AppLibraryFinders, AWalkOfATimeToComeIsNotReused) {
    addDependencies("shop");
    EXPECT_TRUE(walksOn(ScanReason::automatic));
    clock.setNow(clock.now().addingSeconds(-365 * 86'400.0));
    EXPECT_TRUE(walksOn(ScanReason::automatic));
    EXPECT_FALSE(walksOn(ScanReason::automatic));
}

TEST_F(AppLibraryFinders, TheFifteenMinutesBeginAgainWithEachWalk) {
    addDependencies("shop");
    EXPECT_TRUE(walksOn(ScanReason::automatic));
    clock.advance(800s);
    EXPECT_TRUE(walksOn(ScanReason::user));
    clock.advance(800s);
    EXPECT_FALSE(walksOn(ScanReason::automatic));
}

TEST_F(AppLibraryFinders, TheFifteenMinutesBeginAtTheEndOfTheWalk) {
    addDependencies("shop");
    RecordingFileSystem slow(files);
    slow.beforeEachEntry([&](const FileURL& url) {
        if (url.path() == "/Users/alex/Projects/shop/node_modules/index.js") {
            clock.setNow(clock.now().addingSeconds(600));
        }
    });
    reopenOver(slow);
    EXPECT_TRUE(walksOn(ScanReason::user));
    clock.advance(800s);
    EXPECT_FALSE(walksOn(ScanReason::automatic));
}

TEST_F(AppLibraryFinders, ASupersededWalkMakesTheEarlierFiguresNoYounger) {
    addDependencies("shop");
    EXPECT_TRUE(walksOn(ScanReason::user));
    clock.advance(800s);
    library->refresh(ScanReason::user);
    ASSERT_TRUE(runner.runUntil([&] { return library->phase->kind == Kind::findingDeveloperCaches; }));
    AppLibraryTesting::supersede(*library);
    runner.runAll();
    clock.advance(200s);
    library->phase = Phase{Kind::ready};
    EXPECT_TRUE(walksOn(ScanReason::automatic));
}

TEST_F(AppLibraryFinders, ALibraryThatGoesStopsTheSearchThatIsUnderWay) {
    addCache("com.gone.tool");
    addDependencies("shop");
    for (const auto stage : {Kind::findingOrphans, Kind::findingDeveloperCaches}) {
        RecordingFileSystem recorded(files);
        reopenOver(recorded);
        library->refresh(ScanReason::user);
        ASSERT_TRUE(runner.runUntil([&] { return library->phase->kind == stage; }));
        recorded.clear();
        library.reset();
        runner.runAll();
        for (const auto& folder : recorded.entered()) {
            EXPECT_FALSE(folder.path().ends_with("shop") || folder.path().ends_with("com.gone.tool"))
                << folder.path();
        }
    }
}

TEST_F(AppLibraryFinders, TheWalkAsksForHelpersAtThePaceOfItsScan) {
    addDependencies("shop");
    for (const auto& [reason, pace] : {std::pair(ScanReason::user, Priority::userInitiated),
                                       std::pair(ScanReason::automatic, Priority::background)}) {
        library->developerCaches = std::vector<DevCacheItem>();
        library->refresh(reason);
        ASSERT_TRUE(runner.runUntil([&] { return library->phase->kind == Kind::findingDeveloperCaches; }));
        runner.clearHistory();
        runner.runJob();
        EXPECT_FALSE(runner.history().empty());
        EXPECT_EQ(std::ranges::count(runner.history(), pace), std::ssize(runner.history()));
        runner.runAll();
    }
}

TEST_F(AppLibraryFinders, AUsersScanAlwaysWalks) {
    addDependencies("shop");
    EXPECT_TRUE(walksOn(ScanReason::user));
    addDependencies("atlas");
    EXPECT_TRUE(walksOn(ScanReason::user));
    EXPECT_EQ(library->developerCaches->size(), 2U);
}

TEST_F(AppLibraryFinders, AnEmptyListIsWalkedAgainEveryTime) {
    EXPECT_TRUE(walksOn(ScanReason::automatic));
    EXPECT_TRUE(walksOn(ScanReason::automatic));
}

TEST_F(AppLibraryFinders, AFoundListIsPublishedOnceAndAnEqualOneNotAtAll) {
    addCache("com.gone.tool");
    addDependencies("shop");
    const ChangeCounter orphans([this] { (void)library->orphans.get(); });
    const ChangeCounter caches([this] { (void)library->developerCaches.get(); });
    scan();
    scan();
    EXPECT_EQ(orphans.changes, 1);
    EXPECT_EQ(caches.changes, 1);
}

// Queries, plans and removals

class FoundThings : public SweepTest {
  protected:
    static OrphanItem orphan(const std::string& identifier, Bytes bytes, bool requiresAdmin = false) {
        OrphanItem item;
        item.url =
            requiresAdmin ? FileURL("/Library/Caches/" + identifier) : home("Library/Caches/" + identifier);
        item.category = requiresAdmin ? "Caches (shared)" : "Caches";
        item.identifier = identifier;
        item.vendor = identifier.substr(0, identifier.find('.', identifier.find('.') + 1));
        item.bytes = bytes;
        item.requiresAdmin = requiresAdmin;
        return item;
    }
    static DevCacheItem location(const std::string& below, const std::string& tool, const std::string& kind,
                                 Bytes bytes, bool safeToSweep = true) {
        return {home(below), tool, kind, bytes, std::nullopt, safeToSweep, "It costs a little."};
    }
    std::vector<std::string> visibleVendors() const {
        std::vector<std::string> vendors;
        for (const auto& group : library->visibleOrphanGroups()) {
            vendors.push_back(group.vendor);
        }
        return vendors;
    }
    std::vector<std::string> visibleKinds() const {
        std::vector<std::string> kinds;
        for (const auto& item : library->visibleDeveloperCaches()) {
            kinds.push_back(item.kind);
        }
        return kinds;
    }
    static std::vector<std::string> pathsOf(const std::vector<SweepEntry>& entries) {
        std::vector<std::string> paths;
        for (const auto& row : entries) {
            paths.push_back(row.url.path());
        }
        return paths;
    }
    OrphanGroup onlyGroup() const { return library->visibleOrphanGroups().at(0); }
    void makeUnreachable(const FileURL& url) { library->inaccessible = std::unordered_set{url}; }
};

using Texts = std::vector<std::string>;

TEST_F(FoundThings, ASearchFindsAGroupByItsVendorOrByAnyIdentifierAndKeepsItWhole) {
    library->orphans =
        std::vector{orphan("com.acme.Draw", 10), orphan("com.acme.paint", 5), orphan("org.other.tool", 1)};
    EXPECT_EQ(visibleVendors(), (Texts{"com.acme", "org.other"}));
    library->searchText = "DRAW";
    EXPECT_EQ(visibleVendors(), Texts{"com.acme"});
    EXPECT_EQ(library->visibleOrphanGroups().front().items.size(), 2U);
    library->searchText = "org.oth";
    EXPECT_EQ(visibleVendors(), Texts{"org.other"});
    library->searchText = "Caches";
    EXPECT_EQ(visibleVendors(), Texts{}) << "neither location nor path is searched";
}

TEST_F(FoundThings, AVendorThatNoIdentifierContainsIsSearchedToo) {
    auto item = orphan("com.acme.draw", 1);
    item.vendor = "acme-works";
    library->orphans = std::vector{item};
    library->searchText = "works";
    EXPECT_EQ(visibleVendors(), Texts{"acme-works"});
}

TEST_F(FoundThings, ASearchFindsDeveloperCachesByToolAndKindButNotByPath) {
    library->developerCaches = std::vector{location(".npm/_cacache", "npm", "Package cache", 9),
                                           location("Library/Caches/pip", "pip", "Wheel cache", 5)};
    EXPECT_EQ(visibleKinds(), (Texts{"Package cache", "Wheel cache"}));
    library->searchText = "PIP";
    EXPECT_EQ(visibleKinds(), Texts{"Wheel cache"});
    library->searchText = "package";
    EXPECT_EQ(visibleKinds(), Texts{"Package cache"});
    library->searchText = "_cacache";
    EXPECT_EQ(visibleKinds(), Texts{});
}

TEST_F(FoundThings, EachSectionsBadgeCountsItsOwn) {
    library->apps = std::vector{app("Draw"), app("Paint"), app("Print"), app("Sing")};
    library->orphans =
        std::vector{orphan("com.acme.draw", 10), orphan("com.acme.helper", 20), orphan("org.other.tool", 1)};
    library->developerCaches = std::vector{location(".npm/_cacache", "npm", "Package cache", 9),
                                           location("Library/Caches/pip", "pip", "Wheel cache", 5),
                                           location("a/node_modules", "npm", "node_modules in a", 1, false)};
    EXPECT_EQ(library->badge(LibrarySection::overview), 0);
    EXPECT_EQ(library->badge(LibrarySection::applications), 4);
    EXPECT_EQ(library->badge(LibrarySection::orphans), 2) << "groups and not items";
    EXPECT_EQ(library->badge(LibrarySection::developer), 3);
    for (const auto section : {LibrarySection::files, LibrarySection::duplicates, LibrarySection::startup}) {
        EXPECT_EQ(library->badge(section), 0) << "nothing looks for these";
    }
}

TEST_F(FoundThings, TheBadgeOfApplicationsFollowsTheSearchAndNoOther) {
    library->apps = std::vector{app("Draw"), app("Paint")};
    library->orphans = std::vector{orphan("com.acme.draw", 10), orphan("org.other.tool", 1)};
    library->developerCaches = std::vector{location(".npm/_cacache", "npm", "Package cache", 9)};
    library->searchText = "paint";
    EXPECT_EQ(library->badge(LibrarySection::applications), 1);
    EXPECT_EQ(library->badge(LibrarySection::orphans), 2);
    EXPECT_EQ(library->badge(LibrarySection::developer), 1);
}

TEST_F(FoundThings, TheTotalsAreThoseOfTheWholeMachineWhateverIsSearched) {
    library->apps = std::vector{app("Draw", {cache("Library/Caches/draw", 7)})};
    library->orphans = std::vector{orphan("com.acme.draw", 10), orphan("com.acme.helper", 20, true)};
    library->developerCaches = std::vector{location(".npm/_cacache", "npm", "Package cache", 9),
                                           location("Library/Caches/pip", "pip", "Wheel cache", 5, false)};
    EXPECT_EQ(library->totalOrphanBytes(), 30);
    EXPECT_EQ(library->totalDeveloperBytes(), 14);
    EXPECT_EQ(library->totalVisibleBytes(), 7);
    library->searchText = "nothing has this";
    EXPECT_EQ(library->totalVisibleBytes(), 0);
    EXPECT_EQ(library->totalOrphanBytes(), 30);
    EXPECT_EQ(library->totalDeveloperBytes(), 14);
}

TEST_F(FoundThings, WhatNeedsAdministratorRightsIsListedAndCountedAndNeverSweepable) {
    library->orphans = std::vector{orphan("com.acme.draw", 10), orphan("com.acme.helper", 20, true)};
    EXPECT_EQ(onlyGroup().totalBytes(), 30);
    EXPECT_EQ(library->totalOrphanBytes(), 30);
    EXPECT_EQ(library->sweepableItems(onlyGroup()), std::vector{orphan("com.acme.draw", 10)});
}

TEST_F(FoundThings, WhatCouldNotBeReachedCountsAgainAfterTheNextScan) {
    const auto draw = file("Library/Caches/com.acme.draw/data").deletingLastPathComponent();
    world.disk.modified("Users/alex/Library/Caches/com.acme.draw",
                        world.clock.now().addingSeconds(-100.0 * 24 * 60 * 60));
    const auto npm = file(".npm/_cacache/index").deletingLastPathComponent();
    library->refresh(AppLibrary::ScanReason::user);
    world.runner.runAll();
    for (const auto& [url, category] :
         {std::pair(draw, SweepCategory::orphans), std::pair(npm, SweepCategory::developer)}) {
        EXPECT_EQ(library->itemCount(category), 1);
        makeUnreachable(url);
        EXPECT_EQ(library->itemCount(category), 0);
        EXPECT_EQ(library->bytes(category), 0);
        library->refresh(AppLibrary::ScanReason::user);
        world.runner.runAll();
        EXPECT_EQ(library->itemCount(category), 1);
        EXPECT_GT(library->bytes(category), 0);
    }
}

TEST_F(FoundThings, AGroupWhoseItemsAreAllProtectedStillShowsAndGivesNothing) {
    library->orphans = std::vector{orphan("com.acme.draw", 10)};
    library->setProtected(orphan("com.acme.draw", 10).url, true);
    EXPECT_EQ(visibleVendors(), Texts{"com.acme"});
    EXPECT_TRUE(library->sweepableItems(onlyGroup()).empty());
    EXPECT_EQ(library->itemCount(SweepCategory::orphans), 0);
    EXPECT_TRUE(library->plan(SweepCategory::orphans).empty());
}

TEST_F(FoundThings, WhatCouldNotBeReachedIsNotSweepable) {
    library->orphans = std::vector{orphan("com.acme.draw", 10)};
    library->developerCaches = std::vector{location(".npm/_cacache", "npm", "Package cache", 9)};
    makeUnreachable(orphan("com.acme.draw", 10).url);
    EXPECT_TRUE(library->sweepableItems(onlyGroup()).empty());
    EXPECT_EQ(library->sweepableDeveloperCaches().size(), 1U);
    makeUnreachable(home(".npm/_cacache"));
    EXPECT_TRUE(library->sweepableDeveloperCaches().empty());
}

TEST_F(FoundThings, TheOrphanPlanHasTheSweepableItemsOfEachGroupUnderItsTitle) {
    library->orphans = std::vector{orphan("com.acme.draw", 10), orphan("com.acme.draw.helper", 5),
                                   orphan("org.other.tool", 40), orphan("com.acme.agent", 90, true)};
    const auto category = SweepCategory::orphans;
    EXPECT_EQ(library->plan(category),
              (std::vector<SweepEntry>{{home("Library/Caches/com.acme.draw"), category, "com.acme.draw",
                                        "Caches - com.acme.draw", 10},
                                       {home("Library/Caches/com.acme.draw.helper"), category,
                                        "com.acme.draw", "Caches - com.acme.draw.helper", 5},
                                       {home("Library/Caches/org.other.tool"), category, "org.other.tool",
                                        "Caches - org.other.tool", 40}}))
        << "the group with an item of an administrator is the largest";
    EXPECT_EQ(library->bytes(category), 55);
    EXPECT_EQ(library->itemCount(category), 2);
}

TEST_F(FoundThings, TheDeveloperPlanHasWhatIsSafeAndNotProtected) {
    library->developerCaches = std::vector{
        location("Projects/a/node_modules", "npm / yarn / pnpm", "node_modules in a", 100, false),
        location(".npm/_cacache", "npm", "Package cache", 9),
        location("Library/Caches/pip", "pip", "Wheel cache", 5),
    };
    library->setProtected(home("Library/Caches/pip"), true);
    const auto category = SweepCategory::developer;
    EXPECT_EQ(library->plan(category),
              (std::vector<SweepEntry>{
                  {home(".npm/_cacache"), category, "npm - Package cache", "~/.npm/_cacache", 9}}));
    EXPECT_EQ(library->bytes(category), 9);
    EXPECT_EQ(library->itemCount(category), 1);
}

TEST_F(FoundThings, EveryOccurrenceOfTheHomeFolderIsShownAsATilde) {
    const FileURL url("/Volumes/Copy/Users/alex/x/Users/alex/node_modules");
    library->developerCaches =
        std::vector<DevCacheItem>{{url, "npm", "Package cache", 1, std::nullopt, true, ""}};
    EXPECT_EQ(library->plan(SweepCategory::developer).front().subtitle, "/Volumes/Copy~/x~/node_modules");
}

TEST_F(FoundThings, TheFullPlanTakesThemBetweenCachesAndTrash) {
    library->apps = std::vector{app("Draw", {cache("Library/Caches/com.example.Draw", 7)})};
    library->orphans = std::vector{orphan("com.acme.draw", 10)};
    library->developerCaches = std::vector{location(".npm/_cacache", "npm", "Package cache", 9)};
    EXPECT_EQ(pathsOf(library->fullPlan()),
              (Texts{"/Users/alex/Library/Caches/com.example.Draw", "/Users/alex/.npm/_cacache",
                     "/Users/alex/Library/Caches/com.acme.draw"}));
    EXPECT_EQ(library->selectedSweepBytes(), 26);
    library->sweepSelection = std::set{SweepCategory::orphans};
    EXPECT_EQ(library->selectedSweepBytes(), 10);
}

TEST_F(FoundThings, RemovingGroupsTakesTheSweepableItemsAndIsToldByTheTitleOrTheNumber) {
    library->orphans = std::vector{orphan("com.acme.draw", 10), orphan("com.acme.helper", 20, true),
                                   orphan("org.other.tool", 5)};
    library->setProtected(orphan("org.other.tool", 5).url, true);
    const auto groups = library->visibleOrphanGroups();
    ASSERT_EQ(groups.size(), 2U);
    const auto one = library->removalForOrphanGroups({groups[0]});
    EXPECT_EQ(one.label, "Remove com.acme.helper leftovers") << "the largest of equals gives the title";
    EXPECT_EQ(pathsOf(one.entries), Texts{"/Users/alex/Library/Caches/com.acme.draw"});
    EXPECT_EQ(one.entries.front().category, SweepCategory::orphans);
    EXPECT_TRUE(one.initiallyExcluded.empty());
    const auto both = library->removalForOrphanGroups(groups);
    EXPECT_EQ(both.label, "Remove leftovers of 2 apps") << "the number is that of before any filter";
    EXPECT_EQ(both.entries, one.entries);
    EXPECT_EQ(library->removalForOrphanGroups({}).label, "Remove leftovers of 0 apps");
}

TEST_F(FoundThings, RemovingDeveloperItemsTakesWhatNoCleanupWouldButNothingProtected) {
    const auto modules =
        location("Projects/a/node_modules", "npm / yarn / pnpm", "node_modules in a", 100, false);
    const auto npm = location(".npm/_cacache", "npm", "Package cache", 9);
    library->developerCaches = std::vector{modules, npm};
    makeUnreachable(npm.url);
    const auto one = library->removalForDeveloperItems({modules});
    EXPECT_EQ(one.label, "Remove node_modules in a");
    EXPECT_EQ(one.entries, (std::vector<SweepEntry>{{modules.url, SweepCategory::developer,
                                                     "npm / yarn / pnpm - node_modules in a",
                                                     "~/Projects/a/node_modules", 100}}));
    const auto both = library->removalForDeveloperItems({modules, npm});
    EXPECT_EQ(both.label, "Remove 2 developer locations");
    EXPECT_EQ(pathsOf(both.entries), (Texts{modules.url.path(), npm.url.path()}))
        << "asked for, so it is tried although a sweep could not reach it";
    library->setProtected(modules.url, true);
    EXPECT_TRUE(library->removalForDeveloperItems({modules}).entries.empty());
    EXPECT_EQ(library->removalForDeveloperItems({}).label, "Remove 0 developer locations");
}

TEST_F(FoundThings, AnItemThatIsAskedForTwiceHasOneRow) {
    const auto npm = location(".npm/_cacache", "npm", "Package cache", 9);
    const auto draw = orphan("com.acme.draw", 10);
    EXPECT_EQ(library->removalForDeveloperItems({npm, npm}).entries.size(), 1U);
    EXPECT_EQ(library->removalForOrphanGroups({{"com.acme", {draw}}, {"com.acme", {draw}}}).entries.size(),
              1U);
    library->developerCaches = std::vector{npm, npm};
    EXPECT_EQ(library->plan(SweepCategory::developer).size(), 1U);
    EXPECT_EQ(library->bytes(SweepCategory::developer), 9);
}

TEST_F(FoundThings, WhatASweepMovesLeavesTheListsAtOnceAndTheRestStays) {
    auto gone = orphan("com.acme.draw", 10);
    gone.url = file("Library/Caches/com.acme.draw");
    const auto stays = orphan("com.acme.paint", 5);
    auto npm = location(".npm/_cacache", "npm", "Package cache", 9);
    npm.url = file(".npm/_cacache");
    const auto pip = location("Library/Caches/pip", "pip", "Wheel cache", 5);
    library->orphans = std::vector{gone, stays};
    library->developerCaches = std::vector{npm, pip};
    const ChangeCounter orphans([this] { (void)library->orphans.get(); });
    auto entries = library->removalForOrphanGroups({OrphanGroup{"com.acme", {gone}}}).entries;
    for (const auto& row : library->removalForDeveloperItems({npm}).entries) {
        entries.push_back(row);
    }
    const auto report = sweep(entries);
    EXPECT_EQ(report.itemsMovedToTrash, 2);
    EXPECT_EQ(*library->orphans, std::vector{stays});
    EXPECT_EQ(*library->developerCaches, std::vector{pip});
    EXPECT_EQ(orphans.changes, 1) << "told of its own row alone";
}

TEST_F(FoundThings, WhatAScanFindsDuringASweepLeavesTheListsTooWhenItMoves) {
    const auto cached = file("Library/Caches/com.acme.draw/data").deletingLastPathComponent();
    world.disk.modified("Users/alex/Library/Caches/com.acme.draw",
                        world.clock.now().addingSeconds(-100.0 * 24 * 60 * 60));
    const auto modules = file("Projects/shop/node_modules/index.js").deletingLastPathComponent();
    std::vector<SweepEntry> entries;
    for (int i = 0; i < 100; ++i) { // in no list, and enough for the scan to end before the others move
        entries.push_back(entry(file("Downloads/" + std::to_string(i)), SweepCategory::developer, 1));
    }
    entries.push_back(entry(modules, SweepCategory::developer, 1));
    entries.push_back(entry(cached, SweepCategory::orphans, 1));
    startSweep(entries);
    world.runner.settle();
    world.runner.runJob();
    library->refresh(AppLibrary::ScanReason::user);
    ASSERT_TRUE(world.runner.runUntil(
        [&] { return !library->orphans->empty() && !library->developerCaches->empty(); }));
    ASSERT_TRUE(world.isThere(modules));
    world.runner.runAll();
    EXPECT_FALSE(world.isThere(modules));
    EXPECT_EQ(library->orphans->size(), 0U);
    EXPECT_EQ(library->developerCaches->size(), 0U);
}

// The developer caches tell of what they gained too; here the sweep goes on while their stage waits.
TEST_F(FoundThings, AnOrphanThatAScanFindsDuringASweepLeavesTheListAlsoBeforeTheNextStageHasEnded) {
    const auto cached = file("Library/Caches/com.acme.draw/data").deletingLastPathComponent();
    world.disk.modified("Users/alex/Library/Caches/com.acme.draw",
                        world.clock.now().addingSeconds(-100.0 * 24 * 60 * 60));
    std::vector<SweepEntry> entries;
    for (int i = 0; i < 100; ++i) { // in no list, and enough for the stage to end before the orphan moves
        entries.push_back(entry(file("Downloads/" + std::to_string(i)), SweepCategory::developer, 1));
    }
    entries.push_back(entry(cached, SweepCategory::orphans, 1));
    startSweep(entries);
    world.runner.settle();
    world.runner.runJob();
    library->refresh(AppLibrary::ScanReason::automatic);
    ASSERT_TRUE(world.runner.runUntil([&] { return !library->orphans->empty(); }));
    ASSERT_TRUE(world.isThere(cached));
    while (world.isThere(cached)) { // the sweep's jobs alone
        std::size_t job = 0;
        while (world.runner.waitingPriority(job) != Priority::userInitiated) {
            ++job;
        }
        world.runner.runJob(job);
        world.runner.settle();
    }
    EXPECT_EQ(library->phase->kind, AppLibrary::Phase::Kind::findingDeveloperCaches);
    EXPECT_EQ(library->orphans->size(), 0U);
}

TEST_F(FoundThings, WhatFailedToMoveStaysInTheLists) {
    const auto missing = orphan("com.acme.draw", 10); // not on the disk
    library->orphans = std::vector{missing};
    const auto report = sweep(library->plan(SweepCategory::orphans));
    EXPECT_EQ(report.failures.size(), 1U);
    EXPECT_EQ(*library->orphans, std::vector{missing});
}

} // namespace
} // namespace quillane
