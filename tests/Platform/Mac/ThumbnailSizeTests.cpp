#include "ThumbnailSize.h"
#include <gtest/gtest.h>
#include <limits>

namespace quillane {
namespace {

constexpr int kMost = ThumbnailSize::kMostSide;

TEST(ThumbnailSize, WhatIsAskedForHasSidesThatCanBe) {
    EXPECT_EQ(ThumbnailSize::sensible({640, 480}), (PixelSize{640, 480}));
    EXPECT_EQ(ThumbnailSize::sensible({0, -3}), (PixelSize{1, 1}));
    EXPECT_EQ(ThumbnailSize::sensible({std::numeric_limits<int>::max(), 5}), (PixelSize{kMost, 5}));
}

TEST(ThumbnailSize, APictureOfNoMoreThanTwiceTheSizeIsKeptAsItIs) {
    EXPECT_EQ(ThumbnailSize::kept({60, 40}, {60, 60}), (PixelSize{60, 40}));
    EXPECT_EQ(ThumbnailSize::kept({120, 120}, {60, 60}), (PixelSize{120, 120}));
    EXPECT_EQ(ThumbnailSize::kept({3, 3}, {60, 60}), (PixelSize{3, 3}));
}

TEST(ThumbnailSize, ALargerOneIsShrunkWithinThatInItsProportions) {
    EXPECT_EQ(ThumbnailSize::kept({1'000, 500}, {60, 60}), (PixelSize{120, 60}));
    EXPECT_EQ(ThumbnailSize::kept({500, 1'000}, {60, 100}), (PixelSize{100, 200}));
    EXPECT_EQ(ThumbnailSize::kept({121, 40}, {60, 60}), (PixelSize{120, 40}));
}

TEST(ThumbnailSize, NoSideIsLost) {
    EXPECT_EQ(ThumbnailSize::kept({100'000, 1}, {10, 10}), (PixelSize{20, 1}));
}

} // namespace
} // namespace quillane
