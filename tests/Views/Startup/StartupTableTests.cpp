#include "Components/ProtectedMark.h"
#include "Components/PushButton.h"
#include "Components/SymbolView.h"
#include "Components/Tint.h"
#include "Panes/BulkSummary.h"
#include "Panes/PanePlaceholder.h"
#include "SectionRecords.h"
#include "SectionTableTest.h"
#include "Startup/StartupDetail.h"
#include "Startup/StartupDetailView.h"
#include "Startup/StartupTable.h"
#include "State/ContentState.h"
#include "Tables/HeaderView.h"
#include "Tables/TableRole.h"

using namespace quillane;
using Column = StartupTableModel::Column;
using Health = StartupItem::Health;

namespace {

const QString kTempo = "fm.tempo.agent";
const QString kOldInk = "com.oldink.sync";
const QString kOrbit = "app.orbit.notifier";
const QString kShare = "com.northlight.share";

class StartupTableTest : public SectionTableTest {
  protected:
    StartupTableTest()
        : SectionTableTest(LibrarySection::startup) {
        namingColumn = Column::kLabel;
    }

    // The worst first, as the finder gives them.
    static std::vector<StartupItem> four() {
        auto tempo = startupItem("fm.tempo.agent", Health::broken);
        tempo.runAtLoad = true;
        tempo.keepAlive = true;
        tempo.isLoaded = true;
        auto oldInk = startupItem("com.oldink.sync", Health::orphaned);
        oldInk.interval = 3600;
        auto share = startupDaemon("com.northlight.share", Health::ok, "Northlight RAW");
        share.runAtLoad = true;
        return {tempo, oldInk, startupItem("app.orbit.notifier", Health::ok, "Orbit Mail"), share};
    }
    void openWith(std::vector<StartupItem> items) {
        library.startupItems = std::move(items);
        openReady({});
    }
    std::unordered_set<FileURL> selection() const { return window->state().startupSelection.get(); }
    StartupTable& startup() const { return *qobject_cast<StartupTable*>(window->content(startsIn)); }
    QVariant of(const QString& label, int column, int role) const {
        return cellData(rowOf(label), column, role);
    }
    Tint tintOf(const QString& label, int column) const {
        return static_cast<Tint>(of(label, column, kTintRole).toInt());
    }
    // How often launchctl was asked for what is loaded.
    std::ptrdiff_t loads() const {
        return std::ranges::count_if(commands.calls(), [](const ScriptedCommandRunner::Call& call) {
            return call.path == "/bin/launchctl" && call.arguments == std::vector<std::string>{"list"};
        });
    }

    static FileURL at(const std::string& label) {
        return FileURL("/Users/alex/Library/LaunchAgents/" + label + ".plist");
    }
};

} // namespace

// The rows

TEST_F(StartupTableTest, TheColumnsStandInTheirOrder) {
    openWith(four());
    EXPECT_EQ(headings(), QStringList({"Status", "Label", "Owner", "Kind", "Runs", "Loaded"}));
    EXPECT_EQ(table().accessibleName(), "Startup");
}

TEST_F(StartupTableTest, EachItemIsARowWithWhatItIsAndWhenItRuns) {
    openWith(four());
    EXPECT_EQ(names(), QStringList({kTempo, kOldInk, kOrbit, kShare}));
    EXPECT_EQ(column(Column::kStatus), QStringList({"Broken", "Orphaned", "OK", "OK"}));
    EXPECT_EQ(column(Column::kOwner), QStringList({"", "", "Orbit Mail", "Northlight RAW"}));
    EXPECT_EQ(column(Column::kKind), QStringList({"Agent", "Agent", "Agent", "Daemon"}));
    EXPECT_EQ(column(Column::kRuns),
              QStringList({"at login, kept alive", "every 1 hr", "on demand", "at boot"}));
}

TEST_F(StartupTableTest, TheStatusIsABadgeInTheTintOfItsHealth) {
    openWith(four());
    for (const auto& [label, tint] :
         {std::pair(kTempo, Tint::Red), std::pair(kOldInk, Tint::Orange), std::pair(kOrbit, Tint::Green)}) {
        EXPECT_TRUE(of(label, Column::kStatus, kBadgeRole).toBool());
        EXPECT_EQ(tintOf(label, Column::kStatus), tint) << label.toStdString();
    }
}

TEST_F(StartupTableTest, TheKindOfAProblemIsOrangeAndOfAnythingElseQuiet) {
    openWith(four());
    EXPECT_EQ(tintOf(kTempo, Column::kKind), Tint::Orange);
    EXPECT_EQ(tintOf(kOldInk, Column::kKind), Tint::Orange);
    EXPECT_EQ(tintOf(kOrbit, Column::kKind), Tint::Secondary);
    EXPECT_EQ(tintOf(kOrbit, Column::kOwner), Tint::Secondary);
}

TEST_F(StartupTableTest, WhatIsLoadedHasAMarkWithItsWordsAndWhatCannotBeKnownADash) {
    openWith(four());
    const auto loaded = [this](const QString& label, int role) {
        return of(label, Column::kLoaded, role).toString();
    };
    EXPECT_EQ(loaded(kTempo, kSymbolRole), "circle.fill");
    EXPECT_EQ(loaded(kTempo, Qt::ToolTipRole), "Running under launchd now");
    EXPECT_EQ(loaded(kTempo, Qt::AccessibleTextRole), "Running under launchd now");
    EXPECT_EQ(tintOf(kTempo, Column::kLoaded), Tint::Green);
    EXPECT_EQ(loaded(kOldInk, kSymbolRole), "circle");
    EXPECT_EQ(loaded(kOldInk, Qt::ToolTipRole), "Not loaded");
    EXPECT_EQ(loaded(kOldInk, Qt::AccessibleTextRole), "Not loaded");
    EXPECT_EQ(tintOf(kOldInk, Column::kLoaded), Tint::Secondary);
    EXPECT_EQ(loaded(kShare, Qt::DisplayRole), "—");
    EXPECT_FALSE(of(kShare, Column::kLoaded, kSymbolRole).isValid());
    EXPECT_FALSE(of(kTempo, Column::kLoaded, Qt::DisplayRole).isValid()) << "a mark alone";
}

TEST_F(StartupTableTest, WhatLiesOutsideTheHomeFolderBearsALock) {
    openWith(four());
    EXPECT_EQ(of(kShare, Column::kLabel, kTrailingSymbolRole).toString(), "lock.fill");
    EXPECT_EQ(of(kShare, Column::kLabel, kTrailingHelpRole).toString(), "Needs admin rights to remove");
    EXPECT_EQ(of(kShare, Column::kLabel, Qt::AccessibleDescriptionRole).toString(),
              "Needs admin rights to remove");
    EXPECT_FALSE(of(kTempo, Column::kLabel, kTrailingSymbolRole).isValid());
    EXPECT_FALSE(of(kTempo, Column::kLabel, kTrailingHelpRole).isValid());
    EXPECT_FALSE(of(kTempo, Column::kLabel, Qt::AccessibleDescriptionRole).isValid());
}

TEST_F(StartupTableTest, AProtectedItemBearsItsMarkBesideTheLock) {
    openWith(four());
    EXPECT_FALSE(of(kTempo, Column::kLabel, kProtectedRole).toBool());
    protect({four()[0].url, four()[3].url});
    EXPECT_TRUE(of(kTempo, Column::kLabel, kProtectedRole).toBool());
    EXPECT_EQ(of(kTempo, Column::kLabel, Qt::AccessibleDescriptionRole).toString(),
              ProtectedMark::helpText());
    EXPECT_EQ(of(kShare, Column::kLabel, Qt::AccessibleDescriptionRole).toString(),
              "Needs admin rights to remove. " + ProtectedMark::helpText());
}

TEST_F(StartupTableTest, LongLabelsGiveWayInTheMiddleAndDeceitfulOnesAreShownAsTheyAre) {
    openWith({startupItem("com.evil.\u202Etxt", Health::ok, "A\u202EB")});
    EXPECT_EQ(cell(0, Column::kLabel), "com.evil.‹U+202E›txt");
    EXPECT_EQ(cell(0, Column::kOwner), "A‹U+202E›B");
    EXPECT_EQ(cellData(0, Column::kLabel, kElideRole).toInt(), static_cast<int>(Qt::ElideMiddle));
}

// The order

TEST_F(StartupTableTest, ItBeginsWithTheWorstAndAmongEqualsByLabel) {
    auto items = four();
    std::ranges::reverse(items);
    openWith(items);
    EXPECT_EQ(names(), QStringList({kTempo, kOldInk, kOrbit, kShare}));
    EXPECT_EQ(spokenOrders(), QStringList({"Sorted, ascending", "", "", "", "", ""}));
}

TEST_F(StartupTableTest, StatusLabelAndKindSort) {
    openWith(four());
    EXPECT_EQ(orderBy(Column::kLabel), QStringList({kOrbit, kShare, kOldInk, kTempo}));
    EXPECT_EQ(orderBy(Column::kLabel), QStringList({kTempo, kOldInk, kShare, kOrbit}));
    EXPECT_EQ(orderBy(Column::kKind), QStringList({kTempo, kOldInk, kOrbit, kShare}));
    EXPECT_EQ(orderBy(Column::kKind).front(), kShare);
    EXPECT_EQ(orderBy(Column::kStatus).front(), kTempo);
    EXPECT_EQ(orderBy(Column::kStatus).back(), kTempo);
}

TEST_F(StartupTableTest, LabelsSortWithUpperCaseBeforeLowerCase) {
    openWith({startupItem("a", Health::ok), startupItem("B", Health::ok), startupItem("C", Health::ok)});
    EXPECT_EQ(names(), QStringList({"B", "C", "a"}));
    EXPECT_EQ(orderBy(Column::kLabel), QStringList({"B", "C", "a"}));
}

TEST_F(StartupTableTest, OwnerRunsAndLoadedSortNothingNeitherByClickNorByKey) {
    openWith(four());
    const auto first = names();
    for (const int column : {Column::kOwner, Column::kRuns, Column::kLoaded}) {
        EXPECT_EQ(orderBy(column), first) << column;
        EXPECT_EQ(table().header()->sortIndicatorSection(), Column::kStatus);
    }
    table().setFocus();
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    press(Qt::Key_End);
    press(Qt::Key_Space);
    turn();
    EXPECT_EQ(names(), first);
    EXPECT_EQ(spokenOrders(), QStringList({"Sorted, ascending", "", "", "", "", ""}));
    auto* const actions = QAccessible::queryAccessibleInterface(table().header())->actionInterface();
    EXPECT_FALSE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    press(Qt::Key_Home);
    EXPECT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
}

// The footer, the badge and the search

TEST_F(StartupTableTest, TheFooterCountsItemsAndProblems) {
    openWith(four());
    EXPECT_EQ(footer(), QStringList({"4 items", "2 problems"}));
    EXPECT_TRUE(startup().problemMark()->isVisible());
    EXPECT_EQ(startup().problemMark()->symbol(), "exclamationmark.triangle.fill");
    EXPECT_EQ(badge(), "2");
    library.startupItems = {four()[0]};
    turn();
    EXPECT_EQ(footer(), QStringList({"1 item", "1 problem"}));
}

TEST_F(StartupTableTest, WithNothingWrongTheFooterShowsNoProblems) {
    openWith({four()[2], four()[3]});
    EXPECT_EQ(footer(), QStringList({"2 items"}));
    EXPECT_FALSE(startup().problemMark()->isVisible());
    EXPECT_EQ(badge(), "");
}

TEST_F(StartupTableTest, ASearchMatchesLabelAndOwnerAndChangesNeitherFooterNorBadge) {
    openWith(four());
    for (const auto& [search, shown] : {std::pair<std::string, QStringList>{"OLDINK", {kOldInk}},
                                        {"orbit mail", {kOrbit}},
                                        {"LaunchAgents", {}}}) {
        library.searchText = search;
        turn();
        EXPECT_EQ(names(), shown) << search;
        EXPECT_EQ(footer(), QStringList({"4 items", "2 problems"}));
        EXPECT_EQ(badge(), "2");
    }
    EXPECT_EQ(emptyState().title(), "No Results");
}

// Without rows

TEST_F(StartupTableTest, WithoutItemsTheTableSaysSo) {
    openWith({});
    library.isLoadingStartup = false;
    turn();
    EXPECT_TRUE(emptyState().isVisible());
    EXPECT_FALSE(emptyState().isLoading());
    EXPECT_EQ(emptyState().symbol(), "checkmark.circle");
    EXPECT_EQ(emptyState().title(), "No Startup Items");
    EXPECT_EQ(emptyState().sentence(), "No third-party launch agents, daemons or helpers were found.");
    EXPECT_TRUE(footer().isEmpty());
}

TEST_F(StartupTableTest, WhileLaunchdIsReadTheTableSaysSoAndOnlyWithoutRows) {
    openWith({});
    library.isLoadingStartup = true;
    turn();
    EXPECT_TRUE(emptyState().isLoading());
    EXPECT_EQ(emptyState().title(), "Reading launchd…");
    library.startupItems = four();
    turn();
    EXPECT_FALSE(emptyState().isVisible());
}

TEST_F(StartupTableTest, TheSectionLooksForItemsWhenItAppearsAndHasNone) {
    openWith({});
    finish();
    EXPECT_EQ(loads(), 1);
    window->showSection(LibrarySection::overview);
    turn();
    window->showSection(LibrarySection::startup);
    finish();
    EXPECT_EQ(loads(), 2);
}

TEST_F(StartupTableTest, TheSectionThatHasItemsLooksForNothing) {
    openWith(four());
    finish();
    EXPECT_EQ(loads(), 0);
}

TEST_F(StartupTableTest, AppearingWhileTheyAreLookedForBeginsNoSecondLook) {
    openWith({});
    finish();
    const auto before = loads();
    window->showSection(LibrarySection::overview);
    turn();
    library.loadStartupItems();
    window->showSection(LibrarySection::startup);
    turn();
    finish();
    EXPECT_EQ(loads(), before + 1);
}

// The selection

TEST_F(StartupTableTest, TheSelectionIsKeptByLocationAndSurvivesALoad) {
    openWith(four());
    select({kTempo, kShare});
    EXPECT_EQ(selection(), (std::unordered_set<FileURL>{four()[0].url, four()[3].url}));
    auto found = four();
    found[0].health = Health::ok;
    found.erase(found.begin() + 1);
    library.startupItems = found;
    turn();
    EXPECT_EQ(selectedNames(), QStringList({kShare, kTempo})) << "both in order now, by label";
}

// The menu

TEST_F(StartupTableTest, TheMenuOfOneItemHasItsEntriesInTheirOrder) {
    openWith(four());
    EXPECT_EQ(entries(menuOn(kTempo)),
              QStringList({"Reveal in Finder", "Copy Label", "-", "Never Touch This", "Move to Trash…"}));
    EXPECT_FALSE(entry(openMenu(), "Move to Trash…")->icon().isNull());
}

TEST_F(StartupTableTest, TheMenuOfSeveralCountsThem) {
    openWith(four());
    select({kTempo, kOldInk, kShare});
    EXPECT_EQ(entries(menuOn(kTempo)), QStringList({"Reveal in Finder", "Copy Labels", "-",
                                                    "Never Touch This", "Move 3 Items to Trash…"}));
}

TEST_F(StartupTableTest, LabelsAreCopiedOneToALine) {
    openWith(four());
    choose(menuOn(kTempo), "Copy Label");
    EXPECT_EQ(pasted(), kTempo);
    closeMenu();
    select({kShare});
    choose(menuOn(kTempo), "Copy Labels");
    EXPECT_EQ(pasted(), kTempo + "\n" + kShare);
}

TEST_F(StartupTableTest, TheKeyForCopyingCopiesPaths) {
    openWith(four());
    select({kTempo, kShare});
    table().setFocus();
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(pasted(), "/Users/alex/Library/LaunchAgents/fm.tempo.agent.plist\n"
                        "/Library/LaunchDaemons/com.northlight.share.plist");
}

TEST_F(StartupTableTest, RevealShowsTheSelectedItemsInTheOrderOfTheScreen) {
    openWith(four());
    select({kShare, kTempo});
    choose(menuOn(kShare), "Reveal in Finder");
    EXPECT_EQ(workspace.revealed(), (std::vector<std::vector<FileURL>>{{four()[0].url, four()[3].url}}));
}

TEST_F(StartupTableTest, ProtectionIsSetForAllAndRemovedOnlyWhereAllHaveIt) {
    openWith(four());
    protect({four()[0].url});
    select({kTempo, kShare});
    choose(menuOn(kTempo), "Never Touch This");
    EXPECT_EQ(library.protectedPaths->size(), 2U);
    closeMenu();
    choose(menuOn(kTempo), "Remove Protection");
    EXPECT_TRUE(library.protectedPaths->empty());
}

TEST_F(StartupTableTest, MovingAsksToReviewWhatIsAtHomeAndNotProtected) {
    openWith(four());
    select({kTempo, kOldInk, kShare});
    choose(menuOn(kTempo), "Move 3 Items to Trash…");
    EXPECT_EQ(reviewed(), QStringList({"/Users/alex/Library/LaunchAgents/fm.tempo.agent.plist",
                                       "/Users/alex/Library/LaunchAgents/com.oldink.sync.plist"}));
    EXPECT_EQ(label(), "Remove 3 startup items");
}

TEST_F(StartupTableTest, NothingCanBeMovedThatIsNotAtHomeOrIsProtected) {
    openWith(four());
    EXPECT_FALSE(entry(menuOn(kShare), "Move to Trash…")->isEnabled());
    closeMenu();
    protect({four()[0].url});
    EXPECT_FALSE(entry(menuOn(kTempo), "Move to Trash…")->isEnabled());
    closeMenu();
    select({kShare}); // beside the first
    EXPECT_FALSE(entry(menuOn(kTempo), "Move 2 Items to Trash…")->isEnabled())
        << "one is at home and the other is free, but none is both";
}

TEST_F(StartupTableTest, WhatWentWhileTheMenuWasOpenIsNotReviewed) {
    openWith(four());
    auto* const move = entry(menuOn(kTempo), "Move to Trash…");
    library.startupItems = {four()[1]};
    move->trigger();
    turn();
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(StartupTableTest, TheEmptyTableHasNoMenu) {
    openWith(four());
    click(kTempo);
    EXPECT_EQ(menuBelowTheRows(), nullptr);
}

// The pane, and the whole by keyboard

TEST_F(StartupTableTest, ThePaneFollowsWhatIsSelectedAndStillThere) {
    openWith(four());
    const auto* const pane = qobject_cast<StartupDetail*>(window->detail(LibrarySection::startup));
    ASSERT_NE(pane, nullptr);
    EXPECT_EQ(pane->currentWidget(), pane->placeholder());
    EXPECT_EQ(pane->placeholder()->emptyState()->title(), "No Selection");
    EXPECT_EQ(pane->placeholder()->emptyState()->sentence(),
              "Pick an item to see what it runs and who installed it.");
    click(kTempo);
    turn();
    EXPECT_EQ(pane->currentWidget(), pane->one());
    click(kShare, Qt::ControlModifier);
    turn();
    EXPECT_EQ(pane->currentWidget(), pane->several());
    library.startupItems = {four()[1]};
    turn();
    EXPECT_EQ(pane->currentWidget(), pane->placeholder());
}

TEST_F(StartupTableTest, TypingALabelSelectsItAndEveryControlHasAName) {
    openWith(four());
    table().setFocus();
    press(Qt::Key_C);
    press(Qt::Key_O);
    press(Qt::Key_M);
    turn();
    EXPECT_EQ(selectedNames(), QStringList({kOldInk}));
    EXPECT_TRUE(namelessControls().isEmpty()) << namelessControls().join(", ").toStdString();
}

TEST_F(StartupTableTest, InTheSmallestWindowTheLabelKeepsItsRoomAndTheOthersGiveWay) {
    openWith(four());
    window->resize(ContentView::kMinimumSize);
    turn();
    EXPECT_GE(table().columnWidth(Column::kLabel), 180);
    EXPECT_LT(table().columnWidth(Column::kRuns), 134);
    EXPECT_LE(table().header()->length(), table().viewport()->width()) << "nothing scrolls sideways";
}

TEST_F(StartupTableTest, TabGoesOverThePanesButtonsFromTheLeft) {
    openWith(four());
    click(kTempo);
    turn();
    const auto& pane = *qobject_cast<StartupDetail*>(window->detail(LibrarySection::startup))->one();
    ASSERT_TRUE(pane.stopButton()->isVisible());
    pane.stopButton()->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), pane.revealButton());
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), pane.removeButton());
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), &table()) << "the rows come before the pane";
}

TEST_F(StartupTableTest, WhatCameBackFromTheTrashIsLookedForWhenTheSectionIsInSight) {
    openWith(four());
    window->showSection(LibrarySection::overview);
    turn();
    library.areStartupItemsStale = true;
    turn();
    EXPECT_FALSE(*library.isLoadingStartup) << "out of sight nothing is looked for";
    window->showSection(startsIn);
    turn();
    EXPECT_TRUE(*library.isLoadingStartup);
    EXPECT_FALSE(*library.areStartupItemsStale);
    finish();
    library.areStartupItemsStale = true;
    turn();
    EXPECT_TRUE(*library.isLoadingStartup) << "in sight at once";
}
