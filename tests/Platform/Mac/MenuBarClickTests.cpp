#include "MenuBarClick.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

using MenuBarClick::Button;
using MenuBarClick::opensMenu;

TEST(MenuBarClick, TheRightButtonAsksForTheMenu) {
    EXPECT_TRUE(opensMenu(Button::right, false, true));
    EXPECT_TRUE(opensMenu(Button::right, true, true));
}

TEST(MenuBarClick, TheLeftButtonPressesUnlessTheControlKeyIsHeld) {
    EXPECT_FALSE(opensMenu(Button::left, false, true));
    EXPECT_TRUE(opensMenu(Button::left, true, true));
}

TEST(MenuBarClick, WithoutAButtonItIsAPressWhateverKeysAnAssistiveToolHolds) {
    EXPECT_FALSE(opensMenu(Button::none, false, true));
    EXPECT_FALSE(opensMenu(Button::none, true, true));
}

TEST(MenuBarClick, WhereThereIsNoMenuEveryClickIsAPress) {
    for (const auto button : {Button::left, Button::right, Button::none}) {
        EXPECT_FALSE(opensMenu(button, false, false));
        EXPECT_FALSE(opensMenu(button, true, false));
    }
}

} // namespace
} // namespace quillane
