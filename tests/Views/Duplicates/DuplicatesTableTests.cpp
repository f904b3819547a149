#include "Components/FileKindSymbol.h"
#include "Components/Tint.h"
#include "Duplicates/CopiesList.h"
#include "Duplicates/DuplicatesDetail.h"
#include "Duplicates/DuplicatesTable.h"
#include "Panes/PanePlaceholder.h"
#include "SectionRecords.h"
#include "SectionTableTest.h"
#include "State/ContentState.h"
#include "Tables/TableRole.h"
#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace quillane;
using Column = DuplicatesTableModel::Column;

namespace {

class DuplicatesTableTest : public SectionTableTest {
  protected:
    DuplicatesTableTest()
        : SectionTableTest(LibrarySection::duplicates) {}

    // The greatest waste first, as the finder gives them.
    std::vector<DuplicateGroup> four() const {
        return {copies("a1", 1'420'000'000,
                       {copyAt("Movies/Exports/Studio tour.mov", daysAgo(21)),
                        copyAt("Documents/Clients/Studio tour.mov", daysAgo(60)),
                        copyAt("Downloads/Studio tour.mov", daysAgo(400))}),
                copies("b2", 912'600'000, {copyAt("Downloads/press-kit.zip"), copyAt("Desktop/kit.zip")}),
                copies("c3", 184'300'000,
                       {copyAt("Music/Demo mix.wav"), copyAt("Music/Old/Demo mix.wav"),
                        copyAt("Desktop/Demo mix.wav"), copyAt("Downloads/mix.wav")}),
                copies("d4", 48'700'000, {copyAt("Documents/Lease.pdf"), copyAt("Downloads/Lease.pdf")})};
    }
    void openWith(std::vector<DuplicateGroup> groups) {
        library.duplicates = std::move(groups);
        openReady({});
    }
    std::unordered_set<std::string> selection() const { return window->state().duplicateSelection.get(); }
    static std::string home(const std::string& path) { return "/Users/alex/" + path; }
    static FileURL url(const std::string& path) { return FileURL(home(path)); }
    void showSection(LibrarySection section) {
        window->showSection(section);
        turn();
    }
};

} // namespace

// The rows

TEST_F(DuplicatesTableTest, TheColumnsStandInTheirOrder) {
    openWith(four());
    EXPECT_EQ(headings(), QStringList({"File", "Copies", "Each", "Wasted"}));
    EXPECT_EQ(table().accessibleName(), "Duplicates");
}

TEST_F(DuplicatesTableTest, ARowTellsNameCopiesSizeAndWaste) {
    openWith(four());
    EXPECT_EQ(column(Column::kFile),
              QStringList({"Studio tour.mov", "press-kit.zip", "Demo mix.wav", "Lease.pdf"}));
    EXPECT_EQ(column(Column::kCopies), QStringList({"3", "2", "4", "2"}));
    EXPECT_EQ(column(Column::kEach), QStringList({"1.42 GB", "912.6 MB", "184.3 MB", "48.7 MB"}));
    EXPECT_EQ(column(Column::kWasted), QStringList({"2.84 GB", "912.6 MB", "552.9 MB", "48.7 MB"}));
    for (const int figure : {Column::kCopies, Column::kEach, Column::kWasted}) {
        EXPECT_TRUE(cellData(0, figure, kTabularRole).toBool()) << figure;
    }
}

TEST_F(DuplicatesTableTest, TheSymbolIsThatOfTheFirstFile) {
    auto mixed = copies("e5", 2'000'000, {copyAt("Desktop/a.png"), copyAt("Desktop/a.txt")});
    openWith({four()[0], four()[1], mixed});
    const auto symbolOf = [&](int row) { return cellData(row, Column::kFile, kSymbolRole).toString(); };
    EXPECT_EQ(symbolOf(0), "film");
    EXPECT_EQ(symbolOf(1), "doc.zipper");
    EXPECT_EQ(symbolOf(2), "photo");
    EXPECT_FALSE(cellData(0, Column::kCopies, kSymbolRole).isValid());
}

TEST_F(DuplicatesTableTest, AGroupThatLosesItsFirstFileIsToldAnewInItsRow) {
    auto groups = four();
    groups.push_back(copies("e5", 2'000'000, {copyAt("a.png"), copyAt("b.txt"), copyAt("c.txt")}));
    openWith(groups);
    click("a.png");
    groups.back().files.erase(groups.back().files.begin());
    library.duplicates = groups;
    turn();
    const int row = rowOf("b.txt");
    EXPECT_EQ(cellData(row, Column::kFile, kSymbolRole).toString(), "doc.text");
    EXPECT_EQ(cell(row, Column::kCopies), "2");
    EXPECT_EQ(cell(row, Column::kWasted), "2 MB");
    EXPECT_EQ(selectedNames(), QStringList({"b.txt"})) << "a group is known by its content";
}

TEST_F(DuplicatesTableTest, WordsThatWouldDeceiveTheEyeAreShownAsTheyAre) {
    openWith({copies("a1", 2'000'000, {copyAt("Desktop/exe\u202Efdp.app"), copyAt("Desktop/b")})});
    EXPECT_EQ(cell(0, Column::kFile), "exe‹U+202E›fdp.app");
}

TEST_F(DuplicatesTableTest, TheColumnsHaveTheirWidths) {
    openWith(four());
    for (const auto& size : {ContentView::kDefaultSize, ContentView::kMinimumSize}) {
        window->resize(size);
        turn();
        EXPECT_EQ(table().columnWidth(Column::kCopies), 76);
        EXPECT_EQ(table().columnWidth(Column::kEach), 96);
        EXPECT_EQ(table().columnWidth(Column::kWasted), 104 + 8) << "within the bars";
        EXPECT_EQ(table().header()->length(), table().viewport()->width());
        EXPECT_GE(table().columnWidth(Column::kFile), 180);
    }
}

TEST_F(DuplicatesTableTest, TheLastFigureEndsBeforeTheBarOfItsRowDoes) {
    openWith(four());
    click("Studio tour.mov");
    turn();
    const QImage rows = table().viewport()->grab().toImage();
    const QRect cell = table().visualRect(table().model()->index(0, Column::kWasted));
    const auto isPlain = [&](int fromTheEnd) {
        const int x = cell.right() - fromTheEnd;
        for (int y = cell.top() + 6; y < cell.bottom() - 6; ++y) {
            if (rows.pixel(x, y) != rows.pixel(x, cell.top() + 6)) {
                return false;
            }
        }
        return true;
    };
    for (int fromTheEnd = 9; fromTheEnd < 16; ++fromTheEnd) { // the bar ends at 8
        EXPECT_TRUE(isPlain(fromTheEnd)) << fromTheEnd;
    }
    EXPECT_FALSE(isPlain(17) && isPlain(18)) << "and there it stands";
}

TEST_F(DuplicatesTableTest, EveryControlThatTakesTheFocusHasAName) {
    openWith(four());
    EXPECT_EQ(namelessControls(), QStringList());
    click("Lease.pdf");
    turn();
    EXPECT_EQ(namelessControls(), QStringList());
}

TEST_F(DuplicatesTableTest, TypedLettersGoToTheNameThatBeginsSo) {
    openWith(four());
    table().setFocus();
    QTest::keyClicks(&table(), "le");
    turn();
    EXPECT_EQ(selectedNames(), QStringList({"Lease.pdf"}));
}

TEST(DuplicatesTableModel, ItKeepsWhatAModelPromisesWhileGroupsComeGoAndChange) {
    DuplicatesTableModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    const auto show = [&model](const std::vector<DuplicateGroup>& groups) {
        std::vector<DuplicateRecord> records;
        for (const auto& group : groups) {
            records.push_back({&group});
        }
        model.updateFrom(std::move(records));
    };
    const auto a = copies("a", 3'000'000, {copyAt("a"), copyAt("b"), copyAt("c")});
    const auto b = copies("b", 2'000'000, {copyAt("d"), copyAt("e")});
    auto fewer = a;
    fewer.files.pop_back();
    const DuplicateGroup hollow{"hollow", {}, 5};
    show({a, b});
    show({b, hollow, fewer});
    EXPECT_EQ(model.index(1, Column::kFile).data().toString(), "");
    EXPECT_EQ(model.index(1, Column::kWasted).data().toString(), "Zero KB");
    EXPECT_EQ(model.index(2, Column::kCopies).data().toString(), "2");
    show({fewer, fewer});
    EXPECT_EQ(model.rowCount(), 1) << "of two with one id the first counts";
    show({});
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(resets.count(), 0);
}

// The order

TEST_F(DuplicatesTableTest, TheyBeginWithTheGreatestWaste) {
    auto groups = four();
    std::ranges::reverse(groups);
    openWith(groups);
    EXPECT_EQ(names(), QStringList({"Studio tour.mov", "press-kit.zip", "Demo mix.wav", "Lease.pdf"}));
    EXPECT_EQ(table().header()->sortIndicatorSection(), Column::kWasted);
    EXPECT_EQ(table().header()->sortIndicatorOrder(), Qt::DescendingOrder);
    EXPECT_EQ(spokenOrders(), QStringList({"", "", "", "Sorted, largest first"}));
}

TEST_F(DuplicatesTableTest, EveryColumnSortsInBothDirections) {
    openWith(four());
    EXPECT_EQ(orderBy(Column::kFile),
              QStringList({"Demo mix.wav", "Lease.pdf", "press-kit.zip", "Studio tour.mov"}));
    EXPECT_EQ(orderBy(Column::kFile),
              QStringList({"Studio tour.mov", "press-kit.zip", "Lease.pdf", "Demo mix.wav"}));
    EXPECT_EQ(orderBy(Column::kCopies),
              QStringList({"Demo mix.wav", "Studio tour.mov", "press-kit.zip", "Lease.pdf"}));
    EXPECT_EQ(orderBy(Column::kCopies),
              QStringList({"press-kit.zip", "Lease.pdf", "Studio tour.mov", "Demo mix.wav"}))
        << "equals keep their order";
    EXPECT_EQ(orderBy(Column::kEach).front(), "Studio tour.mov");
    EXPECT_EQ(orderBy(Column::kEach).front(), "Lease.pdf");
}

// More than 16, each figure of several: fewer stay in order by chance.
TEST_F(DuplicatesTableTest, EachHeaderPutsEveryRowInItsPlaceInBothDirections) {
    std::vector<DuplicateGroup> groups;
    for (int i = 10; i < 70; ++i) {
        std::vector<UserFile> files;
        for (int copy = 0; copy < 2 + i * 5 % 3; ++copy) {
            files.push_back(copyAt("Folder " + std::to_string(copy) + "/File " + std::to_string(i)));
        }
        groups.push_back(copies("id " + std::to_string(i), i * 37 % 11 * 1'000'000, files));
    }
    openWith(groups);
    const auto name = [](const DuplicateGroup& group) { return group.name(); };
    const auto inOrderOf = [&](int column, auto key) {
        expectOrderOfHeader(column, groups, key, Column::kFile, name);
    };
    inOrderOf(Column::kFile, name);
    inOrderOf(Column::kCopies, [](const DuplicateGroup& group) { return group.count(); });
    inOrderOf(Column::kEach, [](const DuplicateGroup& group) { return group.bytesEach; });
    inOrderOf(Column::kWasted, [](const DuplicateGroup& group) { return group.wastedBytes(); });
}

// The footer, the badge and the search

TEST_F(DuplicatesTableTest, TheFooterCountsGroupsAndTellsWhatKeepingOneOfEachGivesBack) {
    openWith(four());
    EXPECT_EQ(footer(), QStringList({"4 groups", "4.35 GB recoverable by keeping one of each"}));
    EXPECT_EQ(badge(), "4");
    library.duplicates = {four()[3]};
    turn();
    EXPECT_EQ(footer(), QStringList({"1 group", "48.7 MB recoverable by keeping one of each"}));
    EXPECT_EQ(badge(), "1");
}

TEST_F(DuplicatesTableTest, ASearchMatchesThePathOfAnyCopyAndTheFooterStillSpeaksOfAllGroups) {
    openWith(four());
    for (const auto& [search, shown] :
         {std::pair<std::string, QStringList>{"desktop", {"press-kit.zip", "Demo mix.wav"}},
          {"CLIENTS", {"Studio tour.mov"}},
          {"zzz", {}}}) {
        library.searchText = search;
        turn();
        EXPECT_EQ(names(), shown) << search;
        EXPECT_EQ(footer(), QStringList({"4 groups", "4.35 GB recoverable by keeping one of each"}));
        EXPECT_EQ(badge(), "4");
    }
}

// Without rows

TEST_F(DuplicatesTableTest, WithoutGroupsTheTableSaysSo) {
    openWith({});
    finish();
    EXPECT_TRUE(emptyState().isVisible());
    EXPECT_FALSE(emptyState().isLoading());
    EXPECT_EQ(emptyState().symbol(), "checkmark.circle");
    EXPECT_EQ(emptyState().title(), "No Duplicates");
    EXPECT_EQ(emptyState().sentence(), "No files over 1 MB share their contents with another.");
    EXPECT_EQ(footer(), QStringList());
    EXPECT_EQ(badge(), "");
}

TEST_F(DuplicatesTableTest, WhileTheFinderWorksTheWordsAreThoseOfItsStage) {
    openWith({});
    EXPECT_TRUE(emptyState().isLoading());
    EXPECT_EQ(emptyState().title(), "Comparing files…");
    for (const std::string words : {"Listing files", "Comparing 1,204 files"}) {
        library.duplicateStatus = std::optional(words);
        turn();
        EXPECT_TRUE(emptyState().isLoading());
        EXPECT_EQ(emptyState().title().toStdString(), words);
    }
    library.duplicateStatus = std::optional<std::string>("");
    turn();
    EXPECT_EQ(emptyState().title(), "Comparing files…");
    EXPECT_EQ(footer(), QStringList());
}

TEST_F(DuplicatesTableTest, ALoadOverGroupsLeavesThemInSight) {
    openWith(four());
    library.loadDuplicates();
    turn();
    EXPECT_FALSE(emptyState().isVisible());
    EXPECT_EQ(names().size(), 4);
}

TEST_F(DuplicatesTableTest, SearchedToNothingTheTableSaysSoEvenWhileALoadRuns) {
    openWith(four());
    library.searchText = "zzz";
    library.isLoadingDuplicates = true;
    turn();
    EXPECT_TRUE(emptyState().isVisible());
    EXPECT_FALSE(emptyState().isLoading());
    EXPECT_EQ(emptyState().title(), "No Results");
}

// When copies are looked for

TEST_F(DuplicatesTableTest, TheyAreLookedForWhenTheSectionAppearsAndThereAreNone) {
    startsIn = LibrarySection::applications;
    openReady({});
    EXPECT_FALSE(*library.isLoadingDuplicates) << "not before";
    showSection(LibrarySection::duplicates);
    EXPECT_TRUE(*library.isLoadingDuplicates);
    finish();
    EXPECT_FALSE(*library.isLoadingDuplicates);
}

TEST_F(DuplicatesTableTest, GroupsThatAreThereAreKept) {
    openWith(four());
    EXPECT_FALSE(*library.isLoadingDuplicates);
    showSection(LibrarySection::orphans);
    showSection(LibrarySection::duplicates);
    EXPECT_FALSE(*library.isLoadingDuplicates);
    EXPECT_EQ(names().size(), 4);
}

TEST_F(DuplicatesTableTest, ALoadThatRunsIsNotBegunAgain) {
    openWith({});
    runner.settle();
    runner.clearHistory();
    showSection(LibrarySection::orphans);
    showSection(LibrarySection::duplicates);
    runner.settle();
    EXPECT_TRUE(runner.history().empty());
    finish();
    EXPECT_FALSE(*library.isLoadingDuplicates);
}

TEST_F(DuplicatesTableTest, FoundNothingTheyAreLookedForAgainWithTheNextAppearance) {
    openWith({});
    finish();
    showSection(LibrarySection::orphans);
    EXPECT_FALSE(*library.isLoadingDuplicates);
    showSection(LibrarySection::duplicates);
    EXPECT_TRUE(*library.isLoadingDuplicates);
}

TEST_F(DuplicatesTableTest, ACleanupThatLeavesNoneBeginsNoLoad) {
    openWith(four());
    library.duplicates = std::vector<DuplicateGroup>();
    turn();
    EXPECT_FALSE(*library.isLoadingDuplicates);
    EXPECT_EQ(emptyState().title(), "No Duplicates");
}

// The selection

TEST_F(DuplicatesTableTest, TheSelectionIsKeptByContentAndSurvivesALoad) {
    openWith(four());
    select({"press-kit.zip", "Lease.pdf"});
    EXPECT_EQ(selection(), (std::unordered_set<std::string>{"b2", "d4"}));
    auto found = four();
    found[3].bytesEach = 50'000'000'000; // the lease leads now
    library.duplicates = found;
    turn();
    EXPECT_EQ(selectedNames(), QStringList({"Lease.pdf", "press-kit.zip"}));
}

TEST_F(DuplicatesTableTest, WhatTheSearchHidesStaysSelectedAndComesBack) {
    openWith(four());
    click("Lease.pdf");
    library.searchText = "movies";
    turn();
    EXPECT_EQ(selection(), std::unordered_set<std::string>{"d4"});
    library.searchText = "";
    turn();
    EXPECT_EQ(selectedNames(), QStringList({"Lease.pdf"}));
}

TEST_F(DuplicatesTableTest, CopyPutsThePathsOfAllCopiesOfTheSelectedGroupsOnTheClipboard) {
    openWith(four());
    QGuiApplication::clipboard()->setText("before");
    table().setFocus();
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(pasted(), "before") << "nothing is selected";
    select({"Lease.pdf", "press-kit.zip"});
    press(Qt::Key_C, Qt::ControlModifier);
    QStringList paths;
    for (const std::string path :
         {"Downloads/press-kit.zip", "Desktop/kit.zip", "Documents/Lease.pdf", "Downloads/Lease.pdf"}) {
        paths << QString::fromStdString(home(path));
    }
    EXPECT_EQ(pasted(), paths.join('\n'));
}

// The menu

TEST_F(DuplicatesTableTest, TheMenuHasItsEntriesInTheirOrder) {
    openWith(four());
    const QStringList wanted{"Reveal All Copies in Finder", "Keep Newest, Trash the Rest…"};
    EXPECT_EQ(entries(menuOn("Lease.pdf")), wanted);
    EXPECT_TRUE(entry(openMenu(), wanted[0])->icon().isNull());
    EXPECT_FALSE(entry(openMenu(), wanted[1])->icon().isNull()) << "what removes is marked";
    closeMenu();
    select({"press-kit.zip"});
    EXPECT_EQ(entries(menuOn("Lease.pdf")), wanted) << "for several too";
}

TEST_F(DuplicatesTableTest, TheEmptyTableHasNoMenu) {
    openWith(four());
    click("Lease.pdf");
    EXPECT_EQ(menuBelowTheRows(), nullptr);
}

TEST_F(DuplicatesTableTest, RevealSelectsAllCopiesOfAllSelectedGroupsAtOnce) {
    openWith(four());
    select({"Lease.pdf", "press-kit.zip"});
    choose(menuOn("Lease.pdf"), "Reveal All Copies in Finder");
    EXPECT_EQ(workspace.revealed(),
              (std::vector<std::vector<FileURL>>{{url("Downloads/press-kit.zip"), url("Desktop/kit.zip"),
                                                  url("Documents/Lease.pdf"), url("Downloads/Lease.pdf")}}));
}

TEST_F(DuplicatesTableTest, KeepNewestReviewsAllButTheSuggestedCopyOfEachGroup) {
    openWith(four());
    select({"Studio tour.mov", "press-kit.zip"});
    choose(menuOn("press-kit.zip"), "Keep Newest, Trash the Rest…");
    EXPECT_EQ(reviewed(),
              QStringList({"/Users/alex/Documents/Clients/Studio tour.mov",
                           "/Users/alex/Downloads/Studio tour.mov", "/Users/alex/Downloads/press-kit.zip"}))
        << "of copies without a date the one with the shortest path stays";
    EXPECT_EQ(label(), "Remove copies in 2 groups");
}

TEST_F(DuplicatesTableTest, AChoiceInThePaneDoesNotChangeWhatTheMenuKeeps) {
    openWith(four());
    click("Studio tour.mov");
    turn();
    const auto* const pane = qobject_cast<DuplicatesDetail*>(window->detail(LibrarySection::duplicates));
    auto& rows = *pane->findChild<CopiesList*>();
    rows.press(rows.model()->index(2, 0), CopiesList::Part::Choice);
    turn();
    ASSERT_EQ(rows.model()->index(2, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked);
    choose(menuOn("Studio tour.mov"), "Keep Newest, Trash the Rest…");
    EXPECT_EQ(reviewed(), QStringList({"/Users/alex/Documents/Clients/Studio tour.mov",
                                       "/Users/alex/Downloads/Studio tour.mov"}));
    EXPECT_EQ(label(), "Remove copies of Studio tour.mov");
}

TEST_F(DuplicatesTableTest, AProtectedCopyStaysOutAndWhereNoneCanGoTheEntryIsDisabled) {
    openWith(four());
    protect({url("Downloads/Studio tour.mov")});
    choose(menuOn("Studio tour.mov"), "Keep Newest, Trash the Rest…");
    EXPECT_EQ(reviewed(), QStringList({"/Users/alex/Documents/Clients/Studio tour.mov"}));
    sheet()->reject();
    closeMenu();
    protect({url("Documents/Clients/Studio tour.mov")});
    EXPECT_FALSE(entry(menuOn("Studio tour.mov"), "Keep Newest, Trash the Rest…")->isEnabled());
    closeMenu();
    select({"Lease.pdf"});
    EXPECT_TRUE(entry(menuOn("Lease.pdf"), "Keep Newest, Trash the Rest…")->isEnabled());
}

TEST_F(DuplicatesTableTest, WhatWentWhileTheMenuWasOpenIsNotReviewed) {
    openWith(four());
    auto* const move = entry(menuOn("Lease.pdf"), "Keep Newest, Trash the Rest…");
    library.duplicates = {four()[0]};
    move->trigger();
    turn();
    EXPECT_EQ(sheet(), nullptr);
}

// The pane

TEST_F(DuplicatesTableTest, WithNothingSelectedThePaneSaysWhatToDo) {
    openWith(four());
    const auto* const pane = window->detail(LibrarySection::duplicates)->findChild<EmptyState*>();
    ASSERT_NE(pane, nullptr);
    EXPECT_EQ(pane->title(), "No Selection");
    EXPECT_EQ(pane->sentence(), "Pick a group to choose which copy to keep.");
    EXPECT_EQ(pane->symbol(), "doc.on.doc.fill");
}

TEST_F(DuplicatesTableTest, WhatCameBackFromTheTrashIsLookedForWhenTheSectionIsInSight) {
    openWith(four());
    window->showSection(LibrarySection::overview);
    turn();
    library.areDuplicatesStale = true;
    turn();
    EXPECT_FALSE(*library.isLoadingDuplicates) << "out of sight nothing is looked for";
    window->showSection(startsIn);
    turn();
    EXPECT_TRUE(*library.isLoadingDuplicates);
    EXPECT_FALSE(*library.areDuplicatesStale);
    finish();
    library.areDuplicatesStale = true;
    turn();
    EXPECT_TRUE(*library.isLoadingDuplicates) << "in sight at once";
}
