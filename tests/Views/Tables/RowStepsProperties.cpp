#include "RowStepsTesting.h"
#include <algorithm>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

using namespace quillane;

namespace {

// Where each element stands in the other list, found by looking at all of it.
std::vector<int> placesByLooking(const List& before, const List& after) {
    std::vector<int> places;
    for (const int element : before) {
        const auto at = std::ranges::find(after, element);
        places.push_back(at == after.end() ? kGone : static_cast<int>(at - after.begin()));
    }
    return places;
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
