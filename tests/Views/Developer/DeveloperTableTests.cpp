#include "Components/DateWords.h"
#include "Components/Tint.h"
#include "Developer/DeveloperDetail.h"
#include "Developer/DeveloperDetailView.h"
#include "Developer/DeveloperTable.h"
#include "Panes/BulkSummary.h"
#include "Panes/PanePlaceholder.h"
#include "SectionRecords.h"
#include "SectionTableTest.h"
#include "State/ContentState.h"
#include "Tables/TableRole.h"

using namespace quillane;
using Kind = AppLibrary::Phase::Kind;
using Column = DeveloperTableModel::Column;

namespace {

class DeveloperTableTest : public SectionTableTest {
  protected:
    DeveloperTableTest()
        : SectionTableTest(LibrarySection::developer) {}

    // Largest first, as the finder gives them.
    std::vector<DevCacheItem> four() const {
        auto backup = devCache("Finder", "iPhone backup", 30'000'000'000, false);
        backup.lastModified = daysAgo(60);
        auto derived = devCache("Xcode", "Derived data", 5'000'000'000);
        derived.lastModified = daysAgo(1);
        auto archives = devCache("Archivist", "Archives", 4'000'000'000, false);
        archives.lastModified = daysAgo(800);
        return {backup, derived, archives, devCache("npm", "Package cache", 900'000'000)};
    }

    void openWith(std::vector<DevCacheItem> caches) {
        library.developerCaches = std::move(caches);
        openReady({});
    }
    std::unordered_set<FileURL> selection() const { return window->state().developerSelection.get(); }

    static constexpr const char* kBackup = "/Users/alex/Library/Finder/iPhone backup";
    static constexpr const char* kDerived = "/Users/alex/Library/Xcode/Derived data";
    static constexpr const char* kArchives = "/Users/alex/Library/Archivist/Archives";
    static constexpr const char* kPackages = "/Users/alex/Library/npm/Package cache";
};

// How often a widget is painted while this lives.
class PaintCount final : public QObject {
  public:
    explicit PaintCount(QWidget& widget) { widget.installEventFilter(this); }
    int count() const { return m_count; }
    bool eventFilter(QObject* watched, QEvent* event) override {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }

  private:
    int m_count = 0;
};

} // namespace

// The rows

TEST_F(DeveloperTableTest, TheColumnsStandInTheirOrder) {
    openWith(four());
    EXPECT_EQ(headings(), QStringList({"Tool", "What", "Size", "In Sweep", "Last Touched"}));
    EXPECT_EQ(table().accessibleName(), "Developer");
}

TEST_F(DeveloperTableTest, AnotherTimeZoneShowsAtOnce) {
    auto caches = four();
    caches.resize(1);
    caches[0].lastModified = clock.now().addingSeconds(-40 * 3'600);
    openWith(caches);
    EXPECT_EQ(cell(0, Column::kLastTouched), "yesterday");
    turn();
    PaintCount paints(*table().viewport());
    turn();
    ASSERT_EQ(paints.count(), 0) << "nothing is painted for nothing";
    clock.setCalendar("Asia/Tokyo"); // where the same evening is in the morning of the day after
    tellDateWordsMayDiffer();
    turn();
    EXPECT_EQ(cell(0, Column::kLastTouched), "2 days ago");
    EXPECT_GT(paints.count(), 0);
}

TEST_F(DeveloperTableTest, EachLocationIsARow) {
    openWith(four());
    EXPECT_EQ(names(), QStringList({"Finder", "Xcode", "Archivist", "npm"})) << "largest first";
    EXPECT_EQ(column(Column::kWhat),
              QStringList({"iPhone backup", "Derived data", "Archives", "Package cache"}));
    EXPECT_EQ(column(Column::kSize), QStringList({"30 GB", "5 GB", "4 GB", "900 MB"}));
    EXPECT_EQ(column(Column::kLastTouched),
              QStringList({"2 months ago", "yesterday", "2 years ago", "Never"}));
}

TEST_F(DeveloperTableTest, TheMarkTellsWhatACleanupTakes) {
    openWith(four());
    struct Case {
        int row;
        const char* symbol;
        Tint tint;
        const char* help;
    };
    for (const auto& expected :
         {Case{0, "minus.circle", Tint::Secondary, "Shown only - remove it yourself if you mean to"},
          Case{1, "checkmark.circle.fill", Tint::Green, "Included in Clean Now"}}) {
        const auto mark = [&](int role) { return cellData(expected.row, Column::kInSweep, role); };
        EXPECT_EQ(mark(kSymbolRole).toString(), QString(expected.symbol));
        EXPECT_EQ(static_cast<Tint>(mark(kTintRole).toInt()), expected.tint);
        EXPECT_EQ(mark(Qt::ToolTipRole).toString(), QString(expected.help));
        EXPECT_EQ(mark(Qt::AccessibleTextRole).toString(), QString(expected.help));
        EXPECT_FALSE(mark(Qt::DisplayRole).isValid()) << "a mark alone";
    }
}

TEST_F(DeveloperTableTest, AProtectedPathBearsItsMarkBehindWhatItIs) {
    openWith(four());
    EXPECT_FALSE(cellData(2, Column::kWhat, kProtectedRole).toBool());
    EXPECT_FALSE(cellData(2, Column::kWhat, Qt::AccessibleDescriptionRole).isValid());
    protect({four()[2].url});
    EXPECT_TRUE(cellData(2, Column::kWhat, kProtectedRole).toBool());
    EXPECT_EQ(cellData(2, Column::kWhat, Qt::AccessibleDescriptionRole).toString(),
              "Protected - Quillane will never remove this");
    EXPECT_FALSE(cellData(1, Column::kWhat, kProtectedRole).toBool());
}

TEST_F(DeveloperTableTest, WordsThatWouldDeceiveTheEyeAreShownAsTheyAre) {
    openWith({devCache("np\u202Em", "node_modules in \u202Eweb", 1)});
    EXPECT_EQ(cell(0, Column::kTool), "np‹U+202E›m");
    EXPECT_EQ(cell(0, Column::kWhat), "node_modules in ‹U+202E›web");
}

TEST_F(DeveloperTableTest, TheColumnsHaveTheirWidthsAndToolGivesWayInTheSmallestWindow) {
    openWith(four());
    EXPECT_EQ(table().columnWidth(Column::kTool), 8 + 140) << "within the bars";
    EXPECT_EQ(table().columnWidth(Column::kSize), 84);
    EXPECT_EQ(table().columnWidth(Column::kInSweep), 78);
    EXPECT_EQ(table().columnWidth(Column::kLastTouched), 112 + 8);
    EXPECT_EQ(table().header()->length(), table().viewport()->width());
    window->resize(ContentView::kMinimumSize);
    turn();
    EXPECT_LT(table().columnWidth(Column::kTool), 140);
    EXPECT_GE(table().columnWidth(Column::kTool), 118);
    EXPECT_GE(table().columnWidth(Column::kWhat), 180);
    EXPECT_GE(table().columnWidth(Column::kLastTouched), 112);
    EXPECT_EQ(table().header()->length(), table().viewport()->width());
}

TEST_F(DeveloperTableTest, EveryControlThatTakesTheFocusHasAName) {
    openWith(four());
    EXPECT_EQ(namelessControls(), QStringList());
}

TEST_F(DeveloperTableTest, ToolIsCutNoFurtherThanItsLeast) {
    ContentState state(LibrarySection::developer);
    DeveloperTable narrow(library, state);
    narrow.resize(500, 400);
    narrow.show();
    library.developerCaches = four(); // a header is shown with rows alone
    turn();
    EXPECT_EQ(narrow.table()->columnWidth(Column::kTool), 118);
    EXPECT_EQ(narrow.table()->header()->length(), narrow.table()->viewport()->width());
}

TEST_F(DeveloperTableTest, OfTwoRecordsOfOneLocationTheFirstCountsInRowAndMenu) {
    auto again = four()[1];
    again.bytes = 1'000'000;
    openWith({four()[1], again});
    EXPECT_EQ(column(Column::kSize), QStringList({"5 GB"}));
    choose(menuOn("Xcode"), "Move to Trash…");
    turn();
    ASSERT_TRUE(window->state().removal.get().has_value());
    ASSERT_EQ(window->state().removal.get()->entries.size(), 1U);
    EXPECT_EQ(window->state().removal.get()->entries[0].bytes, 5'000'000'000);
}

TEST_F(DeveloperTableTest, WhenItWasTouchedIsToldQuietly) {
    openWith(four());
    EXPECT_EQ(static_cast<Tint>(cellData(0, Column::kLastTouched, kTintRole).toInt()), Tint::Secondary);
    EXPECT_TRUE(cellData(0, Column::kSize, kTabularRole).toBool());
}

// The order

TEST_F(DeveloperTableTest, EveryColumnSortsInBothDirections) {
    openWith(four());
    EXPECT_EQ(table().header()->sortIndicatorSection(), Column::kSize);
    EXPECT_EQ(table().header()->sortIndicatorOrder(), Qt::DescendingOrder);
    EXPECT_EQ(orderBy(Column::kSize), QStringList({"npm", "Archivist", "Xcode", "Finder"}));
    EXPECT_EQ(orderBy(Column::kTool), QStringList({"Archivist", "Finder", "npm", "Xcode"}));
    EXPECT_EQ(orderBy(Column::kTool), QStringList({"Xcode", "npm", "Finder", "Archivist"}));
    EXPECT_EQ(orderBy(Column::kWhat), QStringList({"Archivist", "Xcode", "Finder", "npm"}));
    EXPECT_EQ(orderBy(Column::kWhat), QStringList({"npm", "Finder", "Xcode", "Archivist"}));
    EXPECT_EQ(orderBy(Column::kLastTouched), QStringList({"npm", "Archivist", "Finder", "Xcode"}))
        << "what has no date is the oldest";
    EXPECT_EQ(orderBy(Column::kLastTouched), QStringList({"Xcode", "Finder", "Archivist", "npm"}));
}

// More than 16, each figure of several: fewer stay in order by chance.
TEST_F(DeveloperTableTest, EachHeaderPutsEveryRowInItsPlaceInBothDirections) {
    std::vector<DevCacheItem> caches;
    for (int i = 10; i < 70; ++i) {
        caches.push_back(devCache("Tool " + std::to_string(i * 3 % 8), "Cache " + std::to_string(i),
                                  i * 37 % 11 * 1'000'000, i * 5 % 3 == 0));
        if (i % 7 != 0) {
            caches.back().lastModified = daysAgo(i * 5 % 9);
        }
    }
    openWith(caches);
    const auto kind = [](const DevCacheItem& item) { return item.kind; };
    const auto inOrderOf = [&](int column, auto key) {
        expectOrderOfHeader(column, caches, key, Column::kWhat, kind);
    };
    inOrderOf(Column::kTool, [](const DevCacheItem& item) { return item.tool; });
    inOrderOf(Column::kWhat, kind);
    inOrderOf(Column::kSize, [](const DevCacheItem& item) { return item.bytes; });
    inOrderOf(Column::kInSweep, [](const DevCacheItem& item) { return !item.safeToSweep; });
    inOrderOf(Column::kLastTouched, [](const DevCacheItem& item) { return item.lastModified; });
}

TEST_F(DeveloperTableTest, TheKeysSortAndTheHeadingSaysSo) {
    openWith(four());
    EXPECT_EQ(spokenOrders(), QStringList({"", "", "Sorted, largest first", "", ""}));
    table().setFocus();
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    press(Qt::Key_Home);
    press(Qt::Key_Space);
    turn();
    EXPECT_EQ(names(), QStringList({"Archivist", "Finder", "npm", "Xcode"}));
    EXPECT_EQ(spokenOrders(), QStringList({"Sorted, ascending", "", "", "", ""}));
}

TEST_F(DeveloperTableTest, WhatIsInTheSweepComesFirstAndEqualsKeepTheirOrderInBothDirections) {
    openWith(four());
    EXPECT_EQ(orderBy(Column::kInSweep), QStringList({"Xcode", "npm", "Finder", "Archivist"}));
    EXPECT_EQ(orderBy(Column::kInSweep), QStringList({"Finder", "Archivist", "Xcode", "npm"}));
}

// The footer, the badge and the search

TEST_F(DeveloperTableTest, TheFooterTellsApartWhatIsListedFromWhatACleanupTakes) {
    openWith(four());
    EXPECT_EQ(footer(), QStringList({"4 locations", "39.9 GB", "5.9 GB in sweep"}));
    protect({four()[1].url});
    EXPECT_EQ(footer(), QStringList({"4 locations", "39.9 GB", "900 MB in sweep"}));
    library.inaccessible = {four()[3].url};
    turn();
    EXPECT_EQ(footer().back(), "Zero KB in sweep");
}

TEST_F(DeveloperTableTest, OneLocationIsCountedInTheSingular) {
    openWith({devCache("npm", "Package cache", 1'500'000)});
    EXPECT_EQ(footer(), QStringList({"1 location", "1.5 MB", "1.5 MB in sweep"}));
}

TEST_F(DeveloperTableTest, ASearchMatchesToolAndKindButNotPathsAndChangesNeitherFooterNorBadge) {
    openWith(four());
    for (const auto& [search, shown] : {std::pair<std::string, QStringList>{"xcod", {"Xcode"}},
                                        {"ARCHIVES", {"Archivist"}},
                                        {"Library", {}}}) {
        library.searchText = search;
        turn();
        EXPECT_EQ(names(), shown) << search;
        EXPECT_EQ(footer(), QStringList({"4 locations", "39.9 GB", "5.9 GB in sweep"}));
        EXPECT_EQ(badge(), "4");
    }
}

// Without rows

TEST_F(DeveloperTableTest, WithoutCachesTheTableSaysSo) {
    openWith({});
    EXPECT_TRUE(emptyState().isVisible());
    EXPECT_EQ(emptyState().symbol(), "hammer");
    EXPECT_EQ(emptyState().title(), "No Developer Caches");
    EXPECT_FALSE(emptyState().isLoading());
}

TEST_F(DeveloperTableTest, UntilTheScanHasFoundThemTheTableSaysThatItMeasures) {
    openWith({});
    library.phase = AppLibrary::Phase{Kind::findingOrphans};
    turn();
    EXPECT_TRUE(emptyState().isLoading());
    EXPECT_EQ(emptyState().title(), "Measuring developer caches…");
    library.developerCaches = four();
    turn();
    EXPECT_FALSE(emptyState().isVisible());
}

TEST_F(DeveloperTableTest, ItMeasuresUntilTheScanIsReady) {
    openWith({});
    for (const auto& [kind, isLooking] :
         {std::pair(Kind::idle, true), std::pair(Kind::findingDeveloperCaches, true),
          std::pair(Kind::ready, false)}) {
        library.phase = AppLibrary::Phase{kind};
        turn();
        EXPECT_EQ(emptyState().isLoading(), isLooking) << static_cast<int>(kind);
    }
}

TEST_F(DeveloperTableTest, SearchedToNothingTheTableSaysSo) {
    openWith(four());
    library.searchText = "zzz";
    turn();
    EXPECT_TRUE(emptyState().isVisible());
    EXPECT_EQ(emptyState().title(), "No Results");
}

// The selection

TEST_F(DeveloperTableTest, TheSelectionIsKeptByLocationAndSurvivesAScan) {
    openWith(four());
    select({"Xcode", "npm"});
    EXPECT_EQ(selection(), (std::unordered_set<FileURL>{FileURL(kDerived), FileURL(kPackages)}));
    auto found = four();
    std::ranges::reverse(found);
    found[0].bytes = 50'000'000'000; // the packages lead now
    library.developerCaches = found;
    turn();
    EXPECT_EQ(selectedNames(), QStringList({"npm", "Xcode"}));
}

TEST_F(DeveloperTableTest, ALocationThatVanishedIsNotReplaced) {
    openWith(four());
    click("Xcode");
    library.developerCaches = {four()[0], four()[3]};
    turn();
    EXPECT_TRUE(selectedNames().isEmpty());
}

TEST_F(DeveloperTableTest, WhatTheSearchHidesStaysSelectedAndComesBack) {
    openWith(four());
    click("Xcode");
    library.searchText = "npm";
    turn();
    EXPECT_EQ(selection(), std::unordered_set<FileURL>{FileURL(kDerived)});
    library.searchText = "";
    turn();
    EXPECT_EQ(selectedNames(), QStringList({"Xcode"}));
}

TEST_F(DeveloperTableTest, ADoubleClickAndReturnDoNothingSpecial) {
    openWith(four());
    doubleClick("Xcode");
    table().setFocus();
    press(Qt::Key_Return);
    turn();
    EXPECT_TRUE(workspace.opened().empty());
    EXPECT_TRUE(workspace.revealed().empty());
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_EQ(selectedNames(), QStringList({"Xcode"}));
}

// The menu

TEST_F(DeveloperTableTest, TheMenuOfOneLocationHasItsEntriesInTheirOrder) {
    openWith(four());
    EXPECT_EQ(entries(menuOn("Xcode")),
              QStringList({"Reveal in Finder", "Copy Path", "-", "Never Touch This", "Move to Trash…"}));
}

TEST_F(DeveloperTableTest, TheMenuOfSeveralCountsThem) {
    openWith(four());
    select({"Xcode", "Finder", "npm"});
    EXPECT_EQ(entries(menuOn("npm")), QStringList({"Reveal in Finder", "Copy Paths", "-", "Never Touch This",
                                                   "Move 3 Items to Trash…"}));
}

TEST_F(DeveloperTableTest, WhatRemovesIsMarked) {
    openWith(four());
    EXPECT_FALSE(entry(menuOn("Xcode"), "Move to Trash…")->icon().isNull());
    EXPECT_TRUE(entry(openMenu(), "Copy Path")->icon().isNull());
}

TEST_F(DeveloperTableTest, TheEmptyTableHasNoMenu) {
    openWith(four());
    click("Xcode");
    EXPECT_EQ(menuBelowTheRows(), nullptr);
}

TEST_F(DeveloperTableTest, WithoutASelectionTheKeysOpenNoMenu) {
    openWith(four());
    table().setFocus();
    press(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(openMenu(), nullptr);
}

TEST_F(DeveloperTableTest, WhatTheSearchHidesIsNotInTheMenu) {
    openWith(four());
    select({"Xcode", "npm"});
    library.searchText = "npm";
    turn();
    EXPECT_EQ(entries(menuOn("npm")).back(), "Move to Trash…");
}

TEST_F(DeveloperTableTest, RevealShowsAllSelectedLocationsInTheOrderOfTheScreen) {
    openWith(four());
    select({"npm", "Finder"});
    choose(menuOn("npm"), "Reveal in Finder");
    EXPECT_EQ(workspace.revealed(),
              (std::vector<std::vector<FileURL>>{{FileURL(kBackup), FileURL(kPackages)}}));
}

TEST_F(DeveloperTableTest, PathsAreCopiedOneToALine) {
    openWith(four());
    choose(menuOn("Xcode"), "Copy Path");
    EXPECT_EQ(pasted(), kDerived);
    closeMenu();
    select({"Finder"});
    choose(menuOn("Xcode"), "Copy Paths");
    EXPECT_EQ(pasted(), QStringList({kBackup, kDerived}).join('\n'));
}

TEST_F(DeveloperTableTest, ProtectionIsSetForAllAndRemovedOnlyWhereAllHaveIt) {
    openWith(four());
    protect({four()[1].url});
    select({"Xcode", "npm"});
    choose(menuOn("npm"), "Never Touch This");
    EXPECT_EQ(library.protectedPaths.get(), (std::set<std::string>{kDerived, kPackages}));
    closeMenu();
    choose(menuOn("npm"), "Remove Protection");
    EXPECT_TRUE(library.protectedPaths->empty());
}

TEST_F(DeveloperTableTest, WhatACleanupNeverTakesCanBeMovedFromHere) {
    openWith(four());
    choose(menuOn("Finder"), "Move to Trash…");
    EXPECT_EQ(reviewed(), QStringList({kBackup}));
    EXPECT_TRUE(std::ranges::none_of(library.plan(SweepCategory::developer),
                                     [](const SweepEntry& row) { return row.url == FileURL(kBackup); }));
}

TEST_F(DeveloperTableTest, AProtectedLocationCannotBeMoved) {
    openWith(four());
    protect({four()[1].url});
    EXPECT_FALSE(entry(menuOn("Xcode"), "Move to Trash…")->isEnabled());
}

TEST_F(DeveloperTableTest, SeveralCanBeMovedWhileOneOfThemIsFreeAndTheProtectedStay) {
    openWith(four());
    protect({four()[1].url});
    select({"Xcode", "Archivist"});
    choose(menuOn("Xcode"), "Move 2 Items to Trash…");
    EXPECT_EQ(reviewed(), QStringList({kArchives}));
    ASSERT_NE(sheet(), nullptr);
    sheet()->reject();
    protect({four()[2].url});
    closeMenu();
    EXPECT_FALSE(entry(menuOn("Xcode"), "Move 2 Items to Trash…")->isEnabled());
}

TEST_F(DeveloperTableTest, WhatWentWhileTheMenuWasOpenIsNotReviewed) {
    openWith(four());
    auto* const move = entry(menuOn("Xcode"), "Move to Trash…");
    library.developerCaches = {four()[0]};
    move->trigger();
    turn();
    EXPECT_EQ(sheet(), nullptr);
}

// The pane

TEST_F(DeveloperTableTest, WithNothingSelectedThePaneSaysWhatToDo) {
    openWith(four());
    const auto* const pane = window->detail(LibrarySection::developer)->findChild<EmptyState*>();
    ASSERT_NE(pane, nullptr);
    EXPECT_EQ(pane->title(), "No Selection");
    EXPECT_EQ(pane->sentence(), "Pick a location to see what removing it would mean.");
}

TEST_F(DeveloperTableTest, ThePaneFollowsWhatIsSelectedAndStillThere) {
    openWith(four());
    const auto* const pane = qobject_cast<DeveloperDetail*>(window->detail(LibrarySection::developer));
    ASSERT_NE(pane, nullptr);
    EXPECT_EQ(pane->currentWidget(), pane->placeholder());
    click("Xcode");
    turn();
    EXPECT_EQ(pane->currentWidget(), pane->one());
    click("npm", Qt::ControlModifier);
    turn();
    EXPECT_EQ(pane->currentWidget(), pane->several());
    library.developerCaches = {four()[0]};
    turn();
    EXPECT_EQ(pane->currentWidget(), pane->placeholder());
}
