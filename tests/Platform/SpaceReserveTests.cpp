// The room that is kept for a full disk; tests/faults has what it is good for.
#include "SpaceReserve.h"
#include "TemporaryFolder.h"
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/stat.h>

namespace quillane {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kKilobyte = 1024;
constexpr SpaceReserve::Size kSize{.whole = 1024 * kKilobyte, .forSettings = 256 * kKilobyte};

struct SpaceReserveTest : testing::Test {
    struct stat status() const {
        struct stat status = {};
        EXPECT_EQ(::stat(path.c_str(), &status), 0);
        return status;
    }
    SpaceReserve::Need need(std::int64_t bytes, SpaceReserve::Use use = SpaceReserve::Use::moves) const {
        struct stat folder = {};
        EXPECT_EQ(::stat(disk.path().c_str(), &folder), 0);
        return {folder.st_dev, bytes, use};
    }
    std::string content() const {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    // Something else than a reserve lies in its place.
    void expectLeftAlone() {
        EXPECT_FALSE(reserve.lay());
        EXPECT_FALSE(reserve.release(need(1, SpaceReserve::Use::anything)));
    }

    TemporaryFolder disk;
    std::string path = disk.path() + "/config/quillane/reserve";
    SpaceReserve reserve{path, kSize};
};

TEST_F(SpaceReserveTest, ItReallyHoldsItsBlocksAndIsTheUsersAlone) {
    ASSERT_TRUE(reserve.lay());
    EXPECT_EQ(status().st_size, kSize.whole);
    EXPECT_GE(status().st_blocks * 512, kSize.whole);
    EXPECT_EQ(status().st_mode & 0777, 0600U);
}

TEST_F(SpaceReserveTest, ItSaysWhatItIs) {
    ASSERT_TRUE(reserve.lay());
    EXPECT_TRUE(content().starts_with("Quillane keeps this room for the day on which the disk is full.\n"));
}

TEST_F(SpaceReserveTest, ItGivesAwayWhatIsNeededInWholeSteps) {
    ASSERT_TRUE(reserve.lay());
    EXPECT_TRUE(reserve.release(need(1)));
    EXPECT_EQ(status().st_size, kSize.whole - 64 * kKilobyte);
    EXPECT_TRUE(reserve.release(need(100 * kKilobyte)));
    EXPECT_EQ(status().st_size, kSize.whole - 192 * kKilobyte);
}

TEST_F(SpaceReserveTest, MovesLeaveTheShareOfTheSettings) {
    ASSERT_TRUE(reserve.lay());
    EXPECT_TRUE(reserve.release(need(10 * kSize.whole)));
    EXPECT_EQ(status().st_size, kSize.forSettings);
    EXPECT_FALSE(reserve.release(need(1)));
    EXPECT_TRUE(reserve.release(need(10 * kSize.whole, SpaceReserve::Use::anything)));
    EXPECT_EQ(status().st_size, 4 * kKilobyte); // what it begins with stays
    EXPECT_FALSE(reserve.release(need(1, SpaceReserve::Use::anything)));
}

TEST_F(SpaceReserveTest, ItIsLaidAgainAsItWas) {
    ASSERT_TRUE(reserve.lay());
    const auto before = content();
    ASSERT_TRUE(reserve.release(need(10 * kSize.whole, SpaceReserve::Use::anything)));
    reserve.layAgain();
    EXPECT_TRUE(content() == before); // a megabyte, if told
}

TEST_F(SpaceReserveTest, NothingIsLaidAgainWhereNothingWasGivenAway) {
    reserve.layAgain();
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(SpaceReserveTest, TwoInstancesShareOne) {
    SpaceReserve second(path, kSize);
    ASSERT_TRUE(reserve.lay());
    ASSERT_TRUE(second.lay());
    EXPECT_TRUE(second.release(need(1)));
    EXPECT_TRUE(reserve.release(need(1)));
    EXPECT_EQ(status().st_size, kSize.whole - 128 * kKilobyte);
}

TEST_F(SpaceReserveTest, AnotherVolumeGetsNothing) {
    ASSERT_TRUE(reserve.lay());
    auto elsewhere = need(1);
    ++elsewhere.device;
    EXPECT_FALSE(reserve.release(elsewhere));
    EXPECT_EQ(status().st_size, kSize.whole);
}

TEST_F(SpaceReserveTest, WithoutOneThereIsNothingToGive) {
    EXPECT_FALSE(reserve.release(need(1)));
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(SpaceReserveTest, AFileOfSomebodyElseInItsPlaceIsLeftAlone) {
    const std::string precious(3000, 'p');
    disk.file("config/quillane/reserve", precious);
    expectLeftAlone();
    EXPECT_EQ(content(), precious);
}

TEST_F(SpaceReserveTest, ALinkInItsPlaceIsLeftAloneAndNotFollowed) {
    SpaceReserve elsewhere(disk.path() + "/elsewhere", kSize);
    ASSERT_TRUE(elsewhere.lay());
    disk.link("config/quillane/reserve", "../../elsewhere");
    expectLeftAlone();
    EXPECT_EQ(status().st_size, kSize.whole);
    EXPECT_TRUE(fs::is_symlink(path));
}

TEST_F(SpaceReserveTest, AFileWithASecondNameIsLeftAlone) {
    ASSERT_TRUE(reserve.lay());
    disk.hardLink("second", "config/quillane/reserve");
    expectLeftAlone();
    EXPECT_EQ(status().st_size, kSize.whole);
}

TEST_F(SpaceReserveTest, WhatIsNoFileOfBytesInItsPlaceIsLeftAlone) {
    disk.fifo("config/quillane/reserve");
    expectLeftAlone();
    EXPECT_TRUE(fs::is_fifo(path));
    disk.remove("config/quillane/reserve").folder("config/quillane/reserve");
    expectLeftAlone();
    EXPECT_TRUE(fs::is_directory(path));
}

TEST_F(SpaceReserveTest, WorkIsDoneAgainAsLongAsTheVolumeIsFullAndThereIsSomeMore) {
    ASSERT_TRUE(reserve.lay());
    int times = 0;
    const auto done = SpaceReserve::draw(&reserve, need(1), [&]() -> Result<> {
        return ++times < 4 ? Result<>(PlatformError{ErrorCode::kWriteNoSpace, 0}) : success();
    });
    EXPECT_TRUE(done.ok());
    EXPECT_EQ(times, 4);
    EXPECT_EQ(status().st_size, kSize.whole - 192 * kKilobyte);
}

TEST_F(SpaceReserveTest, AnotherFailureTakesNothing) {
    ASSERT_TRUE(reserve.lay());
    int times = 0;
    const auto done = SpaceReserve::draw(&reserve, need(1), [&]() -> Result<> {
        ++times;
        return PlatformError{ErrorCode::kWriteUnknown, 0};
    });
    EXPECT_FALSE(done.ok());
    EXPECT_EQ(times, 1);
    EXPECT_EQ(status().st_size, kSize.whole);
}

} // namespace
} // namespace quillane
