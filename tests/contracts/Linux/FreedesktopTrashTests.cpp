// What only the Trash of Linux desktops has.
#include "DiskFolder.h"
#include "TrashInfo.h"
#include "TrashKinds.h"
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace quillane {
namespace {

struct FreedesktopTrashRecords : testing::Test {
    World world;
    std::unique_ptr<Trash> trash = DesktopTrash::make(world);
    fs::path info = world.root / "home/.local/share/Trash/info";
    std::size_t records() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(info), fs::directory_iterator()));
    }
};

TEST_F(FreedesktopTrashRecords, EachItemHasARecordOfItsOriginAndTime) {
    world.write("home/a b%.txt", "x");
    ASSERT_TRUE(trash->moveToTrash(DesktopTrash::url(world, "home/a b%.txt")).ok());
    std::ifstream stream(info / "a b%.txt.trashinfo");
    std::stringstream text;
    text << stream.rdbuf();
    EXPECT_EQ(TrashInfo::originalPath(text.str()), (world.root / "home/a b%.txt").string());
    EXPECT_NE(text.str().find("a%20b%25.txt\nDeletionDate=2025-11-2"), std::string::npos) << text.str();
    EXPECT_TRUE(text.str().starts_with("[Trash Info]\nPath="));
}

TEST_F(FreedesktopTrashRecords, ARecordIsWithdrawnWhenTheMoveFails) {
    world.write("home/a", "x");
    ASSERT_TRUE(trash->moveToTrash(DesktopTrash::url(world, "home/a")).ok());
    EXPECT_FALSE(trash->moveToTrash(DesktopTrash::url(world, "home")).ok()); // can't go into itself
    EXPECT_EQ(records(), 1U);
}

TEST_F(FreedesktopTrashRecords, WhatIsPutBackOrDeletedLeavesNoRecord) {
    world.write("home/a", "x");
    world.write("home/b", "x");
    const auto a = trash->moveToTrash(DesktopTrash::url(world, "home/a"));
    const auto b = trash->moveToTrash(DesktopTrash::url(world, "home/b"));
    ASSERT_TRUE(a.ok() && b.ok());
    EXPECT_EQ(records(), 2U);
    ASSERT_TRUE(trash->moveOut(**a, DesktopTrash::url(world, "home/a")).ok());
    EXPECT_EQ(records(), 1U);
    ASSERT_TRUE(trash->deleteItem(**b).ok());
    EXPECT_EQ(records(), 0U);
}

TEST_F(FreedesktopTrashRecords, ANameWhoseRecordIsTakenByAStrayIsNotUsed) {
    fs::create_directories(info);
    std::ofstream(info / "a.trashinfo") << "stray";
    world.write("home/a", "x");
    const auto landed = trash->moveToTrash(DesktopTrash::url(world, "home/a"));
    ASSERT_TRUE(landed.ok());
    EXPECT_EQ((*landed)->lastPathComponent(), "a 2");
}

// The clock by which the system dates files.
Date realNow() {
    return Date::fromUnix(::time(nullptr), 0);
}

// A crash between the record and the move leaves a record. A young one may be of a move that is under way.
TEST_F(FreedesktopTrashRecords, DeletingTheLastItemDeletesOldRecordsThatHaveNoItem) {
    constexpr double kHour = 3600;
    world.clock.setNow(realNow().addingSeconds(2 * kHour));
    world.write("home/a", "x");
    world.write("home/b", "x");
    const auto a = trash->moveToTrash(DesktopTrash::url(world, "home/a"));
    const auto b = trash->moveToTrash(DesktopTrash::url(world, "home/b"));
    ASSERT_TRUE(a.ok() && b.ok());
    DiskFolder folder(info.string());
    const auto ago = [&](double seconds) { return world.clock.now().addingSeconds(-seconds); };
    folder.file("old.trashinfo").modified("old.trashinfo", ago(kHour + 1));
    folder.file("young.trashinfo").modified("young.trashinfo", ago(kHour - 1));
    folder.file("ahead.trashinfo").modified("ahead.trashinfo", ago(-3 * kHour));
    folder.file("something that is no record").modified("something that is no record", ago(2 * kHour));
    ASSERT_TRUE(trash->deleteItem(**a).ok());
    EXPECT_TRUE(fs::exists(info / "old.trashinfo")); // not while the Trash is in use
    ASSERT_TRUE(trash->deleteItem(**b).ok());
    EXPECT_FALSE(fs::exists(info / "old.trashinfo"));
    for (const char* kept : {"young.trashinfo", "ahead.trashinfo", "something that is no record"}) {
        EXPECT_TRUE(fs::exists(info / kept)) << kept;
    }
    EXPECT_EQ(records(), 3U);
}

// As a program does that brings back a Trash with its dates: the record first, and the item later.
TEST_F(FreedesktopTrashRecords, AYoungRecordWithAnEarlierDateIsKept) {
    world.clock.setNow(realNow().addingSeconds(1800));
    world.write("home/a", "x");
    const auto a = trash->moveToTrash(DesktopTrash::url(world, "home/a"));
    ASSERT_TRUE(a.ok());
    DiskFolder(info.string()).file("b.trashinfo").modified("b.trashinfo", Date{0});
    ASSERT_TRUE(trash->deleteItem(**a).ok());
    EXPECT_TRUE(fs::exists(info / "b.trashinfo"));
}

TEST_F(FreedesktopTrashRecords, AnInfoFolderThatIsALinkIsNotFollowedToTheRecords) {
    world.write("home/a", "x");
    world.write("home/b", "x");
    const auto a = trash->moveToTrash(DesktopTrash::url(world, "home/a"));
    const auto b = trash->moveToTrash(DesktopTrash::url(world, "home/b"));
    ASSERT_TRUE(a.ok() && b.ok());
    fs::rename(info, world.root / "elsewhere");
    fs::create_directory_symlink(world.root / "elsewhere", info);
    EXPECT_TRUE(trash->moveOut(**a, DesktopTrash::url(world, "home/a")).ok());
    EXPECT_TRUE(trash->deleteItem(**b).ok());
    EXPECT_EQ(records(), 2U);
}

// ---- what the records of desktops say of an item's origin

struct FreedesktopTrashOrigin : FreedesktopTrashRecords {
    FreedesktopTrashOrigin() {
        world.write("home/folder/a", "x");
        trash->moveToTrash(url("home/folder/a")).valueOr(std::nullopt);
    }
    FileURL url(const std::string& below) const { return DesktopTrash::url(world, below); }
    void record(const std::string& text) const { std::ofstream(info / "a.trashinfo") << text; }
    Result<bool> cameFrom(const std::string& below) const {
        return trash->cameFrom(url("home/.local/share/Trash/files/a"), url(below));
    }
    bool isFrom(const std::string& below) const {
        const auto came = cameFrom(below);
        EXPECT_TRUE(came.ok());
        return came.ok() && *came;
    }
};

TEST_F(FreedesktopTrashOrigin, AnItemCameFromItsPlaceAlsoWhenTheFolderThereIsGone) {
    EXPECT_TRUE(isFrom("home/folder/a"));
    fs::remove_all(world.root / "home/folder");
    EXPECT_TRUE(isFrom("home/folder/a"));
    EXPECT_FALSE(isFrom("home/a"));
}

TEST_F(FreedesktopTrashOrigin, OneThatHasNoRecordCameFromNowhereThatIsKnown) {
    fs::remove(info / "a.trashinfo");
    EXPECT_FALSE(isFrom("home/folder/a"));
    fs::remove_all(info);
    EXPECT_FALSE(isFrom("home/folder/a"));
}

TEST_F(FreedesktopTrashOrigin, ARecordThatNamesNoPlaceIsNone) {
    for (const char* text : {"", "Path=/a", "[Trash Info]", "[Trash Info]\nPath=\n", "\xff"}) {
        record(text);
        EXPECT_FALSE(isFrom("home/folder/a")) << text;
    }
}

TEST_F(FreedesktopTrashOrigin, ThePathOfARecordIsReadAsOtherProgramsWriteIt) {
    record("[Trash Info]\nDeletionDate=2025-11-21T08:30:00\nPath=" + world.root.string() +
           "/home/f%6flder/%61\n");
    EXPECT_TRUE(isFrom("home/folder/a"));
    record("[Trash Info]\nPath=below/a\n");
    EXPECT_TRUE(isFrom("home/.local/share/below/a"));
    EXPECT_FALSE(isFrom("home/folder/a"));
}

// Programs differ in whether they record the way by which they came or the real one.
TEST_F(FreedesktopTrashOrigin, LinksAboveAPlaceMakeItNoOther) {
    fs::create_directory_symlink(world.root / "home/folder", world.root / "home/way");
    EXPECT_TRUE(isFrom("home/way/a"));
    record("[Trash Info]\nPath=" + (world.root / "home/way/a").string() + "\n");
    EXPECT_TRUE(isFrom("home/folder/a"));
    EXPECT_FALSE(isFrom("home/a"));
}

TEST_F(FreedesktopTrashOrigin, ALinkThatStandsWhereTheItemWasIsNotFollowed) {
    fs::create_symlink(world.root / "home/other/a", world.root / "home/folder/a");
    EXPECT_TRUE(isFrom("home/folder/a"));
    EXPECT_FALSE(isFrom("home/other/a"));
}

TEST_F(FreedesktopTrashOrigin, ARecordThatIsALinkOrNoFileOfBytesFailsToBeRead) {
    const auto path = info / "a.trashinfo";
    fs::rename(path, world.root / "elsewhere");
    fs::create_symlink(world.root / "elsewhere", path);
    EXPECT_FALSE(cameFrom("home/folder/a").ok());
    fs::remove(path);
    fs::create_directory(path);
    EXPECT_FALSE(cameFrom("home/folder/a").ok());
    fs::remove(path);
    fs::rename(info, world.root / "records");
    fs::create_directory_symlink(world.root / "records", info);
    EXPECT_FALSE(cameFrom("home/folder/a").ok());
}

TEST_F(FreedesktopTrashOrigin, ARecordThatIsAPipeHoldsNothingUpAndNamesNoPlace) {
    const auto path = info / "a.trashinfo";
    fs::remove(path);
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_FALSE(isFrom("home/folder/a"));
}

TEST_F(FreedesktopTrashOrigin, OfAPlaceOutsideOfEveryTrashNothingIsSaid) {
    world.write("home/secret/files/a", "x");
    world.write("home/secret/info/a.trashinfo", "[Trash Info]\nPath=/a\n");
    EXPECT_FALSE(trash->cameFrom(url("home/secret/files/a"), FileURL("/a")).ok());
}

// ---- where a Trash of desktops may lie

struct FreedesktopTrashPlace : testing::Test {
    World world;
    std::unique_ptr<Trash> trash = DesktopTrash::make(world);
    FileURL url(const std::string& below) const { return DesktopTrash::url(world, below); }
    bool exists(const std::string& below) const { return fs::exists(world.root / below); }
};

TEST_F(FreedesktopTrashPlace, ATrashThatIsALinkToAFolderWithFilesIsNeverListedFilledOrEmptied) {
    world.write("home/Documents/files/precious", "kept");
    world.write("home/a", "kept");
    fs::create_directories(world.root / "home/.local/share");
    fs::create_directory_symlink(world.root / "home/Documents", world.root / "home/.local/share/Trash");
    EXPECT_EQ(trash->location(), url("home/.local/share/Trash/files"));
    EXPECT_FALSE(trash->items().ok());
    EXPECT_FALSE(trash->moveToTrash(url("home/a")).ok());
    const auto precious = url("home/.local/share/Trash/files/precious");
    EXPECT_FALSE(trash->deleteItem(precious).ok());
    EXPECT_FALSE(trash->moveOut(precious, url("home/stolen")).ok());
    EXPECT_TRUE(exists("home/Documents/files/precious") && exists("home/a"));
    EXPECT_FALSE(exists("home/Documents/info"));
}

TEST_F(FreedesktopTrashPlace, LinksAboveTheTrashAreFollowed) {
    fs::create_directories(world.root / "elsewhere");
    fs::create_directory_symlink(world.root / "elsewhere", world.root / "home/.local");
    world.write("home/a", "x");
    const auto landed = trash->moveToTrash(url("home/a"));
    ASSERT_TRUE(landed.ok());
    EXPECT_TRUE(exists("elsewhere/share/Trash/files/a"));
    EXPECT_EQ(*trash->items(), std::vector{**landed});
    EXPECT_TRUE(trash->moveOut(**landed, url("home/a")).ok());
}

TEST_F(FreedesktopTrashPlace, AFileOnTheWayToTheTrashHoldsNone) {
    world.write("home/.local", "a file");
    EXPECT_FALSE(trash->location());
    EXPECT_TRUE(trash->items().ok());
}

TEST_F(FreedesktopTrashPlace, OnlyTheFilesFolderOfTheTrashHoldsItems) {
    world.write("home/.local/share/Trash/files/a", "kept");
    world.write("home/.local/share/Trash/info/a", "kept");
    EXPECT_FALSE(trash->moveOut(url("home/.local/share/Trash/info/a"), url("home/stolen")).ok());
    EXPECT_FALSE(exists("home/stolen"));
}

TEST_F(FreedesktopTrashPlace, WhatIsNamedLikeATrashBelowTheTopOfAVolumeIsNone) {
    const std::string user = std::to_string(::getuid());
    for (const auto& folder : {"home/.Trash-" + user, "home/.Trash/" + user, "home/" + user}) {
        world.write(folder + "/files/a", "kept");
        const auto moved = trash->moveOut(url(folder + "/files/a"), url("home/stolen"));
        EXPECT_TRUE(!moved.ok() && moved.error().underlying == EINVAL) << folder;
        EXPECT_FALSE(exists("home/stolen"));
    }
}

TEST(FreedesktopTrashPlaces, ADataFolderOfTheEnvironmentCountsOnlyWithAWholePath) {
    const char* before = std::getenv("XDG_DATA_HOME"); // NOLINT(concurrency-mt-unsafe): one thread
    const std::string kept = before != nullptr ? before : "";
    const auto dataHome = [](const char* variable) {
        ::setenv("XDG_DATA_HOME", variable, 1); // NOLINT(concurrency-mt-unsafe): one thread
        return FreedesktopTrash::Places::ofThisUser(FileURL("/home/me")).dataHome;
    };
    EXPECT_EQ(dataHome("/data/"), "/data");
    EXPECT_EQ(dataHome("relative/data"), "/home/me/.local/share");
    EXPECT_EQ(dataHome(""), "/home/me/.local/share");
    ::setenv("XDG_DATA_HOME", kept.c_str(), 1); // NOLINT(concurrency-mt-unsafe): empty counts as unset
}

TEST(TrashInfo, ARecordReadsBackWhateverBytesThePathHolds) {
    std::string path = "/";
    for (int byte = 1; byte < 256; ++byte) {
        path += static_cast<char>(byte);
    }
    const auto text = TrashInfo::text(path, "2026-11-21T08:30:00");
    EXPECT_EQ(TrashInfo::originalPath(text), path);
    EXPECT_EQ(TrashInfo::originalPath("[Trash Info]\nDeletionDate=2026\n"), std::nullopt);
    EXPECT_EQ(TrashInfo::originalPath("Path=/a\n"), std::nullopt);
    EXPECT_EQ(TrashInfo::originalPath(""), std::nullopt);
}

// To the system a path ends there, so that such a record would seem to name another place than it does.
TEST(TrashInfo, ARecordOfAPathWithANulIsNone) {
    EXPECT_EQ(TrashInfo::originalPath("[Trash Info]\nPath=/home%00elsewhere/a\n"), std::nullopt);
    EXPECT_EQ(TrashInfo::originalPath(std::string("[Trash Info]\nPath=/home\0/a\n", 28)), std::nullopt);
}

} // namespace
} // namespace quillane
