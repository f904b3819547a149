#include "ScreenPlace.h"
#include <gtest/gtest.h>
#include <limits>

namespace quillane {
namespace {

using Place = MenuBarExtra::Place;
using ScreenPlace::middleOf;

TEST(ScreenPlace, AnItemInTheFirstMenuBarLiesJustBelowTheUpperEdge) {
    EXPECT_EQ(middleOf({1'200, 876, 60, 24}, 900), (Place{1'230, 12}));
}

TEST(ScreenPlace, AScreenAboveTheFirstLiesBelowZero) {
    EXPECT_EQ(middleOf({1'200, 1'956, 60, 24}, 900), (Place{1'230, -1'068}));
}

TEST(ScreenPlace, AScreenBelowAndToTheLeftIsCountedFromTheFirstToo) {
    EXPECT_EQ(middleOf({-500, -24, 60, 24}, 900), (Place{-470, 912}));
}

TEST(ScreenPlace, HalfAPointIsRoundedTowardsTheUpperLeft) {
    EXPECT_EQ(middleOf({0, 875, 25, 25}, 900), (Place{12, 12}));
    EXPECT_EQ(middleOf({-25, 875, 25, 25}, 900), (Place{-13, 12}));
}

TEST(ScreenPlace, WhatHasNoSizeOrLiesNowhereHasNoPlace) {
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    constexpr double kEndless = std::numeric_limits<double>::infinity();
    EXPECT_EQ(middleOf({}, 900), std::nullopt);
    EXPECT_EQ(middleOf({1, 1, 0, 24}, 900), std::nullopt);
    EXPECT_EQ(middleOf({1, 1, 24, -1}, 900), std::nullopt);
    EXPECT_EQ(middleOf({kNone, 1, 24, 24}, 900), std::nullopt);
    EXPECT_EQ(middleOf({1, kEndless, 24, 24}, 900), std::nullopt);
    EXPECT_EQ(middleOf({1, 1, kNone, 24}, 900), std::nullopt);
    EXPECT_EQ(middleOf({1e300, 1, 24, 24}, 900), std::nullopt);
}

} // namespace
} // namespace quillane
