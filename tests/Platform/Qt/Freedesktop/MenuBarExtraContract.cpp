// What every MenuBarExtra owes its callers, run over the adapter and the fake. Where the environment names a real panel,
// QUILLANE_PANEL, it takes the place of the test's own.
#include "MenuBarDesk.h"
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace quillane {
namespace {

const MenuBarExtra::Press kPress = {.place = MenuBarExtra::Place{.x = 300, .y = 11},
                                    .activationToken = "token-1"};

const std::vector<MenuBarExtra::Entry> kMenu = {{.id = 20, .words = "Open"},
                                                {.id = 30, .words = "Review", .isEnabled = false},
                                                {},
                                                {.id = 50, .words = "Set_tings & more"},
                                                {.id = 60, .words = "Quit"}};

struct Adapter {
    const char* name;
    std::unique_ptr<MenuBarDesk> (*make)();
};

class MenuBarExtraContract : public testing::TestWithParam<Adapter> {
  protected:
    MenuBarExtraContract() { hear(); }

    void hear() {
        item().setHandlers({.pressed = [this](const auto& press) { m_presses.push_back(press); },
                            .chosen = [this](const auto& choice) { m_choices.push_back(choice); },
                            .shownChanged = [this] { m_shown.push_back(item().isShown()); }});
    }
    MenuBarExtra& item() { return m_desk->item(); }
    // It stands in the panel, and that has been told.
    void show() {
        m_desk->setPanel(true);
        item().insert();
        ASSERT_TRUE(m_desk->panelHasIt(true));
        m_desk->settle();
        ASSERT_TRUE(item().isShown());
        m_shown.clear();
    }
    void setPanel(bool isThere) {
        m_desk->setPanel(isThere);
        EXPECT_TRUE(m_desk->panelHasIt(isThere));
        m_desk->settle();
    }

    std::vector<MenuBarExtra::Press> m_presses;
    std::vector<MenuBarExtra::Choice> m_choices;
    std::vector<bool> m_shown;                               // what was so each time when a change was told
    std::unique_ptr<MenuBarDesk> m_desk = GetParam().make(); // last: it tells the others
};

TEST_P(MenuBarExtraContract, NothingIsInThePanelUnlessItIsInserted) {
    m_desk->setPanel(true);
    m_desk->settle();
    EXPECT_FALSE(item().isShown());
    EXPECT_TRUE(m_desk->panelHasIt(false));
    EXPECT_EQ(m_shown, std::vector<bool>());
}

TEST_P(MenuBarExtraContract, WhatIsInsertedShowsInThePanelThatThereIs) {
    m_desk->setPanel(true);
    item().insert();
    EXPECT_TRUE(m_desk->panelHasIt(true));
    m_desk->settle();
    EXPECT_TRUE(item().isShown());
    EXPECT_EQ(m_shown, std::vector{true});
}

TEST_P(MenuBarExtraContract, WithoutAPanelNothingShows) {
    item().insert();
    m_desk->settle();
    EXPECT_FALSE(item().isShown());
    EXPECT_EQ(m_shown, std::vector<bool>());
}

TEST_P(MenuBarExtraContract, FollowsAPanelThatComesLaterGoesAndComesAgain) {
    item().insert();
    m_desk->settle();
    for (const bool isThere : {true, false, true, false}) {
        setPanel(isThere);
        EXPECT_EQ(item().isShown(), isThere);
    }
    EXPECT_EQ(m_shown, (std::vector{true, false, true, false}));
}

TEST_P(MenuBarExtraContract, IsGoneAtOnceWhenItIsWithdrawnAndThatIsToldAfterwards) {
    show();
    item().withdraw();
    EXPECT_FALSE(item().isShown());
    EXPECT_EQ(m_shown, std::vector<bool>());
    EXPECT_TRUE(m_desk->panelHasIt(false));
    m_desk->settle();
    EXPECT_EQ(m_shown, std::vector{false});
}

TEST_P(MenuBarExtraContract, ComesBackWhenItIsInsertedAgain) {
    show();
    item().withdraw();
    EXPECT_TRUE(m_desk->panelHasIt(false));
    m_desk->settle();
    item().insert();
    EXPECT_TRUE(m_desk->panelHasIt(true));
    m_desk->settle();
    EXPECT_TRUE(item().isShown());
    EXPECT_EQ(m_shown, (std::vector{false, true}));
}

TEST_P(MenuBarExtraContract, InsertedTwiceItIsWithdrawnByOneWord) {
    show();
    item().insert();
    m_desk->settle();
    item().withdraw();
    EXPECT_TRUE(m_desk->panelHasIt(false));
    item().withdraw();
    m_desk->settle();
    EXPECT_FALSE(item().isShown());
    EXPECT_EQ(m_shown, std::vector{false});
}

TEST_P(MenuBarExtraContract, WithdrawnBeforeAnybodyHeardOfItItNeverShows) {
    m_desk->setPanel(true);
    item().insert();
    item().withdraw();
    m_desk->settle();
    EXPECT_FALSE(item().isShown());
    EXPECT_TRUE(m_desk->panelHasIt(false));
}

TEST_P(MenuBarExtraContract, AClickIsToldWithItsPlaceAndItsToken) {
    show();
    m_desk->click(kPress);
    ASSERT_TRUE(m_desk->until([this] { return !m_presses.empty(); }));
    EXPECT_EQ(m_presses.size(), 1U);
    EXPECT_TRUE(m_desk->isThatClick(m_presses.front()));
}

TEST_P(MenuBarExtraContract, AClickOfWhichThePanelTellsNothingIsToldAsSuch) {
    show();
    m_desk->click({});
    ASSERT_TRUE(m_desk->until([this] { return !m_presses.empty(); }));
    EXPECT_EQ(m_presses.size(), 1U);
    EXPECT_EQ(m_presses.front(), MenuBarExtra::Press());
}

TEST_P(MenuBarExtraContract, AClickIsToldAtALaterTurnAndNotAfterTheItemHasGone) {
    show();
    m_desk->click(kPress);
    EXPECT_TRUE(m_presses.empty());
    m_desk->tasks().turn();
    EXPECT_EQ(m_presses.size(), 1U);
    m_desk->click(kPress);
    item().withdraw();
    m_desk->settle();
    EXPECT_EQ(m_presses.size(), 1U);
}

TEST_P(MenuBarExtraContract, OnlyTheHandlersThatWereSetLastAreTold) {
    show();
    item().setHandlers({});
    m_desk->click(kPress);
    item().withdraw();
    m_desk->settle();
    EXPECT_TRUE(m_presses.empty());
    EXPECT_TRUE(m_shown.empty());
}

TEST_P(MenuBarExtraContract, AHandlerMaySetOthersAndWithdrawTheItem) {
    show();
    item().setHandlers({.pressed =
                            [this](const auto&) {
                                item().withdraw();
                                hear();
                            },
                        .chosen = {},
                        .shownChanged = {}});
    m_desk->click(kPress);
    m_desk->settle();
    EXPECT_FALSE(item().isShown());
    EXPECT_EQ(m_shown, std::vector{false});
}

TEST_P(MenuBarExtraContract, ThePanelKnowsTheFigureThatStandsAlsoWhereItWasSetBefore) {
    item().setFigure("24.86 GB");
    show();
    EXPECT_EQ(m_desk->figure(), "24.86 GB");
    for (const char* figure : {"1.2 GB", ""}) {
        item().setFigure(figure);
        EXPECT_EQ(m_desk->figure(), figure);
    }
    item().setFigure("3 MB");
    item().withdraw();
    EXPECT_TRUE(m_desk->panelHasIt(false));
    item().insert();
    EXPECT_TRUE(m_desk->panelHasIt(true));
    EXPECT_EQ(m_desk->figure(), "3 MB");
}

TEST_P(MenuBarExtraContract, WhatIsChosenFromTheMenuIsToldOnceWithItsOwnId) {
    item().setMenu(kMenu);
    show();
    for (const auto& [line, id] : {std::pair(0U, 20), {3U, 50}, {4U, 60}}) {
        m_choices.clear();
        m_desk->choose(kMenu, line, "token-2");
        ASSERT_TRUE(m_desk->until([this] { return !m_choices.empty(); })) << id;
        ASSERT_EQ(m_choices.size(), 1U);
        EXPECT_EQ(m_choices.front().id, id);
        EXPECT_EQ(m_choices.front().activationToken, m_desk->givesTokens() ? "token-2" : "");
    }
    EXPECT_TRUE(m_presses.empty()) << "it is no press on the item";
}

TEST_P(MenuBarExtraContract, ThePanelKnowsTheMenuThatStandsAlsoWhereItWasSetBefore) {
    const std::vector<std::string> words = {"Open", "[Review]", "", "Set_tings & more", "Quit"};
    item().setMenu(kMenu);
    show();
    EXPECT_EQ(m_desk->menu(), words);
    auto other = kMenu;
    other[1].isEnabled = true;
    item().setMenu(other);
    EXPECT_EQ(m_desk->menu()[1], "Review");
    item().setMenu({{.id = 1, .words = "Other"}});
    EXPECT_EQ(m_desk->menu(), std::vector<std::string>{"Other"});
    item().setMenu({});
    EXPECT_TRUE(m_desk->menu().empty());
    item().setMenu(kMenu);
    item().withdraw();
    EXPECT_TRUE(m_desk->panelHasIt(false));
    item().insert();
    EXPECT_TRUE(m_desk->panelHasIt(true));
    EXPECT_EQ(m_desk->menu(), words);
}

TEST_P(MenuBarExtraContract, WhatCantBeChosenIsNotToldAndARuleNeither) {
    item().setMenu(kMenu);
    show();
    m_desk->choose(kMenu, 1, {});
    m_desk->choose(kMenu, 2, {});
    m_desk->settle();
    EXPECT_TRUE(m_choices.empty());
    auto menu = kMenu;
    menu[1].isEnabled = true;
    item().setMenu(menu);
    m_desk->choose(menu, 1, {});
    m_desk->settle();
    ASSERT_EQ(m_choices.size(), 1U);
    EXPECT_EQ(m_choices.front().id, 30);
}

TEST_P(MenuBarExtraContract, AChoiceIsToldAtALaterTurnAndNotAfterTheItemHasGone) {
    item().setMenu(kMenu);
    show();
    m_desk->choose(kMenu, 0, {});
    EXPECT_TRUE(m_choices.empty());
    m_desk->tasks().turn();
    EXPECT_EQ(m_choices.size(), 1U);
    m_desk->choose(kMenu, 0, {});
    item().withdraw();
    m_desk->settle();
    EXPECT_EQ(m_choices.size(), 1U);
}

TEST_P(MenuBarExtraContract, AChoiceThatSetsOtherHandlersAndAnotherMenuHarmsNothing) {
    item().setMenu(kMenu);
    show();
    item().setHandlers({.pressed = {},
                        .chosen =
                            [this](const auto&) {
                                item().setMenu({});
                                item().withdraw();
                                hear();
                            },
                        .shownChanged = {}});
    m_desk->choose(kMenu, 0, {});
    m_desk->settle();
    EXPECT_FALSE(item().isShown());
    EXPECT_TRUE(m_choices.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Adapters, MenuBarExtraContract,
    testing::Values(
        Adapter{"Desktop", panelDesk},
        Adapter{"Mac", [] { return std::unique_ptr<MenuBarDesk>(std::make_unique<StatusItemDesk>()); }},
        Adapter{"Fake", [] { return std::unique_ptr<MenuBarDesk>(std::make_unique<FakeMenuBarDesk>()); }}),
    [](const auto& adapter) { return adapter.param.name; });

} // namespace
} // namespace quillane
