#include "BlockCounts.h"
#include <cerrno>
#include <gtest/gtest.h>
#include <limits>

namespace quillane {
namespace {

TEST(BlockCounts, WhatIsAvailableAndWhatThereIsAreToldInBytes) {
    const BlockCounts counts{.blockSize = 4096, .blocks = 100, .available = 7};
    EXPECT_EQ(*counts.space(), (VolumeSpace{.free = 7 * 4096, .size = 100 * 4096}));
    EXPECT_EQ(*BlockCounts().space(), VolumeSpace()) << "a volume that keeps nothing";
}

TEST(BlockCounts, MoreBytesThanCanBeCountedAreAFailureAndNoOtherNumber) {
    constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
    constexpr auto kMostBlocks = std::uint64_t{1} << 51; // of 4 KB: one more than can be counted
    const auto spaceOf = [](std::uint64_t blocks, std::uint64_t available) {
        return BlockCounts{.blockSize = 4096, .blocks = blocks, .available = available}.space();
    };
    EXPECT_EQ(spaceOf(kMostBlocks - 1, kMostBlocks - 1)->size, kMost - 4095);
    EXPECT_EQ(spaceOf(kMostBlocks, 1).error(), (PlatformError{ErrorCode::kReadUnknown, EOVERFLOW}));
    EXPECT_EQ(spaceOf(1, kMostBlocks).error(), (PlatformError{ErrorCode::kReadUnknown, EOVERFLOW}));
    EXPECT_FALSE(spaceOf(std::numeric_limits<std::uint64_t>::max(), 1).ok());
}

TEST(BlockCounts, ThereIsRoomForWhatFitsIntoWholeBlocks) {
    const BlockCounts counts{.blockSize = 4096, .blocks = 100, .available = 7};
    EXPECT_TRUE(counts.hasRoomFor(0) && counts.hasRoomFor(1) && counts.hasRoomFor(7 * 4096));
    EXPECT_FALSE(counts.hasRoomFor(7 * 4096 + 1));
    constexpr auto kMost = std::numeric_limits<std::uint64_t>::max();
    EXPECT_FALSE(counts.hasRoomFor(kMost));
    EXPECT_TRUE((BlockCounts{.blockSize = 4096, .blocks = kMost, .available = kMost}.hasRoomFor(kMost)))
        << "more than can be counted in bytes";
    EXPECT_FALSE(BlockCounts().hasRoomFor(1)) << "a volume that keeps nothing";
}

TEST(BlockCounts, OnlyWhereFilesAreCountedAndNoneIsLeftThereMayBeNoMore) {
    EXPECT_TRUE(BlockCounts().mayHoldMoreFiles());
    EXPECT_TRUE(BlockCounts{.availableFiles = 1}.mayHoldMoreFiles());
    EXPECT_FALSE(BlockCounts{.availableFiles = 0}.mayHoldMoreFiles());
}

} // namespace
} // namespace quillane
