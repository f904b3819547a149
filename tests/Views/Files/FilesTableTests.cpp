#include "Components/FileKindSymbol.h"
#include "Components/ProtectedMark.h"
#include "Components/PushButton.h"
#include "Components/SegmentedControl.h"
#include "Components/ShownText.h"
#include "Components/TextField.h"
#include "Components/Tint.h"
#include "Components/Tokens.h"
#include "Files/FilePreview.h"
#include "Files/FilesTable.h"
#include "Files/LensBar.h"
#include "Observer.h"
#include "Preview/QuickLookPanel.h"
#include "SectionRecords.h"
#include "SectionTableTest.h"
#include "State/ContentState.h"
#include "Tables/TableRole.h"
#include "ToolTip.h"
#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QHelpEvent>
#include <QToolTip>

using namespace quillane;
using Column = FilesTableModel::Column;

namespace {

class FilesTableTest : public SectionTableTest {
  protected:
    FilesTableTest()
        : SectionTableTest(LibrarySection::files) {}

    // The largest first, as the finder gives them.
    std::vector<UserFile> five() const {
        auto placeholder = fileAt("Documents/Cloud/Field notes.mov", 4'000, daysAgo(32));
        placeholder.logicalBytes = 2'000'000'000;
        placeholder.isCloudPlaceholder = true;
        auto installer = fileAt("Downloads/Alder 2.1.dmg", 120'000'000, daysAgo(400));
        installer.installsAnInstalledApp = true;
        return {fileAt("Movies/Lisbon 4K.mov", 8'420'000'000, daysAgo(412)),
                fileAt("Documents/Thesis/dataset.csv", 2'610'000'000, daysAgo(120)),
                fileAt("Desktop/models.bin", 1'310'000'000), installer, placeholder};
    }
    void openWith(std::vector<UserFile> files) {
        library.files = std::move(files);
        openReady({});
    }
    FilesTable& section() const { return *qobject_cast<FilesTable*>(window->content(LibrarySection::files)); }
    LensBar& bar() const { return *section().lensBar(); }
    static FileURL url(const std::string& path) { return FileURL("/Users/alex/" + path); }
    std::optional<FileURL> lookedAt() const { return window->state().quickLookURL.get(); }
    // The lens is chosen and what it asks is answered with nothing.
    void chooseLens(FilesMode mode) {
        bar().lenses()->setCurrentIndex(static_cast<int>(mode));
        finish();
    }
    void publish(std::vector<UserFile> files) {
        library.files = std::move(files);
        turn();
    }
    int tint(int row, int column, int role = kTintRole) const { return cellData(row, column, role).toInt(); }
    void chooseSearch(const std::string& text) {
        chooseLens(FilesMode::search);
        library.fileSearchText = text;
        turn();
    }
    // What is said of this place of the rows.
    QString helpAt(const QPoint& place) {
        QHelpEvent wanted(QEvent::ToolTip, place, table().viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(table().viewport(), &wanted);
        return readIn(QToolTip::text());
    }
};

// Counts the loads that begin.
class LoadCount final : public Observer {
  public:
    explicit LoadCount(const AppLibrary& library) {
        const Tracking tracking(*this);
        (void)library.filesTask.get();
    }
    void fieldDidChange() override { ++count; }
    int count = 0;
};

} // namespace

// The rows

TEST_F(FilesTableTest, TheColumnsStandInTheirOrder) {
    openWith(five());
    EXPECT_EQ(headings(), QStringList({"Name", "Kind", "Size", "Last Opened", "Where"}));
    EXPECT_EQ(table().accessibleName(), "Files");
}

TEST_F(FilesTableTest, ARowTellsNameKindSizeLastUseAndFolder) {
    openWith(five());
    EXPECT_EQ(column(Column::kName), QStringList({"Lisbon 4K.mov", "dataset.csv", "models.bin",
                                                  "Alder 2.1.dmg", "Field notes.mov"}));
    EXPECT_EQ(column(Column::kKind), QStringList({"Video", "Document", "Archive", "Disk Image", "Video"}));
    EXPECT_EQ(column(Column::kSize), QStringList({"8.42 GB", "2.61 GB", "1.31 GB", "120 MB", "4 KB"}));
    EXPECT_EQ(column(Column::kLastOpened),
              QStringList({"last year", "4 months ago", "Never", "last year", "last month"}));
    EXPECT_EQ(column(Column::kWhere), QStringList({"~/Movies", "~/Documents/Thesis", "~/Desktop",
                                                   "~/Downloads", "~/Documents/Cloud"}));
}

TEST_F(FilesTableTest, EachKindHasItsSymbol) {
    openWith({fileAt("Desktop/a.png", 9), fileAt("Desktop/b.mp3", 8), fileAt("Desktop/c.pdf", 7),
              fileAt("Desktop/d.zip", 6), fileAt("Desktop/e.pkg", 5)});
    QStringList symbols;
    for (int row = 0; row < 5; ++row) {
        symbols << cellData(row, Column::kName, kSymbolRole).toString();
    }
    EXPECT_EQ(symbols, QStringList({"photo", "waveform", "doc.richtext", "doc.zipper", "shippingbox"}));
}

TEST_F(FilesTableTest, TheMarksStandBehindTheNameAndSayWhatTheyMean) {
    openWith(five());
    const auto mark = [&](const QString& name, int role) {
        return cellData(rowOf(name), Column::kName, role).toString();
    };
    EXPECT_EQ(mark("Field notes.mov", kTrailingSymbolRole), "icloud");
    EXPECT_EQ(mark("Field notes.mov", kTrailingHelpRole), "Only a placeholder is on this Mac");
    EXPECT_EQ(mark("Field notes.mov", kFurtherSymbolRole), "");
    EXPECT_EQ(mark("Alder 2.1.dmg", kFurtherSymbolRole), "checkmark.seal");
    EXPECT_EQ(mark("Alder 2.1.dmg", kFurtherHelpRole), "This app is already installed");
    EXPECT_EQ(mark("Alder 2.1.dmg", kTrailingSymbolRole), "");
    EXPECT_EQ(mark("Alder 2.1.dmg", Qt::AccessibleDescriptionRole), "This app is already installed");
    EXPECT_EQ(mark("models.bin", Qt::AccessibleDescriptionRole), "");
}

TEST_F(FilesTableTest, AFileMayWearAllMarksAtOnceAndEachTellsItsOwnHelp) {
    auto files = five();
    files[4].installsAnInstalledApp = true;
    openWith(files);
    protect({files[4].url});
    const auto index = table().model()->index(rowOf("Field notes.mov"), Column::kName);
    EXPECT_EQ(index.data(Qt::AccessibleDescriptionRole).toString(),
              "Only a placeholder is on this Mac. This app is already installed. " +
                  ProtectedMark::helpText());
    const QRect cell = table().visualRect(index);
    const int textEnd = cell.left() + 16 + 15 + 7 +
                        static_cast<int>(QFontMetricsF(table().font()).horizontalAdvance("Field notes.mov"));
    QStringList helps;
    for (int x = textEnd; x < std::min(cell.right(), textEnd + 90); x += 4) {
        const QString help = helpAt(QPoint(x, cell.center().y()));
        if (!help.isEmpty() && (helps.isEmpty() || helps.back() != help)) {
            helps << help;
        }
    }
    EXPECT_EQ(helps, QStringList({"Only a placeholder is on this Mac", "This app is already installed",
                                  ProtectedMark::helpText()}));
}

TEST_F(FilesTableTest, WordsThatWouldDeceiveTheEyeAreShownAsTheyAre) {
    openWith({fileAt("Desktop/exe\u202Efdp.app", 5)});
    EXPECT_EQ(cell(0, Column::kName), "exe‹U+202E›fdp.app");
}

TEST_F(FilesTableTest, TheColumnsHaveTheirWidthsAndTheFolderGivesWayInASmallWindow) {
    openWith(five());
    EXPECT_EQ(table().columnWidth(Column::kKind), 88);
    EXPECT_EQ(table().columnWidth(Column::kSize), 80);
    EXPECT_EQ(table().columnWidth(Column::kLastOpened), 112);
    EXPECT_EQ(table().columnWidth(Column::kWhere), 164 + 8);
    window->resize(ContentView::kMinimumSize);
    turn();
    EXPECT_GE(table().columnWidth(Column::kName), 180);
    EXPECT_GE(table().columnWidth(Column::kWhere), 112);
    EXPECT_EQ(table().header()->length(), table().viewport()->width());
    EXPECT_EQ(cellData(0, Column::kWhere, kElideRole).toInt(), Qt::ElideMiddle);
}

TEST_F(FilesTableTest, TheRowsKeepTheContractOfModels) {
    openWith(five());
    const QAbstractItemModelTester tester(table().model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    auto files = five();
    std::ranges::reverse(files);
    library.files = files;
    turn();
    files.erase(files.begin() + 1);
    library.files = files;
    turn();
    EXPECT_EQ(names().size(), 4);
}

// Order

TEST_F(FilesTableTest, TheLargestOnTheDiskStandsFirst) {
    auto files = five();
    std::ranges::reverse(files);
    openWith(files);
    EXPECT_EQ(names(),
              QStringList({"Lisbon 4K.mov", "dataset.csv", "models.bin", "Alder 2.1.dmg", "Field notes.mov"}))
        << "the placeholder's length does not count";
}

TEST_F(FilesTableTest, EveryHeaderSortsBothWays) {
    openWith(five());
    const auto by = [&](Column column, auto key) {
        SCOPED_TRACE(column);
        expectOrderOfHeader(column, five(), key, Column::kName, [](const UserFile& f) { return f.name(); });
    };
    by(Column::kKind, [](const UserFile& f) { return std::string(rawValue(f.kind)); });
    by(Column::kSize, [](const UserFile& f) { return f.bytes; });
    by(Column::kLastOpened, [](const UserFile& f) { return f.lastUsedSortKey().secondsSince1970(); });
    by(Column::kWhere, [](const UserFile& f) { return f.folder(FileURL("/Users/alex")); });
}

TEST_F(FilesTableTest, NamesSortAsTheFinderSortsThem) {
    openWith(
        {fileAt("Desktop/Take 10.wav", 3), fileAt("Desktop/take 2.wav", 2), fileAt("Desktop/Étude.wav", 1)});
    EXPECT_EQ(orderBy(Column::kName), QStringList({"Étude.wav", "take 2.wav", "Take 10.wav"}));
}

// Footer and badge

TEST_F(FilesTableTest, TheFooterCountsTheFilesAndWhatTheyTakeOnTheDisk) {
    openWith(five());
    EXPECT_EQ(footer(), QStringList({"5 files", "12.46 GB total"}));
    library.photosLibraryBytes = std::optional<Bytes>(84'210'000'000);
    turn();
    EXPECT_EQ(footer(),
              QStringList({"5 files", "Photos library 84.21 GB, managed by Photos", "12.46 GB total"}));
    EXPECT_EQ(badge(), "5");
}

TEST_F(FilesTableTest, OneFileIsOneFileAndAnEmptyPhotosLibraryIsNotTold) {
    openWith({fileAt("Desktop/a.mov", 200'000'000)});
    library.photosLibraryBytes = std::optional<Bytes>(0);
    turn();
    EXPECT_EQ(footer(), QStringList({"1 file", "200 MB total"}));
}

TEST_F(FilesTableTest, TheSearchOfTheWindowDoesNotConcernThisTable) {
    openWith(five());
    library.searchText = "zzz";
    turn();
    EXPECT_EQ(names().size(), 5);
}

// What stands in place of rows

TEST_F(FilesTableTest, FilesAreLookedForWhenTheSectionAppearsAndHasNone) {
    startsIn = LibrarySection::applications;
    openReady({});
    EXPECT_FALSE(*library.isLoadingFiles);
    startsIn = LibrarySection::files;
    window->showSection(LibrarySection::files);
    turn();
    EXPECT_TRUE(*library.isLoadingFiles);
    EXPECT_TRUE(emptyState().isLoading());
    EXPECT_EQ(emptyState().title(), "Asking Spotlight…");
}

TEST_F(FilesTableTest, ASectionThatHoldsFilesDoesNotAskAgain) {
    openWith(five());
    window->showSection(LibrarySection::overview);
    turn();
    window->showSection(LibrarySection::files);
    turn();
    EXPECT_FALSE(*library.isLoadingFiles);
    EXPECT_EQ(names().size(), 5);
}

TEST_F(FilesTableTest, AnEmptyLensSaysWhatItLookedFor) {
    openWith({});
    finish();
    const auto isToldAs = [&](FilesMode mode, const QString& sentence) {
        SCOPED_TRACE(sentence.toStdString());
        chooseLens(mode);
        EXPECT_FALSE(emptyState().isLoading());
        EXPECT_EQ(emptyState().title(), "Nothing Here");
        EXPECT_EQ(emptyState().symbol(), "checkmark.circle");
        EXPECT_EQ(emptyState().sentence(), sentence);
        EXPECT_EQ(footer(), QStringList());
    };
    isToldAs(FilesMode::screenshots, "No screenshots found.");
    isToldAs(FilesMode::installers, "No installers in Downloads or on the Desktop.");
    isToldAs(FilesMode::large, "No files over 100 MB in your folders.");
}

TEST_F(FilesTableTest, AnEmptyFieldOfTheSearchLensShowsTheHintWhateverWasFoundBefore) {
    openWith(five());
    chooseLens(FilesMode::search);
    EXPECT_EQ(emptyState().title(), "Search your files");
    EXPECT_EQ(emptyState().symbol(), "magnifyingglass");
    EXPECT_EQ(emptyState().sentence(), "Spotlight indexes what's written inside documents, so “invoice 2023” "
                                       "finds a PDF by its contents.");
    library.files = five();
    library.fileSearchText = "  ";
    turn();
    EXPECT_TRUE(emptyState().isVisible());
    EXPECT_EQ(emptyState().title(), "Search your files");
    EXPECT_EQ(names(), QStringList());
    EXPECT_EQ(footer(), QStringList());
}

TEST_F(FilesTableTest, ASearchThatFindsNothingSaysSoAndGivesNoHint) {
    openWith({});
    finish();
    chooseLens(FilesMode::search);
    bar().text()->setFocus();
    QTest::keyClicks(bar().text(), "zebra");
    QTest::keyClick(bar().text(), Qt::Key_Return);
    turn();
    EXPECT_EQ(emptyState().title(), "Asking Spotlight…");
    finish();
    EXPECT_EQ(emptyState().title(), "Nothing Here");
    EXPECT_EQ(emptyState().sentence(), "No matches.");
}

TEST_F(FilesTableTest, OldRowsStayWhileANewLoadRuns) {
    openWith(five());
    library.loadFiles();
    turn();
    EXPECT_TRUE(*library.isLoadingFiles);
    EXPECT_EQ(names().size(), 5);
    EXPECT_FALSE(emptyState().isVisible());
}

// The lens bar

TEST_F(FilesTableTest, TheLensesAreNamedAndTheSearchRowComesWithItsLens) {
    openWith(five());
    EXPECT_EQ(bar().lenses()->count(), 4);
    EXPECT_EQ(bar().lenses()->currentIndex(), 0);
    EXPECT_EQ(QStringList({words(rawValue(FilesMode::large)), words(rawValue(FilesMode::screenshots)),
                           words(rawValue(FilesMode::installers)), words(rawValue(FilesMode::search))}),
              QStringList({"Large & Old", "Screenshots", "Installers", "Search"}));
    EXPECT_FALSE(bar().text()->isVisible());
    chooseLens(FilesMode::search);
    EXPECT_TRUE(bar().text()->isVisible());
    EXPECT_EQ(bar().text()->placeholderText(), "Name, or text inside the file");
    QStringList kinds;
    for (int i = 0; i < bar().kind()->count(); ++i) {
        kinds << bar().kind()->itemText(i);
    }
    EXPECT_EQ(kinds, QStringList({"Any kind", "Image", "Video", "Audio", "PDF", "Document", "Archive",
                                  "Disk Image", "Installer", "File"}));
    EXPECT_EQ(bar().kind()->accessibleName(), "Kind");
    EXPECT_EQ(bar().search()->label(), "Search");
    EXPECT_EQ(namelessControls(), QStringList());
}

TEST_F(FilesTableTest, AnotherLensAsksAnew) {
    openWith(five());
    bar().lenses()->setCurrentIndex(static_cast<int>(FilesMode::screenshots));
    EXPECT_EQ(library.filesMode(), FilesMode::screenshots);
    EXPECT_TRUE(*library.isLoadingFiles);
    finish();
    EXPECT_EQ(names(), QStringList()) << "and its answer has come";
}

TEST_F(FilesTableTest, TypingAloneAsksNothing) {
    openWith({});
    finish();
    chooseLens(FilesMode::search);
    bar().text()->setFocus();
    QTest::keyClicks(bar().text(), "invoice");
    turn();
    EXPECT_EQ(*library.fileSearchText, "invoice");
    EXPECT_FALSE(*library.isLoadingFiles);
}

TEST_F(FilesTableTest, ReturnTheButtonAndAnotherKindAskEach) {
    openWith({});
    finish();
    chooseLens(FilesMode::search);
    bar().text()->setFocus();
    QTest::keyClicks(bar().text(), "invoice");
    QTest::keyClick(bar().text(), Qt::Key_Return);
    EXPECT_TRUE(*library.isLoadingFiles) << "Return";
    finish();
    QTest::mouseClick(bar().search(), Qt::LeftButton);
    EXPECT_TRUE(*library.isLoadingFiles) << "the button";
    finish();
    bar().kind()->setFocus();
    QTest::keyClick(bar().kind(), Qt::Key_Down);
    EXPECT_EQ(*library.fileSearchKind, UserFile::Kind::image);
    EXPECT_TRUE(*library.isLoadingFiles) << "another kind";
    finish();
    QTest::keyClick(bar().kind(), Qt::Key_Up);
    EXPECT_EQ(*library.fileSearchKind, std::nullopt);
    EXPECT_TRUE(*library.isLoadingFiles);
}

TEST_F(FilesTableTest, TheLensIsChosenByArrows) {
    openWith(five());
    bar().lenses()->setFocus();
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    EXPECT_EQ(library.filesMode(), FilesMode::screenshots);
}

// Looking, copying, moving

TEST_F(FilesTableTest, SpaceLooksAtTheFirstSelectedFileAndAgainAtNone) {
    openWith(five());
    table().setFocus();
    click("dataset.csv");
    press(Qt::Key_Space);
    EXPECT_EQ(lookedAt(), url("Documents/Thesis/dataset.csv"));
    press(Qt::Key_Space);
    EXPECT_EQ(lookedAt(), std::nullopt);
}

TEST_F(FilesTableTest, SpaceWithNothingSelectedLooksAtNothing) {
    openWith(five());
    table().setFocus();
    ASSERT_EQ(selectedNames(), QStringList());
    table().selectionModel()->setCurrentIndex(table().model()->index(1, 0), QItemSelectionModel::NoUpdate);
    press(Qt::Key_Space);
    EXPECT_EQ(lookedAt(), std::nullopt);
}

TEST_F(FilesTableTest, WhatIsLookedAtFollowsTheSelection) {
    openWith(five());
    click("dataset.csv");
    table().setFocus();
    press(Qt::Key_Down);
    EXPECT_EQ(lookedAt(), std::nullopt) << "nothing was looked at";
    press(Qt::Key_Space);
    press(Qt::Key_Up);
    EXPECT_EQ(lookedAt(), url("Documents/Thesis/dataset.csv"));
    press(Qt::Key_Home);
    EXPECT_EQ(lookedAt(), url("Movies/Lisbon 4K.mov"));
}

TEST_F(FilesTableTest, CopyingPutsTheSelectedPathsOnTheClipboardALineEach) {
    openWith(five());
    QGuiApplication::clipboard()->setText("before");
    table().setFocus();
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(pasted(), "before") << "nothing is selected";
    select({"models.bin", "Lisbon 4K.mov"});
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(pasted(), "/Users/alex/Movies/Lisbon 4K.mov\n/Users/alex/Desktop/models.bin");
}

TEST_F(FilesTableTest, TypedLettersGoToTheNameThatBeginsWithThem) {
    openWith(five());
    table().setFocus();
    QTest::keyClicks(&table(), "mod");
    turn();
    EXPECT_EQ(selectedNames(), QStringList({"models.bin"}));
}

TEST_F(FilesTableTest, TheMenuOfOneFile) {
    openWith(five());
    auto* const menu = menuOn("models.bin");
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(entries(menu), QStringList({"Quick Look", "Open", "Reveal in Finder", "-", "Never Touch This",
                                          "Move to Trash…"}));
    choose(menu, "Quick Look");
    EXPECT_EQ(lookedAt(), url("Desktop/models.bin"));
    choose(menu, "Open");
    choose(menu, "Reveal in Finder");
    EXPECT_EQ(workspace.opened(), std::vector<FileURL>({url("Desktop/models.bin")}));
    EXPECT_EQ(workspace.revealed(), std::vector<std::vector<FileURL>>({{url("Desktop/models.bin")}}));
    choose(menu, "Move to Trash…");
    EXPECT_EQ(reviewed(), QStringList({"/Users/alex/Desktop/models.bin"}));
    EXPECT_EQ(label(), "Remove models.bin");
}

TEST_F(FilesTableTest, TheMenuOfSeveralFilesCountsThem) {
    openWith(five());
    select({"models.bin", "dataset.csv"});
    auto* const menu = menuOn("dataset.csv");
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(entries(menu).back(), "Move 2 Files to Trash…");
    choose(menu, "Quick Look");
    EXPECT_EQ(lookedAt(), url("Documents/Thesis/dataset.csv")) << "the first from the top";
    choose(menu, "Open");
    EXPECT_EQ(workspace.opened(),
              std::vector<FileURL>({url("Documents/Thesis/dataset.csv"), url("Desktop/models.bin")}));
    choose(menu, "Reveal in Finder");
    EXPECT_EQ(workspace.revealed(), std::vector<std::vector<FileURL>>(
                                        {{url("Documents/Thesis/dataset.csv"), url("Desktop/models.bin")}}))
        << "both in one window";
    EXPECT_FALSE(entry(menu, "Move 2 Files to Trash…")->icon().isNull()) << "the mark of what removes";
    choose(menu, "Move 2 Files to Trash…");
    EXPECT_EQ(reviewed().size(), 2);
    EXPECT_EQ(label(), "Remove 2 files");
}

TEST_F(FilesTableTest, TheMenuProtectsEveryFileAndThenNothingMoves) {
    openWith(five());
    select({"models.bin", "dataset.csv"});
    choose(menuOn("dataset.csv"), "Never Touch This");
    closeMenu();
    turn();
    EXPECT_TRUE(library.isProtected(url("Desktop/models.bin")));
    EXPECT_TRUE(library.isProtected(url("Documents/Thesis/dataset.csv")));
    auto* const menu = menuOn("dataset.csv");
    EXPECT_FALSE(entry(menu, "Move 2 Files to Trash…")->isEnabled());
    choose(menu, "Remove Protection");
    EXPECT_FALSE(library.isProtected(url("Desktop/models.bin")));
}

TEST_F(FilesTableTest, OneProtectedFileAmongSeveralStaysOutOfTheReview) {
    openWith(five());
    protect({url("Desktop/models.bin")});
    select({"models.bin", "dataset.csv"});
    auto* const menu = menuOn("dataset.csv");
    EXPECT_TRUE(entries(menu).contains("Never Touch This"));
    choose(menu, "Move 2 Files to Trash…");
    EXPECT_EQ(reviewed(), QStringList({"/Users/alex/Documents/Thesis/dataset.csv"}));
}

TEST_F(FilesTableTest, AClickOnTheSearchLensMeansToTypeAndArrowsStayAmongTheLenses) {
    openWith(five());
    bar().lenses()->setFocus(Qt::TabFocusReason);
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
        turn();
    }
    ASSERT_EQ(library.filesMode(), FilesMode::search);
    EXPECT_FALSE(bar().text()->hasFocus());
    chooseLens(FilesMode::large);
    QTest::mouseClick(&table(), Qt::LeftButton);
    auto* const last = bar().lenses()->findChildren<QAbstractButton*>().back();
    QTest::mouseClick(last, Qt::LeftButton);
    turn();
    ASSERT_EQ(library.filesMode(), FilesMode::search);
    EXPECT_TRUE(bar().text()->hasFocus());
}

TEST_F(FilesTableTest, SpaceLooksAtWhatIsSelectedWhereverTheCursorStands) {
    openWith(five());
    click("dataset.csv");
    library.files = std::vector<UserFile>(); // another lens
    turn();
    library.files = five(); // and back
    turn();
    table().setFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_EQ(lookedAt(), url("Documents/Thesis/dataset.csv"));
    EXPECT_EQ(selectedNames(), QStringList({"dataset.csv"}));
}

TEST_F(FilesTableTest, AHeldSpaceLooksOnce) {
    openWith(five());
    click("dataset.csv");
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", true);
    QCoreApplication::sendEvent(&table(), &held);
    EXPECT_EQ(lookedAt(), std::nullopt);
}

TEST_F(FilesTableTest, TheLookThatWasOpenedFromThePaneGoesThroughTheRowsWithArrows) {
    openWith(five());
    click("dataset.csv");
    finish();
    auto* const preview = window->findChild<FilePreview*>();
    ASSERT_NE(preview, nullptr);
    preview->setFocus(Qt::TabFocusReason);
    QTest::keyClick(preview, Qt::Key_Space);
    finish();
    ASSERT_EQ(lookedAt(), url("Documents/Thesis/dataset.csv"));
    QTest::keyClick(window->quickLook(), Qt::Key_Down);
    finish();
    EXPECT_EQ(selectedNames(), QStringList({"models.bin"}));
    EXPECT_EQ(lookedAt(), url("Desktop/models.bin"));
    QTest::keyClick(window->quickLook(), Qt::Key_Escape);
    finish();
    EXPECT_EQ(lookedAt(), std::nullopt);
    EXPECT_EQ(window->focusWidget(), preview) << "the keyboard is where it was";
}

TEST_F(FilesTableTest, AFileThatHasGoneIsNoLongerLookedAt) {
    openWith(five());
    select({"dataset.csv", "models.bin"});
    window->state().quickLookURL = url("Documents/Thesis/dataset.csv");
    turn();
    auto files = five();
    files.erase(files.begin() + 1);
    library.files = files;
    turn();
    EXPECT_EQ(lookedAt(), url("Desktop/models.bin")) << "what is still selected";
    files.erase(files.begin() + 1);
    library.files = files;
    turn();
    EXPECT_EQ(lookedAt(), std::nullopt);
}

TEST_F(FilesTableTest, TheReviewEndsTheLook) {
    openWith(five());
    click("dataset.csv");
    window->state().quickLookURL = url("Documents/Thesis/dataset.csv");
    turn();
    choose(menuOn("dataset.csv"), "Move to Trash…");
    EXPECT_EQ(reviewed().size(), 1);
    EXPECT_EQ(lookedAt(), std::nullopt);
}

TEST_F(FilesTableTest, ReturnSearchesFromEveryControlOfTheSearchAndOnce) {
    openWith({});
    finish();
    chooseLens(FilesMode::search);
    library.fileSearchText = "invoice";
    turn();
    for (QWidget* const control :
         {static_cast<QWidget*>(bar().search()), static_cast<QWidget*>(bar().kind())}) {
        control->setFocus();
        QTest::keyClick(control, Qt::Key_Return);
        EXPECT_TRUE(*library.isLoadingFiles) << control->accessibleName().toStdString();
        finish();
    }
    bar().text()->setFocus();
    LoadCount loads(library);
    QTest::keyClick(bar().text(), Qt::Key_Return);
    EXPECT_TRUE(*library.isLoadingFiles);
    EXPECT_EQ(loads.count, 1) << "one load, whatever hears of the key";
}

TEST_F(FilesTableTest, UndoBelongsToTheWindowWhileTheFieldHasNothingToTakeBack) {
    openWith({});
    finish();
    chooseLens(FilesMode::search);
    const auto isClaimed = [&] {
        QKeyEvent undo(QEvent::ShortcutOverride, Qt::Key_Z, Qt::ControlModifier);
        undo.ignore();
        QCoreApplication::sendEvent(bar().text(), &undo);
        return undo.isAccepted();
    };
    EXPECT_FALSE(isClaimed());
    bar().text()->setFocus();
    QTest::keyClicks(bar().text(), "a");
    EXPECT_TRUE(isClaimed());
}

TEST_F(FilesTableTest, TabGoesFromTheLensesThroughTheSearchToTheRows) {
    openWith({});
    finish();
    chooseLens(FilesMode::search);
    library.fileSearchText = "invoice";
    library.files = five();
    turn();
    bar().text()->setFocus(Qt::TabFocusReason);
    std::vector<QWidget*> reached;
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        reached.push_back(QApplication::focusWidget());
    }
    EXPECT_EQ(reached, (std::vector<QWidget*>{bar().kind(), bar().search(), &table()}))
        << reached.back()->metaObject()->className();
}

TEST_F(FilesTableTest, ALoadThatRunsIsNotBegunAgain) {
    startsIn = LibrarySection::applications;
    openReady({});
    startsIn = LibrarySection::files;
    window->showSection(LibrarySection::files);
    turn();
    const auto first = library.filesTask.get();
    ASSERT_TRUE(first.has_value());
    window->showSection(LibrarySection::overview);
    turn();
    window->showSection(LibrarySection::files);
    turn();
    EXPECT_FALSE(first->isCancelled());
}

TEST_F(FilesTableTest, WhatWentWhileTheMenuWasOpenIsNotReviewed) {
    openWith(five());
    select({"models.bin", "dataset.csv"});
    auto* const menu = menuOn("dataset.csv");
    auto files = five();
    files.erase(files.begin() + 1);
    library.files = files;
    turn();
    choose(menu, "Move 2 Files to Trash…");
    EXPECT_EQ(reviewed(), QStringList({"/Users/alex/Desktop/models.bin"}));
}

// What is drawn again and what is not

TEST_F(FilesTableTest, WhateverChangesOfAFileItsRowTellsAnew) {
    openWith(five());
    auto files = five();
    const auto second = [&](int column, int role = Qt::DisplayRole) {
        publish(files);
        return cellData(1, column, role).toString();
    };
    EXPECT_EQ(second(Column::kName, kTrailingSymbolRole), "");
    files[1].isCloudPlaceholder = true;
    EXPECT_EQ(second(Column::kName, kTrailingSymbolRole), "icloud");
    files[1].installsAnInstalledApp = true;
    EXPECT_EQ(second(Column::kName, kFurtherSymbolRole), "checkmark.seal");
    files[1].lastUsed = daysAgo(1);
    EXPECT_EQ(second(Column::kLastOpened), "yesterday");
    files[1].bytes = 2'500'000'000;
    EXPECT_EQ(second(Column::kSize), "2.5 GB");
    files[1].kind = UserFile::Kind::other;
    EXPECT_EQ(second(Column::kKind), "File");
    EXPECT_FALSE(cellData(1, Column::kName, kProtectedRole).toBool());
    protect({files[1].url});
    EXPECT_TRUE(cellData(1, Column::kName, kProtectedRole).toBool());
}

TEST_F(FilesTableTest, KindAndFolderAndTheSymbolAreQuietAndLongNamesLoseTheirMiddle) {
    openWith(five());
    const int quiet = static_cast<int>(Tint::Secondary);
    EXPECT_EQ(tint(0, Column::kName, kSymbolTintRole), quiet);
    EXPECT_EQ(tint(0, Column::kKind), quiet);
    EXPECT_EQ(tint(0, Column::kWhere), quiet);
    EXPECT_FALSE(cellData(0, Column::kName, kTintRole).isValid());
    EXPECT_EQ(cellData(0, Column::kName, kElideRole).toInt(), Qt::ElideMiddle);
    const auto side = table().model()->headerData(Column::kSize, Qt::Horizontal, Qt::TextAlignmentRole);
    EXPECT_TRUE(Qt::Alignment(side.toInt()).testFlag(Qt::AlignRight));
}

TEST_F(FilesTableTest, AFolderThatWouldDeceiveTheEyeIsShownAsItIs) {
    openWith({fileAt("Desk\u202Etop/a.bin", 5)});
    EXPECT_EQ(cell(0, Column::kWhere), "~/Desk‹U+202E›top");
}

TEST_F(FilesTableTest, FoldersSortAsTheFinderSortsNamesAndKindsByTheirWords) {
    openWith({fileAt("Desktop/Take 10/a.png", 3), fileAt("Desktop/take 2/b.iso", 2),
              fileAt("Desktop/Étude/c.zip", 1)});
    EXPECT_EQ(orderBy(Column::kWhere), QStringList({"c.zip", "b.iso", "a.png"}));
    EXPECT_EQ(orderBy(Column::kKind), QStringList({"c.zip", "b.iso", "a.png"}))
        << "Archive, Disk Image, Image";
}

// The look

TEST_F(FilesTableTest, OfSeveralSelectedFilesTheFirstFromTheTopIsLookedAt) {
    openWith(five());
    table().setFocus();
    select({"models.bin", "dataset.csv"});
    press(Qt::Key_Space);
    EXPECT_EQ(lookedAt(), url("Documents/Thesis/dataset.csv"));
    click("Alder 2.1.dmg", Qt::ControlModifier);
    EXPECT_EQ(lookedAt(), url("Documents/Thesis/dataset.csv"));
    click("Lisbon 4K.mov", Qt::ControlModifier);
    EXPECT_EQ(lookedAt(), url("Movies/Lisbon 4K.mov"));
}

TEST_F(FilesTableTest, OfSeveralThatStaySelectedTheFirstTakesThePlaceOfWhatHasGone) {
    openWith(five());
    select({"dataset.csv", "models.bin", "Alder 2.1.dmg"});
    window->state().quickLookURL = url("Documents/Thesis/dataset.csv");
    turn();
    auto files = five();
    files.erase(files.begin() + 1);
    publish(files);
    EXPECT_EQ(lookedAt(), url("Desktop/models.bin"));
}

TEST_F(FilesTableTest, WhatIsLookedAtStaysWhenNothingIsSelectedAnyMore) {
    openWith(five());
    table().setFocus();
    click("dataset.csv");
    press(Qt::Key_Space);
    table().clearSelection();
    turn();
    EXPECT_EQ(lookedAt(), url("Documents/Thesis/dataset.csv"));
}

TEST_F(FilesTableTest, NothingIsLookedAtBecauseItIsSelected) {
    openWith(five());
    click("dataset.csv");
    click("models.bin");
    EXPECT_EQ(lookedAt(), std::nullopt);
}

// Loads

TEST_F(FilesTableTest, AWindowThatComesBackFromTheDockLooksForNothing) {
    openWith({});
    finish();
    ASSERT_FALSE(*library.isLoadingFiles);
    QShowEvent back;
    QSpontaneKeyEvent::setSpontaneous(&back);
    QCoreApplication::instance()->notify(&section(), &back); // as sent by the system
    EXPECT_FALSE(*library.isLoadingFiles);
    window->showSection(LibrarySection::overview);
    turn();
    window->showSection(LibrarySection::files);
    turn();
    EXPECT_TRUE(*library.isLoadingFiles) << "but who comes back to the section does";
}

TEST_F(FilesTableTest, TheHintStandsWhileAnOlderSearchStillRuns) {
    openWith({});
    finish();
    chooseSearch("zebra");
    library.loadFiles();
    turn();
    ASSERT_EQ(emptyState().title(), "Asking Spotlight…");
    library.fileSearchText = "";
    turn();
    EXPECT_TRUE(*library.isLoadingFiles);
    EXPECT_FALSE(emptyState().isLoading());
    EXPECT_EQ(emptyState().title(), "Search your files");
}

TEST_F(FilesTableTest, OtherLensesHeedNoSearchTextAndTheSearchLensThatOfItsFieldAlone) {
    openWith(five());
    library.fileSearchText = "";
    library.searchText = "zzz";
    turn();
    EXPECT_EQ(names().size(), 5);
    EXPECT_EQ(footer().size(), 2);
    chooseSearch("");
    EXPECT_EQ(emptyState().title(), "Search your files");
}

// The lens bar

TEST_F(FilesTableTest, TheBarTellsWhatTheLibraryHas) {
    openWith(five());
    library.setFilesMode(FilesMode::search);
    library.fileSearchText = "invoice";
    library.fileSearchKind = UserFile::Kind::pdf;
    turn();
    EXPECT_EQ(bar().lenses()->currentIndex(), static_cast<int>(FilesMode::search));
    EXPECT_EQ(bar().text()->text(), "invoice");
    EXPECT_EQ(bar().kind()->currentText(), "PDF");
    library.fileSearchKind = std::nullopt;
    turn();
    EXPECT_EQ(bar().kind()->currentText(), "Any kind");
}

TEST_F(FilesTableTest, EachEntryOfThePickerIsItsKind) {
    openWith({});
    finish();
    chooseSearch("invoice");
    for (const auto kind : kAllUserFileKinds) {
        bar().kind()->activated(bar().kind()->findText(words(rawValue(kind))));
        EXPECT_EQ(*library.fileSearchKind, kind);
        finish();
    }
    bar().kind()->activated(0);
    EXPECT_EQ(*library.fileSearchKind, std::nullopt);
}

TEST_F(FilesTableTest, TheKindThatIsChosenAlreadyAsksNothing) {
    openWith({});
    finish();
    chooseSearch("invoice");
    bar().kind()->activated(0);
    EXPECT_FALSE(*library.isLoadingFiles);
    bar().kind()->activated(1);
    EXPECT_TRUE(*library.isLoadingFiles);
}

TEST_F(FilesTableTest, WhoTypesInTheMiddleOfTheWordsStaysThere) {
    openWith({});
    finish();
    chooseSearch("invce");
    bar().text()->setFocus();
    bar().text()->setCursorPosition(3);
    for (const char letter : {'o', 'i'}) {
        QTest::keyClick(bar().text(), letter);
        turn();
    }
    EXPECT_EQ(*library.fileSearchText, "invoice");
}

TEST_F(FilesTableTest, TheEnterKeyOfTheNumbersSearchesToo) {
    openWith({});
    finish();
    chooseSearch("invoice");
    for (QWidget* const control : {static_cast<QWidget*>(bar().text()), static_cast<QWidget*>(bar().search()),
                                   static_cast<QWidget*>(bar().kind())}) {
        control->setFocus();
        QTest::keyClick(control, Qt::Key_Enter);
        EXPECT_TRUE(*library.isLoadingFiles) << control->metaObject()->className();
        finish();
    }
}

TEST_F(FilesTableTest, ReturnOnALensThatIsNoSearchAsksNothing) {
    openWith(five());
    bar().lenses()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(*library.isLoadingFiles);
}

TEST_F(FilesTableTest, AHeldReturnSearchesOnce) {
    openWith({});
    finish();
    chooseSearch("invoice");
    bar().kind()->setFocus();
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
    QCoreApplication::sendEvent(bar().kind(), &held);
    EXPECT_FALSE(*library.isLoadingFiles);
}

TEST_F(FilesTableTest, TheControlsOfTheSearchAreOfOneHeight) {
    openWith({});
    chooseSearch("invoice");
    EXPECT_EQ(bar().text()->height(), bar().search()->height());
    EXPECT_EQ(bar().kind()->height(), bar().search()->height());
}

TEST_F(FilesTableTest, TheBarHasTheGroundOfTheTableAndALineBelow) {
    openWith(five());
    const QImage drawn = bar().grab().toImage();
    EXPECT_EQ(drawn.pixel(4, 4), Tokens::current().base.rgb());
    EXPECT_EQ(drawn.pixel(drawn.width() / 2, drawn.height() - 1), Tokens::current().line.rgb());
}

// The menu

TEST_F(FilesTableTest, NoMenuComesWhereNothingIsSelected) {
    openWith(five());
    EXPECT_EQ(menuBelowTheRows(), nullptr);
}

TEST_F(FilesTableTest, WhatCameBackFromTheTrashIsLookedForWhenTheSectionIsInSight) {
    openWith(five());
    window->showSection(LibrarySection::overview);
    turn();
    library.areFilesStale = true;
    turn();
    EXPECT_FALSE(*library.isLoadingFiles) << "out of sight nothing is looked for";
    window->showSection(startsIn);
    turn();
    EXPECT_TRUE(*library.isLoadingFiles);
    EXPECT_FALSE(*library.areFilesStale);
    finish();
    library.areFilesStale = true;
    turn();
    EXPECT_TRUE(*library.isLoadingFiles) << "in sight at once";
}
