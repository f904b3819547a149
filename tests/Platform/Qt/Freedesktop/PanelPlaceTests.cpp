#include "PanelPlace.h"
#include <QGuiApplication>
#include <QScreen>
#include <gtest/gtest.h>

namespace quillane {
namespace {

using PanelPlace::placeOf;

const std::vector<PanelPlace::Screen> kPlain = {{QRect(0, 0, 1600, 1000), 1},
                                                {QRect(1600, 0, 1280, 1024), 1}};
const std::vector<PanelPlace::Screen> kDouble = {{QRect(0, 0, 1600, 1000), 2}};

TEST(PanelPlace, IsWhatWasToldWhereNothingIsScaled) {
    EXPECT_EQ(placeOf({1588, 11}, kPlain, std::nullopt), QPoint(1588, 11));
    EXPECT_EQ(placeOf({2800, 1'000}, kPlain, QPoint(0, 0)), QPoint(2800, 1'000));
    EXPECT_EQ(placeOf({0, 11}, kPlain, std::nullopt), QPoint(0, 11));
}

TEST(PanelPlace, IsNothingWhereThePanelDoesNotKnow) {
    EXPECT_EQ(placeOf({0, 0}, kPlain, QPoint(0, 0)), std::nullopt);
    EXPECT_EQ(placeOf({-5, 11}, kPlain, std::nullopt), std::nullopt);
    EXPECT_EQ(placeOf({3'200, 11}, kPlain, std::nullopt), std::nullopt);
    EXPECT_EQ(placeOf({300, 11}, {}, std::nullopt), std::nullopt);
}

TEST(PanelPlace, OfTwoMeaningsTheNearerToThePointerIsMeant) {
    EXPECT_EQ(placeOf({800, 21}, kDouble, QPoint(398, 12)), QPoint(400, 10));
    EXPECT_EQ(placeOf({800, 21}, kDouble, QPoint(798, 22)), QPoint(800, 21));
}

TEST(PanelPlace, WhatCanMeanOneThingAloneMeansThat) {
    EXPECT_EQ(placeOf({3'199, 1'999}, kDouble, QPoint(5, 5)), QPoint(1'599, 999));
    EXPECT_EQ(placeOf({3'200, 5}, kDouble, QPoint(5, 5)), std::nullopt);
}

TEST(PanelPlace, WithoutAPointerItIsWhatWasTold) {
    EXPECT_EQ(placeOf({800, 21}, kDouble, std::nullopt), QPoint(800, 21));
    EXPECT_EQ(placeOf({3'000, 21}, kDouble, std::nullopt), std::nullopt);
}

TEST(PanelPlace, AScreenIsScaledFromItsOwnCorner) {
    const std::vector<PanelPlace::Screen> screens = {{QRect(0, 0, 1600, 1000), 1},
                                                     {QRect(1600, 0, 960, 540), 2}};
    EXPECT_EQ(placeOf({1'600 + 1'800, 20}, screens, QPoint(2'500, 10)), QPoint(2'500, 10));
}

TEST(PanelPlace, KnowsTheScreensThatThereAre) {
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    EXPECT_EQ(placeOf(screen.center()), screen.center());
    EXPECT_EQ(placeOf(screen.topLeft() - QPoint(50'000, 0)), std::nullopt);
}

} // namespace
} // namespace quillane
