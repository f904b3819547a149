#include "LibraryTest.h"
#include "SweepTest.h"
#include <gmock/gmock.h>
#include <optional>

namespace quillane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = StartupItem::Kind;
using Health = StartupItem::Health;
using Texts = std::vector<std::string>;
using Call = ScriptedCommandRunner::Call;

const std::string kLaunchctl = "/bin/launchctl";
const Call kList{kLaunchctl, {"list"}};
const Call kBootout{kLaunchctl, {"bootout", "gui/501/com.acme.agent"}};

StartupItem itemAt(const std::string& path, const std::string& label, Kind kind = Kind::agent,
                   Health health = Health::ok) {
    StartupItem item;
    item.url = FileURL(path);
    item.label = label;
    item.kind = kind;
    item.health = health;
    item.bytes = 400;
    return item;
}
StartupItem agentNamed(const std::string& label, Health health = Health::ok) {
    return itemAt("/Users/alex/Library/LaunchAgents/" + label + ".plist", label, Kind::agent, health);
}
StartupItem daemonNamed(const std::string& label, Health health = Health::ok) {
    return itemAt("/Library/LaunchDaemons/" + label + ".plist", label, Kind::daemon, health);
}

Texts labelsOf(const std::vector<StartupItem>& items) {
    Texts labels;
    for (const auto& item : items) {
        labels.push_back(item.label);
    }
    return labels;
}

// The load

class AppLibraryStartup : public LibraryTest {
  protected:
    using Kind = StartupItem::Kind; // not the kind of a phase

    void addAgent(const std::string& label) {
        disk.file("Users/alex/Library/LaunchAgents/" + label + ".plist",
                  "<plist><dict><key>Label</key><string>" + label + "</string></dict></plist>");
    }
    void answerLoaded(const std::string& label) {
        commands.answer(kLaunchctl, {"list"}, "PID\tStatus\tLabel\n-\t0\t" + label + "\n");
    }
    void load() {
        library->loadStartupItems();
        runner.runAll();
    }
    // What stopping the item brought back.
    std::optional<std::string> stopped(const StartupItem& item) {
        std::optional<std::optional<std::string>> message;
        library->tasks().start(
            [&](StopToken stop) -> Task<> { message = co_await library->stopStartupItem(item, stop); });
        runner.runAll();
        return message.value();
    }
};

TEST_F(AppLibraryStartup, ALoadBringsTheItemsAndTheBadgeCountsTheirProblems) {
    addAgent("com.acme.agent");
    EXPECT_EQ(library->badge(LibrarySection::startup), 0);
    library->loadStartupItems();
    EXPECT_TRUE(*library->isLoadingStartup) << "at once";
    runner.runAll();
    EXPECT_FALSE(*library->isLoadingStartup);
    EXPECT_THAT(labelsOf(*library->startupItems), ElementsAre("com.acme.agent"));
    EXPECT_EQ(library->startupItems->front().health, Health::orphaned);
    EXPECT_EQ(library->badge(LibrarySection::startup), 1);
}

TEST_F(AppLibraryStartup, AScanDoesNotLookForStartupItems) {
    addAgent("com.acme.agent");
    scan();
    EXPECT_THAT(*library->startupItems, IsEmpty());
    EXPECT_EQ(std::ranges::count(commands.calls(), kList), 0);
}

TEST_F(AppLibraryStartup, TheLoadRunsWhereTheUserWaitsForIt) {
    library->loadStartupItems();
    runner.settle();
    EXPECT_EQ(runner.waitingPriority(0), Priority::userInitiated);
}

TEST_F(AppLibraryStartup, TheApplicationsThatStandWhenItIsAskedForOwnWhatIsFound) {
    addAgent("com.acme.agent");
    InstalledApp acme;
    acme.url = FileURL("/Applications/Acme.app");
    acme.name = "Acme";
    acme.bundleIdentifier = "com.acme";
    library->apps = std::vector{acme};
    library->loadStartupItems();
    library->apps = std::vector<InstalledApp>();
    runner.runAll();
    ASSERT_EQ(library->startupItems->size(), 1U);
    EXPECT_EQ(library->startupItems->front().ownerName, "Acme");
    load();
    EXPECT_EQ(library->startupItems->front().ownerName, std::nullopt);
}

TEST_F(AppLibraryStartup, OfTwoLoadsTheOneThatEndsLastHasTheWord) {
    addAgent("com.acme.agent");
    library->loadStartupItems();
    runner.settle();
    library->loadStartupItems();
    runner.settle();
    ASSERT_EQ(runner.waitingJobs(), 2U);
    runner.runJob(1);
    runner.settle();
    EXPECT_EQ(library->startupItems->size(), 1U);
    EXPECT_FALSE(*library->isLoadingStartup) << "told by the first that ends";
    addAgent("com.acme.later");
    runner.runAll();
    EXPECT_THAT(labelsOf(*library->startupItems), ElementsAre("com.acme.agent", "com.acme.later"));
    EXPECT_FALSE(*library->isLoadingStartup);
}

TEST_F(AppLibraryStartup, ALoadThatOutlivesTheLibraryAsksNobodyAndTellsNobody) {
    library->loadStartupItems();
    runner.settle();
    library.reset();
    runner.runAll();
    EXPECT_THAT(commands.calls(), IsEmpty()) << "a launchctl that hangs would keep the program";
}

// Stopping

TEST_F(AppLibraryStartup, AnAgentThatWasStoppedStaysListedAndReadsAsNotLoaded) {
    addAgent("com.acme.agent");
    answerLoaded("com.acme.agent");
    load();
    ASSERT_EQ(library->startupItems->front().isLoaded, true);
    commands.answer(kBootout.path, kBootout.arguments, "");
    answerLoaded("another");
    EXPECT_EQ(stopped(library->startupItems->front()), std::nullopt);
    EXPECT_THAT(commands.calls(), ElementsAre(kList, kBootout, kList));
    ASSERT_EQ(library->startupItems->size(), 1U);
    EXPECT_EQ(library->startupItems->front().isLoaded, false);
}

TEST_F(AppLibraryStartup, AStopThatFailsTellsWhyAndLeavesTheList) {
    addAgent("com.acme.agent");
    load();
    commands.answer(kBootout.path, kBootout.arguments, "", "Boot-out failed: 3: No such process\n");
    const ChangeCounter counter([&] { static_cast<void>(library->isLoadingStartup.get()); });
    EXPECT_EQ(stopped(library->startupItems->front()), "Boot-out failed: 3: No such process");
    EXPECT_THAT(commands.calls(), ElementsAre(kList, kBootout));
    EXPECT_EQ(counter.changes, 0);
}

TEST_F(AppLibraryStartup, WhatIsNotTheUsersOwnIsNotStoppedAndNothingIsLoaded) {
    EXPECT_EQ(stopped(daemonNamed("com.acme.daemon")),
              "Only your own launch agents can be stopped without admin rights.");
    EXPECT_THAT(commands.calls(), IsEmpty());
    EXPECT_FALSE(*library->isLoadingStartup);
}

// Showing

TEST_F(AppLibraryStartup, TheSearchLetsAnItemThroughByItsLabelOrItsOwner) {
    auto owned = agentNamed("com.acme.agent");
    owned.ownerName = "Rocket Skates";
    library->startupItems = std::vector{owned, agentNamed("org.Other"), daemonNamed("net.third")};
    EXPECT_THAT(labelsOf(library->visibleStartupItems()),
                ElementsAre("com.acme.agent", "org.Other", "net.third"));
    library->searchText = std::string("SKATES");
    EXPECT_THAT(labelsOf(library->visibleStartupItems()), ElementsAre("com.acme.agent"));
    library->searchText = std::string("other");
    EXPECT_THAT(labelsOf(library->visibleStartupItems()), ElementsAre("org.Other"));
    library->searchText = std::string("LaunchAgents");
    EXPECT_THAT(library->visibleStartupItems(), IsEmpty()) << "where it lies is not looked at";
}

TEST_F(AppLibraryStartup, BrokenAndOrphanedItemsAreProblemsWhateverTheSearchSays) {
    library->startupItems = std::vector{agentNamed("a", Health::broken), agentNamed("b", Health::orphaned),
                                        agentNamed("c"), daemonNamed("d", Health::orphaned)};
    library->searchText = std::string("nowhere");
    EXPECT_EQ(library->startupProblemCount(), 3);
    EXPECT_EQ(library->badge(LibrarySection::startup), 3);
}

// Removing

TEST_F(AppLibraryStartup, ARowTellsLabelKindAndFile) {
    const auto agent = agentNamed("com.acme.agent");
    const auto removal = library->removalForStartupItems({agent});
    EXPECT_EQ(removal.label, "Remove com.acme.agent");
    EXPECT_THAT(removal.initiallyExcluded, IsEmpty());
    EXPECT_THAT(removal.entries, ElementsAre(SweepEntry{agent.url, SweepCategory::startup, "com.acme.agent",
                                                        "Agent - com.acme.agent.plist", 400}));
}

TEST_F(AppLibraryStartup, EachKindHasItsWordInARow) {
    const auto subtitle = [&](Kind kind) {
        return library->removalForStartupItems({itemAt("/Users/alex/x", "label", kind)})
            .entries.at(0)
            .subtitle;
    };
    EXPECT_EQ(subtitle(Kind::agent), "Agent - x");
    EXPECT_EQ(subtitle(Kind::daemon), "Daemon - x");
    EXPECT_EQ(subtitle(Kind::helper), "Privileged Helper - x");
}

TEST_F(AppLibraryStartup, WhatLiesOutsideTheHomeFolderAndWhatIsProtectedIsNoRow) {
    const auto kept = agentNamed("com.acme.kept");
    library->setProtected(kept.url, true);
    const auto removal =
        library->removalForStartupItems({kept, agentNamed("com.acme.agent"), daemonNamed("com.acme.daemon"),
                                         itemAt("/Library/LaunchAgents/a.plist", "a"),
                                         itemAt("/Library/PrivilegedHelperTools/b", "b", Kind::helper)});
    ASSERT_EQ(removal.entries.size(), 1U);
    EXPECT_EQ(removal.entries[0].title, "com.acme.agent");
    EXPECT_EQ(removal.label, "Remove 5 startup items") << "as many as were asked for";
}

TEST_F(AppLibraryStartup, TheLabelCountsWhatWasAskedFor) {
    EXPECT_EQ(library->removalForStartupItems({}).label, "Remove 0 startup items");
    EXPECT_EQ(library->removalForStartupItems({daemonNamed("d")}).label, "Remove d");
    EXPECT_THAT(library->removalForStartupItems({daemonNamed("d")}).entries, IsEmpty());
    const std::vector<StartupItem> many(1'234, agentNamed("same"));
    EXPECT_EQ(library->removalForStartupItems(many).label, "Remove 1,234 startup items");
    EXPECT_EQ(library->removalForStartupItems(many).entries.size(), 1U);
}

TEST_F(AppLibraryStartup, NoCleanupTakesAStartupItemUnasked) {
    library->startupItems = std::vector{agentNamed("a", Health::broken)};
    EXPECT_THAT(library->plan(SweepCategory::startup), IsEmpty());
    EXPECT_EQ(library->itemCount(SweepCategory::startup), 0);
    EXPECT_EQ(library->bytes(SweepCategory::startup), 0);
}

// Forgetting

class AppLibraryForgottenStartupItems : public SweepTest {};

TEST_F(AppLibraryForgottenStartupItems, WhatMovesLeavesTheListAtOnceAndTheRestStays) {
    const auto gone = agentNamed("com.acme.gone");
    const auto stays = agentNamed("com.acme.stays");
    file("Library/LaunchAgents/com.acme.gone.plist");
    library->startupItems = std::vector{gone, stays};
    const auto report = sweep(library->removalForStartupItems({gone}).entries, "Remove com.acme.gone");
    EXPECT_EQ(report.itemsMovedToTrash, 1);
    EXPECT_FALSE(world.isThere(gone.url));
    EXPECT_EQ(*library->startupItems, std::vector{stays});
    ASSERT_TRUE(library->lastOperation->has_value());
    EXPECT_EQ((*library->lastOperation)->label, "Remove com.acme.gone");
}

TEST_F(AppLibraryForgottenStartupItems, WhatFailedToMoveStays) {
    const auto missing = agentNamed("com.acme.missing");
    library->startupItems = std::vector{missing};
    EXPECT_EQ(sweep(library->removalForStartupItems({missing}).entries).failures.size(), 1U);
    EXPECT_EQ(*library->startupItems, std::vector{missing});
}

TEST_F(AppLibraryForgottenStartupItems, NobodyIsToldWhenNoItemGoes) {
    library->startupItems = std::vector{agentNamed("com.acme.stays")};
    DevCacheItem item;
    item.url = file("Documents/other");
    library->developerCaches = std::vector{item};
    ChangeCounter counter([&] { static_cast<void>(library->startupItems.get()); });
    static_cast<void>(sweep({entry(item.url, SweepCategory::developer, 1)}));
    EXPECT_THAT(*library->developerCaches, IsEmpty());
    EXPECT_EQ(counter.changes, 0);
}

TEST_F(AppLibraryStartup, WhatALoadFindsInTheMiddleOfASweepIsForgottenTooWhenItMoves) {
    addAgent("com.acme.agent");
    disk.file("Users/alex/Documents/other");
    library->loadStartupItems();
    runner.settle();
    library->tasks().start([&](StopToken) -> Task<> {
        std::vector<SweepEntry> rows = {
            {FileURL("/Users/alex/Documents/other"), SweepCategory::files, "other", "", 1},
            {agentNamed("com.acme.agent").url, SweepCategory::startup, "agent", "", 1}};
        static_cast<void>(co_await library->runSweep(std::move(rows), "Remove"));
    });
    runner.settle();
    while (*library->sweepProcessed < 1) {
        ASSERT_EQ(runner.waitingJobs(), 2U);
        runner.runJob(1); // the load waits
        runner.settle();
    }
    runner.runJob();
    runner.settle();
    ASSERT_EQ(library->startupItems->size(), 1U);
    runner.runAll();
    EXPECT_THAT(*library->startupItems, IsEmpty());
}

} // namespace
} // namespace quillane
