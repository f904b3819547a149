#include "Appearance.h"
#include "StandIns.h"
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace quillane {
namespace {

using Values = Appearance::Values;

class AppearanceTest : public testing::Test {
  protected:
    AppearanceTest() { StandIn::begin(); }

    void listen() {
        appearance = std::make_unique<Appearance>([this](const Values& values) { told.push_back(values); });
    }

    std::vector<Values> told;
    std::unique_ptr<Appearance> appearance; // last: it tells
};

TEST_F(AppearanceTest, TellsWhatIsTrueWhenItIsAsked) {
    listen();
    EXPECT_EQ(appearance->values(), Values());
    StandIn::setDisplayOptions(true, true);
    EXPECT_EQ(appearance->values(), (Values{false, true, true}));
    StandIn::setDisplayOptions(false, true);
    EXPECT_EQ(appearance->values(), (Values{false, false, true}));
    EXPECT_TRUE(told.empty());
}

TEST_F(AppearanceTest, ADarkLookOfHighContrastIsDarkToo) {
    listen();
    for (const auto& [look, isDark] :
         std::vector<std::pair<const char*, bool>>{{"NSAppearanceNameDarkAqua", true},
                                                   {"NSAppearanceNameAqua", false},
                                                   {"HighContrastDarkAqua", true}}) {
        StandIn::setLook(look);
        EXPECT_EQ(appearance->values().isDark, isDark) << look;
    }
    EXPECT_EQ(told, (std::vector<Values>{{true, false, false}, {}, {true, false, false}}));
}

TEST_F(AppearanceTest, WhatStaysAsItWasIsNotTold) {
    listen();
    StandIn::setLook("NSAppearanceNameAqua");
    StandIn::tellDisplayOptions();
    EXPECT_TRUE(told.empty());
}

TEST_F(AppearanceTest, ContrastAndMotionAreHeardFromTheWorkspacesOwnCentreOnTheMainThread) {
    listen();
    EXPECT_EQ(StandIn::mainQueues(), 1);
    StandIn::setDisplayOptions(true, false);
    StandIn::tellDisplayOptions(false);
    EXPECT_TRUE(told.empty());
    StandIn::tellDisplayOptions();
    EXPECT_EQ(told, (std::vector<Values>{{false, true, false}}));
}

TEST_F(AppearanceTest, AfterItsEndNothingIsHeard) {
    listen();
    EXPECT_EQ(StandIn::observers(), 1);
    appearance.reset();
    EXPECT_EQ(StandIn::observers(), 0);
    StandIn::setLook("NSAppearanceNameDarkAqua");
    StandIn::setDisplayOptions(true, true);
    StandIn::tellDisplayOptions();
    EXPECT_TRUE(told.empty());
}

} // namespace
} // namespace quillane
