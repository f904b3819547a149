#pragma once
#include "Tables/RowSteps.h"
#include <functional>
#include <vector>

namespace quillane {

using List = std::vector<int>;

// Where each element stands in the other list, as the models find it.
inline std::vector<int> placesInStep(const List& before, const List& after) {
    const auto keyAfter = [&](std::size_t i) { return after[i]; };
    IndexTable table(after.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        table.findOrAdd(std::hash<int>()(after[i]), i,
                        [&](std::size_t other) { return after[other] == after[i]; });
    }
    return placesAfter(
        before.size(), [&](std::size_t i) { return before[i]; }, after.size(), keyAfter, table);
}

inline RowSteps rowSteps(const List& before, const List& after) {
    return stepsTo(placesInStep(before, after), after.size());
}

} // namespace quillane
