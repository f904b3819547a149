#include "Tables/SortOrder.h"
#include "TextComparison.h"
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace quillane {
namespace {

using Names = std::vector<std::string>;

Ranks ranksOf(NameRanks& ranks, const Names& names) {
    return ranks.of(std::vector<std::string_view>(names.begin(), names.end()));
}

// Each pair of ranks is ordered as the names are.
bool areOrderedAs(const Ranks& ranks, const Names& names) {
    for (std::size_t a = 0; a < names.size(); ++a) {
        for (std::size_t b = 0; b < names.size(); ++b) {
            if ((ranks[a] <=> ranks[b]) != Text::localizedStandardCompare(names[a], names[b])) {
                return false;
            }
        }
    }
    return true;
}

rc::Gen<Names> fewNames() {
    return rc::gen::container<Names>(rc::gen::elementOf(Names{"a", "A", "a 2", "a 10", "b", "é", ""}));
}

} // namespace

RC_GTEST_PROP(NameRanks, WhateverListsCameBeforeTheRanksAreThoseOfTheNames, ()) {
    NameRanks ranks;
    for (const auto& names : *rc::gen::container<std::vector<Names>>(fewNames())) {
        RC_ASSERT(areOrderedAs(ranksOf(ranks, names), names));
    }
}

RC_GTEST_PROP(NameRanks, WhatASearchLeavesAndTheWholeListAgainAreRankedAsTheyAre, ()) {
    const auto all = *fewNames();
    Names some;
    for (const auto& name : all) {
        if (*rc::gen::arbitrary<bool>()) {
            some.push_back(name);
        }
    }
    NameRanks ranks;
    RC_ASSERT(areOrderedAs(ranksOf(ranks, all), all));
    RC_ASSERT(areOrderedAs(ranksOf(ranks, some), some));
    RC_ASSERT(areOrderedAs(ranksOf(ranks, all), all));
}

} // namespace quillane
