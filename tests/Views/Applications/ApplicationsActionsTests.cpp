#include "Applications/AppActions.h"
#include "Applications/AppDetailView.h"
#include "Applications/ApplicationsDetail.h"
#include "Applications/ApplicationsTable.h"
#include "Applications/ApplicationsTableModel.h"
#include "Applications/MultiSelectionSummary.h"
#include "Components/Badge.h"
#include "Components/Panel.h"
#include "Components/ProtectedMark.h"
#include "Components/PushButton.h"
#include "Components/ToolbarRow.h"
#include "MenuTest.h"
#include "Panes/BulkSummary.h"
#include "Panes/PanePlaceholder.h"
#include "Review/SweepPreviewSheet.h"
#include "Review/SweepReviewModel.h"
#include "Review/SweepReviewStage.h"
#include "Tables/TableDelegate.h"
#include "Tables/TableRole.h"
#include "Tables/TableView.h"
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QSignalSpy>
#include <algorithm>

using namespace quillane;
using Kind = AppLibrary::Phase::Kind;

namespace {

class ApplicationsActions : public MenuTest {
  protected:
    static InstalledApp tessel() {
        auto app = measuredApp("Tessel Studio", 2'310'000'000);
        app.bundleIdentifier = "co.tessel.studio";
        app.version = "3.9.4";
        app.leftovers = {leftover("/Users/alex/Library/Application Support/co.tessel.studio",
                                  "Application Support", 5'920'000'000),
                         leftover("/Users/alex/Library/Caches/co.tessel.studio", "Caches", 1'260'000'000)};
        app.leftovers[1].isCache = true;
        return app;
    }
    static InstalledApp cedar() { return measuredApp("Cedar", 9'000'000); }
    static InstalledApp alder() {
        auto app = measuredApp("Alder", 3'000'000);
        app.bundleIdentifier = "org.alder";
        return app;
    }
    static InstalledApp systemApp() {
        auto app = measuredApp("Clockwork", 5'000'000);
        app.source = AppSource::system;
        return app;
    }

    // The menu for one application that the window opens with.
    QMenu* menuOf(const InstalledApp& app) {
        openReady({app});
        return menuOn(QString::fromStdString(app.name));
    }
    static constexpr const char* kTesselPath = "/Applications/Tessel Studio.app";
    static constexpr const char* kTesselSupport = "/Users/alex/Library/Application Support/co.tessel.studio";
    static constexpr const char* kTesselCache = "/Users/alex/Library/Caches/co.tessel.studio";
};

} // namespace

// The menu of the empty table

TEST_F(ApplicationsActions, BelowTheRowsTheMenuOffersARescan) {
    openReady({tessel()});
    click("Tessel Studio");
    const auto* menu = menuBelowTheRows();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(entries(menu), QStringList({"Rescan Applications"}));
    choose(menu, "Rescan Applications");
    EXPECT_EQ(library.phase.get().kind, Kind::scanning);
}

TEST_F(ApplicationsActions, ATableWithoutRowsHasTheMenuToo) {
    openReady({});
    EXPECT_EQ(entries(menuBelowTheRows()), QStringList({"Rescan Applications"}));
}

// The menu of one application

TEST_F(ApplicationsActions, OneApplicationHasItsEntriesInTheirOrder) {
    fakes.running.start("co.tessel.studio");
    EXPECT_EQ(entries(menuOf(tessel())),
              QStringList({"Open", "Reveal in Finder", "Quit Tessel Studio", "Copy", "Support Files",
                           "Clean Cache (1.26 GB)", "Never Touch This App", "Move to Trash…"}));
}

TEST_F(ApplicationsActions, WhatDoesNotRunCannotQuit) {
    const auto* menu = menuOf(tessel());
    EXPECT_EQ(entries(menu),
              QStringList({"Open", "Reveal in Finder", "Copy", "Support Files", "Clean Cache (1.26 GB)",
                           "Never Touch This App", "Move to Trash…"}));
}

TEST_F(ApplicationsActions, AnApplicationWithoutIdentifierCannotBeAskedToQuit) {
    fakes.running.start("");
    EXPECT_FALSE(entries(menuOf(cedar())).contains("Quit Cedar"));
}

TEST_F(ApplicationsActions, QuitAsksTheApplicationOnce) {
    fakes.running.start("co.tessel.studio");
    choose(menuOf(tessel()), "Quit Tessel Studio");
    EXPECT_EQ(fakes.running.asked, std::vector<std::string>{"co.tessel.studio"});
}

TEST_F(ApplicationsActions, ANameInTheMenuIsShownAsItIs) {
    auto app = alder();
    app.name = "Salt & \u202EPepper";
    openReady({app});
    fakes.running.start("org.alder");
    const auto* menu = menuOn("Salt & ‹U+202E›Pepper");
    EXPECT_EQ(menu->actions()[2]->text(), "Quit Salt && ‹U+202E›Pepper") << "a lone & would mark a key";
}

TEST_F(ApplicationsActions, OpenOpensIt) {
    choose(menuOf(tessel()), "Open");
    EXPECT_EQ(workspace.opened(), std::vector{FileURL(kTesselPath)});
}

TEST_F(ApplicationsActions, RevealShowsTheBundle) {
    choose(menuOf(tessel()), "Reveal in Finder");
    EXPECT_EQ(workspace.revealed(), (std::vector<std::vector<FileURL>>{{FileURL(kTesselPath)}}));
}

TEST_F(ApplicationsActions, CopyPutsTheTextOnTheClipboard) {
    const auto* copies = submenu(menuOf(tessel()), "Copy");
    ASSERT_NE(copies, nullptr);
    EXPECT_EQ(entries(copies), QStringList({"Name", "Bundle Identifier", "Path", "Version"}));
    for (const auto& [title, text] : {std::pair{"Name", "Tessel Studio"},
                                      {"Bundle Identifier", "co.tessel.studio"},
                                      {"Path", kTesselPath},
                                      {"Version", "3.9.4"}}) {
        choose(copies, title);
        EXPECT_EQ(pasted(), text);
    }
}

TEST_F(ApplicationsActions, WhatIsCopiedIsTheNameItselfAndNotItsSafeForm) {
    auto app = cedar();
    app.name = "safe\u202Eexe";
    openReady({app});
    choose(submenu(menuOn("safe‹U+202E›exe"), "Copy"), "Name");
    EXPECT_EQ(pasted(), "safe\u202Eexe");
}

TEST_F(ApplicationsActions, AMissingIdentifierCannotBeCopied) {
    const auto* copies = submenu(menuOf(cedar()), "Copy");
    EXPECT_FALSE(entry(copies, "Bundle Identifier")->isEnabled());
    EXPECT_TRUE(entry(copies, "Path")->isEnabled());
}

TEST_F(ApplicationsActions, SupportFilesAreRevealedTogetherOrOneAtATime) {
    const auto* files = submenu(menuOf(tessel()), "Support Files");
    ASSERT_NE(files, nullptr);
    EXPECT_EQ(entries(files), QStringList({"Reveal All in Finder", "Application Support - co.tessel.studio",
                                           "Caches - co.tessel.studio"}));
    choose(files, "Reveal All in Finder");
    choose(files, "Caches - co.tessel.studio");
    EXPECT_EQ(workspace.revealed(),
              (std::vector<std::vector<FileURL>>{{FileURL(kTesselSupport), FileURL(kTesselCache)},
                                                 {FileURL(kTesselCache)}}));
}

TEST_F(ApplicationsActions, WithoutLeftoversThereIsNoSubmenuOfSupportFiles) {
    EXPECT_FALSE(entries(menuOf(cedar())).contains("Support Files"));
}

TEST_F(ApplicationsActions, CleanCacheReviewsTheCachesAlone) {
    choose(menuOf(tessel()), "Clean Cache (1.26 GB)");
    EXPECT_EQ(reviewed(), QStringList({kTesselCache}));
    EXPECT_EQ(label(), "Clean Tessel Studio cache");
}

TEST_F(ApplicationsActions, ThereIsNothingToCleanWithoutCaches) {
    const auto* clean = entry(menuOf(cedar()), "Clean Cache (Zero KB)");
    EXPECT_FALSE(clean->isEnabled());
}

TEST_F(ApplicationsActions, AProtectedApplicationKeepsItsCacheAndItself) {
    library.setProtected(FileURL(kTesselPath), true);
    const auto* menu = menuOf(tessel());
    EXPECT_FALSE(entry(menu, "Clean Cache (Zero KB)")->isEnabled());
    EXPECT_FALSE(entry(menu, "Move to Trash…")->isEnabled());
    EXPECT_FALSE(entries(menu).contains("Never Touch This App"));
}

TEST_F(ApplicationsActions, ProtectionIsSetAndTakenBack) {
    choose(menuOf(tessel()), "Never Touch This App");
    EXPECT_TRUE(library.isProtected(FileURL(kTesselPath)));
    closeMenu();
    choose(menuOn("Tessel Studio"), "Remove Protection");
    EXPECT_FALSE(library.isProtected(FileURL(kTesselPath)));
}

TEST_F(ApplicationsActions, MoveToTrashReviewsTheBundleAndItsFiles) {
    auto app = tessel();
    app.leftovers[0].confidence = LeftoverItem::Confidence::medium;
    choose(menuOf(app), "Move to Trash…");
    EXPECT_EQ(reviewed(), QStringList({kTesselPath, "-" + QString(kTesselSupport), kTesselCache}));
    EXPECT_EQ(label(), "Uninstall Tessel Studio");
}

TEST_F(ApplicationsActions, MoveToTrashIsDisabledUntilTheApplicationIsMeasured) {
    auto app = tessel();
    app.isMeasured = false;
    EXPECT_FALSE(entry(menuOf(app), "Move to Trash…")->isEnabled());
    publish({tessel()});
    turn();
    closeMenu();
    EXPECT_TRUE(entry(menuOn("Tessel Studio"), "Move to Trash…")->isEnabled());
}

TEST_F(ApplicationsActions, APartOfTheSystemCannotBeMovedToTheTrash) {
    library.filter = AppFilter::all;
    EXPECT_FALSE(entry(menuOf(systemApp()), "Move to Trash…")->isEnabled());
}

TEST_F(ApplicationsActions, AnApplicationThatWentWhileTheMenuWasOpenIsNotReviewed) {
    const auto* menu = menuOf(tessel());
    auto* const trash = entry(menu, "Move to Trash…");
    auto* const clean = entry(menu, "Clean Cache (1.26 GB)");
    publish({cedar()});
    trash->trigger();
    clean->trigger();
    turn();
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(ApplicationsActions, AnApplicationThatIsMeasuredAnewWhileTheMenuIsOpenIsNotReviewed) {
    auto* const trash = entry(menuOf(tessel()), "Move to Trash…");
    publish({unmeasuredApp("Tessel Studio")});
    trash->trigger();
    turn();
    EXPECT_EQ(sheet(), nullptr) << "its files are not known now";
}

// The menu of several applications

TEST_F(ApplicationsActions, WhatIsNotMeasuredYetCountsAmongThoseThatAreUninstalled) {
    openReady({tessel(), unmeasuredApp("Birch"), cedar()});
    select({"Tessel Studio", "Birch", "Cedar"});
    EXPECT_EQ(entries(menuOn("Birch")).back(), "Uninstall 3 Apps…");
    closeMenu();
    EXPECT_EQ(detail().several()->removeButton()->label(), "Uninstall 3 Apps…");
}

TEST_F(ApplicationsActions, SeveralApplicationsHaveTheirEntriesInTheirOrder) {
    openReady({tessel(), cedar(), alder()});
    select({"Tessel Studio", "Cedar", "Alder"});
    const auto* menu = menuOn("Cedar");
    EXPECT_EQ(entries(menu), QStringList({"Reveal 3 Apps in Finder", "Copy", "Uninstall 3 Apps…"}));
    EXPECT_EQ(entries(submenu(menu, "Copy")), QStringList({"Names", "Bundle Identifiers", "Paths"}));
}

TEST_F(ApplicationsActions, SeveralAreRevealedAtOnceInTheOrderOfTheScreen) {
    openReady({alder(), cedar(), tessel()});
    select({"Alder", "Tessel Studio"});
    choose(menuOn("Alder"), "Reveal 2 Apps in Finder");
    EXPECT_EQ(workspace.revealed(), (std::vector<std::vector<FileURL>>{
                                        {FileURL(kTesselPath), FileURL("/Applications/Alder.app")}}));
}

TEST_F(ApplicationsActions, EachApplicationIsCopiedAsOneLine) {
    openReady({tessel(), cedar(), alder()});
    select({"Tessel Studio", "Cedar", "Alder"});
    const auto* copies = submenu(menuOn("Cedar"), "Copy");
    choose(copies, "Names");
    EXPECT_EQ(pasted(), "Tessel Studio\nCedar\nAlder");
    choose(copies, "Bundle Identifiers");
    EXPECT_EQ(pasted(), "co.tessel.studio\norg.alder") << "one without adds no empty line";
    choose(copies, "Paths");
    EXPECT_EQ(pasted(), "/Applications/Tessel Studio.app\n/Applications/Cedar.app\n/Applications/Alder.app");
}

TEST_F(ApplicationsActions, UninstallCountsWhatCanGoAndReviewsThat) {
    library.filter = AppFilter::all;
    library.setProtected(FileURL("/Applications/Cedar.app"), true);
    openReady({tessel(), cedar(), alder(), systemApp()});
    select({"Tessel Studio", "Cedar", "Alder", "Clockwork"});
    const auto* menu = menuOn("Cedar");
    EXPECT_EQ(entries(menu), QStringList({"Reveal 4 Apps in Finder", "Copy", "Uninstall 2 Apps…"}));
    choose(menu, "Uninstall 2 Apps…");
    EXPECT_EQ(reviewed(),
              QStringList({kTesselPath, kTesselSupport, kTesselCache, "/Applications/Alder.app"}));
    EXPECT_EQ(label(), "Uninstall 2 apps");
}

TEST_F(ApplicationsActions, NothingIsUninstalledWhereNothingCanGo) {
    for (const auto* path : {"/Applications/Cedar.app", "/Applications/Alder.app"}) {
        library.setProtected(FileURL(path), true);
    }
    openReady({cedar(), alder()});
    select({"Cedar", "Alder"});
    EXPECT_FALSE(entry(menuOn("Cedar"), "Uninstall 0 Apps…")->isEnabled());
}

// What the menu is for

TEST_F(ApplicationsActions, TheMenuOfARowThatIsNotSelectedIsForThatRow) {
    openReady({tessel(), cedar(), alder()});
    select({"Tessel Studio", "Cedar"});
    choose(menuOn("Alder"), "Open");
    EXPECT_EQ(workspace.opened(), std::vector{FileURL("/Applications/Alder.app")});
    EXPECT_EQ(selectedNames(), QStringList({"Alder"}));
}

TEST_F(ApplicationsActions, WhatTheSearchHidesIsNotInTheMenu) {
    openReady({tessel(), cedar()});
    select({"Tessel Studio", "Cedar"});
    library.searchText = "cedar";
    turn();
    EXPECT_EQ(entries(menuOn("Cedar")).front(), "Open");
}

TEST_F(ApplicationsActions, TheKeysOpenTheMenuOfTheSelection) {
    openReady({tessel(), cedar(), alder()});
    select({"Tessel Studio", "Cedar"});
    table().setFocus();
    for (const auto& [key, modifier] :
         {std::pair{Qt::Key_F10, Qt::ShiftModifier}, {Qt::Key_Menu, Qt::NoModifier}}) {
        press(key, modifier);
        ASSERT_NE(openMenu(), nullptr) << key;
        EXPECT_EQ(entries(openMenu()).front(), "Reveal 2 Apps in Finder");
        openMenu()->close();
        EXPECT_EQ(openMenu(), nullptr);
    }
}

TEST_F(ApplicationsActions, APlatformThatAsksForTheMenuItselfGetsIt) {
    openReady({tessel()});
    click("Tessel Studio");
    QContextMenuEvent wanted(QContextMenuEvent::Keyboard, QPoint(5, 5), table().mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&table(), &wanted);
    ASSERT_NE(openMenu(), nullptr);
    EXPECT_EQ(entries(openMenu()).front(), "Open");
    const QRect row = table().visualRect(table().model()->index(0, 0));
    EXPECT_EQ(openMenu()->pos().y(), table().viewport()->mapToGlobal(row.bottomLeft()).y())
        << "below its row";
}

TEST_F(ApplicationsActions, WithoutASelectionTheKeysOpenTheMenuOfTheTable) {
    openReady({tessel()});
    table().setFocus();
    press(Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_NE(openMenu(), nullptr);
    EXPECT_EQ(entries(openMenu()), QStringList({"Rescan Applications"}));
}

TEST_F(ApplicationsActions, AMenuStaysOpenWhileAScanGoesOnBehindIt) {
    openReady({tessel(), cedar()});
    click("Tessel Studio");
    menuOn("Tessel Studio");
    auto measured = tessel();
    measured.leftovers.push_back(leftover("/Users/alex/Library/Logs/Tessel", "Logs", 1));
    publish({measured, alder()});
    turn();
    ASSERT_NE(openMenu(), nullptr);
    EXPECT_EQ(entries(openMenu()).front(), "Open");
}

TEST_F(ApplicationsActions, TheScanFromTheMenuIsTheUsers) {
    openReady({});
    choose(menuBelowTheRows(), "Rescan Applications");
    turn();
    EXPECT_EQ(runner.history(), std::vector{Priority::userInitiated}) << "as somebody waits for it";
}

// The pane for one application

TEST_F(ApplicationsActions, ThePaneOffersToUninstall) {
    openReady({tessel()});
    click("Tessel Studio");
    turn();
    const auto* button = detail().one()->uninstallButton();
    EXPECT_EQ(button->label(), "Uninstall");
    EXPECT_EQ(button->symbol(), "trash");
    EXPECT_EQ(button->role(), PushButton::Role::Destructive);
    EXPECT_EQ(button->toolTip(), "System apps cannot be removed");
    EXPECT_EQ(button->accessibleDescription(), "System apps cannot be removed");
    EXPECT_FALSE(button->isDefault() || button->autoDefault());
    EXPECT_TRUE(button->isEnabled());
    QTest::mouseClick(detail().one()->uninstallButton(), Qt::LeftButton);
    turn();
    EXPECT_EQ(reviewed(), QStringList({kTesselPath, kTesselSupport, kTesselCache}));
}

TEST_F(ApplicationsActions, UninstallIsDisabledForTheSystemTheUnmeasuredAndTheProtected) {
    library.filter = AppFilter::all;
    library.setProtected(FileURL("/Applications/Cedar.app"), true);
    openReady({alder(), cedar(), systemApp(), unmeasuredApp("Birch")});
    const auto* button = detail().one()->uninstallButton();
    for (const auto& [name, isEnabled] :
         {std::pair{"Alder", true}, {"Cedar", false}, {"Clockwork", false}, {"Birch", false}}) {
        click(name);
        turn();
        EXPECT_EQ(button->isEnabled(), isEnabled) << name;
    }
}

TEST_F(ApplicationsActions, TheButtonsFollowTheProtection) {
    openReady({tessel()});
    click("Tessel Studio");
    turn();
    const auto& view = *detail().one();
    EXPECT_FALSE(view.protectedMark()->isVisible());
    library.setProtected(FileURL(kTesselPath), true);
    turn();
    EXPECT_FALSE(view.uninstallButton()->isEnabled());
    EXPECT_EQ(view.cleanCacheButton()->label(), "No Cache to Clean");
    EXPECT_TRUE(view.protectedMark()->isVisible());
    EXPECT_EQ(view.protectedMark()->toolTip(), "Protected - Quillane will never remove this");
    library.setProtected(FileURL(kTesselPath), false);
    turn();
    EXPECT_TRUE(view.uninstallButton()->isEnabled());
    EXPECT_FALSE(view.protectedMark()->isVisible());
}

TEST_F(ApplicationsActions, AClickThatIsFasterThanThePaneReviewsNothingThatIsNotMeasuredAnyMore) {
    openReady({tessel()});
    click("Tessel Studio");
    turn();
    publish({unmeasuredApp("Tessel Studio")});
    QTest::mouseClick(detail().one()->uninstallButton(), Qt::LeftButton);
    turn();
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(ApplicationsActions, ThePaneOffersToCleanTheCache) {
    openReady({tessel()});
    click("Tessel Studio");
    turn();
    auto* const button = detail().one()->cleanCacheButton();
    EXPECT_EQ(button->label(), "Clean Cache (1.26 GB)");
    EXPECT_EQ(button->symbol(), "sparkles");
    EXPECT_EQ(button->toolTip(),
              "Trash caches, logs and saved window state. Settings and user data are untouched.");
    EXPECT_TRUE(button->isEnabled());
    QTest::mouseClick(button, Qt::LeftButton);
    turn();
    EXPECT_EQ(reviewed(), QStringList({kTesselCache}));
}

TEST_F(ApplicationsActions, WithoutCacheTheButtonSaysSo) {
    openReady({cedar()});
    click("Cedar");
    turn();
    const auto* button = detail().one()->cleanCacheButton();
    EXPECT_EQ(button->label(), "No Cache to Clean");
    EXPECT_FALSE(button->isEnabled());
}

TEST_F(ApplicationsActions, WhatCouldNotBeReachedIsNoCacheToClean) {
    openReady({tessel()});
    click("Tessel Studio");
    turn();
    library.inaccessible = {FileURL(kTesselCache)};
    turn();
    EXPECT_EQ(detail().one()->cleanCacheButton()->label(), "No Cache to Clean");
}

TEST_F(ApplicationsActions, NothingIsSaidOfTheCacheBeforeItIsMeasured) {
    openReady({unmeasuredApp("Cedar")});
    click("Cedar");
    turn();
    EXPECT_FALSE(detail().one()->cleanCacheButton()->isVisible());
    publish({cedar()});
    turn();
    EXPECT_TRUE(detail().one()->cleanCacheButton()->isVisible());
}

TEST_F(ApplicationsActions, UninstallKeepsItsWordInTheNarrowestPane) {
    openReady({tessel()});
    window->resize(ContentView::kMinimumSize);
    click("Tessel Studio");
    turn();
    const auto& view = *detail().one();
    EXPECT_FALSE(view.uninstallButton()->isCompact());
    EXPECT_FALSE(view.revealButton()->isCompact()) << "two buttons have room";
    EXPECT_GE(view.uninstallButton()->width(), view.uninstallButton()->fullWidth());
    view.toolbar()->addControl(new PushButton("A third one that is very long"));
    turn();
    EXPECT_TRUE(view.revealButton()->isCompact());
    EXPECT_FALSE(view.uninstallButton()->isCompact());
}

TEST_F(ApplicationsActions, ChipsThatDoNotFitGoOnInTheNextRow) {
    auto app = tessel();
    app.architecture = Architecture::appleSilicon;
    app.isMacAppStore = true;
    openReady({app});
    click("Tessel Studio");
    library.setProtected(app.url, true);
    turn();
    const auto& view = *detail().one();
    const auto right = [&](const QWidget* widget) {
        return widget->mapTo(&view, QPoint(widget->width(), 0)).x();
    };
    const auto chips = view.chips();
    ASSERT_EQ(chips.size(), 3U);
    EXPECT_GT(chips[2]->y(), chips[0]->y());
    EXPECT_EQ(chips[2]->x(), chips[0]->x());
    EXPECT_EQ(chips[1]->y(), chips[0]->y());
    EXPECT_LE(right(view.footprint()), view.width() - 16) << "nothing is pushed out of the pane";
    EXPECT_LE(right(view.protectedMark()), view.width() - 16);
    EXPECT_GE(view.footprint()->y(), chips[2]->parentWidget()->geometry().bottom());
}

// The pane for several

TEST_F(ApplicationsActions, ThePaneForSeveralOffersToUninstallThemAll) {
    openReady({tessel(), cedar(), alder()});
    select({"Tessel Studio", "Alder"});
    auto* const button = detail().several()->removeButton();
    EXPECT_EQ(button->label(), "Uninstall 2 Apps…");
    EXPECT_EQ(button->symbol(), "trash");
    EXPECT_EQ(button->role(), PushButton::Role::Destructive);
    EXPECT_TRUE(button->isEnabled());
    QTest::mouseClick(button, Qt::LeftButton);
    turn();
    EXPECT_EQ(reviewed(),
              QStringList({kTesselPath, kTesselSupport, kTesselCache, "/Applications/Alder.app"}));
    EXPECT_EQ(label(), "Uninstall 2 apps");
}

TEST_F(ApplicationsActions, ASelectionThatHoldsAProtectedOneReviewsTheRest) {
    library.setProtected(FileURL("/Applications/Cedar.app"), true);
    openReady({cedar(), alder()});
    select({"Cedar", "Alder"});
    EXPECT_EQ(detail().several()->removeButton()->label(), "Uninstall 2 Apps…");
    QTest::mouseClick(detail().several()->removeButton(), Qt::LeftButton);
    turn();
    EXPECT_EQ(reviewed(), QStringList({"/Applications/Alder.app"}));
}

TEST_F(ApplicationsActions, ThePaneForSeveralThatMustStayHasItsButtonDisabled) {
    openReady({cedar(), alder()});
    select({"Cedar", "Alder"});
    library.setProtected(FileURL("/Applications/Cedar.app"), true);
    library.setProtected(FileURL("/Applications/Alder.app"), true);
    turn();
    EXPECT_FALSE(detail().several()->removeButton()->isEnabled());
}

TEST(BulkSummaryButton, AsksToMoveAllToTheTrash) {
    BulkSummary summary;
    summary.show("2 files selected", {{"a", 1}, {"b", 2}});
    QSignalSpy wanted(&summary, &SelectionSummary::removeWanted);
    EXPECT_EQ(summary.removeButton()->label(), "Move All to Trash…");
    EXPECT_EQ(summary.removeButton()->symbol(), "trash");
    QTest::mouseClick(summary.removeButton(), Qt::LeftButton);
    EXPECT_EQ(wanted.size(), 1);
}

// The mark in the table

TEST_F(ApplicationsActions, AProtectedRowBearsTheMarkBesideThatOfTheStore) {
    auto app = cedar();
    app.isMacAppStore = true;
    openReady({app});
    const QModelIndex name = table().model()->index(0, ApplicationsTableModel::kName);
    EXPECT_FALSE(name.data(kProtectedRole).toBool());
    library.setProtected(app.url, true);
    turn();
    EXPECT_TRUE(name.data(kProtectedRole).toBool());
    EXPECT_EQ(name.data(kTrailingSymbolRole).toString(), "bag.fill");
    EXPECT_EQ(name.data(Qt::AccessibleDescriptionRole).toString(),
              "Installed from the Mac App Store. Protected - Quillane will never remove this");
}

TEST_F(ApplicationsActions, TheMarksStandBehindTheNameWithinTheCell) {
    auto app = cedar();
    app.name = "An application with a name that is longer than its column could ever be";
    app.isMacAppStore = true;
    library.setProtected(app.url, true);
    openReady({app});
    const QModelIndex name = table().model()->index(0, ApplicationsTableModel::kName);
    const auto* delegate = qobject_cast<const TableDelegate*>(table().itemDelegate());
    ASSERT_NE(delegate, nullptr);
    const QRect cell = table().visualRect(name);
    const auto parts = delegate->layout(cell, name);
    EXPECT_TRUE(parts.elided);
    EXPECT_LT(parts.text.left(), parts.trailing.left());
    EXPECT_GT(parts.protectedMark.left(), parts.trailing.right());
    EXPECT_LE(parts.protectedMark.right(), cell.right() + 1);
}

// The review

TEST_F(ApplicationsActions, ARequestIsReviewedAndTakenAwayWhenTheSheetCloses) {
    openReady({tessel()});
    EXPECT_EQ(sheet(), nullptr);
    window->presentRemoval(library.removalForApps({tessel()}));
    ASSERT_NE(sheet(), nullptr);
    EXPECT_TRUE(sheet()->isVisible());
    sheet()->reject();
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_FALSE(window->state().removal.get().has_value());
    window->presentRemoval(library.removalForCache(tessel()));
    EXPECT_EQ(reviewed(), QStringList({kTesselCache})) << "a new request opens a new sheet";
}

TEST_F(ApplicationsActions, ARequestWithoutRowsOpensNothing) {
    openReady({cedar()});
    window->presentRemoval(library.removalForCache(cedar()));
    turn();
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_FALSE(window->state().removal.get().has_value());
}

TEST_F(ApplicationsActions, WhileASweepRunsNoReviewOpens) {
    openReady({tessel()});
    library.isSweeping = true;
    window->presentRemoval(library.removalForApps({tessel()}));
    EXPECT_EQ(sheet(), nullptr);
    library.isSweeping = false;
    turn();
    EXPECT_EQ(sheet(), nullptr) << "nor later, when nobody expects it any more";
}

TEST_F(ApplicationsActions, AReviewIsNotReplacedByAnotherRequest) {
    openReady({tessel(), cedar()});
    window->presentRemoval(library.removalForApps({tessel()}));
    auto* const first = sheet();
    window->presentRemoval(library.removalForApps({cedar()}));
    EXPECT_EQ(sheet(), first);
    first->reject();
    turn();
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(ApplicationsActions, WhatIsConfirmedIsSweptByTheLibrary) {
    openReady({tessel()});
    window->presentRemoval(library.removalForApps({tessel()}));
    QTest::mouseClick(sheet()->reviewStage()->mainButton(), Qt::LeftButton);
    finish();
    EXPECT_EQ(library.sweepTotal.get(), 3);
    EXPECT_EQ(sheet()->stage(), SweepPreviewSheet::Stage::done);
    sheet()->reject();
    turn();
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(ApplicationsActions, TheWindowMayGoWhileAReviewIsOpen) {
    openReady({tessel()});
    window->presentRemoval(library.removalForApps({tessel()}));
    close();
    EXPECT_FALSE(library.isSweeping.get());
}

TEST_F(ApplicationsActions, ASelectedApplicationThatIsRemovedLeavesThePlaceholder) {
    openReady({tessel(), cedar()});
    click("Tessel Studio");
    turn();
    publish({cedar()});
    turn();
    EXPECT_EQ(detail().currentWidget(), detail().placeholder());
}
