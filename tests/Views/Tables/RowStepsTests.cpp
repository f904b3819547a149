#include "Tables/RowSteps.h"
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <numeric>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <string>

using namespace quillane;

namespace {

using List = std::vector<int>;

// Where each element stands in the other list, found by looking at all of it.
std::vector<int> placesByLooking(const List& before, const List& after) {
    std::vector<int> places;
    for (const int element : before) {
        const auto at = std::ranges::find(after, element);
        places.push_back(at == after.end() ? kGone : static_cast<int>(at - after.begin()));
    }
    return places;
}

std::vector<int> placesInStep(const List& before, const List& after) {
    const auto keyAfter = [&](std::size_t i) { return after[i]; };
    IndexTable table(after.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        table.findOrAdd(std::hash<int>()(after[i]), i,
                        [&](std::size_t other) { return after[other] == after[i]; });
    }
    return placesAfter(
        before.size(), [&](std::size_t i) { return before[i]; }, after.size(), keyAfter, table);
}

RowSteps rowSteps(const List& before, const List& after) {
    return stepsTo(placesInStep(before, after), after.size());
}

// What a model does with the steps.
List applied(List rows, const RowSteps& steps, const List& target) {
    for (const auto& range : steps.removals) {
        rows.erase(rows.begin() + range.first, rows.begin() + range.first + range.count);
    }
    for (const auto& move : steps.moves) {
        const auto first = rows.begin() + move.rows.first;
        const auto end = first + move.rows.count;
        const auto before = rows.begin() + move.before;
        if (before < first) {
            std::rotate(before, first, end);
        } else {
            std::rotate(first, end, before);
        }
    }
    for (const auto& range : steps.insertions) {
        rows.insert(rows.begin() + range.first, target.begin() + range.first,
                    target.begin() + range.first + range.count);
    }
    return rows;
}

} // namespace

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

RC_GTEST_PROP(RowSteps, AnyListBecomesAnyOther, ()) {
    const auto before = *rc::gen::unique<List>(rc::gen::inRange(0, 40));
    const auto after = *rc::gen::unique<List>(rc::gen::inRange(0, 40));
    const auto steps = rowSteps(before, after);
    RC_PRE(!steps.reorders);
    RC_ASSERT(applied(before, steps, after) == after);
}

RC_GTEST_PROP(RowSteps, WalkingBothListsInStepFindsWhatLookingFinds, ()) {
    const auto before = *rc::gen::unique<List>(rc::gen::inRange(0, 40));
    const auto after = *rc::gen::unique<List>(rc::gen::inRange(0, 40));
    RC_ASSERT(placesInStep(before, after) == placesByLooking(before, after));
}
