#include "FakeStatusItem.h"
#include "MacMenuBarExtra.h"
#include "StepTaskRunner.h"
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace quillane {
namespace {

using Place = MenuBarExtra::Place;
using Entry = MenuBarExtra::Entry;

const std::vector<Entry> kMenu = {{.id = 20, .words = "Open"}, {}, {.id = 60, .words = "Quit"}};

class MacMenuBarExtraTest : public testing::Test {
  protected:
    MacMenuBarExtraTest() { hear(); }

    void hear() {
        extra->setHandlers({.pressed = [this](const auto& press) { presses.push_back(press); },
                            .chosen = [this](const auto& choice) { choices.push_back(choice.id); },
                            .shownChanged = [this] { shown.push_back(extra->isShown()); }});
    }
    void insert() {
        extra->insert();
        tasks.settle();
    }

    StepTaskRunner tasks;
    FakeMenuBar bar;
    std::unique_ptr<MacMenuBarExtra> extra = std::make_unique<MacMenuBarExtra>(
        tasks, [this](StatusItem::Handlers handlers) { return bar.make(std::move(handlers)); });
    std::vector<MenuBarExtra::Press> presses;
    std::vector<int> choices;
    std::vector<bool> shown; // what was so each time when a change was told
};

TEST_F(MacMenuBarExtraTest, NothingStandsBeforeItIsInserted) {
    EXPECT_FALSE(bar.hasItem);
    EXPECT_FALSE(extra->isShown());
}

TEST_F(MacMenuBarExtraTest, InsertedTwiceItStandsOnceAndThatIsToldOnce) {
    insert();
    insert();
    EXPECT_EQ(bar.itemsMade, 1);
    EXPECT_TRUE(extra->isShown());
    EXPECT_EQ(shown, std::vector({true}));
}

TEST_F(MacMenuBarExtraTest, NobodyIsToldWithinACall) {
    extra->insert();
    EXPECT_TRUE(shown.empty());
    tasks.settle();
    shown.clear();
    bar.item.pressed(Place{.x = 300, .y = 11});
    bar.item.chosen(20);
    extra->withdraw();
    extra->insert();
    EXPECT_TRUE(presses.empty() && choices.empty() && shown.empty());
    tasks.settle();
    EXPECT_EQ(presses.size() + choices.size(), 2U);
}

TEST_F(MacMenuBarExtraTest, WithdrawnItIsGoneAtOnceAndThatIsToldOnce) {
    insert();
    shown.clear();
    extra->withdraw();
    EXPECT_FALSE(bar.hasItem);
    EXPECT_FALSE(extra->isShown());
    extra->withdraw();
    tasks.settle();
    EXPECT_EQ(shown, std::vector({false}));
}

TEST_F(MacMenuBarExtraTest, FigureAndMenuAreKeptWhileItIsNotInserted) {
    extra->setFigure("1.2 GB");
    extra->setMenu(kMenu);
    insert();
    EXPECT_EQ(bar.figure, "1.2 GB");
    EXPECT_EQ(bar.menu, kMenu);
    extra->withdraw();
    extra->setFigure("");
    extra->setMenu({});
    insert();
    EXPECT_EQ(bar.figure, "");
    EXPECT_EQ(bar.menu, std::vector<Entry>());
}

TEST_F(MacMenuBarExtraTest, FigureAndMenuChangeWhereItStands) {
    insert();
    extra->setFigure("3 MB");
    extra->setMenu(kMenu);
    EXPECT_EQ(bar.figure, "3 MB");
    EXPECT_EQ(bar.menu, kMenu);
    EXPECT_EQ(bar.itemsMade, 1);
}

TEST_F(MacMenuBarExtraTest, APressTellsItsPlaceAndNoToken) {
    insert();
    bar.item.pressed(Place{.x = 300, .y = 11});
    bar.item.pressed(std::nullopt);
    tasks.settle();
    EXPECT_EQ(presses, (std::vector<MenuBarExtra::Press>{
                           {.place = Place{.x = 300, .y = 11}, .activationToken = {}}, {}}));
}

TEST_F(MacMenuBarExtraTest, AChoiceTellsTheIdOfItsEntry) {
    extra->setMenu(kMenu);
    insert();
    bar.item.chosen(60);
    tasks.settle();
    EXPECT_EQ(choices, std::vector({60}));
}

TEST_F(MacMenuBarExtraTest, WhatWasClickedIsNotToldOnceItIsWithdrawn) {
    insert();
    bar.item.pressed(std::nullopt);
    bar.item.chosen(20);
    extra->withdraw();
    tasks.settle();
    EXPECT_TRUE(presses.empty() && choices.empty());
}

TEST_F(MacMenuBarExtraTest, ThatTheMenuBarHasItNoMoreIsToldAndThatItHasItAgain) {
    insert();
    shown.clear();
    for (const bool hasRoom : {false, false, true}) {
        bar.hasRoom = hasRoom;
        bar.item.shownChanged();
        tasks.settle();
        EXPECT_EQ(extra->isShown(), hasRoom);
    }
    EXPECT_EQ(shown, std::vector({false, true}));
}

TEST_F(MacMenuBarExtraTest, WithItsEndTheItemGoesAndNobodyIsToldAnyMore) {
    insert();
    shown.clear();
    bar.item.pressed(std::nullopt);
    bar.item.chosen(20);
    extra.reset();
    EXPECT_FALSE(bar.hasItem);
    tasks.settle();
    EXPECT_TRUE(presses.empty() && choices.empty() && shown.empty());
}

TEST_F(MacMenuBarExtraTest, AHandlerMaySetOthersAndWithdraw) {
    insert();
    extra->setHandlers({.pressed =
                            [this](const auto& press) {
                                extra->setHandlers({});
                                extra->withdraw();
                                presses.push_back(press);
                            },
                        .chosen = {},
                        .shownChanged = {}});
    bar.item.pressed(std::nullopt);
    tasks.settle();
    EXPECT_EQ(presses.size(), 1U);
    EXPECT_FALSE(bar.hasItem);
}

TEST(StatusItemTitle, IsTheNameAndTheFigureWhereThereIsOne) {
    EXPECT_EQ(StatusItem::titleWith(""), "Quillane");
    EXPECT_EQ(StatusItem::titleWith("12.3 GB"), "Quillane, 12.3 GB");
}

} // namespace
} // namespace quillane
