#pragma once
#include <algorithm>
#include <cstddef>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace quillane {

// How one list becomes another, in the fewest steps that an item model can publish. Row numbers are those of
// the list as the steps before have left it.
struct RowSteps {
    struct Range {
        int first = 0;
        int count = 0;
        friend bool operator==(const Range&, const Range&) = default;
    };
    // Takes the range out and puts it before the row `before`, counted while the range is still in its place.
    struct Move {
        Range rows;
        int before = 0;
        friend bool operator==(const Move&, const Move&) = default;
    };
    std::vector<Range> removals;   // from the last to the first
    std::vector<Move> moves;       // after the removals
    bool reorders = false;         // instead of moves: so much changes place that it is a new order
    std::vector<Range> insertions; // last, from the first to the last; in numbers of the finished list

    // More moves than this are one change of the whole order: what a click on a header means.
    static constexpr std::size_t kMostMoves = 32;
};

// The steps that bring what both lists hold into its new order: `ranks` is a permutation of 0, 1, 2, ... in
// the old order. As few rows as possible change their place. Nothing when it takes more than `most` moves.
std::optional<std::vector<RowSteps::Move>> movesThatSort(std::vector<int> ranks,
                                                         std::size_t most = RowSteps::kMostMoves);

// The ranges of neighbouring rows among these, which must ascend.
std::vector<RowSteps::Range> rangesOf(const std::vector<int>& ascendingRows);

// Keys are unique within each list. Costs O(n log n).
template <class Key>
RowSteps rowSteps(const std::vector<Key>& before, const std::vector<Key>& after) {
    std::unordered_map<Key, int> placeAfter;
    for (std::size_t i = 0; i < after.size(); ++i) {
        placeAfter.emplace(after[i], static_cast<int>(i));
    }

    RowSteps steps;
    std::vector<int> removed;
    std::vector<int> kept; // places in `after`, in the old order
    for (std::size_t i = 0; i < before.size(); ++i) {
        const auto found = placeAfter.find(before[i]);
        if (found == placeAfter.end()) {
            removed.push_back(static_cast<int>(i));
        } else {
            kept.push_back(found->second);
        }
    }
    steps.removals = rangesOf(removed);
    std::ranges::reverse(steps.removals);

    std::vector<int> ascending = kept;
    std::ranges::sort(ascending);
    std::vector<int> ranks;
    for (const int place : kept) {
        ranks.push_back(static_cast<int>(std::ranges::lower_bound(ascending, place) - ascending.begin()));
    }
    auto moves = movesThatSort(std::move(ranks));
    steps.reorders = !moves;
    steps.moves = std::move(moves).value_or(std::vector<RowSteps::Move>());

    std::vector<int> inserted;
    for (int place = 0; place < static_cast<int>(after.size()); ++place) {
        if (!std::ranges::binary_search(ascending, place)) {
            inserted.push_back(place);
        }
    }
    steps.insertions = rangesOf(inserted);
    return steps;
}

} // namespace quillane
