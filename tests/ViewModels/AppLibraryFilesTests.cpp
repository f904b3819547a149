// The lenses on the user's own files, and what of them can go.
#include "FileFinder.h"
#include "LibraryTest.h"
#include "SweepTest.h"
#include <gmock/gmock.h>

namespace quillane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

constexpr const char* kSearchProgram = "/usr/bin/mdfind";
const std::string kDownloads = "/Users/alex/Downloads";
const std::string kLarge = "kMDItemFSSize >= 100000000 && kMDItemContentType != 'public.folder'";

std::string searchQuery(const std::string& text) {
    return "(kMDItemDisplayName == \"*" + text + "*\"cd || kMDItemTextContent == \"*" + text + "*\"cd)";
}

// A library over a volume on which only Downloads is, and an index that is a table.
class AppLibraryFiles : public LibraryTest {
  protected:
    AppLibraryFiles() { disk.folder("Users/alex/Downloads"); }

    // A file in Downloads, which the query then finds there, alone.
    void found(const std::string& query, const std::string& name) {
        disk.file("Users/alex/Downloads/" + name, name);
        commands.answer(kSearchProgram, {"-onlyin", kDownloads, query}, kDownloads + "/" + name + "\n");
    }
    void load() {
        library->loadFiles();
        runner.runAll();
    }
    void chooseSearch() {
        library->setFilesMode(FilesMode::search);
        ASSERT_EQ(runner.waitingJobs(), 0U) << "nothing is searched for yet";
    }
    Texts names() const {
        Texts names;
        for (const auto& file : *library->files) {
            names.push_back(file.name());
        }
        return names;
    }
    // What the index was asked for so far.
    Texts queries() const {
        Texts queries;
        for (const auto& call : commands.calls()) {
            queries.push_back(call.arguments.back());
        }
        return queries;
    }
};

TEST_F(AppLibraryFiles, BeforeTheFirstLoadNothingIsKnownAndTheLensIsThatOfLargeFiles) {
    EXPECT_TRUE(library->files->empty());
    EXPECT_FALSE(*library->isLoadingFiles);
    EXPECT_EQ(*library->photosLibraryBytes, std::nullopt);
    EXPECT_EQ(library->filesMode(), FilesMode::large);
    EXPECT_EQ(*library->fileSearchText, "");
    EXPECT_EQ(*library->fileSearchKind, std::nullopt);
    EXPECT_FALSE(*library->filesTask);
}

TEST_F(AppLibraryFiles, ALoadIsSeenToRunFromItsCallToItsResult) {
    found(kLarge, "film.mov");
    library->loadFiles();
    EXPECT_TRUE(*library->isLoadingFiles);
    EXPECT_TRUE(library->files->empty());
    runner.runAll();
    EXPECT_FALSE(*library->isLoadingFiles);
    EXPECT_EQ(names(), Texts{"film.mov"});
}

TEST_F(AppLibraryFiles, TheUserWaitsForIt) {
    load();
    for (const auto priority : runner.history()) {
        EXPECT_EQ(priority, Priority::userInitiated);
    }
    EXPECT_FALSE(runner.history().empty());
}

TEST_F(AppLibraryFiles, EachLensAsksItsOwnQuestion) {
    load();
    library->setFilesMode(FilesMode::screenshots);
    runner.runAll();
    library->setFilesMode(FilesMode::installers);
    runner.runAll();
    library->fileSearchText = "tax";
    library->setFilesMode(FilesMode::search);
    runner.runAll();
    EXPECT_THAT(queries(),
                ElementsAre(kLarge, "kMDItemIsScreenCapture == 1",
                            testing::HasSubstr("com.apple.installer-package-archive"), searchQuery("tax")));
}

TEST_F(AppLibraryFiles, TheLensThatIsChosenAlreadyLoadsNothing) {
    library->setFilesMode(FilesMode::large);
    EXPECT_FALSE(*library->isLoadingFiles);
    EXPECT_FALSE(*library->filesTask);
    library->setFilesMode(FilesMode::screenshots);
    EXPECT_TRUE(*library->isLoadingFiles);
    EXPECT_EQ(library->filesMode(), FilesMode::screenshots);
}

TEST_F(AppLibraryFiles, TypingAndChoosingAKindLoadNothing) {
    library->fileSearchText = "tax";
    library->fileSearchKind = UserFile::Kind::pdf;
    runner.runAll();
    EXPECT_FALSE(*library->filesTask);
    EXPECT_THAT(queries(), IsEmpty());
}

TEST_F(AppLibraryFiles, ASearchTakesTheTextWithoutTheBlanksAroundItAndTheKind) {
    chooseSearch();
    library->fileSearchText = " \ttax return ";
    library->fileSearchKind = UserFile::Kind::pdf;
    load();
    EXPECT_THAT(queries(),
                ElementsAre(searchQuery("tax return") + " && kMDItemContentTypeTree == 'com.adobe.pdf'"));
    EXPECT_EQ(*library->fileSearchText, " \ttax return ") << "the field stays as it was typed";
}

TEST_F(AppLibraryFiles, ALoadLooksForWhatStoodWhenItBegan) {
    chooseSearch();
    library->fileSearchText = "tax";
    library->fileSearchKind = UserFile::Kind::pdf;
    library->loadFiles();
    runner.settle();
    library->fileSearchText = "something else";
    library->fileSearchKind = UserFile::Kind::image;
    runner.runAll();
    EXPECT_THAT(queries(), ElementsAre(searchQuery("tax") + " && kMDItemContentTypeTree == 'com.adobe.pdf'"));
}

TEST_F(AppLibraryFiles, AnEmptySearchIsAnsweredAtOnceAndAsksNobody) {
    found(kLarge, "film.mov");
    load();
    library->fileSearchText = " \t ";
    library->setFilesMode(FilesMode::search);
    EXPECT_TRUE(library->files->empty());
    EXPECT_FALSE(*library->isLoadingFiles);
    EXPECT_EQ(runner.waitingJobs(), 0U);
    EXPECT_THAT(queries(), ElementsAre(kLarge));
}

TEST_F(AppLibraryFiles, AnEmptySearchDropsTheResultOfTheLoadBeforeIt) {
    found(kLarge, "film.mov");
    library->loadFiles();
    runner.settle();
    library->setFilesMode(FilesMode::search);
    runner.runAll();
    EXPECT_TRUE(library->files->empty());
    EXPECT_FALSE(*library->isLoadingFiles);
}

TEST_F(AppLibraryFiles, OfTwoLoadsOnlyTheSecondStores) {
    found(kLarge, "film.mov");
    found("kMDItemIsScreenCapture == 1", "capture.png");
    for (const bool isFirstEarlier : {true, false}) {
        library->setFilesMode(FilesMode::large);
        runner.runAll();
        library->loadFiles();
        runner.settle();
        ASSERT_EQ(runner.waitingJobs(), 1U);
        library->setFilesMode(FilesMode::screenshots);
        runner.settle();
        ASSERT_EQ(runner.waitingJobs(), 2U);
        runner.runJob(isFirstEarlier ? 0 : 1);
        runner.settle();
        EXPECT_EQ(*library->isLoadingFiles, isFirstEarlier);
        runner.runAll();
        EXPECT_EQ(names(), Texts{"capture.png"});
        EXPECT_FALSE(*library->isLoadingFiles);
    }
}

TEST_F(AppLibraryFiles, ALoadThatIsReplacedAsksTheIndexNothingMore) {
    found(kLarge, "film.mov");
    library->loadFiles();
    runner.settle(); // its job waits
    library->fileSearchText = "a";
    library->setFilesMode(FilesMode::search);
    runner.runAll();
    EXPECT_EQ(queries(), Texts{searchQuery("a")});
}

TEST_F(AppLibraryFiles, TheFilesStayUntilTheNextAnswerIsThere) {
    found(kLarge, "film.mov");
    load();
    library->setFilesMode(FilesMode::screenshots);
    EXPECT_EQ(names(), Texts{"film.mov"});
    EXPECT_TRUE(*library->isLoadingFiles);
    runner.runAll();
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(AppLibraryFiles, ALoadThatOutlivesTheLibraryTouchesNothing) {
    found(kLarge, "film.mov");
    library->loadFiles();
    runner.settle();
    library.reset();
    runner.runAll();
    EXPECT_THAT(queries(), ElementsAre(kLarge)) << "the search ran to its end";
}

TEST_F(AppLibraryFiles, InstallersAreHeldAgainstTheApplicationsThatStand) {
    disk.file("Users/alex/Downloads/Draw 2.dmg", "x");
    InstalledApp app;
    app.url = FileURL("/Applications/Draw.app");
    app.name = "Draw";
    library->apps = std::vector{app};
    library->setFilesMode(FilesMode::installers);
    runner.runAll();
    const auto query = queries().back();
    found(query, "Draw 2.dmg");
    load();
    ASSERT_EQ(names(), Texts{"Draw 2.dmg"});
    EXPECT_TRUE(library->files->front().installsAnInstalledApp);
}

TEST_F(AppLibraryFiles, ThePhotosLibraryIsMeasuredOnce) {
    const std::string inside = "Users/alex/Pictures/Photos Library.photoslibrary/a.jpg";
    disk.allocated(inside, 50'000);
    load();
    EXPECT_EQ(*library->photosLibraryBytes, disk.allocationOf(inside));
    disk.allocated("Users/alex/Pictures/Photos Library.photoslibrary/b.jpg", 50'000);
    load();
    EXPECT_EQ(*library->photosLibraryBytes, disk.allocationOf(inside));
}

TEST_F(AppLibraryFiles, AMissingPhotosLibraryIsLookedForAgain) {
    load();
    EXPECT_EQ(*library->photosLibraryBytes, std::nullopt);
    const std::string inside = "Users/alex/Pictures/Photos Library.photoslibrary/a.jpg";
    disk.allocated(inside, 50'000);
    load();
    EXPECT_EQ(*library->photosLibraryBytes, disk.allocationOf(inside));
}

TEST_F(AppLibraryFiles, TheFilesStandBeforeThePhotosLibraryIsMeasured) {
    found(kLarge, "film.mov");
    library->loadFiles();
    ASSERT_TRUE(runner.runUntil([&] { return !library->files->empty(); }));
    EXPECT_FALSE(*library->isLoadingFiles);
    EXPECT_GT(runner.waitingJobs(), 0U) << "the measuring waits";
}

TEST_F(AppLibraryFiles, AScanLooksForNoFiles) {
    found(kLarge, "film.mov");
    scan();
    EXPECT_THAT(queries(), testing::Not(testing::Contains(kLarge)));
    EXPECT_TRUE(library->files->empty());
}

// What can go

class FoundFiles : public SweepTest {
  protected:
    static UserFile userFile(const FileURL& url, Bytes bytes, Bytes logicalBytes = 0) {
        return {url, UserFile::kindOf(url), bytes, logicalBytes, std::nullopt, false, false};
    }
};

TEST_F(FoundFiles, TheTotalIsThatOfTheDiskAndTheBadgeTheirNumber) {
    EXPECT_EQ(library->badge(LibrarySection::files), 0);
    library->files = std::vector{userFile(home("a.mov"), 10, 1'000), userFile(home("b.mov"), 20, 2'000)};
    EXPECT_EQ(library->totalFileBytes(), 30);
    library->searchText = "nothing has this";
    EXPECT_EQ(library->totalFileBytes(), 30);
    EXPECT_EQ(library->badge(LibrarySection::files), 2);
}

TEST_F(FoundFiles, NoCleanupPlansThem) {
    library->files = std::vector{userFile(home("a.mov"), 10)};
    library->sweepSelection = std::set{SweepCategory::files};
    EXPECT_TRUE(library->plan(SweepCategory::files).empty());
    EXPECT_EQ(library->itemCount(SweepCategory::files), 0);
    EXPECT_TRUE(library->fullPlan().empty());
}

TEST_F(FoundFiles, RemovingThemTakesAllThatIsNotProtectedAndIsToldByTheNameOrTheNumber) {
    const auto film = userFile(home("Movies/film.mov"), 10, 90);
    const auto note = userFile(home("note.txt"), 1);
    const auto one = library->removalForFiles({film});
    EXPECT_EQ(one.label, "Remove film.mov");
    EXPECT_EQ(one.entries,
              (std::vector<SweepEntry>{{film.url, SweepCategory::files, "film.mov", "~/Movies", 10}}));
    EXPECT_TRUE(one.initiallyExcluded.empty());
    library->setProtected(film.url, true);
    const auto both = library->removalForFiles({film, note, note});
    EXPECT_EQ(both.label, "Remove 3 files") << "the number is that of before any filter";
    EXPECT_EQ(both.entries, (std::vector<SweepEntry>{{note.url, SweepCategory::files, "note.txt", "~", 1}}));
    EXPECT_EQ(library->removalForFiles({}).label, "Remove 0 files");
}

TEST_F(FoundFiles, WhatASweepMovesLeavesTheListAtOnce) {
    const auto gone = userFile(file("Downloads/old.dmg"), 5);
    const auto stays = userFile(file("Downloads/new.dmg"), 5);
    library->files = std::vector{gone, stays};
    const auto report = sweep(library->removalForFiles({gone}).entries);
    EXPECT_EQ(report.itemsMovedToTrash, 1);
    EXPECT_EQ(*library->files, std::vector{stays});
}

TEST_F(FoundFiles, WhatALoadFindsDuringASweepLeavesTheListTooWhenItMoves) {
    const auto gone = file("Downloads/old.dmg");
    world.commands.answer(kSearchProgram, {"-onlyin", kDownloads, kLarge}, gone.path() + "\n");
    std::vector<SweepEntry> entries;
    for (int i = 0; i < 20; ++i) { // in no list, and enough for the load to end before the other moves
        entries.push_back(entry(file("Downloads/" + std::to_string(i)), SweepCategory::files, 1));
    }
    entries.push_back(entry(gone, SweepCategory::files, 1));
    startSweep(entries);
    world.runner.settle();
    world.runner.runJob();
    library->loadFiles();
    ASSERT_TRUE(world.runner.runUntil([&] { return !library->files->empty(); }));
    ASSERT_TRUE(world.isThere(gone));
    world.runner.runAll();
    EXPECT_FALSE(world.isThere(gone));
    EXPECT_TRUE(library->files->empty());
}

} // namespace
} // namespace quillane
