#include "OneInstance.h"
#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace quillane {
namespace {

using namespace std::chrono_literals;

class OneInstanceTest : public testing::Test {
  protected:
    bool isSecond(bool isRelaunched = false) {
        return OneInstance::isSecond({.others = [this] { return others; },
                                      .isThere =
                                          [this](int process) {
                                              const auto end = ends.find(process);
                                              return end == ends.end() || waited < end->second;
                                          },
                                      .bringForward =
                                          [this](int process) {
                                              asked.push_back(process);
                                              return comesForward;
                                          },
                                      .pause = [this](auto time) { waited += time; },
                                      .launched =
                                          [this](int process) {
                                              const auto found = launches.find(process);
                                              return found == launches.end() ? std::nullopt
                                                                             : std::optional(found->second);
                                          },
                                      .now = [] { return Date{1'000}; },
                                      .own = own},
                                     isRelaunched);
    }

    std::vector<int> others;
    std::map<int, std::chrono::milliseconds> ends; // after how much waiting
    bool comesForward = true;
    // Whether each of the two goes on, where both find the other.
    std::pair<bool, bool> goOn(int first, int second) {
        own = first;
        others = {second};
        const bool goesFirst = !isSecond();
        own = second;
        others = {first};
        return {goesFirst, !isSecond()};
    }

    int own = 50;
    std::map<int, Date> launches;
    std::vector<int> asked; // to come forward
    std::chrono::milliseconds waited{0};
};

TEST_F(OneInstanceTest, TheOnlyOneGoesOnWithoutWaiting) {
    EXPECT_FALSE(isSecond());
    EXPECT_FALSE(isSecond(true));
    EXPECT_EQ(waited, 0ms);
}

TEST_F(OneInstanceTest, ASecondOneBringsTheFirstForwardAndEndsWithoutWaiting) {
    others = {41};
    EXPECT_TRUE(isSecond());
    EXPECT_EQ(asked, std::vector({41}));
    EXPECT_EQ(waited, 0ms);
}

TEST_F(OneInstanceTest, OfSeveralOneComesForward) {
    others = {41, 42};
    EXPECT_TRUE(isSecond());
    EXPECT_EQ(asked, std::vector({41}));
}

TEST_F(OneInstanceTest, WhereTheFirstDoesNotComeForwardThereAreNotTwoEither) {
    others = {41, 42};
    comesForward = false;
    EXPECT_TRUE(isSecond());
    EXPECT_EQ(asked, std::vector({41, 42}));
}

TEST_F(OneInstanceTest, WhatHasEndedBeforeItCouldBeAskedIsNoOther) {
    others = {41};
    ends[41] = 0ms;
    EXPECT_FALSE(isSecond());
    EXPECT_TRUE(asked.empty());
}

TEST_F(OneInstanceTest, ARelaunchedOneWaitsForTheEndOfTheOldAndGoesOn) {
    others = {41};
    ends[41] = 2s;
    EXPECT_FALSE(isSecond(true));
    EXPECT_TRUE(asked.empty()) << "it would stay";
    EXPECT_GE(waited, 2s);
    EXPECT_LE(waited, 2s + OneInstance::kBetweenLooks);
}

TEST_F(OneInstanceTest, ARelaunchedOneWaitsForAsLongAsTheOldOneHasWorkToFinish) {
    others = {41};
    ends[41] = 1h;
    EXPECT_FALSE(isSecond(true));
    EXPECT_TRUE(asked.empty()) << "nobody would be left";
    EXPECT_GE(waited, 1h);
}

TEST_F(OneInstanceTest, OfTwoThatWereRelaunchedTheLaterOneEndsAfterTheOldOne) {
    others = {41, 42};
    ends[41] = 1h;
    EXPECT_TRUE(isSecond(true));
    EXPECT_EQ(asked, std::vector({42}));
    EXPECT_EQ(waited, 1h + OneInstance::kPatience);
}

TEST_F(OneInstanceTest, OfTwoThatWereRelaunchedTheEarlierOneWaitsForTheOldOneInWhateverOrderTheyAreListed) {
    others = {52, 41};
    launches = {{41, Date{100}}, {50, Date{900}}, {52, Date{901}}};
    ends[41] = 1h;
    EXPECT_FALSE(isSecond(true));
    EXPECT_TRUE(asked.empty());
    EXPECT_GE(waited, 1h);
    others = {49, 41};
    launches[49] = Date{899};
    ends[49] = 2h;
    waited = 0ms;
    EXPECT_TRUE(isSecond(true)) << "the earlier one of the two goes on";
    EXPECT_EQ(asked, std::vector({49}));
}

TEST_F(OneInstanceTest, ARelaunchedOneWaitsForAllOthers) {
    others = {41, 42};
    ends = {{41, 1s}, {42, 3s}};
    EXPECT_FALSE(isSecond(true));
    EXPECT_GE(waited, 3s);
}

TEST_F(OneInstanceTest, OfTwoThatStartAtOnceTheOneLaunchedEarlierGoesOn) {
    launches = {{41, Date{900}}, {42, Date{899.5}}};
    EXPECT_EQ(goOn(41, 42), std::pair(false, true));
    EXPECT_EQ(asked, std::vector({42}));
}

TEST_F(OneInstanceTest, OfTwoThatWereLaunchedAtTheSameTimeTheOneOfTheSmallerNumberGoesOn) {
    launches = {{41, Date{900}}, {42, Date{900}}};
    EXPECT_EQ(goOn(41, 42), std::pair(true, false));
    EXPECT_EQ(goOn(42, 41), std::pair(false, true));
}

TEST_F(OneInstanceTest, WhereTheSystemTellsNoLaunchTwoDoNotGoOn) {
    EXPECT_EQ(goOn(41, 42), std::pair(false, false));
    launches = {{41, Date{900}}};
    EXPECT_EQ(goOn(41, 42), std::pair(false, false));
}

TEST_F(OneInstanceTest, AFirstOneThatSeemsYoungerAsTheClockWasPutBackStaysTheFirst) {
    own = 42;
    others = {41};
    launches = {{41, Date{1'001}}, {42, Date{900}}};
    EXPECT_TRUE(isSecond());
}

TEST_F(OneInstanceTest, OfThreeThatStartAtOnceOneGoesOnAndComesForward) {
    launches = {{41, Date{902}}, {42, Date{900}}, {43, Date{901}}};
    own = 43;
    others = {41, 42};
    EXPECT_TRUE(isSecond());
    EXPECT_EQ(asked, std::vector({42}));
    own = 42;
    others = {41, 43};
    EXPECT_FALSE(isSecond());
}

} // namespace
} // namespace quillane
