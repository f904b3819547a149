#include "Components/DetailHeader.h"
#include "Components/DetailRow.h"
#include "Components/Label.h"
#include "Components/Note.h"
#include "Components/Panel.h"
#include "Components/PathLabel.h"
#include "Components/PushButton.h"
#include "Components/SymbolView.h"
#include "Components/Tile.h"
#include "Components/ToolbarRow.h"
#include "Panes/BulkSummary.h"
#include "Panes/PanePlaceholder.h"
#include "SectionDetailTest.h"
#include "SectionRecords.h"
#include "Startup/StartupDetail.h"
#include "Startup/StartupDetailView.h"
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QScrollArea>

using namespace quillane;
using Health = StartupItem::Health;

namespace {

class StartupPane : public SectionDetailTest<StartupDetail> {
  protected:
    static StartupItem loaded() {
        auto item = startupItem("com.oldink.sync", Health::orphaned);
        item.program = "~/Library/Application Support/com.oldink/sync";
        item.runAtLoad = true;
        item.interval = 3600;
        item.isLoaded = true;
        return item;
    }
    static StartupItem daemon() {
        return startupDaemon("com.northlight.share", Health::ok, "Northlight RAW");
    }

    // Opens the column over this item and another one, with this one selected.
    StartupDetailView& show(const StartupItem& item) {
        library.startupItems = std::vector<StartupItem>{item, startupItem("other", Health::ok, "Other")};
        state.startupSelection = std::unordered_set<FileURL>{item.url};
        openColumn();
        return *column->one();
    }
    void select(std::unordered_set<FileURL> urls) {
        state.startupSelection = std::move(urls);
        turn();
    }
    void publish(std::vector<StartupItem> items) {
        library.startupItems = std::move(items);
        turn();
    }
    void answerStop(const std::string& label, std::string output) {
        commands.answer("/bin/launchctl", {"bootout", "gui/501/" + label}, std::move(output));
    }
    std::ptrdiff_t stops() const {
        return std::ranges::count_if(commands.calls(), [](const ScriptedCommandRunner::Call& call) {
            return !call.arguments.empty() && call.arguments.front() == "bootout";
        });
    }
    Pairs facts() const {
        Pairs shown;
        for (const auto* const row : column->one()->facts()->findChildren<DetailRow*>()) {
            if (row->isVisible()) {
                shown.emplace_back(row->label(), row->value());
            }
        }
        return shown;
    }
    // The words of a pane that are not in its facts, from the top.
    QStringList captions() const {
        QStringList shown;
        for (const auto* const label : column->one()->findChildren<Label*>()) {
            if (label->isVisible() && label->buddy() != nullptr) {
                shown << label->text();
            }
        }
        return shown;
    }
    static QString symbolOf(const Note& note) { return note.findChild<SymbolView*>()->symbol(); }
};

} // namespace

// What it is

TEST_F(StartupPane, TheHeaderNamesTheItemAndWhoInstalledIt) {
    const auto& pane = show(daemon());
    EXPECT_EQ(pane.header()->title(), "com.northlight.share");
    EXPECT_EQ(pane.header()->subtitle(), "Installed by Northlight RAW");
    EXPECT_EQ(pane.header()->findChild<Tile*>()->symbol(), "power");
    publish({startupDaemon("com.northlight.share", Health::orphaned)});
    EXPECT_EQ(pane.header()->subtitle(), "");
}

TEST_F(StartupPane, AnOrphanIsSaidToBeLeftBehind) {
    const auto& pane = show(loaded());
    EXPECT_EQ(pane.explanation()->text(),
              "Left behind when its app was removed. launchd still loads it. Safe to remove.");
    EXPECT_EQ(symbolOf(*pane.explanation()), "questionmark.circle");
}

TEST_F(StartupPane, ABrokenOneIsSaidToFail) {
    const auto& pane = show(startupItem("a", Health::broken, "Owner"));
    EXPECT_EQ(pane.explanation()->text(), "The program it launches no longer exists, so launchd fails it "
                                          "every time. Safe to remove.");
    EXPECT_EQ(symbolOf(*pane.explanation()), "exclamationmark.triangle");
}

TEST_F(StartupPane, ALiveOneIsSaidToBePartOfItsOwnerOrOfAnInstalledApp) {
    const auto& pane = show(daemon());
    EXPECT_EQ(pane.explanation()->text(),
              "A live part of Northlight RAW. Leave it unless you know why you'd stop it.");
    publish({startupDaemon("com.northlight.share", Health::ok)});
    EXPECT_EQ(pane.explanation()->text(),
              "A live part of an installed app. Leave it unless you know why you'd stop it.");
}

TEST_F(StartupPane, TheFactsTellKindTimesAndWhetherItIsLoadedWhereThatIsKnown) {
    show(loaded());
    EXPECT_EQ(facts(), (Pairs{{"Kind", "Agent"}, {"Runs", "at login, every 1 hr"}, {"Loaded now", "Yes"}}));
    auto stopped = loaded();
    stopped.isLoaded = false;
    publish({stopped});
    EXPECT_EQ(facts().back(), (std::pair<QString, QString>("Loaded now", "No")));
    stopped.isLoaded.reset();
    publish({stopped});
    EXPECT_EQ(facts(), (Pairs{{"Kind", "Agent"}, {"Runs", "at login, every 1 hr"}}));
}

TEST_F(StartupPane, ItTellsTheProgramWhereThereIsOneAndWhereTheItemIsDefined) {
    const auto& pane = show(loaded());
    EXPECT_EQ(captions(), QStringList({"Program", "Defined in"}));
    EXPECT_EQ(pane.program()->text(), "~/Library/Application Support/com.oldink/sync");
    EXPECT_EQ(pane.definedIn()->text(), "/Users/alex/Library/LaunchAgents/com.oldink.sync.plist");
    auto bare = loaded();
    bare.program.reset();
    publish({bare});
    EXPECT_EQ(captions(), QStringList({"Defined in"}));
    EXPECT_FALSE(pane.program()->isVisible());
}

TEST_F(StartupPane, WhatDeceivesIsShownAsItIs) {
    auto item = loaded();
    item.label = "com.\u202Eknid";
    item.program = "/bin/\u202Ehs";
    item.ownerName = "\u202Eowner";
    item.health = Health::ok;
    const auto& pane = show(item);
    EXPECT_EQ(pane.header()->title(), "com.‹U+202E›knid");
    EXPECT_EQ(pane.header()->subtitle(), "Installed by ‹U+202E›owner");
    EXPECT_EQ(pane.program()->text(), "/bin/‹U+202E›hs");
    EXPECT_TRUE(pane.explanation()->text().contains("‹U+202E›owner"));
}

TEST_F(StartupPane, ALongPathTakesMoreLinesAndNoMoreWidth) {
    auto item = loaded();
    const auto& pane = show(item);
    const int oneLine = pane.definedIn()->height();
    item.program = "/" + std::string(300, 'x');
    publish({item});
    EXPECT_GT(pane.program()->height(), 3 * oneLine / 2);
    EXPECT_EQ(pane.program()->height(), pane.program()->heightForWidth(pane.program()->width()));
    EXPECT_LE(pane.width(), ContentView::kDetailNarrowest);
}

TEST_F(StartupPane, TheMenuOfAPathCopiesIt) {
    auto& path = *show(loaded()).program();
    QContextMenuEvent wanted(QContextMenuEvent::Mouse, {2, 2}, path.mapToGlobal(QPoint(2, 2)));
    QCoreApplication::sendEvent(&path, &wanted);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 1);
    EXPECT_EQ(menu->actions().front()->text(), "Copy");
    menu->actions().front()->trigger();
    menu->close();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "~/Library/Application Support/com.oldink/sync");
}

// What may be done with it

TEST_F(StartupPane, ASystemDaemonIsExplainedAndCanBeRevealedButNeitherStoppedNorRemoved) {
    auto& pane = show(daemon());
    EXPECT_TRUE(pane.adminNote()->isVisible());
    EXPECT_EQ(
        pane.adminNote()->text(),
        "Lives outside your home folder. Removing it needs admin rights, which Quillane doesn't ask for "
        "- use Finder with your password.");
    EXPECT_EQ(symbolOf(*pane.adminNote()), "lock.fill");
    EXPECT_FALSE(pane.stopButton()->isVisible());
    EXPECT_TRUE(pane.removeButton()->isVisible());
    EXPECT_FALSE(pane.removeButton()->isEnabled());
    press(pane.revealButton());
    EXPECT_EQ(workspace.revealed(), (std::vector<std::vector<FileURL>>{{daemon().url}}));
}

TEST_F(StartupPane, ABrokenItemAtHomeOffersRemovalAndWhenLoadedTheStop) {
    auto item = loaded();
    item.health = Health::broken;
    auto& pane = show(item);
    EXPECT_FALSE(pane.adminNote()->isVisible());
    EXPECT_TRUE(pane.removeButton()->isEnabled());
    EXPECT_TRUE(pane.stopButton()->isVisible());
    item.isLoaded = false;
    publish({item});
    EXPECT_FALSE(pane.stopButton()->isVisible());
    item.isLoaded.reset();
    publish({item});
    EXPECT_FALSE(pane.stopButton()->isVisible());
}

TEST_F(StartupPane, OnlyAnAgentAtHomeThatIsLoadedCanBeStopped) {
    auto item = loaded();
    item.kind = StartupItem::Kind::daemon;
    auto& pane = show(item);
    EXPECT_FALSE(pane.stopButton()->isVisible());
    item.kind = StartupItem::Kind::helper;
    publish({item});
    EXPECT_FALSE(pane.stopButton()->isVisible());
    auto elsewhere = loaded();
    elsewhere.url = FileURL("/Library/LaunchAgents/com.oldink.sync.plist");
    publish({elsewhere});
    select({elsewhere.url});
    EXPECT_FALSE(pane.stopButton()->isVisible());
}

TEST_F(StartupPane, TheButtonsSayWhatTheyDo) {
    const auto& pane = show(loaded());
    EXPECT_EQ(pane.stopButton()->label(), "Stop Until Login");
    EXPECT_EQ(pane.stopButton()->symbol(), "stop.circle");
    EXPECT_TRUE(pane.stopButton()->toolTip().contains(
        "Unloads it now. It comes back at next login unless the file is removed."));
    EXPECT_EQ(pane.revealButton()->label(), "Reveal in Finder");
    EXPECT_EQ(pane.removeButton()->label(), "Move to Trash");
    EXPECT_EQ(pane.removeButton()->role(), PushButton::Role::Destructive);
    EXPECT_LT(pane.stopButton()->x(), pane.revealButton()->x());
    EXPECT_LT(pane.revealButton()->x(), pane.removeButton()->x());
    EXPECT_TRUE(pane.revealButton()->isCompact()) << "three buttons leave room for its symbol alone";
    EXPECT_EQ(pane.revealButton()->accessibleName(), "Reveal in Finder");
}

TEST_F(StartupPane, TabGoesOverTheButtonsFromTheLeft) {
    const auto& pane = show(loaded());
    ground().resize(ContentView::kDetailNarrowest, 250); // so that what is below scrolls
    turn();
    pane.stopButton()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(pane.stopButton(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), pane.revealButton());
    QTest::keyClick(pane.revealButton(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), pane.removeButton());
    QTest::keyClick(pane.removeButton(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), pane.scrollArea());
}

TEST_F(StartupPane, AProtectedItemSaysSoAndCannotGo) {
    auto& pane = show(loaded());
    EXPECT_FALSE(pane.protectedNote()->isVisible());
    library.setProtected(loaded().url, true);
    turn();
    EXPECT_TRUE(pane.protectedNote()->isVisible());
    EXPECT_EQ(pane.protectedNote()->text(),
              "Protected. Quillane will not remove this until you lift the protection.");
    EXPECT_FALSE(pane.removeButton()->isEnabled());
    EXPECT_TRUE(pane.stopButton()->isEnabled()) << "a stop removes nothing";
}

TEST_F(StartupPane, MovingAsksToReviewThisOne) {
    auto& pane = show(loaded());
    press(pane.removeButton());
    EXPECT_EQ(asked(), (std::vector<FileURL>{loaded().url}));
    EXPECT_EQ(askedLabel(), "Remove com.oldink.sync");
}

TEST_F(StartupPane, AClickThatIsFasterThanThePaneAsksForNothingThatMustStayOrIsGone) {
    auto& pane = show(loaded());
    library.setProtected(loaded().url, true);
    press(pane.removeButton());
    EXPECT_FALSE(state.removal->has_value());
    library.setProtected(loaded().url, false);
    turn();
    library.startupItems = std::vector<StartupItem>{};
    press(pane.removeButton());
    EXPECT_FALSE(state.removal->has_value());
}

// Stopping

TEST_F(StartupPane, AStopUnloadsTheItemAndReadsTheListAnew) {
    auto& pane = show(loaded());
    answerStop("com.oldink.sync", "");
    press(pane.stopButton());
    finish();
    EXPECT_EQ(stops(), 1);
    EXPECT_EQ(commands.calls().back().arguments, (std::vector<std::string>{"list"}));
    EXPECT_FALSE(pane.stopError()->isVisible());
}

TEST_F(StartupPane, AStopThatFailsLeavesTheItemAndShowsLaunchctlsOwnWords) {
    auto& pane = show(loaded());
    EXPECT_FALSE(pane.stopError()->isVisible());
    answerStop("com.oldink.sync", "Boot-out failed: 3: No such process\nTry again.");
    press(pane.stopButton());
    finish();
    EXPECT_TRUE(pane.stopError()->isVisible());
    EXPECT_EQ(pane.stopError()->text(), "Boot-out failed: 3: No such process\nTry again.");
    EXPECT_EQ(pane.stopError()->accessibleName(), pane.stopError()->text()) << "it is read aloud";
    EXPECT_TRUE(pane.stopButton()->isVisible());
    EXPECT_TRUE(pane.stopButton()->isEnabled());
    EXPECT_EQ(library.startupItems->size(), 2U);
    answerStop("com.oldink.sync", "");
    press(pane.stopButton());
    finish();
    EXPECT_FALSE(pane.stopError()->isVisible()) << "a success clears it";
}

TEST_F(StartupPane, ASecondPressWhileItStopsDoesNothing) {
    auto& pane = show(loaded());
    answerStop("com.oldink.sync", "no");
    press(pane.stopButton());
    EXPECT_FALSE(pane.stopButton()->isEnabled());
    library.setProtected(loaded().url, true);
    turn();
    EXPECT_FALSE(pane.stopButton()->isEnabled()) << "the pane was filled anew";
    pane.stopButton()->setEnabled(true);
    press(pane.stopButton());
    finish();
    EXPECT_EQ(stops(), 1);
    EXPECT_TRUE(pane.stopButton()->isEnabled());
}

TEST_F(StartupPane, WhatIsSaidOfAStopBelongsToItsItemAndGoesWithTheSelection) {
    auto& pane = show(loaded());
    answerStop("com.oldink.sync", "no");
    press(pane.stopButton());
    select({startupItem("other", Health::ok).url});
    finish();
    EXPECT_FALSE(pane.stopError()->isVisible()) << "the answer came for an item that is not shown any more";
    select({loaded().url});
    press(pane.stopButton());
    finish();
    EXPECT_TRUE(pane.stopError()->isVisible());
    select({startupItem("other", Health::ok).url});
    EXPECT_FALSE(pane.stopError()->isVisible());
    select({loaded().url});
    EXPECT_FALSE(pane.stopError()->isVisible());
    press(pane.stopButton());
    finish();
    select({});
    select({loaded().url});
    EXPECT_FALSE(pane.stopError()->isVisible()) << "nothing was shown in between";
}

TEST_F(StartupPane, AnItemThatGoesWhileItStopsAndAPaneThatGoesBreakNothing) {
    auto& pane = show(loaded());
    answerStop("com.oldink.sync", "no");
    press(pane.stopButton());
    publish({});
    finish();
    EXPECT_TRUE(showsNone());
    publish({loaded()});
    press(pane.stopButton());
    delete column;
    column = nullptr;
    finish();
    EXPECT_EQ(stops(), 2);
}

TEST_F(StartupPane, OfACommandThatPrintsALotThePaneShowsTheBeginning) {
    auto& pane = show(loaded());
    answerStop("com.oldink.sync", std::string(100'000, 'x'));
    press(pane.stopButton());
    finish();
    EXPECT_EQ(pane.stopError()->text(), QString(2000, 'x') + "…");
}

// Several

TEST_F(StartupPane, SeveralAreCountedAndAddedUpWithTheNoteOnWhatIsSkipped) {
    show(loaded());
    publish({loaded(), daemon()});
    select({loaded().url, daemon().url});
    ASSERT_TRUE(showsSeveral());
    const auto& several = *column->several();
    EXPECT_EQ(several.heading()->text(), "2 startup items selected");
    EXPECT_EQ(several.note()->text(), "Items outside your home folder need admin rights and are skipped.");
    EXPECT_EQ(figures(*several.stats()), (Pairs{{"Combined Size", "1 KB"}, {"Rows", "2"}}));
    EXPECT_EQ(listed().size(), 2);
    press(several.removeButton());
    EXPECT_EQ(asked(), (std::vector<FileURL>{loaded().url}));
    EXPECT_EQ(askedLabel(), "Remove 2 startup items");
}

TEST_F(StartupPane, SeveralOfWhichNoneCanGoCannotBeMoved) {
    show(loaded());
    publish({loaded(), daemon()});
    library.setProtected(loaded().url, true);
    select({loaded().url, daemon().url});
    EXPECT_FALSE(column->several()->removeButton()->isEnabled());
}

// Pictures for whoever wants to look

TEST_F(StartupPane, ItIsDrawnInLightAndDark) {
    show(loaded());
    keepBoth("pane-startup-orphaned");
    publish({daemon()});
    select({daemon().url});
    keepBoth("pane-startup-daemon");
}
