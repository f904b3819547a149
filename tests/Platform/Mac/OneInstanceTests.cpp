#include "OneInstance.h"
#include <algorithm>
#include <gtest/gtest.h>
#include <map>
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
                                      .pause = [this](auto time) { waited += time; }},
                                     isRelaunched);
    }

    std::vector<int> others;
    std::map<int, std::chrono::milliseconds> ends; // after how much waiting
    bool comesForward = true;
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

TEST_F(OneInstanceTest, ARelaunchedOneWaitsForAllOthers) {
    others = {41, 42};
    ends = {{41, 1s}, {42, 3s}};
    EXPECT_FALSE(isSecond(true));
    EXPECT_GE(waited, 3s);
}

} // namespace
} // namespace quillane
