#include "Components/DetailHeader.h"
#include "Components/EmptyState.h"
#include "Components/Label.h"
#include "Components/Note.h"
#include "Components/PushButton.h"
#include "Components/SymbolView.h"
#include "Components/Tokens.h"
#include "Components/ValueField.h"
#include "Files/FileDetailView.h"
#include "Files/FilePreview.h"
#include "Files/FilesDetail.h"
#include "Panes/BulkSummary.h"
#include "Panes/PanePlaceholder.h"
#include "SectionDetailTest.h"
#include "SectionRecords.h"
#include <QScrollArea>
#include <QScrollBar>

using namespace quillane;

namespace {

class FilesPane : public SectionDetailTest<FilesDetail> {
  protected:
    UserFile movie() const { return fileAt("Movies/Lisbon 4K.mov", 8'420'000'000, daysBack(412)); }
    UserFile placeholder() const {
        auto file = fileAt("Documents/Cloud/Notes.mov", 4'000);
        file.logicalBytes = 2'000'000'000;
        file.isCloudPlaceholder = true;
        return file;
    }
    UserFile installer() const {
        auto file = fileAt("Downloads/Alder 2.1.dmg", 120'000'000, daysBack(1));
        file.installsAnInstalledApp = true;
        return file;
    }
    FileDetailView& show(const UserFile& file) {
        library.files = std::vector<UserFile>{movie(), placeholder(), installer()};
        state.fileSelection = std::unordered_set<FileURL>{file.url};
        openColumn();
        return *column->one();
    }
    void select(std::unordered_set<FileURL> urls) {
        state.fileSelection = std::move(urls);
        turn();
    }
    void setLook(const UserFile& file) {
        IconImage image{40, 20, std::vector<std::uint8_t>(40 * 20 * 4, 128)};
        previews.setThumbnail(file.url, std::make_shared<const IconImage>(std::move(image)));
    }
    // Two colours, the first above or left of the other.
    void setLook(const UserFile& file, int width, int height, QRgb first, QRgb second) {
        IconImage image{width, height, {}};
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const QRgb colour = (width > height ? x < width / 2 : y < height / 2) ? first : second;
                for (const int part : {qRed(colour), qGreen(colour), qBlue(colour), 255}) {
                    image.rgba.push_back(static_cast<std::uint8_t>(part));
                }
            }
        }
        previews.setThumbnail(file.url, std::make_shared<const IconImage>(std::move(image)));
    }
    QImage lookAsDrawn() const { return column->one()->preview()->grab().toImage(); }
    // A file that wears every mark.
    UserFile marked() const {
        auto file = fileAt("Downloads/Every mark.dmg", 4'000, daysBack(2));
        file.logicalBytes = 2'000'000'000;
        file.isCloudPlaceholder = true;
        file.installsAnInstalledApp = true;
        return file;
    }
    FileDetailView& showMarked() {
        library.files = std::vector<UserFile>{marked()};
        library.setProtected(marked().url, true);
        state.fileSelection = std::unordered_set<FileURL>{marked().url};
        openColumn();
        return *column->one();
    }
    QStringList notes() const {
        QStringList texts;
        for (const auto* const note : {column->one()->placeholderNote(), column->one()->installedNote(),
                                       column->one()->protectedNote()}) {
            if (note->isVisible()) {
                texts << note->text();
            }
        }
        return texts;
    }
};

} // namespace

TEST_F(FilesPane, NothingSelectedShowsThePlaceholder) {
    openColumn();
    EXPECT_TRUE(showsNone());
    EXPECT_EQ(column->placeholder()->emptyState()->title(), "No Selection");
    EXPECT_EQ(column->placeholder()->emptyState()->sentence(),
              "Pick a file to preview it. Space opens Quick Look.");
    EXPECT_EQ(column->placeholder()->emptyState()->symbol(), "doc.on.doc");
}

TEST_F(FilesPane, OneFileTellsNameKindFactsAndFolder) {
    auto& pane = show(movie());
    EXPECT_TRUE(showsOne());
    EXPECT_EQ(pane.header()->title(), "Lisbon 4K.mov");
    EXPECT_EQ(pane.header()->subtitle(), "Video");
    EXPECT_EQ(figures(*pane.stats()), Pairs({{"On Disk", "8.42 GB"}, {"Last Opened", "412 days ago"}}));
    EXPECT_EQ(pane.folder()->text(), "~/Movies");
    EXPECT_TRUE(pane.folder()->alignment().testFlag(Qt::AlignLeft));
    EXPECT_EQ(notes(), QStringList());
    keepBoth("files-pane");
}

TEST_F(FilesPane, APlaceholderShowsBothSizesAndWhatTrashingItMeans) {
    auto& pane = show(placeholder());
    EXPECT_EQ(figures(*pane.stats()),
              Pairs({{"On Disk", "4 KB"}, {"Last Opened", "Unknown"}, {"In the Cloud", "2 GB"}}));
    EXPECT_EQ(notes(), QStringList({"Only a placeholder is stored on this Mac. Trashing it evicts the local "
                                    "copy; the file stays in the cloud."}));
}

TEST_F(FilesPane, AnInstallerThatHasDoneItsJobSaysSo) {
    auto& pane = show(installer());
    EXPECT_EQ(notes(), QStringList({"An app with this name is already installed, so this installer has done "
                                    "its job."}));
    EXPECT_EQ(figures(*pane.stats())[1], (std::pair<QString, QString>{"Last Opened", "1 days ago"}));
    keepBoth("files-pane-installer");
}

TEST_F(FilesPane, AProtectedFileSaysSoAndCannotBeMoved) {
    auto& pane = show(movie());
    EXPECT_TRUE(pane.removeButton()->isEnabled());
    library.setProtected(movie().url, true);
    turn();
    EXPECT_EQ(notes(),
              QStringList({"Protected. Quillane will not remove this until you lift the protection."}));
    EXPECT_FALSE(pane.removeButton()->isEnabled());
}

TEST_F(FilesPane, TheButtonsRevealTheFileAndAskToMoveIt) {
    auto& pane = show(movie());
    EXPECT_EQ(pane.revealButton()->label(), "Reveal in Finder");
    EXPECT_EQ(pane.removeButton()->label(), "Move to Trash");
    press(pane.revealButton());
    EXPECT_EQ(workspace.revealed(), std::vector<std::vector<FileURL>>({{movie().url}}));
    press(pane.removeButton());
    EXPECT_EQ(asked(), std::vector<FileURL>({movie().url}));
    EXPECT_EQ(askedLabel(), "Remove Lisbon 4K.mov");
}

TEST_F(FilesPane, APressOnTheLookOpensACloserOneAndAnotherClosesIt) {
    auto& pane = show(movie());
    EXPECT_EQ(pane.preview()->accessibleName(), "Quick Look");
    press(pane.preview());
    EXPECT_EQ(*state.quickLookURL, movie().url);
    press(pane.preview());
    EXPECT_EQ(*state.quickLookURL, std::nullopt);
    pane.preview()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(pane.preview(), Qt::Key_Space);
    EXPECT_EQ(*state.quickLookURL, movie().url) << "by keyboard too";
}

TEST_F(FilesPane, SeveralFilesAreSummedUp) {
    show(movie());
    select({movie().url, installer().url});
    ASSERT_TRUE(showsSeveral());
    EXPECT_EQ(column->several()->heading()->text(), "2 files selected");
    EXPECT_EQ(column->several()->note()->text(),
              "These are your own files. Nothing here can be regenerated.");
    EXPECT_EQ(figures(*column->several()->stats()), Pairs({{"Combined Size", "8.54 GB"}, {"Rows", "2"}}));
    press(column->several()->removeButton());
    EXPECT_EQ(asked().size(), 2U);
    library.setProtected(movie().url, true);
    library.setProtected(installer().url, true);
    turn();
    EXPECT_FALSE(column->several()->removeButton()->isEnabled());
}

// The look

TEST_F(FilesPane, TheLookIsAskedForOffTheMainThreadAndComesInItsPlace) {
    setLook(movie());
    auto& pane = show(movie());
    EXPECT_EQ(previews.requests().size(), 0U) << "no job has run";
    EXPECT_FALSE(pane.preview()->hasPicture());
    EXPECT_EQ(pane.preview()->symbol(), "film");
    EXPECT_EQ(pane.preview()->height(), 190);
    finish();
    ASSERT_EQ(previews.requests().size(), 1U);
    EXPECT_EQ(previews.requests()[0], (FakePreviews::Request{movie().url, {1200, 800}, std::nullopt}));
    EXPECT_TRUE(pane.preview()->hasPicture());
    keepBoth("files-pane-look");
}

TEST_F(FilesPane, AFileWithoutALookKeepsItsSymbol) {
    auto& pane = show(movie());
    finish();
    EXPECT_FALSE(pane.preview()->hasPicture());
}

TEST_F(FilesPane, AnotherFileTakesTheLookAwayAndALateOneNeverComes) {
    setLook(movie());
    auto& pane = show(movie());
    select({installer().url});
    finish();
    EXPECT_FALSE(pane.preview()->hasPicture()) << "that of the file before";
    EXPECT_EQ(pane.preview()->symbol(), "opticaldisc");
    select({movie().url});
    finish();
    EXPECT_TRUE(pane.preview()->hasPicture());
    select({placeholder().url});
    EXPECT_FALSE(pane.preview()->hasPicture()) << "at once";
}

TEST_F(FilesPane, OfManyFilesThatAreRunThroughOnlyTheLastIsPictured) {
    show(movie());
    select({installer().url});
    select({placeholder().url});
    finish();
    const auto requests = previews.requests();
    ASSERT_FALSE(requests.empty());
    EXPECT_EQ(requests.back().url, placeholder().url);
    EXPECT_LE(requests.size(), 2U) << "what was wanted in between is passed by";
}

TEST_F(FilesPane, TheSameFileAgainIsNotPicturedAgain) {
    setLook(movie());
    auto& pane = show(movie());
    finish();
    library.files = std::vector<UserFile>{movie(), installer()};
    turn();
    finish();
    EXPECT_EQ(previews.requests().size(), 1U);
    EXPECT_TRUE(pane.preview()->hasPicture());
}

TEST_F(FilesPane, AThumbnailIsWantedWhereTheUserWaitsForIt) {
    runner.clearHistory();
    show(movie());
    EXPECT_EQ(runner.history(), std::vector{Priority::userInitiated});
}

TEST_F(FilesPane, WorkOnALookThatNobodyWaitsForIsAskedToStopAndNoOtherIs) {
    show(movie());
    select({installer().url});
    finish();
    EXPECT_EQ(previews.requests().size(), 2U);
    EXPECT_EQ(previews.stoppedRequests(), 1) << "the first";
    select({placeholder().url});
    select({});
    finish();
    EXPECT_EQ(previews.stoppedRequests(), 2) << "nothing is selected any more";
    select({movie().url});
    finish();
    EXPECT_EQ(previews.stoppedRequests(), 2);
}

TEST_F(FilesPane, NothingBeginsForAFileThatIsNoLongerSelected) {
    show(movie());
    select({installer().url}); // waits behind the first
    select({});
    finish();
    EXPECT_EQ(previews.requests().size(), 1U);
}

TEST_F(FilesPane, AFileThatIsSelectedAgainIsPicturedAgain) {
    setLook(movie());
    auto& pane = show(movie());
    finish();
    select({});
    previews.setThumbnail(movie().url, nullptr); // it has changed meanwhile
    select({movie().url});
    EXPECT_FALSE(pane.preview()->hasPicture());
    finish();
    EXPECT_EQ(previews.requests().size(), 2U);
    EXPECT_FALSE(pane.preview()->hasPicture());
}

TEST_F(FilesPane, ALookWithoutPixelsIsNone) {
    previews.setThumbnail(movie().url, std::make_shared<const IconImage>());
    auto& pane = show(movie());
    finish();
    EXPECT_FALSE(pane.preview()->hasPicture());
}

TEST_F(FilesPane, ATallLookFillsTheWidthAndLosesItsEndsEvenly) {
    setLook(movie(), 40, 400, qRgb(200, 0, 0), qRgb(0, 0, 200));
    show(movie());
    finish();
    const QImage drawn = lookAsDrawn();
    const int middle = drawn.height() / 2;
    for (const int x : {2, drawn.width() / 2, drawn.width() - 3}) {
        EXPECT_EQ(drawn.pixel(x, middle - 20), qRgb(200, 0, 0)) << x;
        EXPECT_EQ(drawn.pixel(x, middle + 20), qRgb(0, 0, 200)) << x;
    }
}

TEST_F(FilesPane, AWideLookFillsTheHeightAndItsCornersAreRound) {
    setLook(movie(), 400, 40, qRgb(200, 0, 0), qRgb(0, 0, 200));
    show(movie());
    finish();
    const QImage drawn = lookAsDrawn();
    const int middle = drawn.width() / 2;
    for (const int y : {2, drawn.height() / 2, drawn.height() - 3}) {
        EXPECT_EQ(drawn.pixel(middle - 40, y), qRgb(200, 0, 0)) << y;
        EXPECT_EQ(drawn.pixel(middle + 40, y), qRgb(0, 0, 200)) << y;
    }
    EXPECT_NE(drawn.pixel(1, 1), qRgb(200, 0, 0));
    EXPECT_NE(drawn.pixel(drawn.width() - 2, drawn.height() - 2), qRgb(0, 0, 200));
}

TEST_F(FilesPane, AnotherLookAndAnotherWidthAreDrawnAnew) {
    setLook(movie(), 40, 400, qRgb(200, 0, 0), qRgb(0, 0, 200));
    setLook(installer(), 40, 400, qRgb(0, 200, 0), qRgb(0, 0, 200));
    auto& pane = show(movie());
    finish();
    (void)lookAsDrawn();
    select({installer().url});
    finish();
    const int above = FilePreview::kHeight / 2 - 20;
    const QImage narrow = lookAsDrawn();
    EXPECT_EQ(narrow.pixel(narrow.width() / 2, above), qRgb(0, 200, 0));
    pane.preview()->setFixedWidth(narrow.width() * 3);
    turn();
    const QImage wide = lookAsDrawn();
    for (const int x : {2, wide.width() - 3}) {
        EXPECT_EQ(wide.pixel(x, above), qRgb(0, 200, 0)) << x;
    }
}

TEST_F(FilesPane, ALookThatWasMadeBeforeTheFileWasLeftDoesNotComeAfterIt) {
    setLook(movie());
    auto& pane = show(movie());
    runner.runJob(); // it is there, and the main thread has not heard of it
    pane.show(installer());
    turn();
    EXPECT_FALSE(pane.preview()->hasPicture());
}

TEST_F(FilesPane, TheSymbolOfTheKindStandsInTheMiddleOfACardWhereThereIsNoLook) {
    auto& pane = show(movie());
    const QImage drawn = lookAsDrawn();
    const QRgb ground = drawn.pixel(drawn.width() / 2, 20);
    EXPECT_EQ(ground, Tokens::current().card.rgb());
    int inked = 0;
    for (int y = drawn.height() / 2 - 28; y < drawn.height() / 2 + 28; ++y) {
        for (int x = drawn.width() / 2 - 28; x < drawn.width() / 2 + 28; ++x) {
            inked += drawn.pixel(x, y) != ground ? 1 : 0;
        }
    }
    EXPECT_GT(inked, 100);
    EXPECT_EQ(pane.preview()->toolTip(), "Quick Look");
}

TEST_F(FilesPane, TheLookWearsARingWhileTheKeyboardIsOnIt) {
    auto& pane = show(movie());
    const QImage without = lookAsDrawn();
    pane.preview()->setFocus(Qt::TabFocusReason);
    turn();
    EXPECT_NE(lookAsDrawn(), without);
}

// What stands where

TEST_F(FilesPane, TheBlocksStandInTheirOrder) {
    auto& pane = showMarked();
    const std::vector<QWidget*> blocks = {pane.preview(),       pane.header(),        pane.placeholderNote(),
                                          pane.installedNote(), pane.protectedNote(), pane.stats(),
                                          pane.folder()};
    int above = -1;
    for (const auto* const block : blocks) {
        ASSERT_TRUE(block->isVisible()) << block->metaObject()->className();
        const int top = block->mapTo(&pane, QPoint()).y();
        EXPECT_GT(top, above) << block->metaObject()->className();
        above = top;
    }
}

TEST_F(FilesPane, EachNoteWearsTheSymbolOfItsMark) {
    auto& pane = showMarked();
    const auto symbolOf = [](const Note* note) { return note->findChild<SymbolView*>()->symbol(); };
    EXPECT_EQ(symbolOf(pane.placeholderNote()), "icloud");
    EXPECT_EQ(symbolOf(pane.installedNote()), "checkmark.seal");
    EXPECT_EQ(symbolOf(pane.protectedNote()), "shield.fill");
    EXPECT_EQ(pane.protectedNote()->findChild<SymbolView*>()->tint(), Tint::Green);
    EXPECT_EQ(notes().size(), 3);
}

TEST_F(FilesPane, WhatTheFileTakesOnTheDiskIsTheFigureThatStandsOut) {
    const auto& cells = showMarked().stats()->cells();
    ASSERT_EQ(cells.size(), 3U);
    EXPECT_TRUE(cells[0]->isEmphasized());
    EXPECT_FALSE(cells[1]->isEmphasized());
    EXPECT_FALSE(cells[2]->isEmphasized());
}

TEST_F(FilesPane, ANameOrAFolderThatWouldDeceiveIsShownAsItIs) {
    const auto file = fileAt("Desk\u202Etop/exe\u202Efdp.app", 5);
    library.files = std::vector<UserFile>{file, movie()};
    state.fileSelection = std::unordered_set<FileURL>{file.url};
    openColumn();
    EXPECT_EQ(column->one()->header()->title(), "exe‹U+202E›fdp.app");
    EXPECT_EQ(column->one()->folder()->text(), "~/Desk‹U+202E›top");
    EXPECT_EQ(column->one()->folder()->accessibleName(), "Folder");
    select({file.url, movie().url});
    EXPECT_TRUE(listed().join(' ').contains("exe‹U+202E›fdp.app")) << listed().join(' ').toStdString();
}

TEST_F(FilesPane, AnotherFileBeginsAtTheTopAndTheSameOneStaysWhereItIs) {
    library.files = std::vector<UserFile>{movie(), marked()};
    state.fileSelection = std::unordered_set<FileURL>{marked().url};
    auto& pane = *openColumn(ContentView::kDetailNarrowest, 300).one();
    auto* const bar = pane.scrollArea()->verticalScrollBar();
    bar->setValue(60);
    ASSERT_EQ(bar->value(), 60);
    library.setProtected(marked().url, true);
    turn();
    EXPECT_EQ(bar->value(), 60);
    select({movie().url});
    EXPECT_EQ(bar->value(), 0);
}

TEST_F(FilesPane, SeveralFilesAreListedByWhatTheyTakeOnTheDisk) {
    show(movie());
    select({placeholder().url, installer().url});
    const auto rows = listed();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_TRUE(rows[0].contains("Alder 2.1.dmg") && rows[0].contains("120 MB")) << rows[0].toStdString();
    EXPECT_TRUE(rows[1].contains("Notes.mov") && rows[1].contains("4 KB")) << rows[1].toStdString();
}

TEST_F(FilesPane, OfSeveralFilesThoseThatAreNotProtectedCanGo) {
    show(movie());
    library.setProtected(movie().url, true);
    select({movie().url, installer().url});
    ASSERT_TRUE(column->several()->removeButton()->isEnabled());
    press(column->several()->removeButton());
    EXPECT_EQ(asked(), std::vector<FileURL>({installer().url}));
}

TEST_F(FilesPane, AFileThatWasProtectedOrHasGoneSinceItWasDrawnIsNotAskedFor) {
    auto& pane = show(movie());
    library.setProtected(movie().url, true);
    pane.removeButton()->click(); // before the next turn
    EXPECT_FALSE(state.removal->has_value());
    library.setProtected(movie().url, false);
    turn();
    library.files = std::vector<UserFile>{installer()};
    pane.removeButton()->click();
    EXPECT_FALSE(state.removal->has_value());
}

TEST_F(FilesPane, TheFolderIsToldQuietly) {
    const QImage drawn = show(movie()).folder()->grab().toImage();
    int darkest = 255;
    for (int y = 0; y < drawn.height(); ++y) {
        for (int x = 0; x < drawn.width(); ++x) {
            darkest = std::min(darkest, qGray(drawn.pixel(x, y)));
        }
    }
    EXPECT_GE(darkest, qGray(Tokens::current().text2.rgb()));
    EXPECT_LT(darkest, 200);
}
