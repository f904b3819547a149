#include "Announced.h"
#include "Applications/ApplicationsDetail.h"
#include "Applications/ApplicationsTable.h"
#include "Components/Look.h"
#include "Components/SearchField.h"
#include "Components/SidebarView.h"
#include "Components/ToolbarRow.h"
#include "Shell/BrandButton.h"
#include "Shell/ContentView.h"
#include "Shell/Sidebar.h"
#include "Tables/TableView.h"
#include "WindowTest.h"
#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAccessible>
#include <QAction>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QSplitter>

using namespace quillane;
using Kind = AppLibrary::Phase::Kind;

namespace {

class MainWindow : public WindowTest {
  protected:
    static std::vector<InstalledApp> two() {
        return {measuredApp("Alder", 3'000'000), measuredApp("Birch", 9'000'000)};
    }
    // Opens the window after a cleanup of one item.
    void offerToPutBack() {
        library.lastOperation = UndoableOperation{
            "Clean Now", clock.now(), {{FileURL("/Users/alex/a"), FileURL("/Users/alex/.Trash/a")}}, 1};
        openReady(two());
    }
    void pressUndo() {
        press(Qt::Key_Z, Qt::ControlModifier);
        turn();
    }
    bool isPuttingBack() const { return window->state().isPuttingBack.get(); }
    QAction* putBackEntry() const { return window->sidebar()->brand()->menu()->actions().at(1); }
    SidebarView& sections() const { return *window->sidebar()->list(); }
    // From the widget that has the focus, by Tab, until it comes round.
    std::vector<QWidget*> tabOrder() const {
        std::vector<QWidget*> order;
        while (order.size() < 50) {
            QWidget* const focused = QApplication::focusWidget();
            if (!order.empty() && focused == order.front()) {
                break;
            }
            order.push_back(focused);
            QTest::keyClick(focused, Qt::Key_Tab);
        }
        return order;
    }
};

} // namespace

// Starting

TEST_F(MainWindow, OpeningTheWindowStartsTheFirstScan) {
    open({Kind::idle}, {});
    EXPECT_NE(library.phase.get().kind, Kind::idle);
    finish();
    EXPECT_EQ(library.phase.get().kind, Kind::ready);
}

TEST_F(MainWindow, TheEndOfAScanIsAnnouncedInWhateverSection) {
    const Announced announced;
    startsIn = LibrarySection::startup;
    open({Kind::idle}, {});
    library.phase = {.kind = Kind::measuring, .done = 1, .total = 2};
    turn();
    EXPECT_EQ(announced.texts(), QStringList());
    publish(two());
    library.phase = {.kind = Kind::ready};
    turn();
    EXPECT_EQ(announced.texts(), QStringList{"Scan finished. 2 apps"});
    library.searchText = "Alder";
    turn();
    EXPECT_EQ(announced.texts().size(), 1) << "once";
}

TEST_F(MainWindow, AWindowThatComesAfterAScanAnnouncesNone) {
    const Announced announced;
    openReady(two());
    EXPECT_EQ(announced.texts(), QStringList());
}

// A scan that somebody waits for begins at this priority, and one that nobody asked for far below.
TEST_F(MainWindow, TheFirstScanIsTheUsers) {
    open({Kind::idle}, {});
    EXPECT_EQ(runner.history(), std::vector{Priority::userInitiated});
}

TEST_F(MainWindow, OpeningItAgainStartsNoSecondFirstScan) {
    open({Kind::idle}, {});
    finish();
    runner.clearHistory();
    close();
    window = std::make_unique<ContentView>(library, notifications);
    window->show();
    finish();
    EXPECT_EQ(library.phase.get().kind, Kind::ready);
    EXPECT_TRUE(runner.history().empty());
}

TEST_F(MainWindow, HidingAndShowingItStartsNoScanEither) {
    openReady(two());
    window->hide();
    window->show();
    turn();
    EXPECT_EQ(library.phase.get().kind, Kind::ready);
}

TEST_F(MainWindow, OpensAtItsDefaultSizeAndKeepsItsMinimum) {
    openReady(two());
    EXPECT_EQ(window->size(), QSize(1280, 760));
    EXPECT_EQ(window->minimumSize(), QSize(1120, 600));
}

// Sections

TEST_F(MainWindow, TheSidebarListsTheSectionsThatStandInTheirOrder) {
    openReady(two());
    QStringList listed;
    for (int row = 0; row < sections().count(); ++row) {
        listed << sections().item(row)->text();
    }
    QStringList expected;
    for (const auto section : kAllLibrarySections) {
        if (window->content(section)) {
            expected << QString::fromUtf8(rawValue(section).data());
        }
    }
    EXPECT_EQ(listed, expected);
    EXPECT_EQ(listed.first(4), QStringList({"Overview", "Applications", "Orphaned Files", "Developer"}));
}

TEST_F(MainWindow, TheBadgeCountsTheVisibleApplicationsAndFollowsTheSearch) {
    openReady(two());
    const int row = sections().row(sections().findItems("Applications", Qt::MatchExactly).front());
    EXPECT_EQ(sections().badge(row), "2");
    EXPECT_EQ(sections().item(row)->data(Qt::AccessibleTextRole).toString(), "Applications, 2");
    library.searchText = "birch";
    turn();
    EXPECT_EQ(sections().badge(row), "1");
    library.searchText = "zzz";
    turn();
    EXPECT_EQ(sections().badge(row), "") << "0 shows nothing";
}

TEST_F(MainWindow, ANotificationWithTheNameOfASectionGoesThere) {
    openReady(two());
    int gone = 0;
    for (const auto section : kAllLibrarySections) {
        if (window->content(section) == nullptr) {
            continue;
        }
        notifications.post(NotificationName::kShowSection, std::string(rawValue(section)));
        EXPECT_EQ(window->state().section.get(), section);
        turn();
        EXPECT_EQ(window->header()->title().toStdString(), rawValue(section));
        ++gone;
    }
    EXPECT_GE(gone, 4);
}

TEST_F(MainWindow, ANotificationToShowTheOverviewGoesThereFromEachSection) {
    openReady(two());
    for (const auto section : kAllLibrarySections) {
        window->showSection(section);
        notifications.post(NotificationName::kShowOverview);
        EXPECT_EQ(window->state().section.get(), LibrarySection::overview) << rawValue(section);
    }
}

TEST_F(MainWindow, ANotificationWithAnyOtherStringIsIgnored) {
    openReady(two());
    const auto before = window->state().section.get();
    for (const auto& object :
         {NotificationCenter::Object("No Such Section"), NotificationCenter::Object(""),
          NotificationCenter::Object("applications"), NotificationCenter::Object("overview"),
          NotificationCenter::Object("Overview "), NotificationCenter::Object()}) {
        notifications.post(NotificationName::kShowSection, object);
        EXPECT_EQ(window->state().section.get(), before);
    }
}

TEST_F(MainWindow, AClosedWindowHearsNoNotification) {
    openReady(two());
    close();
    notifications.post(NotificationName::kShowSection, "Applications");
}

// Search

TEST_F(MainWindow, TypingInTheSearchFieldSearchesTheLibrary) {
    openReady(two());
    EXPECT_EQ(window->searchField()->placeholderText(), "Search");
    QTest::keyClicks(window->searchField(), "bir");
    turn();
    EXPECT_EQ(library.searchText.get(), "bir");
    EXPECT_EQ(names(), QStringList({"Birch"}));
    QTest::keyClick(window->searchField(), Qt::Key_Escape);
    turn();
    EXPECT_EQ(names().size(), 2);
}

TEST_F(MainWindow, TheSearchFieldFollowsTheLibrary) {
    openReady(two());
    library.searchText = "café";
    turn();
    EXPECT_EQ(window->searchField()->text(), "café");
}

// Commands and keys

TEST_F(MainWindow, ControlRScansAgain) {
    openReady(two());
    QTest::keyClick(window.get(), Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(library.phase.get().kind, Kind::scanning);
    finish();
}

TEST_F(MainWindow, TheScanByKeyIsTheUsers) {
    openReady({});
    QTest::keyClick(window.get(), Qt::Key_R, Qt::ControlModifier);
    turn();
    EXPECT_EQ(runner.history(), std::vector{Priority::userInitiated});
}

TEST_F(MainWindow, ControlFGoesToTheSearchFieldAndSelectsItsText) {
    openReady(two());
    library.searchText = "bir";
    turn();
    table().setFocus();
    QTest::keyClick(&table(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(window->searchField()->hasFocus());
    EXPECT_EQ(window->searchField()->selectedText(), "bir");
}

TEST_F(MainWindow, ControlAndTheNumberOfASectionGoesThere) {
    openReady(two());
    for (const auto& [key, section] : {std::pair{Qt::Key_3, LibrarySection::orphans},
                                       {Qt::Key_4, LibrarySection::developer},
                                       {Qt::Key_2, LibrarySection::applications},
                                       {Qt::Key_1, LibrarySection::overview}}) {
        QTest::keyClick(window.get(), key, Qt::ControlModifier);
        EXPECT_EQ(window->state().section.get(), section);
    }
}

TEST_F(MainWindow, F10OpensTheMenuWithTheCommandsAndTheirKeys) {
    openReady(two());
    QTest::keyClick(window.get(), Qt::Key_F10);
    QMenu* const menu = window->sidebar()->brand()->menu();
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->isVisible());
    QStringList items;
    for (const auto* const action : menu->actions()) {
        if (!action->isSeparator()) {
            items << action->text() + " " + action->shortcut().toString();
        }
    }
    EXPECT_EQ(items, QStringList({"Rescan Applications Ctrl+R", "Put Back Last Cleanup Ctrl+Z",
                                  "Settings… Ctrl+,", "Grant Full Disk Access… ", "Check for Updates… ",
                                  "Welcome to Quillane ", "Quit Quillane Ctrl+Q"}));
    menu->close();
}

TEST_F(MainWindow, AloneItOffersNoWayToTheOtherWindows) {
    openReady(two());
    for (const auto* const action : window->sidebar()->brand()->menu()->actions()) {
        const bool leadsElsewhere = action->text() == "Settings…" || action->text() == "Check for Updates…";
        EXPECT_FALSE(leadsElsewhere && action->isEnabled()) << qPrintable(action->text());
    }
}

TEST_F(MainWindow, TheBrandRowOpensTheMenuByMouse) {
    openReady(two());
    QTest::mouseClick(window->sidebar()->brand(), Qt::LeftButton);
    EXPECT_TRUE(window->sidebar()->brand()->menu()->isVisible());
    window->sidebar()->brand()->menu()->close();
}

// The key for undo in the search field

TEST_F(MainWindow, WithNothingTypedTheKeyForUndoIsTheWindows) {
    offerToPutBack();
    window->searchField()->setFocus();
    pressUndo();
    EXPECT_TRUE(isPuttingBack());
}

TEST_F(MainWindow, TypingIsUndoneFirstAndThenTheCleanup) {
    offerToPutBack();
    window->searchField()->setFocus();
    QTest::keyClicks(window->searchField(), "bir");
    pressUndo();
    EXPECT_EQ(window->searchField()->text(), "");
    EXPECT_FALSE(isPuttingBack());
    pressUndo();
    EXPECT_TRUE(isPuttingBack());
}

TEST_F(MainWindow, EveryStepOfTypingIsUndoneBeforeTheCleanup) {
    offerToPutBack();
    window->searchField()->setFocus();
    QTest::keyClicks(window->searchField(), "birch");
    press(Qt::Key_Home);
    QTest::keyClicks(window->searchField(), "a");
    press(Qt::Key_Delete);
    int steps = 0;
    while (!window->searchField()->text().isEmpty() && steps < 10) {
        pressUndo();
        EXPECT_FALSE(isPuttingBack());
        ++steps;
    }
    EXPECT_EQ(window->searchField()->text(), "");
    pressUndo();
    EXPECT_TRUE(isPuttingBack());
}

TEST_F(MainWindow, WhatEscapeClearedComesBackFirst) {
    offerToPutBack();
    window->searchField()->setFocus();
    QTest::keyClicks(window->searchField(), "bir");
    press(Qt::Key_Escape);
    pressUndo();
    EXPECT_EQ(window->searchField()->text(), "bir");
    EXPECT_FALSE(isPuttingBack());
}

TEST_F(MainWindow, ASearchThatTheLibraryBroughtIsNotTypingToUndo) {
    offerToPutBack();
    window->searchField()->setFocus();
    library.searchText = "bir";
    turn();
    pressUndo();
    EXPECT_EQ(window->searchField()->text(), "bir");
    EXPECT_TRUE(isPuttingBack());
}

TEST_F(MainWindow, WithNothingToPutBackTheKeyForUndoDoesNothingInTheField) {
    openReady(two());
    window->searchField()->setFocus();
    pressUndo();
    EXPECT_FALSE(isPuttingBack());
    EXPECT_TRUE(window->searchField()->hasFocus());
}

TEST_F(MainWindow, TheMenusEntryIsThereWhateverTheFieldHoldsAndPutsBack) {
    offerToPutBack();
    window->searchField()->setFocus();
    EXPECT_TRUE(putBackEntry()->isEnabled());
    QTest::keyClicks(window->searchField(), "bir");
    turn();
    EXPECT_TRUE(putBackEntry()->isEnabled());
    putBackEntry()->trigger();
    EXPECT_TRUE(isPuttingBack());
    EXPECT_EQ(window->searchField()->text(), "bir");
}

// Focus and assistive tools

TEST_F(MainWindow, TabGoesFromTheSidebarOverSearchAndTableToThePane) {
    openReady(two());
    click("Alder");
    turn();
    sections().setFocus();
    const auto order = tabOrder();
    const auto place = [&](const QWidget* widget) {
        return std::ranges::find(order, widget) - order.begin();
    };
    ASSERT_LT(place(&table()), static_cast<std::ptrdiff_t>(order.size()));
    EXPECT_LT(place(&sections()), place(window->searchField()));
    EXPECT_LT(place(window->searchField()), place(&table()));
    const auto inPane =
        std::ranges::find_if(order, [&](auto* widget) { return detail().isAncestorOf(widget); });
    ASSERT_NE(inPane, order.end());
    EXPECT_LT(place(&table()), inPane - order.begin());
}

TEST_F(MainWindow, AssistiveToolsReadSidebarMiddleAndPaneInThisOrder) {
    openReady(two());
    QWidgetList met; // all that they read, one after the other
    const auto meet = [&met](auto& self, QAccessibleInterface* of) -> void {
        for (int i = 0; i < of->childCount(); ++i) {
            auto* const child = of->child(i);
            if (auto* const widget = qobject_cast<QWidget*>(child->object())) {
                met << widget;
                self(self, child);
            }
        }
    };
    meet(meet, QAccessible::queryAccessibleInterface(window.get()));
    const QWidgetList wanted{window->sidebar(),
                             &sections(),
                             window->header(),
                             window->searchField(),
                             window->content(LibrarySection::applications),
                             &table(),
                             &detail()};
    qsizetype last = -1;
    for (auto* const widget : wanted) {
        EXPECT_GT(met.indexOf(widget), last) << widget->metaObject()->className();
        last = met.indexOf(widget);
    }
}

TEST_F(MainWindow, EveryControlThatTakesTheFocusHasAName) {
    openReady(two());
    click("Alder");
    turn();
    for (auto* const widget : window->findChildren<QWidget*>()) {
        if (!widget->isVisible() || !(widget->focusPolicy() & Qt::TabFocus) || widget->focusProxy()) {
            continue;
        }
        auto* const accessible = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(accessible, nullptr);
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty()) << widget->metaObject()->className();
    }
}

// Layout

TEST_F(MainWindow, TheSmallestWindowShowsEverythingWithoutScrollingSideways) {
    openReady(two());
    click("Alder");
    window->resize(ContentView::kMinimumSize);
    turn();
    EXPECT_EQ(window->size(), ContentView::kMinimumSize);
    EXPECT_EQ(window->sidebar()->width(), 196);
    EXPECT_EQ(table().header()->length(), table().viewport()->width());
    EXPECT_GE(table().columnWidth(0), 180);
    for (auto* const area : window->findChildren<QAbstractScrollArea*>()) {
        if (area->isVisible()) {
            EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0) << area->accessibleName().toStdString();
        }
    }
}

TEST_F(MainWindow, TheColumnsHaveTheirWidthsAtTheDefaultSize) {
    openReady(two());
    EXPECT_EQ(window->sidebar()->width(), 212);
    EXPECT_EQ(window->columns()->widget(1)->width(), 348);
    EXPECT_EQ(table().columnWidth(1), 88);
    EXPECT_EQ(table().columnWidth(2), 112);
    EXPECT_EQ(table().columnWidth(3), 132);
    EXPECT_EQ(table().columnWidth(4), 90);
}

TEST_F(MainWindow, ThePaneCanBeDraggedBetweenItsLimits) {
    openReady(two());
    window->resize(1600, 800);
    turn();
    auto* const columns = window->columns();
    columns->setSizes({0, 2000});
    EXPECT_EQ(columns->widget(1)->width(), ContentView::kDetailWidest);
    columns->setSizes({2000, 0});
    EXPECT_EQ(columns->widget(1)->width(), ContentView::kDetailNarrowest);
}

TEST_F(MainWindow, AWiderWindowGivesItsWidthToTheMiddle) {
    openReady(two());
    window->resize(1700, 800);
    turn();
    EXPECT_EQ(window->columns()->widget(1)->width(), 348);
}

TEST_F(MainWindow, AWidePaneGivesWayInANarrowWindow) {
    openReady(two());
    window->columns()->setSizes({0, 2000});
    window->resize(ContentView::kMinimumSize);
    turn();
    EXPECT_GE(table().columnWidth(0), 180);
    EXPECT_GE(window->columns()->widget(1)->width(), ContentView::kDetailNarrowest);
}
