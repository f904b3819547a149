#include "Components/SearchField.h"
#include "Components/Tokens.h"
#include "Orphans/OrphanDetailView.h"
#include "Orphans/OrphanTable.h"
#include "Orphans/OrphansDetail.h"
#include "Panes/BulkSummary.h"
#include "Panes/PanePlaceholder.h"
#include "SectionRecords.h"
#include "SectionTableTest.h"
#include "Tables/HeaderView.h"
#include "Tables/TableDelegate.h"
#include "Tables/TableRole.h"

using namespace quillane;
using Kind = AppLibrary::Phase::Kind;
using Column = OrphanTableModel::Column;

namespace {

class OrphanTableTest : public SectionTableTest {
  protected:
    OrphanTableTest()
        : SectionTableTest(LibrarySection::orphans) {}

    // Three vendors: 900, 600 and 300 MB; the second has a file that needs admin rights.
    std::vector<OrphanItem> three() const {
        auto sketch = orphan("com.sketch.pad", "com.sketch", 700'000'000);
        sketch.lastModified = daysAgo(800);
        auto sketchHelper = orphan("com.sketch.pad.helper", "com.sketch", 200'000'000, "Logs");
        sketchHelper.lastModified = daysAgo(900);
        auto tempo = orphan("fm.tempo.desktop", "fm.tempo", 590'000'000);
        tempo.lastModified = daysAgo(1);
        const auto updater = adminOrphan("fm.tempo.updater", "fm.tempo", 10'000'000);
        auto inkwell = orphan("app.inkwell", "app.inkwell", 300'000'000);
        return {sketch, sketchHelper, tempo, updater, inkwell};
    }

    void openWith(std::vector<OrphanItem> orphans) {
        library.orphans = std::move(orphans);
        openReady({});
    }
    std::unordered_set<std::string> selection() const { return window->state().orphanSelection.get(); }

    static constexpr const char* kSketch = "com.sketch.pad";
    static constexpr const char* kTempo = "fm.tempo.desktop";
    static constexpr const char* kInkwell = "app.inkwell";
};

} // namespace

// The rows

TEST_F(OrphanTableTest, TheColumnsStandInTheirOrder) {
    openWith(three());
    EXPECT_EQ(headings(), QStringList({"Left Behind By", "Size", "Files", "Last Touched"}));
    EXPECT_EQ(table().accessibleName(), "Orphaned Files");
}

TEST_F(OrphanTableTest, EachVendorIsARowWithItsTitleSizeFilesAndDate) {
    openWith(three());
    EXPECT_EQ(names(), QStringList({kSketch, kTempo, kInkwell})) << "largest first";
    EXPECT_EQ(column(Column::kSize), QStringList({"900 MB", "600 MB", "300 MB"}));
    EXPECT_EQ(column(Column::kFiles), QStringList({"2", "2", "1"}));
    EXPECT_EQ(column(Column::kLastTouched), QStringList({"2 years ago", "yesterday", "Never"}));
}

TEST_F(OrphanTableTest, ATitleHasTheFolderBeforeItAndALockBehindWhatNeedsAdminRights) {
    openWith(three());
    for (int row = 0; row < 3; ++row) {
        EXPECT_EQ(cellData(row, Column::kLeftBehindBy, kSymbolRole).toString(), "questionmark.folder");
    }
    EXPECT_EQ(cellData(1, Column::kLeftBehindBy, kTrailingSymbolRole).toString(), "lock.fill");
    EXPECT_EQ(cellData(1, Column::kLeftBehindBy, kTrailingHelpRole).toString(),
              "Some files need admin rights to remove");
    EXPECT_EQ(cellData(1, Column::kLeftBehindBy, Qt::AccessibleDescriptionRole).toString(),
              "Some files need admin rights to remove");
    EXPECT_FALSE(cellData(0, Column::kLeftBehindBy, kTrailingSymbolRole).isValid());
    EXPECT_FALSE(cellData(0, Column::kLeftBehindBy, Qt::AccessibleDescriptionRole).isValid());
}

TEST_F(OrphanTableTest, ATitleThatWouldDeceiveTheEyeIsShownAsItIs) {
    openWith({orphan("com.\u202Eevil", "com.evil", 1)});
    EXPECT_EQ(names(), QStringList({"com.‹U+202E›evil"}));
}

TEST_F(OrphanTableTest, TheColumnsHaveTheirWidths) {
    openWith(three());
    EXPECT_EQ(table().columnWidth(Column::kLeftBehindBy), 8 + 280) << "within the bars, and no wider";
    EXPECT_EQ(table().columnWidth(Column::kSize), 90);
    EXPECT_EQ(table().columnWidth(Column::kFiles), 62);
    EXPECT_EQ(table().columnWidth(Column::kLastTouched), 130);
    window->resize(ContentView::kMinimumSize);
    turn();
    EXPECT_GE(table().columnWidth(Column::kLeftBehindBy), 8 + 200);
    EXPECT_LE(table().header()->length(), table().viewport()->width());
}

TEST_F(OrphanTableTest, BehindTheLastColumnTheHeaderGoesOnEmpty) {
    openWith(three());
    auto& header = *table().header();
    ASSERT_LT(header.length(), header.viewport()->width() - 20);
    const QImage picture = header.grab().toImage();
    const double ratio = picture.devicePixelRatio();
    const auto at = [&](int x, int y) {
        return picture.pixelColor((QPointF(x, y) * ratio).toPoint()).name();
    };
    const int line = header.height() - HeaderView::kBlank - 1;
    EXPECT_EQ(at(header.width() - 5, 10), Tokens::current().base.name());
    EXPECT_EQ(at(header.width() - 5, line), at(200, line)) << "the line below goes on too";
    EXPECT_EQ(at(header.width() - 5, header.height() - 2), Tokens::current().base.name());
}

TEST_F(OrphanTableTest, EveryControlThatTakesTheFocusHasAName) {
    openWith(three());
    EXPECT_EQ(namelessControls(), QStringList());
}

TEST_F(OrphanTableTest, TheLockBehindALongTitleStaysInTheCell) {
    openWith(
        {adminOrphan("com.example.an-identifier-that-is-much-longer-than-its-column", "com.example", 1)});
    const QModelIndex title = table().model()->index(0, Column::kLeftBehindBy);
    const auto* const delegate = qobject_cast<const TableDelegate*>(table().itemDelegate());
    ASSERT_NE(delegate, nullptr);
    const QRect cell = table().visualRect(title);
    const auto parts = delegate->layout(cell, title);
    EXPECT_TRUE(parts.elided);
    EXPECT_LE(parts.trailing.right(), cell.right());
    EXPECT_GT(parts.trailing.left(), parts.text.left());
}

// The order

TEST_F(OrphanTableTest, EveryColumnSortsInBothDirections) {
    openWith(three());
    EXPECT_EQ(table().header()->sortIndicatorSection(), Column::kSize);
    EXPECT_EQ(table().header()->sortIndicatorOrder(), Qt::DescendingOrder);
    EXPECT_EQ(orderBy(Column::kSize), QStringList({kInkwell, kTempo, kSketch}));
    EXPECT_EQ(orderBy(Column::kLeftBehindBy), QStringList({kInkwell, kSketch, kTempo}));
    EXPECT_EQ(orderBy(Column::kLeftBehindBy), QStringList({kTempo, kSketch, kInkwell}));
    EXPECT_EQ(orderBy(Column::kLastTouched), QStringList({kInkwell, kSketch, kTempo}))
        << "what has no date is the oldest";
    EXPECT_EQ(orderBy(Column::kLastTouched), QStringList({kTempo, kSketch, kInkwell}));
    EXPECT_EQ(orderBy(Column::kFiles), QStringList({kSketch, kTempo, kInkwell})) << "most first";
    EXPECT_EQ(orderBy(Column::kFiles), QStringList({kInkwell, kSketch, kTempo}));
}

// More than 16, each figure of several: fewer stay in order by chance.
TEST_F(OrphanTableTest, EachHeaderPutsEveryRowInItsPlaceInBothDirections) {
    struct Vendor {
        std::string identifier;
        Bytes bytes = 0;
        int files = 0;
        std::optional<Date> date;
    };
    std::vector<Vendor> vendors;
    std::vector<OrphanItem> items;
    for (int i = 10; i < 70; ++i) {
        Vendor vendor{"com.v" + std::to_string(i), i * 37 % 11 * 1'000'000, 1 + i * 5 % 4, std::nullopt};
        if (i % 7 != 0) {
            vendor.date = daysAgo(i * 5 % 9);
        }
        for (int file = 0; file < vendor.files; ++file) {
            const auto suffix = file == 0 ? std::string() : ".part" + std::to_string(file);
            items.push_back(
                orphan(vendor.identifier + suffix, vendor.identifier, file == 0 ? vendor.bytes : 0));
            items.back().lastModified = vendor.date;
        }
        vendors.push_back(vendor);
    }
    // As the section is given them: the largest first, and equal ones by vendor.
    std::ranges::stable_sort(vendors, std::ranges::greater(), &Vendor::bytes);
    openWith(items);
    const auto name = [](const Vendor& vendor) { return vendor.identifier; };
    const auto inOrderOf = [&](int column, auto key) { expectOrderOfHeader(column, vendors, key, 0, name); };
    inOrderOf(Column::kLeftBehindBy, name);
    inOrderOf(Column::kSize, [](const Vendor& vendor) { return vendor.bytes; });
    inOrderOf(Column::kFiles, [](const Vendor& vendor) { return vendor.files; });
    inOrderOf(Column::kLastTouched, [](const Vendor& vendor) { return vendor.date; }); // none before any
}

TEST_F(OrphanTableTest, WhatIsEqualKeepsItsOrderInBothDirections) {
    openWith(three()); // two vendors with two files each
    EXPECT_EQ(orderBy(Column::kFiles).first(2), QStringList({kSketch, kTempo}));
    EXPECT_EQ(orderBy(Column::kFiles).last(2), QStringList({kSketch, kTempo}));
}

TEST_F(OrphanTableTest, TheKeysSortAndGoBackToTheSearchField) {
    openWith(three());
    table().setFocus();
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_EQ(QApplication::focusWidget(), table().header());
    press(Qt::Key_Space);
    turn();
    EXPECT_EQ(names(), QStringList({kInkwell, kTempo, kSketch})) << "the size turned round";
    press(Qt::Key_Left);
    press(Qt::Key_Return);
    turn();
    EXPECT_EQ(names(), QStringList({kInkwell, kSketch, kTempo}));
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(window->searchField()->hasFocus());
}

TEST_F(OrphanTableTest, TheHeadingsSayWhatTheRowsAreSortedBy) {
    openWith(three());
    EXPECT_EQ(spokenOrders(), QStringList({"", "Sorted, largest first", "", ""}));
    clickHeader(Column::kSize);
    EXPECT_EQ(spokenOrders(), QStringList({"", "Sorted, smallest first", "", ""}));
    clickHeader(Column::kLeftBehindBy);
    EXPECT_EQ(spokenOrders(), QStringList({"Sorted, ascending", "", "", ""}));
    clickHeader(Column::kLeftBehindBy);
    EXPECT_EQ(spokenOrders(), QStringList({"Sorted, descending", "", "", ""}));
}

TEST_F(OrphanTableTest, TheCursorStaysWithItsVendorWhenTheOrderChanges) {
    openWith(three());
    click(kTempo);
    ASSERT_EQ(table().currentIndex().row(), 1);
    orderBy(Column::kLeftBehindBy);
    EXPECT_EQ(table().currentIndex().row(), 2);
    EXPECT_EQ(selectedNames(), QStringList({kTempo}));
    table().setFocus();
    press(Qt::Key_Up);
    EXPECT_EQ(selectedNames(), QStringList({kSketch}));
}

TEST_F(OrphanTableTest, TheRightPartOfARowIsTheRow) {
    openWith(three());
    const QRect row = table().visualRect(table().model()->index(1, Column::kLastTouched));
    const QPoint right(table().viewport()->width() - 20, row.center().y());
    ASSERT_GT(right.x(), row.right());
    const auto* const menu = menuAt(right);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(entries(menu).back(), "Move 1 Files to Trash…");
    EXPECT_EQ(selectedNames(), QStringList({kTempo}));
}

TEST_F(OrphanTableTest, TitlesSortAsTheFinderSortsNames) {
    openWith({orphan("com.B10", "b", 3), orphan("com.a", "a", 2), orphan("com.b9", "c", 1)});
    EXPECT_EQ(orderBy(Column::kLeftBehindBy), QStringList({"com.a", "com.b9", "com.B10"}));
}

// The footer and the badge

TEST_F(OrphanTableTest, TheFooterCountsTheGroupsAndTheirSize) {
    openWith(three());
    EXPECT_EQ(footer(), QStringList({"3 dead apps", "1.8 GB reclaimable"}));
}

TEST_F(OrphanTableTest, OneDeadAppIsCountedInTheSingular) {
    openWith({orphan("com.one", "com.one", 5'000'000)});
    EXPECT_EQ(footer(), QStringList({"1 dead app", "5 MB reclaimable"}));
}

TEST_F(OrphanTableTest, NoneIsCountedToo) {
    openWith({});
    EXPECT_EQ(footer(), QStringList({"0 dead apps", "Zero KB reclaimable"}));
}

TEST_F(OrphanTableTest, ASearchThatHidesAGroupChangesNeitherFooterNorBadge) {
    openWith(three());
    EXPECT_EQ(badge(), "3");
    library.searchText = "tempo";
    turn();
    EXPECT_EQ(names(), QStringList({kTempo}));
    EXPECT_EQ(footer(), QStringList({"3 dead apps", "1.8 GB reclaimable"}));
    EXPECT_EQ(badge(), "3");
}

// Without rows

TEST_F(OrphanTableTest, WithoutOrphansTheTableSaysSo) {
    openWith({});
    EXPECT_TRUE(emptyState().isVisible());
    EXPECT_EQ(emptyState().symbol(), "questionmark.folder");
    EXPECT_EQ(emptyState().title(), "No Orphaned Files");
    EXPECT_FALSE(emptyState().isLoading());
}

TEST_F(OrphanTableTest, UntilTheScanHasFoundThemTheTableSaysThatItLooks) {
    openWith({});
    library.phase = AppLibrary::Phase{Kind::measuring, 1, 2};
    turn();
    EXPECT_TRUE(emptyState().isLoading());
    EXPECT_EQ(emptyState().title(), "Looking for orphaned files…");
    library.orphans = three();
    turn();
    EXPECT_FALSE(emptyState().isVisible());
}

TEST_F(OrphanTableTest, EachStageUpToTheSearchIsLookingAndTheLaterOnesAreNot) {
    openWith({});
    for (const auto& [kind, isLooking] :
         {std::pair(Kind::idle, true), std::pair(Kind::scanning, true), std::pair(Kind::measuring, true),
          std::pair(Kind::findingOrphans, true), std::pair(Kind::findingDeveloperCaches, false),
          std::pair(Kind::ready, false)}) {
        library.phase = AppLibrary::Phase{kind};
        turn();
        EXPECT_EQ(emptyState().isLoading(), isLooking) << static_cast<int>(kind);
    }
}

TEST_F(OrphanTableTest, ThousandsAreCountedWithSeparators) {
    std::vector<OrphanItem> many;
    for (int i = 0; i < 1234; ++i) {
        many.push_back(orphan("com.sketch.pad" + std::to_string(i), "com.sketch", 1'000));
    }
    openWith(many);
    EXPECT_EQ(cell(0, Column::kFiles), "1,234");
    EXPECT_EQ(entries(menuOn(names().front())).back(), "Move 1,234 Files to Trash…");
}

TEST_F(OrphanTableTest, SearchedToNothingTheTableSaysSoEvenDuringAScan) {
    openWith(three());
    library.searchText = "zzz";
    for (const auto phase : {Kind::ready, Kind::scanning}) {
        library.phase = AppLibrary::Phase{phase};
        turn();
        EXPECT_TRUE(emptyState().isVisible());
        EXPECT_FALSE(emptyState().isLoading());
        EXPECT_EQ(emptyState().title(), "No Results");
        EXPECT_EQ(emptyState().symbol(), "magnifyingglass");
    }
    library.searchText = "";
    turn();
    EXPECT_FALSE(emptyState().isVisible());
}

// The selection

TEST_F(OrphanTableTest, AClickSelectsTheVendor) {
    openWith(three());
    click(kTempo);
    EXPECT_EQ(selection(), (std::unordered_set<std::string>{"fm.tempo"}));
    click(kInkwell, Qt::ControlModifier);
    EXPECT_EQ(selection(), (std::unordered_set<std::string>{"fm.tempo", "app.inkwell"}));
}

TEST_F(OrphanTableTest, TheSelectionSurvivesAScanThatReplacesTheOrphans) {
    openWith(three());
    select({kTempo, kInkwell});
    library.orphans = {orphan("fm.tempo.desktop", "fm.tempo", 1), orphan("org.new", "org.new", 2),
                       orphan("app.inkwell", "app.inkwell", 3)};
    turn();
    EXPECT_EQ(selectedNames(), QStringList({kInkwell, kTempo}));
}

TEST_F(OrphanTableTest, AVendorThatVanishedIsNotReplacedAndComesBackSelected) {
    openWith(three());
    click(kTempo);
    library.orphans = {orphan("app.inkwell", "app.inkwell", 3)};
    turn();
    EXPECT_TRUE(selectedNames().isEmpty());
    library.orphans = three();
    turn();
    EXPECT_EQ(selectedNames(), QStringList({kTempo}));
}

TEST_F(OrphanTableTest, WhatTheSearchHidesStaysSelectedAndComesBack) {
    openWith(three());
    click(kTempo);
    library.searchText = "sketch";
    turn();
    EXPECT_EQ(selection(), (std::unordered_set<std::string>{"fm.tempo"}));
    library.searchText = "";
    turn();
    EXPECT_EQ(selectedNames(), QStringList({kTempo}));
}

TEST_F(OrphanTableTest, TheApplicationsKeepTheirOwnSelection) {
    library.orphans = three();
    openReady({measuredApp("Alder", 1)});
    click(kTempo);
    window->showSection(LibrarySection::applications);
    turn();
    click("Alder");
    window->showSection(LibrarySection::orphans);
    turn();
    EXPECT_EQ(selectedNames(), QStringList({kTempo}));
    EXPECT_EQ(window->state().selection.get(),
              std::unordered_set<FileURL>{FileURL("/Applications/Alder.app")});
}

TEST_F(OrphanTableTest, ADoubleClickAndReturnDoNothingSpecial) {
    openWith(three());
    doubleClick(kTempo);
    table().setFocus();
    press(Qt::Key_Return);
    turn();
    EXPECT_TRUE(workspace.opened().empty());
    EXPECT_TRUE(workspace.revealed().empty());
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_EQ(selectedNames(), QStringList({kTempo}));
}

TEST_F(OrphanTableTest, TypedLettersGoToTheTitle) {
    openWith(three());
    table().setFocus();
    QTest::keyClicks(&table(), "fm");
    EXPECT_EQ(selectedNames(), QStringList({kTempo}));
}

// The menu

TEST_F(OrphanTableTest, TheMenuHasItsEntriesInTheirOrder) {
    openWith(three());
    EXPECT_EQ(entries(menuOn(kSketch)), QStringList({"Reveal in Finder", "Copy Identifiers", "-",
                                                     "Never Touch This", "-", "Move 2 Files to Trash…"}));
}

TEST_F(OrphanTableTest, TheEmptyTableHasNoMenu) {
    openWith(three());
    click(kTempo);
    EXPECT_EQ(menuBelowTheRows(), nullptr);
}

TEST_F(OrphanTableTest, WithoutASelectionTheKeysOpenNoMenu) {
    openWith(three());
    table().setFocus();
    press(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(openMenu(), nullptr);
    click(kInkwell);
    press(Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_NE(openMenu(), nullptr);
    EXPECT_EQ(entries(openMenu()).back(), "Move 1 Files to Trash…");
}

TEST_F(OrphanTableTest, TheMenuOfARowThatIsNotSelectedIsForThatRow) {
    openWith(three());
    select({kSketch, kTempo});
    EXPECT_EQ(entries(menuOn(kInkwell)).back(), "Move 1 Files to Trash…");
    EXPECT_EQ(selectedNames(), QStringList({kInkwell}));
}

TEST_F(OrphanTableTest, WhatTheSearchHidesIsNotInTheMenu) {
    openWith(three());
    select({kSketch, kTempo});
    library.searchText = "sketch";
    turn();
    choose(menuOn(kSketch), "Copy Identifiers");
    EXPECT_EQ(pasted(), "com.sketch.pad\ncom.sketch.pad.helper");
}

TEST_F(OrphanTableTest, RevealShowsAllItemsOfTheSelectedGroups) {
    openWith(three());
    select({kInkwell, kSketch});
    choose(menuOn(kSketch), "Reveal in Finder");
    EXPECT_EQ(workspace.revealed(),
              (std::vector<std::vector<FileURL>>{{FileURL("/Users/alex/Library/Caches/com.sketch.pad"),
                                                  FileURL("/Users/alex/Library/Logs/com.sketch.pad.helper"),
                                                  FileURL("/Users/alex/Library/Caches/app.inkwell")}}));
}

TEST_F(OrphanTableTest, CopyIdentifiersReplacesTheClipboardByOneLineForEachItem) {
    QGuiApplication::clipboard()->setText("before");
    openWith(three());
    select({kTempo, kSketch});
    choose(menuOn(kTempo), "Copy Identifiers");
    EXPECT_EQ(pasted(), "com.sketch.pad\ncom.sketch.pad.helper\nfm.tempo.desktop\nfm.tempo.updater");
}

TEST_F(OrphanTableTest, WhatIsCopiedIsTheIdentifierItselfAndNotItsSafeForm) {
    openWith({orphan("com.\u202Eevil", "com.evil", 1)});
    choose(menuOn("com.‹U+202E›evil"), "Copy Identifiers");
    EXPECT_EQ(pasted(), "com.\u202Eevil");
}

TEST_F(OrphanTableTest, NeverTouchThisProtectsEveryItemAndIsTakenBack) {
    openWith(three());
    choose(menuOn(kSketch), "Never Touch This");
    for (const auto& item : three()) {
        EXPECT_EQ(library.isProtected(item.url), item.vendor == "com.sketch") << item.url.path();
    }
    closeMenu();
    choose(menuOn(kSketch), "Remove Protection");
    EXPECT_TRUE(library.protectedPaths->empty());
}

TEST_F(OrphanTableTest, ProtectionIsRemovedOnlyWhereAllItemsOfAllGroupsHaveIt) {
    openWith(three());
    const auto all = three();
    protect({all[0].url, all[1].url, all[2].url}); // all of the first group, half of the second
    select({kSketch, kTempo});
    EXPECT_EQ(entries(menuOn(kSketch))[3], "Never Touch This");
    closeMenu();
    protect({all[3].url});
    EXPECT_EQ(entries(menuOn(kSketch))[3], "Remove Protection");
}

TEST_F(OrphanTableTest, TheCountAddsUpWhatMayGoOfAllSelectedGroups) {
    openWith(three());
    const auto all = three();
    protect({all[1].url});
    select({kSketch, kTempo, kInkwell});
    const auto* const menu = menuOn(kTempo);
    EXPECT_EQ(entries(menu).back(), "Move 3 Files to Trash…");
    choose(menu, "Move 3 Files to Trash…");
    EXPECT_EQ(reviewed(), QStringList({"/Users/alex/Library/Caches/com.sketch.pad",
                                       "/Users/alex/Library/Caches/fm.tempo.desktop",
                                       "/Users/alex/Library/Caches/app.inkwell"}));
    EXPECT_EQ(label(), "Remove leftovers of 3 apps");
}

TEST_F(OrphanTableTest, WhatWasOutOfReachIsNotCounted) {
    openWith(three());
    library.inaccessible = {three()[0].url};
    EXPECT_EQ(entries(menuOn(kSketch)).back(), "Move 1 Files to Trash…");
}

TEST_F(OrphanTableTest, AGroupThatNeedsAdminRightsAloneShowsItsSizeAndCannotGo) {
    openWith({adminOrphan("com.root.helper", "com.root", 4'000'000)});
    EXPECT_EQ(cell(0, Column::kSize), "4 MB");
    EXPECT_EQ(cell(0, Column::kFiles), "1");
    EXPECT_FALSE(entry(menuOn("com.root.helper"), "Move 0 Files to Trash…")->isEnabled());
}

TEST_F(OrphanTableTest, WhatWentWhileTheMenuWasOpenIsNotReviewed) {
    openWith(three());
    auto* const move = entry(menuOn(kSketch), "Move 2 Files to Trash…");
    library.orphans = {three()[4]};
    move->trigger();
    turn();
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(OrphanTableTest, WhatBecameProtectedWhileTheMenuWasOpenIsNotReviewed) {
    openWith(three());
    auto* const move = entry(menuOn(kSketch), "Move 2 Files to Trash…");
    protect({three()[0].url});
    move->trigger();
    EXPECT_EQ(reviewed(), QStringList({"/Users/alex/Library/Logs/com.sketch.pad.helper"}));
}

// The pane

TEST_F(OrphanTableTest, WithNothingSelectedThePaneSaysWhatToDo) {
    openWith(three());
    const auto* const pane = window->detail(LibrarySection::orphans)->findChild<EmptyState*>();
    ASSERT_NE(pane, nullptr);
    EXPECT_EQ(pane->title(), "No Selection");
    EXPECT_EQ(pane->sentence(), "Pick a dead app to see what it left behind.");
}

TEST_F(OrphanTableTest, ThePaneFollowsWhatIsSelectedAndStillThere) {
    openWith(three());
    const auto* const pane = qobject_cast<OrphansDetail*>(window->detail(LibrarySection::orphans));
    ASSERT_NE(pane, nullptr);
    EXPECT_EQ(pane->currentWidget(), pane->placeholder());
    click(kTempo);
    turn();
    EXPECT_EQ(pane->currentWidget(), pane->one());
    click(kInkwell, Qt::ControlModifier);
    turn();
    EXPECT_EQ(pane->currentWidget(), pane->several());
    library.orphans = {three()[0]};
    turn();
    EXPECT_EQ(pane->currentWidget(), pane->placeholder());
}
