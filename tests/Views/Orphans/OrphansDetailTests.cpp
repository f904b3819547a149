#include "Components/DetailHeader.h"
#include "Components/EmptyState.h"
#include "Components/Label.h"
#include "Components/Note.h"
#include "Components/Panel.h"
#include "Components/ProtectedMark.h"
#include "Components/PushButton.h"
#include "Components/SymbolView.h"
#include "Components/Tile.h"
#include "Components/ToolbarRow.h"
#include "Orphans/OrphanDetailView.h"
#include "Orphans/OrphansDetail.h"
#include "Panes/BulkSummary.h"
#include "Panes/DetailList.h"
#include "Panes/DetailListDelegate.h"
#include "Panes/PanePlaceholder.h"
#include "SectionDetailTest.h"
#include "ToolTip.h"
#include <QAccessible>
#include <QHelpEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolTip>

using namespace quillane;

namespace {

const FileURL kSupport("/Users/alex/Library/Application Support/fm.tempo.desktop");
const FileURL kHelper("/Library/PrivilegedHelperTools/fm.tempo.desktop.updater");
const FileURL kCaches("/Users/alex/Library/Caches/fm.tempo.desktop");
const FileURL kInkwell("/Users/alex/Library/Preferences/app.inkwell.plist");

OrphanItem orphan(const FileURL& url, std::string category, std::string identifier, std::string vendor,
                  Bytes bytes) {
    OrphanItem item;
    item.url = url;
    item.category = std::move(category);
    item.identifier = std::move(identifier);
    item.vendor = std::move(vendor);
    item.bytes = bytes;
    return item;
}

class OrphansPane : public SectionDetailTest<OrphansDetail> {
  protected:
    std::vector<OrphanItem> tempo() const {
        std::vector items = {
            orphan(kSupport, "Application Support", "fm.tempo.desktop", "fm.tempo", 388'100'000),
            orphan(kHelper, "Privileged Helper", "fm.tempo.desktop.updater", "fm.tempo", 52'400'000),
            orphan(kCaches, "Caches", "fm.tempo.desktop", "fm.tempo", 22'400'000),
        };
        items[0].lastModified = daysBack(1104);
        items[1].requiresAdmin = true;
        items[2].lastModified = daysBack(1200);
        return items;
    }
    std::vector<OrphanItem> inkwell() const {
        return {orphan(kInkwell, "Preferences", "app.inkwell", "app.inkwell", 4'000)};
    }
    std::vector<OrphanItem> both() const {
        auto items = tempo();
        items.push_back(inkwell().front());
        return items;
    }
    static std::vector<OrphanItem> many(int count) {
        std::vector<OrphanItem> items;
        for (int i = 0; i < count; ++i) {
            items.push_back(orphan(FileURL("/Users/alex/Library/Caches/fm.tempo." + std::to_string(i)),
                                   "Caches", "fm.tempo." + std::to_string(i), "fm.tempo", 9'000'000 - i));
        }
        return items;
    }
    // Opens the column with these orphans and the vendor "fm.tempo" selected.
    OrphanDetailView& show(std::vector<OrphanItem> items) {
        library.orphans = std::move(items);
        state.orphanSelection = std::unordered_set<std::string>{"fm.tempo"};
        openColumn();
        return view();
    }
    void publish(std::vector<OrphanItem> items) {
        library.orphans = std::move(items);
        turn();
    }
    void select(std::unordered_set<std::string> vendors) {
        state.orphanSelection = std::move(vendors);
        turn();
    }
    OrphanDetailView& view() const { return *column->one(); }
    DetailList& files() const { return *view().files(); }
    QModelIndex file(int row) const { return files().model()->index(row, 0); }
    QString fileText(int row, int role = Qt::DisplayRole) const { return file(row).data(role).toString(); }
    QScrollBar& bar() const { return *view().scrollArea()->verticalScrollBar(); }
    bool isInSight(int row) const {
        const QRect place = files().visualRect(file(row));
        return files().viewport()->visibleRegion().contains(place.center());
    }
};

} // namespace

// None

TEST_F(OrphansPane, NothingSelectedShowsThePlaceholder) {
    library.orphans = tempo();
    openColumn();
    EXPECT_TRUE(showsNone());
    EXPECT_EQ(column->placeholder()->emptyState()->title(), "No Selection");
    EXPECT_EQ(column->placeholder()->emptyState()->sentence(), "Pick a dead app to see what it left behind.");
    EXPECT_EQ(column->placeholder()->emptyState()->symbol(), "questionmark.folder");
}

TEST_F(OrphansPane, WhatIsNoLongerThereCountsAsNotSelected) {
    show(both());
    select({"fm.tempo", "app.inkwell", "com.long.gone"});
    EXPECT_TRUE(showsSeveral());
    EXPECT_EQ(column->several()->heading()->text(), "2 dead apps selected");
    publish(inkwell());
    EXPECT_TRUE(showsOne());
    EXPECT_EQ(view().header()->title(), "app.inkwell");
    publish({});
    EXPECT_TRUE(showsNone());
}

TEST_F(OrphansPane, WhatASearchHidesStaysSelected) {
    show(both());
    library.searchText = "inkwell";
    turn();
    EXPECT_TRUE(showsOne());
    EXPECT_EQ(view().header()->title(), "fm.tempo.desktop");
}

// One

TEST_F(OrphansPane, TheHeaderNamesTheGroupAndSaysThatNobodyClaimsIt) {
    const auto& pane = show(tempo());
    EXPECT_TRUE(showsOne());
    EXPECT_EQ(pane.header()->title(), "fm.tempo.desktop");
    EXPECT_EQ(pane.header()->subtitle(), "No installed app claims this data.");
    EXPECT_EQ(pane.header()->findChild<Tile*>()->symbol(), "questionmark.folder.fill");
}

TEST_F(OrphansPane, TheNoteOnAdministratorRightsStandsWhereAnItemNeedsThem) {
    auto items = tempo();
    const auto& pane = show(items);
    EXPECT_TRUE(pane.adminNote()->isVisible());
    EXPECT_EQ(pane.adminNote()->text(), "Some files sit outside your home folder and need admin rights.");
    EXPECT_EQ(pane.adminNote()->findChild<SymbolView*>()->symbol(), "lock.fill");
    items[1].requiresAdmin = false;
    publish(items);
    EXPECT_FALSE(pane.adminNote()->isVisible());
}

TEST_F(OrphansPane, TheStatisticsTellWhatItHoldsAndWhenItWasTouched) {
    const auto& pane = show(tempo());
    EXPECT_EQ(figures(*pane.stats()),
              (Pairs{{"Reclaimable", "462.9 MB"}, {"Files", "3"}, {"Last Touched", "1,104 days ago"}}));
    EXPECT_TRUE(pane.stats()->cells()[0]->isEmphasized());
    EXPECT_FALSE(pane.stats()->cells()[1]->isEmphasized());
}

TEST_F(OrphansPane, OneDayStillTakesThePlural) {
    auto items = tempo();
    items[2].lastModified = daysBack(1);
    EXPECT_EQ(figures(*show(items).stats())[2].second, "1 days ago");
    items[2].lastModified = daysBack(0);
    publish(items);
    EXPECT_EQ(figures(*view().stats())[2].second, "0 days ago");
}

TEST_F(OrphansPane, AGroupWithoutADateIsUnknown) {
    auto items = tempo();
    for (auto& item : items) {
        item.lastModified.reset();
    }
    EXPECT_EQ(figures(*show(items).stats())[2].second, "Unknown");
}

TEST_F(OrphansPane, EachItemHasARowLargestFirst) {
    const auto& pane = show(tempo());
    EXPECT_EQ(pane.filesPanel()->heading()->text(), "Files");
    ASSERT_EQ(files().model()->rowCount(), 3);
    using Role = DetailList::Role;
    EXPECT_EQ(fileText(0), "fm.tempo.desktop");
    EXPECT_EQ(fileText(0, Role::SubtitleRole), "Application Support");
    EXPECT_EQ(fileText(0, Role::SizeRole), "388.1 MB");
    EXPECT_EQ(fileText(0, Role::SymbolRole), "doc");
    EXPECT_EQ(readIn(fileText(0, Qt::ToolTipRole)),
              "/Users/alex/Library/Application Support/fm.tempo.desktop");
    EXPECT_EQ(fileText(1), "fm.tempo.desktop.updater");
    EXPECT_EQ(fileText(1, Role::SubtitleRole), "Privileged Helper");
    EXPECT_EQ(fileText(1, Role::SizeRole), "52.4 MB");
    EXPECT_EQ(fileText(1, Role::SymbolRole), "lock.fill");
    EXPECT_EQ(fileText(1, Qt::AccessibleTextRole),
              "fm.tempo.desktop.updater, Privileged Helper, 52.4 MB, Needs admin rights to remove");
    EXPECT_EQ(fileText(2, Role::SubtitleRole), "Caches");
    EXPECT_EQ(fileText(2, Role::SymbolRole), "doc");
}

TEST_F(OrphansPane, AProtectedItemBearsTheMarkAtOnce) {
    show(tempo());
    EXPECT_FALSE(file(2).data(DetailList::ProtectedRole).toBool());
    EXPECT_EQ(fileText(2, Qt::AccessibleTextRole), "fm.tempo.desktop, Caches, 22.4 MB");
    library.setProtected(kCaches, true);
    turn();
    EXPECT_FALSE(file(0).data(DetailList::ProtectedRole).toBool());
    EXPECT_TRUE(file(2).data(DetailList::ProtectedRole).toBool());
    EXPECT_EQ(fileText(2, Qt::AccessibleTextRole),
              "fm.tempo.desktop, Caches, 22.4 MB, Protected - Quillane will never remove this");
    library.setProtected(kCaches, false);
    turn();
    EXPECT_FALSE(file(2).data(DetailList::ProtectedRole).toBool());
}

TEST_F(OrphansPane, NamesThatDeceiveAreShownAsTheyAre) {
    auto items = tempo();
    items[0].url = FileURL("/Users/alex/Library/Caches/safe\u202Eexe");
    items[0].identifier = "fm.\u202Eopmet";
    items.resize(1);
    show(items);
    EXPECT_EQ(view().header()->title(), "fm.‹U+202E›opmet");
    EXPECT_EQ(fileText(0), "safe‹U+202E›exe");
    EXPECT_EQ(readIn(fileText(0, Qt::ToolTipRole)), "/Users/alex/Library/Caches/safe‹U+202E›exe");
}

// The buttons

TEST_F(OrphansPane, RevealShowsAllItemsInTheFileManager) {
    const auto& pane = show(both());
    EXPECT_EQ(pane.revealButton()->label(), "Reveal in Finder");
    EXPECT_EQ(pane.revealButton()->symbol(), "folder");
    press(pane.revealButton());
    EXPECT_EQ(workspace.revealed(), (std::vector<std::vector<FileURL>>{{kSupport, kHelper, kCaches}}));
}

TEST_F(OrphansPane, MoveToTrashAsksToReviewWhatCanGo) {
    const auto& pane = show(both());
    EXPECT_EQ(pane.removeButton()->label(), "Move to Trash");
    EXPECT_EQ(pane.removeButton()->symbol(), "trash");
    EXPECT_EQ(pane.removeButton()->role(), PushButton::Role::Destructive);
    EXPECT_FALSE(pane.removeButton()->isDefault());
    press(pane.removeButton());
    EXPECT_EQ(asked(), (std::vector<FileURL>{kSupport, kCaches}));
    EXPECT_EQ(askedLabel(), "Remove fm.tempo.desktop leftovers");
}

TEST_F(OrphansPane, AGroupThatNeedsAdministratorRightsAloneIsShownAndCannotGo) {
    auto items = tempo();
    for (auto& item : items) {
        item.requiresAdmin = true;
    }
    const auto& pane = show(items);
    EXPECT_EQ(figures(*pane.stats())[0].second, "462.9 MB");
    EXPECT_TRUE(pane.revealButton()->isEnabled());
    EXPECT_FALSE(pane.removeButton()->isEnabled());
}

TEST_F(OrphansPane, MoveToTrashFollowsProtectionAndAccess) {
    const auto& pane = show(tempo());
    EXPECT_TRUE(pane.removeButton()->isEnabled());
    library.setProtected(kSupport, true);
    turn();
    EXPECT_TRUE(pane.removeButton()->isEnabled());
    library.inaccessible = std::unordered_set<FileURL>{kCaches};
    turn();
    EXPECT_FALSE(pane.removeButton()->isEnabled());
    library.setProtected(kSupport, false);
    turn();
    EXPECT_TRUE(pane.removeButton()->isEnabled());
}

TEST_F(OrphansPane, AClickThatIsFasterThanThePaneAsksForWhatIsThereNow) {
    const auto& pane = show(tempo());
    library.setProtected(kSupport, true);
    library.setProtected(kCaches, true);
    press(pane.removeButton());
    EXPECT_FALSE(state.removal->has_value());
    turn();
    library.setProtected(kSupport, false);
    turn();
    library.orphans = std::vector<OrphanItem>();
    press(pane.removeButton());
    press(pane.revealButton());
    EXPECT_FALSE(state.removal->has_value());
    EXPECT_TRUE(workspace.revealed().empty());
}

TEST_F(OrphansPane, WhereTheButtonsDoNotFitRevealShrinksToItsSymbol) {
    const auto& pane = show(tempo());
    EXPECT_FALSE(pane.revealButton()->isCompact());
    pane.toolbar()->addControl(new PushButton("A third one that is very long"));
    turn();
    EXPECT_TRUE(pane.revealButton()->isCompact());
    EXPECT_EQ(pane.revealButton()->accessibleName(), "Reveal in Finder");
    EXPECT_EQ(pane.revealButton()->toolTip(), "Reveal in Finder");
    EXPECT_FALSE(pane.removeButton()->isCompact());
}

// Scrolling, keys and assistive tools

TEST_F(OrphansPane, ThousandsOfItemsMakeNoWidgetForEachRow) {
    show(many(3));
    const auto few = column->findChildren<QWidget*>().size();
    publish(many(5000));
    EXPECT_EQ(files().model()->rowCount(), 5000);
    EXPECT_EQ(figures(*view().stats())[1].second, "5,000");
    EXPECT_EQ(column->findChildren<QWidget*>().size(), few);
    EXPECT_GT(bar().maximum(), 5000 * 30) << "the pane scrolls over all of them";
}

TEST_F(OrphansPane, TheWheelOverTheListScrollsThePane) {
    show(many(5000));
    const QPointF at(40, 10);
    QWheelEvent wheel(at, files().viewport()->mapToGlobal(at), {}, {0, -240}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel); // only what comes from the user goes on to the pane
    qApp->notify(files().viewport(), &wheel);
    EXPECT_GT(bar().value(), 0);
}

TEST_F(OrphansPane, AScanThatFindsTheSameAgainLeavesScrollPositionRowAndFocus) {
    show(many(5000));
    files().setFocus();
    files().setCurrentIndex(file(100));
    const int at = bar().value();
    ASSERT_GT(at, 0);
    auto items = many(5000);
    items[100].bytes -= 1;
    items[0].lastModified = daysBack(3);
    publish(items);
    EXPECT_EQ(bar().value(), at);
    EXPECT_EQ(files().currentIndex(), file(100));
    EXPECT_EQ(QApplication::focusWidget(), &files());
    EXPECT_EQ(figures(*view().stats())[2].second, "3 days ago");
}

TEST_F(OrphansPane, TheCurrentRowStaysWithItsFileWhenOthersGo) {
    show(many(100));
    files().setFocus();
    files().setCurrentIndex(file(60));
    auto items = many(100);
    items.erase(items.begin(), items.begin() + 10);
    publish(items);
    EXPECT_EQ(files().currentIndex().row(), 50);
    EXPECT_EQ(files().currentIndex().data().toString(), "fm.tempo.60");
}

TEST_F(OrphansPane, ARowThatGoesDuringAScanScrollsNothing) {
    show(many(100));
    files().setFocus();
    files().setCurrentIndex(file(60));
    for (const int at : {100, 1000}) {
        files().setCurrentIndex(file(60));
        bar().setValue(at);
        auto items = many(100);
        items.erase(items.begin() + 60);
        publish(items);
        EXPECT_EQ(bar().value(), at);
        publish(many(100));
    }
}

TEST_F(OrphansPane, WhoComesToTheListByKeyboardSeesTheCurrentRow) {
    show(many(1000));
    files().setCurrentIndex(file(70));
    for (const auto key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        QWidget* const neighbour = key == Qt::Key_Tab ? static_cast<QWidget*>(view().scrollArea())
                                                      : static_cast<QWidget*>(view().revealButton());
        neighbour->setFocus(Qt::TabFocusReason);
        bar().setValue(0);
        ASSERT_FALSE(isInSight(70));
        QTest::keyClick(neighbour, key);
        EXPECT_EQ(QApplication::focusWidget(), &files());
        EXPECT_TRUE(isInSight(70)) << "key " << key;
    }
}

TEST_F(OrphansPane, AWindowThatComesToTheFrontAgainScrollsNothing) {
    show(many(1000));
    files().setCurrentIndex(file(70));
    bar().setValue(0);
    files().setFocus(Qt::ActiveWindowFocusReason);
    EXPECT_EQ(bar().value(), 0);
}

TEST_F(OrphansPane, MarkAndLockSayWhatTheyMeanAndTheRestOfTheRowWhereTheFileLies) {
    library.setProtected(kCaches, true);
    show(tempo());
    const auto helpAt = [this](const QPoint& at) {
        QHelpEvent event(QEvent::ToolTip, at, files().viewport()->mapToGlobal(at));
        QCoreApplication::sendEvent(files().viewport(), &event);
        return readIn(QToolTip::text());
    };
    const QRect row = files().visualRect(file(2));
    EXPECT_EQ(helpAt(DetailListDelegate::markOf(row, file(2)).center().toPoint()),
              "Protected - Quillane will never remove this");
    EXPECT_EQ(helpAt(row.center()), "/Users/alex/Library/Caches/fm.tempo.desktop");
    const QRect locked = files().visualRect(file(1));
    EXPECT_EQ(helpAt(DetailListDelegate::symbolOf(locked).center().toPoint()),
              "Needs admin rights to remove");
    EXPECT_EQ(helpAt(locked.center()), "/Library/PrivilegedHelperTools/fm.tempo.desktop.updater");
    EXPECT_EQ(helpAt(DetailListDelegate::symbolOf(row).center().toPoint()),
              "/Users/alex/Library/Caches/fm.tempo.desktop");
    const QRect unmarked = files().visualRect(file(0));
    EXPECT_EQ(helpAt(DetailListDelegate::markOf(unmarked, file(0)).center().toPoint()),
              "/Users/alex/Library/Application Support/fm.tempo.desktop");
}

TEST_F(OrphansPane, AnotherGroupStartsAtItsTop) {
    auto items = many(100);
    for (auto item : many(100)) {
        item.vendor = "app.inkwell";
        item.identifier = "app.inkwell";
        items.push_back(item);
    }
    show(items);
    bar().setValue(500);
    select({"app.inkwell"});
    EXPECT_EQ(view().header()->title(), "app.inkwell");
    EXPECT_EQ(bar().value(), 0);
}

TEST_F(OrphansPane, KeysMoveThroughTheListAndThePaneFollows) {
    show(many(1000));
    files().setFocus(Qt::TabFocusReason);
    QTest::keyClick(&files(), Qt::Key_End);
    EXPECT_EQ(files().currentIndex().row(), 999);
    EXPECT_TRUE(isInSight(999));
    QTest::keyClick(&files(), Qt::Key_Up);
    EXPECT_EQ(files().currentIndex().row(), 998);
    QTest::keyClick(&files(), Qt::Key_Home);
    EXPECT_EQ(files().currentIndex().row(), 0);
    EXPECT_TRUE(isInSight(0));
    QTest::keyClick(&files(), Qt::Key_Down);
    EXPECT_EQ(files().currentIndex().row(), 1);
}

TEST_F(OrphansPane, PageKeysGoByWhatThePaneShows) {
    show(many(1000));
    files().setFocus(Qt::TabFocusReason);
    QTest::keyClick(&files(), Qt::Key_PageDown);
    const int page = files().currentIndex().row();
    EXPECT_GT(page, 3);
    EXPECT_LT(page, 20);
    EXPECT_TRUE(isInSight(page));
    QTest::keyClick(&files(), Qt::Key_PageDown);
    EXPECT_GT(files().currentIndex().row(), page);
    QTest::keyClick(&files(), Qt::Key_PageUp);
    QTest::keyClick(&files(), Qt::Key_PageUp);
    QTest::keyClick(&files(), Qt::Key_PageUp);
    EXPECT_EQ(files().currentIndex().row(), 0);
}

TEST_F(OrphansPane, TabGoesOverTheButtonsIntoTheListAndOutOfIt) {
    show(many(1000));
    view().revealButton()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(view().revealButton(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), view().removeButton());
    QTest::keyClick(view().removeButton(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), view().scrollArea());
    QTest::keyClick(view().scrollArea(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &files());
    EXPECT_EQ(files().currentIndex().row(), 0);
    EXPECT_TRUE(isInSight(0)) << "and not the middle of the list";
    QTest::keyClick(&files(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), view().revealButton());
}

TEST_F(OrphansPane, AssistiveToolsReadTheListByItsName) {
    show(tempo());
    auto* const list = QAccessible::queryAccessibleInterface(&files());
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->text(QAccessible::Name), "Files");
    ASSERT_EQ(list->childCount(), 3);
    EXPECT_EQ(list->child(0)->text(QAccessible::Name), "fm.tempo.desktop, Application Support, 388.1 MB");
    EXPECT_FALSE(view().scrollArea()->accessibleName().isEmpty());
}

TEST_F(OrphansPane, NothingScrollsSidewaysInTheNarrowestPane) {
    auto items = many(30);
    items[0].url =
        FileURL("/Users/alex/Library/Caches/an.identifier.that.is.much.longer.than.any.pane.could.be.Helper");
    show(items);
    EXPECT_EQ(view().scrollArea()->horizontalScrollBar()->maximum(), 0);
    EXPECT_LE(files().mapTo(&ground(), QPoint(files().width(), 0)).x(),
              ContentView::kDetailNarrowest - 16 - 14 + DetailList::kOverhang);
}

// Several

TEST_F(OrphansPane, SeveralAreCountedAddedUpAndListedByTheirTitles) {
    show(both());
    select({"fm.tempo", "app.inkwell"});
    EXPECT_TRUE(showsSeveral());
    const auto& several = *column->several();
    EXPECT_EQ(several.heading()->text(), "2 dead apps selected");
    EXPECT_EQ(several.toolbar()->title(), "2 Dead Apps");
    EXPECT_EQ(figures(*several.stats()), (Pairs{{"Combined Size", "462.9 MB"}, {"Rows", "2"}}));
    EXPECT_EQ(listed(), QStringList({"fm.tempo.desktop, 462.9 MB", "app.inkwell, 4 KB"}));
    EXPECT_TRUE(several.note()->isHidden());
}

TEST_F(OrphansPane, MoveAllToTrashAsksToReviewWhatCanGoOfAll) {
    show(both());
    select({"fm.tempo", "app.inkwell"});
    auto* const button = column->several()->removeButton();
    EXPECT_EQ(button->label(), "Move All to Trash…");
    EXPECT_EQ(button->symbol(), "trash");
    EXPECT_TRUE(button->isEnabled());
    press(button);
    EXPECT_EQ(asked(), (std::vector<FileURL>{kSupport, kCaches, kInkwell}));
    EXPECT_EQ(askedLabel(), "Remove leftovers of 2 apps");
}

TEST_F(OrphansPane, WhereNothingOfSeveralCanGoTheButtonIsDisabled) {
    show(both());
    select({"fm.tempo", "app.inkwell"});
    for (const auto& url : {kSupport, kCaches, kInkwell}) {
        library.setProtected(url, true);
    }
    turn();
    EXPECT_FALSE(column->several()->removeButton()->isEnabled());
    library.setProtected(kInkwell, false);
    turn();
    EXPECT_TRUE(column->several()->removeButton()->isEnabled());
}

// Pictures for whoever wants to look

TEST_F(OrphansPane, ItIsDrawnInLightAndDark) {
    library.orphans = both();
    openColumn();
    keepBoth("pane-orphans-none");
    select({"fm.tempo"});
    library.setProtected(kCaches, true);
    keepBoth("pane-orphans-one");
    select({"fm.tempo", "app.inkwell"});
    keepBoth("pane-orphans-several");
    auto items = many(5000);
    items[0].url =
        FileURL("/Users/alex/Library/Caches/an.identifier.that.is.much.longer.than.any.pane.could.be.Helper");
    items[0].identifier = "an.identifier.that.is.much.longer.than.any.pane.could.be.Helper";
    library.setProtected(items[0].url, true);
    publish(items);
    select({"fm.tempo"});
    files().setFocus(Qt::TabFocusReason);
    turn();
    const QImage top = pictureOf(ground());
    keepBoth("pane-orphans-long");
    QTest::keyClick(&files(), Qt::Key_End);
    turn();
    EXPECT_NE(pictureOf(ground()), top);
    keepBoth("pane-orphans-long-end");
}
