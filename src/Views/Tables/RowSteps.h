#pragma once
#include "IndexTable.h"
#include <cstddef>
#include <functional>
#include <optional>
#include <type_traits>
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
    std::vector<int> order;        // that order: for each place the row that comes there; empty without one
    std::vector<Range> insertions; // last, from the first to the last; in numbers of the finished list

    // More moves than this are one change of the whole order: what a click on a header means.
    static constexpr std::size_t kMostMoves = 32;
    // Rows that go from more places than this, or come to more, are better gathered first: each range is told by
    // itself, and costs a model and its views as much as a whole new order does.
    static constexpr std::size_t kMostRanges = 32;

    friend bool operator==(const RowSteps&, const RowSteps&) = default;
};

// The steps that bring what both lists hold into its new order: `ranks` is a permutation of 0, 1, 2, ... in
// the old order. As few rows as possible change their place. Nothing when it takes more than `most` moves.
std::optional<std::vector<RowSteps::Move>> movesThatSort(std::vector<int> ranks,
                                                         std::size_t most = RowSteps::kMostMoves);

// The ranges of neighbouring rows among these, which must ascend.
std::vector<RowSteps::Range> rangesOf(const std::vector<int>& ascendingRows);

constexpr int kGone = -1;

// The steps by where each row of the list stands afterwards: its place, no two the same, or kGone; `after` is how
// long the list is then. Costs O(n), and O(n log n) when rows change their order.
RowSteps stepsTo(const std::vector<int>& placesAfter, std::size_t after);

// Where each of `before` rows stands in a list of `after` rows, or kGone. `keyBefore(i)` and `keyAfter(i)` are the
// keys, unique within each list, and `places` finds the latter. Most rows stand right behind the one before them,
// which costs a comparison; only where they don't is `places` asked.
template <class KeyBefore, class KeyAfter>
std::vector<int> placesAfter(std::size_t before, KeyBefore keyBefore, std::size_t after, KeyAfter keyAfter,
                             const IndexTable& places) {
    using Key = std::remove_cvref_t<std::invoke_result_t<KeyBefore&, std::size_t>>;
    std::vector<int> found(before, kGone);
    std::size_t next = 0;
    for (std::size_t i = 0; i < before; ++i) {
        const Key& key = keyBefore(i);
        if (next >= after || !(keyAfter(next) == key)) {
            const auto place =
                places.find(std::hash<Key>()(key), [&](std::size_t other) { return keyAfter(other) == key; });
            if (!place) {
                continue;
            }
            next = *place;
        }
        found[i] = static_cast<int>(next++);
    }
    return found;
}

} // namespace quillane
