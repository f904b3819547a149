#include "Applications/AppDetailView.h"
#include "Applications/ApplicationsDetail.h"
#include "Applications/ApplicationsTable.h"
#include "Applications/MultiSelectionSummary.h"
#include "Applications/StatusLine.h"
#include "Components/DetailHeader.h"
#include "Components/EmptyState.h"
#include "Components/Label.h"
#include "Components/ProgressBar.h"
#include "Components/Spinner.h"
#include "Components/ToolbarRow.h"
#include "Panes/PanePlaceholder.h"
#include "Tables/TableView.h"
#include "WindowTest.h"
#include <QHeaderView>
#include <QScrollBar>
#include <array>

using namespace quillane;
using Kind = AppLibrary::Phase::Kind;

namespace {

class ApplicationsScreen : public WindowTest {
  protected:
    static std::vector<InstalledApp> three() { // in the order of the library
        return {measuredApp("Alder", 3'000'000), measuredApp("Birch", 9'000'000),
                measuredApp("Cedar", 6'000'000)};
    }
    static std::vector<InstalledApp> many(int count) {
        std::vector<InstalledApp> apps;
        for (int i = 0; i < count; ++i) {
            apps.push_back(measuredApp("App " + std::to_string(1000 + i), 1'000'000LL * (count - i)));
        }
        return apps;
    }
    const EmptyState& emptyState() const { return *table().findChild<EmptyState*>(); }
    StatusLine& status() const { return *applications().statusLine(); }
    QString statusLeft() const { return status().left()->text(); }
    QString statusRight() const { return status().right()->text(); }
    bool showsPlaceholder() const { return detail().currentWidget() == detail().placeholder(); }
    bool showsOne() const { return detail().currentWidget() == detail().one(); }
    bool showsSeveral() const { return detail().currentWidget() == detail().several(); }
};

} // namespace

// The status line

TEST_F(ApplicationsScreen, EachPhaseHasItsWordsAndItsKindOfProgress) {
    struct Case {
        AppLibrary::Phase phase;
        const char* words;
        bool spinner;
        bool bar;
        const char* total;
    };
    openReady(three());
    for (const auto& expected : {
             Case{{Kind::scanning}, "Finding applications…", true, false, ""},
             Case{{Kind::measuring, 1, 3}, "Measuring 1 of 3", false, true, ""},
             Case{{Kind::measuring, 1234, 2345}, "Measuring 1,234 of 2,345", false, true, ""},
             Case{{Kind::findingOrphans}, "Looking for orphaned files…", true, false, ""},
             Case{{Kind::findingDeveloperCaches}, "Measuring developer caches…", true, false, ""},
             Case{{Kind::ready}, "3 apps", false, false, "18 MB total"},
             Case{{Kind::idle}, "Ready", false, false, ""},
         }) {
        library.phase = expected.phase;
        turn();
        EXPECT_EQ(statusLeft(), QString(expected.words));
        EXPECT_EQ(statusRight(), QString(expected.total));
        EXPECT_EQ(status().spinner()->isVisible(), expected.spinner) << expected.words;
        EXPECT_EQ(status().bar()->isVisible(), expected.bar) << expected.words;
    }
}

TEST_F(ApplicationsScreen, TheBarShowsHowManyAreMeasuredIn120Points) {
    open({Kind::measuring, 6, 24}, three());
    EXPECT_EQ(status().bar()->maximum(), 24);
    EXPECT_EQ(status().bar()->value(), 6);
    EXPECT_EQ(status().bar()->width(), 120);
}

TEST_F(ApplicationsScreen, OneApplicationIsCountedInTheSingular) {
    openReady({measuredApp("Alder", 1'000'000)});
    EXPECT_EQ(statusLeft(), "1 app");
}

TEST_F(ApplicationsScreen, WhileAScanRunsTheStatusLineHasNoTotal) {
    open({Kind::measuring, 1, 3}, three());
    EXPECT_FALSE(status().right()->isVisible());
}

// The table

TEST_F(ApplicationsScreen, TheLargestStandsFirst) {
    openReady(three());
    EXPECT_EQ(names(), QStringList({"Birch", "Cedar", "Alder"}));
    EXPECT_EQ(table().header()->sortIndicatorSection(), 1);
    EXPECT_EQ(table().header()->sortIndicatorOrder(), Qt::DescendingOrder);
}

TEST_F(ApplicationsScreen, AClickOnAHeaderSortsAndASecondClickTurnsTheOrderRound) {
    openReady(three());
    clickHeader(0);
    turn();
    EXPECT_EQ(names(), QStringList({"Alder", "Birch", "Cedar"}));
    clickHeader(0);
    turn();
    EXPECT_EQ(names(), QStringList({"Cedar", "Birch", "Alder"}));
    clickHeader(1);
    turn();
    EXPECT_EQ(names(), QStringList({"Birch", "Cedar", "Alder"}));
    clickHeader(1);
    turn();
    EXPECT_EQ(names(), QStringList({"Alder", "Cedar", "Birch"}));
}

TEST_F(ApplicationsScreen, TheKeysSortAndTheHeadingSaysSo) {
    openReady(three());
    const auto spoken = [&](int column) {
        return table().model()->headerData(column, Qt::Horizontal, Qt::AccessibleDescriptionRole).toString();
    };
    EXPECT_EQ(spoken(1), "Sorted, largest first");
    table().setFocus();
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    press(Qt::Key_Left);
    press(Qt::Key_Return);
    turn();
    EXPECT_EQ(names(), QStringList({"Alder", "Birch", "Cedar"}));
    EXPECT_EQ(spoken(0), "Sorted, ascending");
    EXPECT_EQ(spoken(1), "");
    EXPECT_TRUE(workspace.opened().empty()) << "Return belongs to the header";
}

TEST_F(ApplicationsScreen, EveryColumnCanBeSortedBy) {
    openReady(three());
    for (const auto& [column, key] : {std::pair{2, AppComparator::Key::lastUsed},
                                      {3, AppComparator::Key::architecture},
                                      {4, AppComparator::Key::version},
                                      {0, AppComparator::Key::name},
                                      {1, AppComparator::Key::totalBytes}}) {
        clickHeader(column);
        turn();
        EXPECT_EQ(window->state().sortOrder.get().front().key, key);
    }
}

// More than 16, each figure of several: fewer stay in order by chance.
TEST_F(ApplicationsScreen, EachHeaderPutsEveryRowInItsPlaceInBothDirections) {
    constexpr std::array kArchitectures = {Architecture::universal, Architecture::intel32,
                                           Architecture::appleSilicon, Architecture::intel,
                                           Architecture::unknown};
    std::vector<InstalledApp> apps;
    for (std::size_t i = 10; i < 70; ++i) {
        auto app = measuredApp("App " + std::to_string(i), static_cast<Bytes>(i * 37 % 11) * 1'000'000);
        if (i % 7 != 0) {
            app.lastUsed = clock.now().addingSeconds(-86'400.0 * static_cast<double>(i * 5 % 9));
        }
        app.architecture = kArchitectures[i * 3 % kArchitectures.size()];
        app.version = "1." + std::to_string(10 + i * 7 % 13); // of one length, as text and as numbers alike
        apps.push_back(app);
    }
    openReady(apps);
    const auto name = [](const InstalledApp& app) { return app.name; };
    const auto inOrderOf = [&](int column, auto key) { expectOrderOfHeader(column, apps, key, 0, name); };
    inOrderOf(0, name);
    inOrderOf(1, [](const InstalledApp& app) { return app.bundleBytes; });
    inOrderOf(2, [](const InstalledApp& app) { return app.lastUsed; }); // none before any
    inOrderOf(3, [](const InstalledApp& app) { return rawValue(app.architecture); });
    inOrderOf(4, [](const InstalledApp& app) { return app.version; });
}

TEST_F(ApplicationsScreen, RowsMoveAsTheyAreMeasuredWhenTheSortIsBySize) {
    open({Kind::measuring, 0, 3}, {unmeasuredApp("Alder"), unmeasuredApp("Birch"), unmeasuredApp("Cedar")});
    EXPECT_EQ(names(), QStringList({"Alder", "Birch", "Cedar"}));
    publish({unmeasuredApp("Alder"), unmeasuredApp("Birch"), measuredApp("Cedar", 6'000'000)});
    turn();
    EXPECT_EQ(names(), QStringList({"Cedar", "Alder", "Birch"}));
}

TEST_F(ApplicationsScreen, AnApplicationOfTheSystemStaysOut) {
    auto system = measuredApp("Finder", 1);
    system.source = AppSource::system;
    openReady({system, measuredApp("Alder", 1)});
    EXPECT_EQ(names(), QStringList({"Alder"}));
}

// Without rows

TEST_F(ApplicationsScreen, SearchedToNothingTheTableIsEmptyAndSaysSo) {
    openReady(three());
    library.searchText = "zzz";
    turn();
    EXPECT_TRUE(names().isEmpty());
    EXPECT_TRUE(emptyState().isVisible());
    EXPECT_FALSE(table().header()->isVisible());
    EXPECT_EQ(emptyState().title(), "No Results");
    EXPECT_EQ(emptyState().sentence(), "Nothing here matches the search.");
    EXPECT_EQ(emptyState().symbol(), "magnifyingglass");
    EXPECT_EQ(statusLeft(), "0 apps");
    EXPECT_EQ(statusRight(), "Zero KB total");
    library.searchText = "";
    turn();
    EXPECT_FALSE(emptyState().isVisible());
    EXPECT_TRUE(table().header()->isVisible());
}

TEST_F(ApplicationsScreen, SearchedToNothingDuringAScanItIsTheSearch) {
    openReady(three());
    library.searchText = "zzz";
    library.phase = AppLibrary::Phase{Kind::scanning};
    turn();
    EXPECT_FALSE(emptyState().isLoading());
    EXPECT_EQ(emptyState().title(), "No Results");
}

TEST_F(ApplicationsScreen, WithoutApplicationsTheTableSaysSo) {
    openReady({});
    EXPECT_TRUE(emptyState().isVisible());
    EXPECT_EQ(emptyState().title(), "No Applications");
    EXPECT_EQ(emptyState().sentence(), "Quillane found no app that can be removed.");
    EXPECT_EQ(emptyState().symbol(), "square.grid.2x2");
    EXPECT_EQ(statusLeft(), "0 apps");
}

TEST_F(ApplicationsScreen, WithTheSystemsApplicationsAloneThereAreNone) {
    auto system = measuredApp("Finder", 1);
    system.source = AppSource::system;
    openReady({system});
    EXPECT_EQ(emptyState().title(), "No Applications");
    library.searchText = "finder";
    turn();
    EXPECT_EQ(emptyState().title(), "No Applications") << "no search could find one";
}

TEST_F(ApplicationsScreen, UntilTheScanHasFoundThemTheTableSaysThatItLooks) {
    openReady({});
    for (const auto& [kind, isLooking] :
         {std::pair(Kind::idle, true), std::pair(Kind::scanning, true), std::pair(Kind::measuring, false),
          std::pair(Kind::findingOrphans, false), std::pair(Kind::findingDeveloperCaches, false),
          std::pair(Kind::ready, false)}) {
        library.phase = AppLibrary::Phase{kind};
        turn();
        EXPECT_TRUE(emptyState().isVisible());
        EXPECT_EQ(emptyState().isLoading(), isLooking) << static_cast<int>(kind);
        EXPECT_EQ(emptyState().title(),
                  isLooking ? QString::fromUtf8("Finding applications…") : QString("No Applications"));
    }
    publish(three());
    turn();
    EXPECT_FALSE(emptyState().isVisible());
}

TEST_F(ApplicationsScreen, IconsComeFromTheCacheAndNotFromTheMainThread) {
    openReady(three());
    const auto icon = [this] {
        return table().model()->index(0, 0).data(Qt::DecorationRole).value<QPixmap>();
    };
    EXPECT_TRUE(icon().isNull());
    EXPECT_GT(runner.waitingJobs(), 0U);
    finish();
    EXPECT_FALSE(icon().isNull());
    EXPECT_EQ(icon().deviceIndependentSize(), QSizeF(20, 20));
}

// Selecting and opening

TEST_F(ApplicationsScreen, NothingSelectedShowsThePlaceholder) {
    openReady(three());
    ASSERT_TRUE(showsPlaceholder());
    EXPECT_EQ(detail().placeholder()->emptyState()->title(), "No App Selected");
    EXPECT_EQ(detail().placeholder()->emptyState()->sentence(),
              "Pick an app to see its full disk footprint.");
}

TEST_F(ApplicationsScreen, AClickSelectsOneAndShowsIt) {
    openReady(three());
    click("Cedar");
    turn();
    ASSERT_TRUE(showsOne());
    EXPECT_EQ(detail().one()->header()->title(), "Cedar");
}

TEST_F(ApplicationsScreen, ShiftAndControlSelectSeveral) {
    openReady(three());
    click("Birch");
    click("Alder", Qt::ControlModifier);
    turn();
    EXPECT_EQ(selectedNames(), QStringList({"Birch", "Alder"}));
    ASSERT_TRUE(showsSeveral());
    EXPECT_EQ(detail().several()->toolbar()->title(), "2 Apps");
    click("Birch");
    click("Alder", Qt::ShiftModifier);
    turn();
    EXPECT_EQ(selectedNames(), QStringList({"Birch", "Cedar", "Alder"}));
}

TEST_F(ApplicationsScreen, TheKeysMoveAndExtendTheSelection) {
    openReady(three());
    table().setFocus();
    press(Qt::Key_Home);
    EXPECT_EQ(selectedNames(), QStringList({"Birch"}));
    press(Qt::Key_Down);
    EXPECT_EQ(selectedNames(), QStringList({"Cedar"}));
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selectedNames(), QStringList({"Cedar", "Alder"}));
    press(Qt::Key_End);
    EXPECT_EQ(selectedNames(), QStringList({"Alder"}));
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selectedNames(), QStringList({"Birch", "Cedar", "Alder"}));
}

TEST_F(ApplicationsScreen, PageKeysGoByTheHeightOfTheTable) {
    openReady(many(100));
    table().setFocus();
    press(Qt::Key_Home);
    press(Qt::Key_PageDown);
    const int below = table().currentIndex().row();
    EXPECT_GT(below, 10);
    EXPECT_LT(below, 40);
    press(Qt::Key_PageUp);
    EXPECT_EQ(table().currentIndex().row(), 0);
}

TEST_F(ApplicationsScreen, TypedLettersGoToTheNameWhicheverColumnWasClicked) {
    openReady(three());
    const QModelIndex size = table().model()->index(0, 1);
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, table().visualRect(size).center());
    table().setFocus();
    QTest::keyClicks(&table(), "ce");
    EXPECT_EQ(selectedNames(), QStringList({"Cedar"}));
}

TEST_F(ApplicationsScreen, ADoubleClickOpensTheApplication) {
    openReady(three());
    doubleClick("Cedar");
    EXPECT_EQ(workspace.opened(), std::vector{FileURL("/Applications/Cedar.app")});
}

TEST_F(ApplicationsScreen, ReturnOpensTheOneThatIsSelected) {
    openReady(three());
    click("Birch");
    table().setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(workspace.opened(), std::vector{FileURL("/Applications/Birch.app")});
}

TEST_F(ApplicationsScreen, SeveralSelectedOpenNothing) {
    openReady(three());
    click("Birch");
    click("Cedar", Qt::ControlModifier);
    table().setFocus();
    press(Qt::Key_Return);
    EXPECT_TRUE(workspace.opened().empty());
}

TEST_F(ApplicationsScreen, WhatTheSearchHidesIsNotOpened) {
    openReady(three());
    click("Birch");
    library.searchText = "cedar";
    turn();
    table().setFocus();
    press(Qt::Key_Return);
    EXPECT_TRUE(workspace.opened().empty());
}

// What a scan must not disturb

TEST_F(ApplicationsScreen, SelectionCurrentRowScrollPositionAndFocusSurviveARescan) {
    openReady(many(100));
    click("App 1060");
    table().setFocus();
    turn();
    const int scrolled = table().verticalScrollBar()->value();
    ASSERT_GT(scrolled, 0);

    auto unmeasured = many(100);
    for (auto& app : unmeasured) {
        app.isMeasured = false;
        app.bundleBytes = 0;
    }
    library.phase = AppLibrary::Phase{Kind::measuring, 0, 100};
    publish(unmeasured);
    turn();
    unmeasured[60] = many(100)[60];
    publish(unmeasured);
    turn();

    EXPECT_EQ(selectedNames(), QStringList({"App 1060"}));
    EXPECT_EQ(cell(table().currentIndex().row(), 0), "App 1060");
    EXPECT_EQ(table().verticalScrollBar()->value(), scrolled);
    EXPECT_TRUE(table().hasFocus());
    EXPECT_TRUE(showsOne());
}

TEST_F(ApplicationsScreen, ASelectedApplicationThatDisappearsFallsBackToThePlaceholder) {
    openReady(three());
    click("Cedar");
    turn();
    publish({measuredApp("Alder", 3'000'000), measuredApp("Birch", 9'000'000)});
    turn();
    EXPECT_TRUE(showsPlaceholder());
    EXPECT_TRUE(selectedNames().isEmpty()) << "no other row takes its place";
}

TEST_F(ApplicationsScreen, OneOfSeveralThatDisappearsLeavesTheOthers) {
    openReady(three());
    click("Cedar");
    click("Birch", Qt::ControlModifier);
    publish({measuredApp("Alder", 3'000'000), measuredApp("Birch", 9'000'000)});
    turn();
    ASSERT_TRUE(showsOne());
    EXPECT_EQ(detail().one()->header()->title(), "Birch");
}

TEST_F(ApplicationsScreen, WhatTheSearchHidesStaysSelectedAndComesBack) {
    openReady(three());
    click("Cedar");
    library.searchText = "birch";
    turn();
    EXPECT_TRUE(showsOne()) << "the application is still there";
    library.searchText = "";
    turn();
    EXPECT_EQ(selectedNames(), QStringList({"Cedar"}));
}

TEST_F(ApplicationsScreen, ThePaneFollowsTheMeasuring) {
    open({Kind::measuring, 0, 1}, {unmeasuredApp("Alder")});
    click("Alder");
    turn();
    EXPECT_TRUE(detail().one()->measuring()->isVisible());
    publish({measuredApp("Alder", 3'000'000)});
    turn();
    EXPECT_FALSE(detail().one()->measuring()->isVisible());
}
