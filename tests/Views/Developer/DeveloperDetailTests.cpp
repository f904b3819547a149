#include "Components/DateWords.h"
#include "Components/DetailHeader.h"
#include "Components/EmptyState.h"
#include "Components/FittedLabel.h"
#include "Components/Label.h"
#include "Components/Note.h"
#include "Components/Panel.h"
#include "Components/PushButton.h"
#include "Components/SymbolView.h"
#include "Components/Tile.h"
#include "Components/ToolbarRow.h"
#include "Developer/DeveloperDetail.h"
#include "Developer/DeveloperDetailView.h"
#include "Panes/BulkSummary.h"
#include "Panes/DaysAgo.h"
#include "Panes/PanePlaceholder.h"
#include "SectionDetailTest.h"
#include <QScrollArea>
#include <QScrollBar>

using namespace quillane;

namespace {

const FileURL kDevices("/Users/alex/Library/Developer/CoreSimulator/Devices");
const FileURL kDerived("/Users/alex/Library/Developer/Xcode/DerivedData");
const FileURL kModules("/Users/alex/src/atlas/web/node_modules");

class DeveloperPane : public SectionDetailTest<DeveloperDetail> {
  protected:
    DevCacheItem devices() const {
        return {kDevices,
                "Simulator",
                "Simulator devices",
                18'920'000'000,
                daysBack(8),
                false,
                "Every simulator and the apps installed on them. Use Xcode's Devices window to remove old "
                "ones."};
    }
    DevCacheItem derived() const {
        return {kDerived,
                "Xcode",
                "Derived data",
                5'840'000'000,
                daysBack(1),
                true,
                "Next build of each project starts from scratch."};
    }
    DevCacheItem modules() const {
        return {kModules,
                "npm / yarn / pnpm",
                "node_modules in atlas/web",
                1'460'000'000,
                std::nullopt,
                false,
                "The atlas/web project won't run until you reinstall its dependencies."};
    }
    std::vector<DevCacheItem> all() const { return {devices(), derived(), modules()}; }
    // Opens the column over all of them, with this one selected.
    DeveloperDetailView& show(const FileURL& url) {
        library.developerCaches = all();
        state.developerSelection = std::unordered_set<FileURL>{url};
        openColumn();
        return *column->one();
    }
    void select(std::unordered_set<FileURL> urls) {
        state.developerSelection = std::move(urls);
        turn();
    }
    void publish(std::vector<DevCacheItem> items) {
        library.developerCaches = std::move(items);
        turn();
    }
};

} // namespace

// None

TEST_F(DeveloperPane, NothingSelectedShowsThePlaceholder) {
    library.developerCaches = all();
    openColumn();
    EXPECT_TRUE(showsNone());
    EXPECT_EQ(column->placeholder()->emptyState()->title(), "No Selection");
    EXPECT_EQ(column->placeholder()->emptyState()->sentence(),
              "Pick a location to see what removing it would mean.");
    EXPECT_EQ(column->placeholder()->emptyState()->symbol(), "hammer");
}

TEST_F(DeveloperPane, WhatIsNoLongerThereCountsAsNotSelected) {
    show(kDevices);
    select({kDevices, kDerived, FileURL("/Users/alex/gone")});
    EXPECT_TRUE(showsSeveral());
    EXPECT_EQ(column->several()->heading()->text(), "2 locations selected");
    publish({derived(), modules()});
    EXPECT_TRUE(showsOne());
    EXPECT_EQ(column->one()->header()->title(), "Derived data");
    publish({modules()});
    EXPECT_TRUE(showsNone());
}

TEST_F(DeveloperPane, WhatASearchHidesStaysSelected) {
    const auto& pane = show(kDevices);
    library.searchText = "node_modules";
    turn();
    EXPECT_TRUE(showsOne());
    EXPECT_EQ(pane.header()->title(), "Simulator devices");
}

// One

TEST_F(DeveloperPane, TheHeaderNamesWhatItIsAndWhose) {
    const auto& pane = show(kModules);
    EXPECT_TRUE(showsOne());
    EXPECT_EQ(pane.header()->title(), "node_modules in atlas/web");
    EXPECT_EQ(pane.header()->subtitle(), "npm / yarn / pnpm");
    EXPECT_EQ(pane.header()->findChild<Tile*>()->symbol(), "hammer.fill");
}

TEST_F(DeveloperPane, ItSaysWhatRemovingItWouldMean) {
    const auto& pane = show(kDevices);
    EXPECT_EQ(pane.consequencePanel()->heading()->text(), "If you remove it");
    EXPECT_EQ(
        pane.consequence()->text(),
        "Every simulator and the apps installed on them. Use Xcode's Devices window to remove old ones.");
}

TEST_F(DeveloperPane, TheFactsTellSizeLastTouchAndWhetherACleanupTakesIt) {
    EXPECT_EQ(figures(*show(kDevices).stats()),
              (Pairs{{"Size", "18.92 GB"}, {"Last Touched", "8 days ago"}, {"Clean Now", "Never"}}));
    select({kDerived});
    EXPECT_EQ(figures(*column->one()->stats()),
              (Pairs{{"Size", "5.84 GB"}, {"Last Touched", "1 days ago"}, {"Clean Now", "Included"}}));
    select({kModules});
    EXPECT_EQ(figures(*column->one()->stats()),
              (Pairs{{"Size", "1.46 GB"}, {"Last Touched", "Unknown"}, {"Clean Now", "Never"}}));
}

TEST(DaysAgo, TheNumberIsGroupedAndTheWordStaysAsItIs) {
    EXPECT_EQ(daysAgo(1104), "1,104 days ago");
    EXPECT_EQ(daysAgo(1), "1 days ago");
    EXPECT_EQ(daysAgo(-2), "-2 days ago");
    EXPECT_EQ(daysAgo(std::nullopt), "Unknown");
}

TEST_F(DeveloperPane, DaysThatPassedInTheBackgroundAreToldWhenTheWindowComesToTheFront) {
    const auto& stats = *show(kDerived).stats();
    clock.advance(std::chrono::hours(72));
    turn();
    EXPECT_EQ(figures(stats)[1].second, "1 days ago");
    QEvent toTheFront(QEvent::WindowActivate);
    QCoreApplication::sendEvent(column, &toTheFront);
    turn();
    EXPECT_EQ(figures(stats)[1].second, "4 days ago");
}

TEST_F(DeveloperPane, DaysThatAnotherTimeZoneMakesAreToldAtOnce) {
    // 2024-03-10 11:00 UTC, with a last touch 23 hours before: New York's clocks went forward between the two.
    clock.setNow(Date::fromUnix(1'710'068'400));
    const auto& stats = *show(kDerived).stats();
    auto touched = derived();
    touched.lastModified = clock.now().addingSeconds(-23 * 3'600);
    publish({touched});
    EXPECT_EQ(figures(stats)[1].second, "0 days ago");
    clock.setCalendar("America/New_York");
    tellDateWordsMayDiffer();
    turn();
    turn();
    EXPECT_EQ(figures(stats)[1].second, "1 days ago");
}

TEST_F(DeveloperPane, DaysThatPassedOutOfSightAreToldWhenThePaneShows) {
    const auto& stats = *show(kDerived).stats();
    column->hide();
    clock.advance(std::chrono::hours(72));
    column->show();
    turn();
    EXPECT_EQ(figures(stats)[1].second, "4 days ago");
}

TEST_F(DeveloperPane, TheSizeStandsOut) {
    const auto cells = show(kDevices).stats()->cells();
    EXPECT_EQ(cells[0]->findChild<FittedLabel*>()->tint(), Tint::Link);
    EXPECT_EQ(cells[1]->findChild<FittedLabel*>()->tint(), Tint::Text);
}

TEST_F(DeveloperPane, TwoRecordsOfOneLocationAreOneSelectedRow) {
    show(kDevices);
    publish({devices(), derived(), devices()});
    EXPECT_TRUE(showsOne());
}

TEST_F(DeveloperPane, AProtectedLocationSaysSoAndCannotGo) {
    const auto& pane = show(kDevices);
    EXPECT_FALSE(pane.protectedNote()->isVisible());
    EXPECT_TRUE(pane.removeButton()->isEnabled());
    library.setProtected(kDevices, true);
    turn();
    EXPECT_TRUE(pane.protectedNote()->isVisible());
    EXPECT_EQ(pane.protectedNote()->text(),
              "Protected. Quillane will not remove this until you lift the protection.");
    const auto* const symbol = pane.protectedNote()->findChild<SymbolView*>();
    EXPECT_EQ(symbol->symbol(), "shield.fill");
    EXPECT_EQ(symbol->tint(), Tint::Green);
    EXPECT_FALSE(pane.removeButton()->isEnabled());
    EXPECT_TRUE(pane.revealButton()->isEnabled());
    library.setProtected(kDevices, false);
    turn();
    EXPECT_FALSE(pane.protectedNote()->isVisible());
    EXPECT_TRUE(pane.removeButton()->isEnabled());
}

TEST_F(DeveloperPane, NamesThatDeceiveAreShownAsTheyAre) {
    auto item = modules();
    item.kind = "node_modules in \u202Esalta";
    item.consequence = "The \u202Esalta project won't run until you reinstall its dependencies.";
    const auto& pane = show(kModules);
    publish({item});
    EXPECT_EQ(pane.header()->title(), "node_modules in ‹U+202E›salta");
    EXPECT_EQ(pane.consequence()->text(),
              "The ‹U+202E›salta project won't run until you reinstall its dependencies.");
}

// The buttons

TEST_F(DeveloperPane, RevealShowsTheLocationInTheFileManager) {
    const auto& pane = show(kDevices);
    EXPECT_EQ(pane.revealButton()->label(), "Reveal in Finder");
    EXPECT_EQ(pane.revealButton()->symbol(), "folder");
    press(pane.revealButton());
    EXPECT_EQ(workspace.revealed(), (std::vector<std::vector<FileURL>>{{kDevices}}));
}

TEST_F(DeveloperPane, WhatNoCleanupTakesCanBeMovedFromHere) {
    const auto& pane = show(kDevices);
    EXPECT_EQ(pane.removeButton()->label(), "Move to Trash");
    EXPECT_EQ(pane.removeButton()->symbol(), "trash");
    EXPECT_EQ(pane.removeButton()->role(), PushButton::Role::Destructive);
    press(pane.removeButton());
    EXPECT_EQ(asked(), (std::vector<FileURL>{kDevices}));
    EXPECT_EQ(askedLabel(), "Remove Simulator devices");
    EXPECT_EQ(library.plan(SweepCategory::developer).size(), 1U) << "of the three only one is safe";
}

TEST_F(DeveloperPane, AClickThatIsFasterThanThePaneAsksForNothingThatMustStayOrIsGone) {
    const auto& pane = show(kDevices);
    library.setProtected(kDevices, true);
    press(pane.removeButton());
    EXPECT_FALSE(state.removal->has_value());
    turn();
    library.setProtected(kDevices, false);
    turn();
    library.developerCaches = std::vector<DevCacheItem>{derived()};
    press(pane.removeButton());
    EXPECT_FALSE(state.removal->has_value());
}

// Scrolling and focus

TEST_F(DeveloperPane, AScanThatMeasuresItAgainLeavesScrollPositionAndFocus) {
    const auto& pane = show(kDevices);
    auto& bar = *pane.scrollArea()->verticalScrollBar();
    ground().resize(ContentView::kDetailNarrowest, 250);
    turn();
    pane.removeButton()->setFocus();
    bar.setValue(40);
    auto measured = devices();
    measured.bytes = 19'000'000'000;
    publish({measured, derived()});
    EXPECT_EQ(bar.value(), 40);
    EXPECT_EQ(figures(*pane.stats())[0].second, "19 GB");
    EXPECT_EQ(QApplication::focusWidget(), pane.removeButton());
    select({kDerived});
    EXPECT_EQ(bar.value(), 0) << "another location starts at its top";
}

TEST_F(DeveloperPane, TabGoesOverTheButtonsToContentThatScrolls) {
    const auto& pane = show(kDevices);
    ground().resize(ContentView::kDetailNarrowest, 250);
    turn();
    pane.revealButton()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(pane.revealButton(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), pane.removeButton());
    QTest::keyClick(pane.removeButton(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), pane.scrollArea());
    EXPECT_FALSE(pane.scrollArea()->accessibleName().isEmpty());
}

TEST_F(DeveloperPane, TabDoesNotStopWhereNothingScrolls) {
    const auto& pane = show(kDevices);
    ASSERT_EQ(pane.scrollArea()->verticalScrollBar()->maximum(), 0);
    pane.removeButton()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(pane.removeButton(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), pane.revealButton()) << "the round begins again";
    QTest::mouseClick(pane.scrollArea()->viewport(), Qt::LeftButton);
    EXPECT_EQ(QApplication::focusWidget(), pane.revealButton()) << "a click there takes nothing away";
}

TEST_F(DeveloperPane, ContentThatNoLongerScrollsKeepsTheFocusUntilItGoesOn) {
    const auto& pane = show(kDevices);
    ground().resize(ContentView::kDetailNarrowest, 250);
    turn();
    pane.scrollArea()->setFocus(Qt::TabFocusReason);
    ground().resize(ContentView::kDetailNarrowest, 760);
    turn();
    EXPECT_EQ(QApplication::focusWidget(), pane.scrollArea());
    QTest::keyClick(pane.scrollArea(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), pane.revealButton());
    EXPECT_EQ(pane.scrollArea()->focusPolicy(), Qt::NoFocus);
}

TEST_F(DeveloperPane, ContentThatHasTheKeyboardWearsARingInsideItsEdge) {
    const auto& pane = show(kDevices);
    ground().resize(ContentView::kDetailNarrowest, 250);
    turn();
    auto& area = *pane.scrollArea();
    area.setFocus(Qt::MouseFocusReason);
    ground().setAttribute(Qt::WA_KeyboardFocusChange, false);
    turn();
    const QPoint edge(1, area.height() / 2);
    const auto drawn = [&area] { return area.grab().toImage(); };
    const QImage without = drawn();
    pane.removeButton()->setFocus(Qt::TabFocusReason);
    area.setFocus(Qt::TabFocusReason);
    turn();
    EXPECT_NE(drawn().pixel(edge), without.pixel(edge));
    EXPECT_EQ(drawn().pixel(edge + QPoint(3, 0)), without.pixel(edge + QPoint(3, 0))) << "2 pixels wide";
    area.verticalScrollBar()->setValue(area.verticalScrollBar()->maximum());
    turn();
    EXPECT_NE(drawn().pixel(edge), without.pixel(edge)) << "it does not scroll away";
    QTest::mouseClick(area.viewport(), Qt::LeftButton);
    turn();
    EXPECT_EQ(drawn().pixel(edge), without.pixel(edge));
}

// Several

TEST_F(DeveloperPane, SeveralAreCountedAddedUpAndListedByToolAndKind) {
    show(kDevices);
    select({kModules, kDevices});
    EXPECT_TRUE(showsSeveral());
    const auto& several = *column->several();
    EXPECT_EQ(several.heading()->text(), "2 locations selected");
    EXPECT_EQ(several.toolbar()->title(), "2 Locations");
    EXPECT_EQ(figures(*several.stats()), (Pairs{{"Combined Size", "20.38 GB"}, {"Rows", "2"}}));
    EXPECT_EQ(listed(), QStringList({"Simulator - Simulator devices, 18.92 GB",
                                     "npm / yarn / pnpm - node_modules in atlas/web, 1.46 GB"}));
    EXPECT_FALSE(several.note()->isHidden());
    EXPECT_EQ(several.note()->text(),
              "Includes project dependencies. Those projects won't run until you reinstall them.");
    EXPECT_EQ(several.note()->findChild<SymbolView*>()->symbol(), "exclamationmark.triangle");
}

TEST_F(DeveloperPane, MoveAllToTrashAsksToReviewWhatIsNotProtected) {
    show(kDevices);
    select({kDevices, kDerived, kModules});
    library.setProtected(kDerived, true);
    turn();
    auto* const button = column->several()->removeButton();
    EXPECT_EQ(button->label(), "Move All to Trash…");
    EXPECT_TRUE(button->isEnabled());
    press(button);
    EXPECT_EQ(asked(), (std::vector<FileURL>{kDevices, kModules}));
    EXPECT_EQ(askedLabel(), "Remove 3 developer locations");
    for (const auto& url : {kDevices, kModules}) {
        library.setProtected(url, true);
    }
    turn();
    EXPECT_FALSE(button->isEnabled());
}

// Pictures for whoever wants to look

TEST_F(DeveloperPane, ItIsDrawnInLightAndDark) {
    library.developerCaches = all();
    openColumn();
    keepBoth("pane-developer-none");
    select({kDevices});
    const QImage free = pictureOf(ground());
    keepBoth("pane-developer-one");
    library.setProtected(kDevices, true);
    turn();
    EXPECT_NE(pictureOf(ground()), free);
    keepBoth("pane-developer-protected");
    select({kDevices, kDerived, kModules});
    keepBoth("pane-developer-several");
}
