#include "MenuBar/PopoverPlace.h"
#include <gtest/gtest.h>
#include <vector>

using namespace quillane;
using PopoverPlace::Screen;

namespace {

constexpr QSize kSize(308, 330);
constexpr QRect kWhole(0, 0, 1600, 1000);
constexpr QPoint kNowhere(800, 500); // the pointer, where it must not matter

QRect placed(QPoint press, const std::vector<Screen>& screens, QSize size = kSize) {
    return {PopoverPlace::of(press, kNowhere, screens, size), size};
}
QRect placedUntold(QPoint pointer, const std::vector<Screen>& screens) {
    return {PopoverPlace::of(std::nullopt, pointer, screens, kSize), kSize};
}

// A panel of 30 pixels takes the rest.
constexpr Screen kTop{kWhole, {0, 30, 1600, 970}};
constexpr Screen kBottom{kWhole, {0, 0, 1600, 970}};
constexpr Screen kLeft{kWhole, {30, 0, 1570, 1000}};
constexpr Screen kRight{kWhole, {0, 0, 1570, 1000}};

} // namespace

TEST(PopoverPlace, BelowAPanelAtTheTopItStandsEightPixelsOffUnderTheMiddleOfTheIcon) {
    EXPECT_EQ(placed({800, 15}, {kTop}), QRect(800 - 154, 38, 308, 330));
}

TEST(PopoverPlace, AboveAPanelAtTheBottomItStandsEightPixelsOff) {
    const QRect place = placed({800, 985}, {kBottom});
    EXPECT_EQ(place.x(), 800 - 154);
    EXPECT_EQ(place.y() + place.height(), 970 - 8);
}

TEST(PopoverPlace, BesideAPanelAtTheLeftItStandsEightPixelsOffAtTheHeightOfTheIcon) {
    EXPECT_EQ(placed({15, 500}, {kLeft}), QRect(38, 500 - 165, 308, 330));
}

TEST(PopoverPlace, BesideAPanelAtTheRightItStandsEightPixelsOff) {
    const QRect place = placed({1585, 500}, {kRight});
    EXPECT_EQ(place.x() + place.width(), 1570 - 8);
    EXPECT_EQ(place.y(), 500 - 165);
}

TEST(PopoverPlace, AnIconAtTheEndOfItsPanelHasItInsideTheScreenByTheSameGap) {
    EXPECT_EQ(placed({1590, 15}, {kTop}).x(), 1600 - 8 - 308);
    EXPECT_EQ(placed({4, 15}, {kTop}).x(), 8);
    EXPECT_EQ(placed({15, 990}, {kLeft}).y(), 1000 - 8 - 330);
    EXPECT_EQ(placed({1585, 3}, {kRight}).y(), 8);
}

TEST(PopoverPlace, APanelThatLiesOverWindowsIsTheEdgeThatIsNearest) {
    const Screen free{kWhole, kWhole};
    EXPECT_EQ(placed({1200, 12}, {free}).y(), 8);
    EXPECT_EQ(placed({1200, 990}, {free}).y(), 1000 - 8 - 330);
    EXPECT_EQ(placed({10, 600}, {free}).x(), 8);
    EXPECT_EQ(placed({1595, 600}, {free}).x(), 1600 - 8 - 308);
}

TEST(PopoverPlace, OfSeveralScreensItStaysOnTheOneThatWasPressed) {
    const Screen second{{1600, 200, 1280, 720}, {1600, 200, 1280, 690}};
    const QRect place = placed({1610, 915}, {kTop, second});
    EXPECT_EQ(place.topLeft(), QPoint(1608, 890 - 8 - 330));
    EXPECT_EQ(placed({1595, 15}, {second, kTop}).x(), 1600 - 8 - 308);
}

TEST(PopoverPlace, AScreenThatLiesLeftOfTheFirstHasPlacesBelowZero) {
    const Screen left{{-1280, -100, 1280, 720}, {-1280, -70, 1280, 690}};
    EXPECT_EQ(placed({-640, -85}, {kTop, left}), QRect(-640 - 154, -62, 308, 330));
}

// A screen of 3840x2160 at 2, and one of 1920x1080 at 1.25, as they are told in device-independent pixels.
TEST(PopoverPlace, OnScaledScreensItIsTheSame) {
    const Screen twice{{0, 0, 1920, 1080}, {0, 28, 1920, 1052}};
    const Screen quarter{{1920, 0, 1536, 864}, {1920, 0, 1536, 836}};
    EXPECT_EQ(placed({1900, 14}, {twice, quarter}).topLeft(), QPoint(1920 - 8 - 308, 36));
    EXPECT_EQ(placed({3440, 850}, {twice, quarter}).topLeft(), QPoint(3456 - 8 - 308, 836 - 8 - 330));
}

TEST(PopoverPlace, APressBesideAllScreensIsTakenToTheNearest) {
    const Screen second{{1600, 0, 1280, 1000}, {1600, 30, 1280, 970}};
    EXPECT_EQ(placed({2900, 10}, {kTop, second}).topLeft(), QPoint(2880 - 8 - 308, 38));
}

TEST(PopoverPlace, APopoverLargerThanTheScreenShowsItsUpperLeftPart) {
    const Screen small{{0, 0, 320, 240}, {0, 0, 320, 220}};
    EXPECT_EQ(placed({300, 230}, {small}).topLeft(), QPoint(12, 0)) << "its width still fits";
    EXPECT_EQ(placed({300, 230}, {small}, {400, 330}).topLeft(), QPoint(0, 0));
}

TEST(PopoverPlace, APressThatNobodyToldIsWhereThePointerLiesInAPanel) {
    EXPECT_EQ(placedUntold({800, 15}, {kTop}), placed({800, 15}, {kTop}));
}

TEST(PopoverPlace, WithoutAnyPlaceItStandsInTheRightCornerOfThePanel) {
    EXPECT_EQ(placedUntold(kNowhere, {kTop}).topLeft(), QPoint(1600 - 8 - 308, 38));
    EXPECT_EQ(placedUntold(kNowhere, {kBottom}).topLeft(), QPoint(1600 - 8 - 308, 970 - 8 - 330));
    EXPECT_EQ(placedUntold(kNowhere, {kRight}).topLeft(), QPoint(1570 - 8 - 308, 1000 - 8 - 330));
    EXPECT_EQ(placedUntold(kNowhere, {kLeft}).topLeft(), QPoint(38, 1000 - 8 - 330));
    EXPECT_EQ(placedUntold(kNowhere, {{kWhole, kWhole}}).topLeft(), QPoint(1600 - 8 - 308, 8));
}

TEST(PopoverPlace, WithoutAScreenThereIsNoPlace) {
    EXPECT_EQ(PopoverPlace::of(QPoint(3, 3), kNowhere, {}, kSize), QPoint());
}
