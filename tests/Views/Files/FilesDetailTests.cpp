#include "Components/DetailHeader.h"
#include "Components/EmptyState.h"
#include "Components/Label.h"
#include "Components/Note.h"
#include "Components/PushButton.h"
#include "Components/ValueField.h"
#include "Files/FileDetailView.h"
#include "Files/FilePreview.h"
#include "Files/FilesDetail.h"
#include "Panes/BulkSummary.h"
#include "Panes/PanePlaceholder.h"
#include "SectionDetailTest.h"
#include "SectionRecords.h"

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
