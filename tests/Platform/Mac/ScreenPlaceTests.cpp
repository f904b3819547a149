#include "ScreenPlace.h"
#include <gtest/gtest.h>
#include <limits>

namespace quillane {
namespace {

using Place = MenuBarExtra::Place;

std::optional<Place> middleOf(const ScreenPlace::Rect& item, double height) {
    return ScreenPlace::pressOn(item, std::nullopt, height);
}

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

TEST(ScreenPlace, APointerOnTheItemMeansTheMiddleOfIt) {
    for (const ScreenPlace::Point pointer : {ScreenPlace::Point{1'200, 876}, {1'260, 900}, {1'211, 890}}) {
        EXPECT_EQ(ScreenPlace::pressOn({1'200, 876, 60, 24}, pointer, 900), (Place{1'230, 12})) << pointer.x;
    }
}

TEST(ScreenPlace, APointerInTheMenuBarOfAnotherScreenIsThePlace) {
    EXPECT_EQ(ScreenPlace::pressOn({1'200, 876, 60, 24}, {{2'900.5, 1'070}}, 900), (Place{2'900, -170}));
    EXPECT_EQ(ScreenPlace::pressOn({1'200, 876, 60, 24}, {{1'230, 875}}, 900), (Place{1'230, 25}));
    EXPECT_EQ(ScreenPlace::pressOn({1'200, 876, 60, 24}, {{1'199, 880}}, 900), (Place{1'199, 20}));
}

TEST(ScreenPlace, APointerIsThePlaceOfAnItemThatLiesNowhere) {
    EXPECT_EQ(ScreenPlace::pressOn({}, {{300, 890}}, 900), (Place{300, 10}));
    EXPECT_EQ(ScreenPlace::pressOn({}, {{1e300, 890}}, 900), std::nullopt);
}

} // namespace
} // namespace quillane
