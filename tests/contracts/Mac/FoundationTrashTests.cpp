// What the Mac's Trash makes of the system's answers.
#include "FoundationTrash.h"
#include "StandIns.h"
#include "TemporaryFolder.h"
#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace quillane {
namespace {

namespace fs = std::filesystem;
using StandIns::Trashed;

struct FoundationTrashTest : testing::Test {
    ~FoundationTrashTest() override { StandIns::answerTrash({}); }

    static void answer(const Trashed& trashed) {
        StandIns::answerTrash([trashed](const FileURL&) { return trashed; });
    }
    bool exists(const std::string& below) const { return fs::exists(fs::symlink_status(disk.at(below))); }

    TemporaryFolder disk;
    FoundationTrash trash{disk.url("home")};
};

TEST_F(FoundationTrashTest, TheSystemIsToldTheItemByteForByte) {
    std::string name;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '/') {
            name += static_cast<char>(byte);
        }
    }
    for (const auto& item :
         {FileURL("/home/" + name), FileURL("/home/e\u0301 \u00e9 %41"), FileURL("/ü/a b")}) {
        std::string told;
        StandIns::answerTrash([&](const FileURL& url) {
            told = url.path();
            return Trashed{true, FileURL(url.path() + " 2"), {}};
        });
        const auto landed = trash.moveToTrash(item);
        EXPECT_EQ(told, item.path());
        ASSERT_TRUE(landed.ok());
        EXPECT_EQ(*landed, FileURL(item.path() + " 2"));
    }
}

// It might read up to there, and move another item.
TEST_F(FoundationTrashTest, OfANameWithANulTheSystemIsNotTold) {
    bool isTold = false;
    StandIns::answerTrash([&](const FileURL&) {
        isTold = true;
        return Trashed{};
    });
    EXPECT_FALSE(trash.moveToTrash(FileURL(disk.at("home/a") + std::string("\0b", 2))).ok());
    EXPECT_FALSE(isTold);
}

TEST_F(FoundationTrashTest, AMoveWhoseLandingIsNotToldIsAMove) {
    answer({true, std::nullopt, {}});
    const auto landed = trash.moveToTrash(disk.url("home/a"));
    ASSERT_TRUE(landed.ok());
    EXPECT_EQ(*landed, std::nullopt);
}

TEST_F(FoundationTrashTest, WhatDidNotMoveLandedNowhereWhateverTheSystemLeavesThere) {
    answer({false, disk.url("home/.Trash/a"), {{"Cocoa", 513}}});
    const auto landed = trash.moveToTrash(disk.url("home/a"));
    ASSERT_FALSE(landed.ok());
    EXPECT_EQ(landed.error(), (PlatformError{ErrorCode::kWriteNoPermission, std::nullopt}));
}

TEST_F(FoundationTrashTest, AVolumeWithoutATrashIsToldAsSuch) {
    answer({false, std::nullopt, {{"Cocoa", 3328}, {"OSStatus", -120}}});
    const auto landed = trash.moveToTrash(disk.url("home/a"));
    ASSERT_FALSE(landed.ok());
    EXPECT_EQ(landed.error(), (PlatformError{ErrorCode::kFeatureUnsupported, std::nullopt}));
}

TEST_F(FoundationTrashTest, AFailureWithoutAnErrorIsAFailure) {
    answer({false, std::nullopt, {}});
    const auto landed = trash.moveToTrash(disk.url("home/a"));
    ASSERT_FALSE(landed.ok());
    EXPECT_EQ(landed.error(), (PlatformError{ErrorCode::kWriteUnknown, std::nullopt}));
}

// A home that is reached by a link has its Trash where the system says, and only there is it emptied and put back.
TEST_F(FoundationTrashTest, WhatLandsInTheHomesTrashIsToldInTheWordsOfItsPlace) {
    disk.file("real/.Trash/a 2", "x").link("home", "real");
    answer({true, FileURL(fs::canonical(disk.at("real/.Trash")).string() + "/a 2"), {}});
    const auto landed = trash.moveToTrash(disk.url("home/a"));
    ASSERT_TRUE(landed.ok());
    EXPECT_EQ(*landed, disk.url("home/.Trash/a 2"));
    EXPECT_TRUE(trash.moveOut(**landed, disk.url("home/a")).ok());
    EXPECT_TRUE(exists("real/a"));
}

TEST_F(FoundationTrashTest, WhatLandsInAnotherTrashIsToldAsTheSystemDoes) {
    const FileURL elsewhere("/Volumes/Disk/.Trashes/501/a");
    disk.folder("home/.Trash");
    answer({true, elsewhere, {}});
    const auto landed = trash.moveToTrash(FileURL("/Volumes/Disk/a"));
    ASSERT_TRUE(landed.ok());
    EXPECT_EQ(*landed, elsewhere);
}

TEST_F(FoundationTrashTest, WhatLandedInTheTrashOfACloudIsPutBackAndNeverDeletedOrOverwritten) {
    disk.file("home/Library/Mobile Documents/.Trash/a", "x").folder("home/Documents");
    const auto inTrash = disk.url("home/Library/Mobile Documents/.Trash/a");
    EXPECT_FALSE(trash.deleteItem(inTrash).ok());
    disk.file("home/Documents/a", "another");
    const auto refused = trash.moveOut(inTrash, disk.url("home/Documents/a"));
    EXPECT_TRUE(!refused.ok() && refused.error().code == ErrorCode::kWriteFileExists);
    EXPECT_EQ(fs::file_size(disk.at("home/Documents/a")), 7U);
    EXPECT_TRUE(trash.moveOut(inTrash, disk.url("home/Documents/b")).ok());
    EXPECT_TRUE(exists("home/Documents/b"));
    EXPECT_FALSE(exists("home/Library/Mobile Documents/.Trash/a"));
}

TEST_F(FoundationTrashTest, AnotherItemThatHasThePlaceByNowCameFromElsewhere) {
    disk.file("home/.Trash/a", "x").file("home/.Trash/b", "x");
    const auto original = disk.url("home/a");
    EXPECT_TRUE(*trash.cameFrom(disk.url("home/.Trash/a"), original)) << "nobody knows";
    answer({true, disk.url("home/.Trash/a"), {}});
    ASSERT_TRUE(trash.moveToTrash(original).ok());
    EXPECT_TRUE(*trash.cameFrom(disk.url("home/.Trash/a"), original));
    disk.rename("home/.Trash/b", "home/.Trash/a");
    EXPECT_FALSE(*trash.cameFrom(disk.url("home/.Trash/a"), original));
}

TEST_F(FoundationTrashTest, NothingIsTakenFromWhereNoTrashIs) {
    disk.folder("home/.Trash/folder").folder("home/Library/Mobile Documents/.Trash/folder");
    for (const char* item : {"home/Documents/a", "home/.Trash/folder/a", "home/Library/Mobile Documents/a",
                             "home/Library/Mobile Documents/.Trash/folder/a", "home/.Trashes/501/a",
                             "home/Documents/.Trash/a", "home/.Trash/../Documents/a"}) {
        disk.file(item, "kept").folder("home/target");
        const auto moved = trash.moveOut(disk.url(item), disk.url("home/target/a"));
        EXPECT_TRUE(!moved.ok() && moved.error().underlying == EINVAL) << item;
        EXPECT_TRUE(exists(item)) << item;
    }
    EXPECT_TRUE(fs::is_empty(disk.at("home/target")));
}

TEST_F(FoundationTrashTest, OnAFullVolumeTheReserveGivesRoomAndTheMoveIsMadeAgain) {
    disk.folder("home");
    SpaceReserve reserve(disk.at("reserve"), {.whole = 1 << 20, .forSettings = 1 << 18});
    ASSERT_TRUE(reserve.lay());
    FoundationTrash drawing(disk.url("home"), &reserve);
    for (const auto& full : std::vector<std::vector<StandIns::Cause>>{
             {{"Cocoa", 640}}, {{"Cocoa", 512}, {"POSIX", ENOSPC}}, {{"Cocoa", 512}, {"OSStatus", -34}}}) {
        int calls = 0;
        StandIns::answerTrash(
            [&](const FileURL&) { return ++calls == 1 ? Trashed{false, std::nullopt, full} : Trashed{}; });
        EXPECT_TRUE(drawing.moveToTrash(disk.url("home/a")).ok());
        EXPECT_EQ(calls, 2);
    }
}

} // namespace
} // namespace quillane
