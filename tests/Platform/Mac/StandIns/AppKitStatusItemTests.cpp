#include "AppKitStatusItem.h"
#include "StandIns.h"
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace quillane {
namespace {

using Place = MenuBarExtra::Place;
using StandIn::Button;

constexpr unsigned long kImageOnly = 1;
constexpr unsigned long kImageLeading = 7;
const std::vector<MenuBarExtra::Entry> kMenu = {{.id = 20, .words = "Open"},
                                                {.id = 30, .words = "Review", .isEnabled = false},
                                                {},
                                                {.id = 60, .words = "Set_tings & more"}};

class AppKitStatusItemTest : public testing::Test {
  protected:
    AppKitStatusItemTest() {
        StandIn::begin();
        item = makeStatusItem({.pressed = [this](auto place) { presses.push_back(place); },
                               .chosen = [this](int id) { choices.push_back(id); },
                               .shownChanged = [this] { ++changes; }});
    }

    std::vector<std::optional<Place>> presses;
    std::vector<int> choices;
    int changes = 0;
    std::unique_ptr<StatusItem> item; // last: it tells the others
};

TEST_F(AppKitStatusItemTest, StandsFromItsMakingToItsEnd) {
    EXPECT_EQ(StandIn::menuBar().items, 1);
    EXPECT_TRUE(item->isShown());
    item.reset();
    EXPECT_EQ(StandIn::menuBar().items, 0);
    EXPECT_EQ(StandIn::observers(), 0);
}

TEST_F(AppKitStatusItemTest, HasTheBundlesDrawingAsATemplateOrElseTheSystemsSymbol) {
    EXPECT_EQ(StandIn::menuBar().image, "the system's sparkles");
    EXPECT_TRUE(StandIn::menuBar().isTemplate);
    StandIn::setDrawing("MenuBarIconTemplate");
    item = makeStatusItem({.pressed = {}, .chosen = {}, .shownChanged = {}});
    EXPECT_EQ(StandIn::menuBar().image, "MenuBarIconTemplate");
    EXPECT_TRUE(StandIn::menuBar().isTemplate);
}

TEST_F(AppKitStatusItemTest, TheFigureStandsBesideTheIconAndIsReadWithTheName) {
    EXPECT_EQ(StandIn::menuBar().title, "");
    EXPECT_EQ(StandIn::menuBar().label, "Quillane");
    EXPECT_EQ(StandIn::menuBar().imagePosition, kImageOnly);
    item->setFigure("12.3 GB");
    EXPECT_EQ(StandIn::menuBar().title, "12.3 GB");
    EXPECT_EQ(StandIn::menuBar().label, "Quillane, 12.3 GB");
    EXPECT_EQ(StandIn::menuBar().imagePosition, kImageLeading);
    item->setFigure("");
    EXPECT_EQ(StandIn::menuBar().imagePosition, kImageOnly);
}

TEST_F(AppKitStatusItemTest, APressTellsTheMiddleOfTheItem) {
    item->setMenu(kMenu);
    StandIn::click(Button::left);
    StandIn::click(Button::none);
    StandIn::click(Button::none, true); // an assistive tool's key
    EXPECT_EQ(presses, (std::vector<std::optional<Place>>(3, Place{1'230, 12})));
    EXPECT_EQ(StandIn::menusOpened(), 0);
}

TEST_F(AppKitStatusItemTest, APressInAnotherScreensMenuBarTellsThePointer) {
    StandIn::click(Button::left, false, 2'900, 1'070);
    EXPECT_EQ(presses, (std::vector<std::optional<Place>>{Place{2'900, -170}}));
}

TEST_F(AppKitStatusItemTest, WithoutAMenuEveryClickIsAPress) {
    StandIn::click(Button::right);
    StandIn::click(Button::left, true);
    EXPECT_EQ(presses.size(), 2U);
    item->setMenu(kMenu);
    item->setMenu({});
    StandIn::click(Button::right);
    EXPECT_EQ(presses.size(), 3U);
}

TEST_F(AppKitStatusItemTest, TheRightButtonAndTheControlKeyOpenTheMenuAndAPressComesAgainAfterwards) {
    item->setMenu(kMenu);
    StandIn::click(Button::right);
    EXPECT_EQ(StandIn::menusOpened(), 1);
    StandIn::click(Button::left, true);
    EXPECT_EQ(StandIn::menusOpened(), 2);
    EXPECT_TRUE(presses.empty());
    EXPECT_FALSE(StandIn::menuBar().hasMenu) << "an item that has one tells of no click";
    StandIn::click(Button::left);
    EXPECT_EQ(presses.size(), 1U);
    EXPECT_EQ(StandIn::menusOpened(), 2);
}

TEST_F(AppKitStatusItemTest, TheMenuHasItsLinesByTheirWordsAndWhatCanBeChosenOfThem) {
    item->setMenu(kMenu);
    StandIn::click(Button::right);
    EXPECT_EQ(StandIn::openedMenu(),
              (std::vector<StandIn::Line>{
                  {"Open", true}, {"Review", false}, {"", true}, {"Set_tings & more", true}}));
}

TEST_F(AppKitStatusItemTest, AChoiceTellsTheIdOfItsEntry) {
    item->setMenu(kMenu);
    StandIn::click(Button::right);
    StandIn::choose(3);
    StandIn::choose(0);
    EXPECT_EQ(choices, (std::vector{60, 20}));
    EXPECT_TRUE(presses.empty());
}

TEST_F(AppKitStatusItemTest, AnItemThatEndsWhileItsMenuIsOpenTellsNothingMore) {
    item->setMenu(kMenu);
    StandIn::setWhileOpen([this] { item.reset(); });
    StandIn::click(Button::right);
    EXPECT_EQ(StandIn::menuBar().items, 0);
    StandIn::choose(0);
    EXPECT_TRUE(choices.empty());
}

TEST_F(AppKitStatusItemTest, ThatTheMenuBarHasItNoMoreIsTold) {
    StandIn::setShown(false);
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(item->isShown());
    StandIn::setShown(true);
    EXPECT_EQ(changes, 2);
    EXPECT_TRUE(item->isShown());
}

} // namespace
} // namespace quillane
