#include "RowStepsTesting.h"
#include <gtest/gtest.h>
#include <numeric>

using namespace quillane;

TEST(RowSteps, TheSameListTakesNoStep) {
    const auto steps = rowSteps({1, 2, 3}, {1, 2, 3});
    EXPECT_TRUE(steps.removals.empty() && steps.moves.empty() && steps.insertions.empty() && !steps.reorders);
}

TEST(RowSteps, NeighboursGoAndComeInOneRange) {
    const auto steps = rowSteps({1, 2, 3, 4, 5}, {1, 4, 6, 7, 5});
    EXPECT_EQ(steps.removals, (std::vector<RowSteps::Range>{{1, 2}}));
    EXPECT_EQ(steps.insertions, (std::vector<RowSteps::Range>{{2, 2}}));
    EXPECT_TRUE(steps.moves.empty());
}

TEST(RowSteps, RemovalsComeFromTheEndSoThatTheirNumbersHold) {
    const auto steps = rowSteps({1, 2, 3, 4, 5}, {2, 4});
    EXPECT_EQ(steps.removals, (std::vector<RowSteps::Range>{{4, 1}, {2, 1}, {0, 1}}));
}

TEST(RowSteps, OneRowThatRisesIsOneMoveOfThatRow) {
    const auto steps = rowSteps({1, 2, 3, 4, 5}, {4, 1, 2, 3, 5});
    EXPECT_EQ(steps.moves, (std::vector<RowSteps::Move>{{{3, 1}, 0}}));
}

TEST(RowSteps, OneRowThatFallsIsOneMoveOfThatRow) {
    const auto steps = rowSteps({1, 2, 3, 4, 5}, {2, 3, 4, 1, 5});
    EXPECT_EQ(steps.moves, (std::vector<RowSteps::Move>{{{0, 1}, 4}}));
}

TEST(RowSteps, NeighboursThatMoveTogetherAreOneMove) {
    const auto steps = rowSteps({1, 2, 3, 4, 5}, {4, 5, 1, 2, 3});
    EXPECT_EQ(steps.moves, (std::vector<RowSteps::Move>{{{3, 2}, 0}}));
}

TEST(RowSteps, AWhollyNewOrderIsNotAHailOfMoves) {
    List before(1000);
    std::iota(before.begin(), before.end(), 0);
    List after(before.rbegin(), before.rend());
    const auto steps = rowSteps(before, after);
    EXPECT_TRUE(steps.reorders);
    EXPECT_TRUE(steps.moves.empty());
}

TEST(RowSteps, AWhollyNewOrderSaysWhichRowComesToEachPlace) {
    List before(100);
    std::iota(before.begin(), before.end(), 0);
    List after;
    for (int i = 0; i < 100; ++i) {
        after.push_back(i * 37 % 100); // its own reverse it is not
    }
    EXPECT_EQ(rowSteps(before, after).order, after);
}
