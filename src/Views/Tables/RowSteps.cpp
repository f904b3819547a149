#include "Tables/RowSteps.h"
#include <algorithm>
#include <utility>

namespace quillane {

namespace {

// Which elements of a permutation can stay where they are: the longest ascending subsequence.
std::vector<bool> thoseThatStay(const std::vector<int>& ranks) {
    std::vector<std::size_t> ends; // ends[k]: where the best subsequence of length k + 1 ends
    std::vector<std::ptrdiff_t> previous(ranks.size(), -1);
    for (std::size_t i = 0; i < ranks.size(); ++i) {
        const auto slot =
            std::ranges::lower_bound(ends, ranks[i], {}, [&](std::size_t end) { return ranks[end]; });
        if (slot != ends.begin()) {
            previous[i] = static_cast<std::ptrdiff_t>(*(slot - 1));
        }
        if (slot == ends.end()) {
            ends.push_back(i);
        } else {
            *slot = i;
        }
    }
    std::vector<bool> stays(ranks.size(), false);
    for (std::ptrdiff_t i = ends.empty() ? -1 : static_cast<std::ptrdiff_t>(ends.back()); i >= 0;
         i = previous[static_cast<std::size_t>(i)]) {
        stays[static_cast<std::size_t>(ranks[static_cast<std::size_t>(i)])] = true;
    }
    return stays; // by rank
}

} // namespace

std::optional<std::vector<RowSteps::Move>> movesThatSort(std::vector<int> ranks, std::size_t most) {
    const std::vector<bool> stays = thoseThatStay(ranks);
    const int total = static_cast<int>(ranks.size());
    std::vector<RowSteps::Move> moves;
    // Lower ranks are in order already, so each moving row goes right behind its predecessor.
    for (int rank = 0; rank < total;) {
        if (stays[static_cast<std::size_t>(rank)]) {
            ++rank;
            continue;
        }
        const auto from = std::ranges::find(ranks, rank);
        auto end = from + 1;
        while (end != ranks.end() && *end == *(end - 1) + 1 && !stays[static_cast<std::size_t>(*end)]) {
            ++end;
        }
        const int count = static_cast<int>(end - from);
        const auto target = rank == 0 ? ranks.begin() : std::ranges::find(ranks, rank - 1) + 1;
        const int first = static_cast<int>(from - ranks.begin());
        const int before = static_cast<int>(target - ranks.begin());
        if (before != first) {
            if (moves.size() == most) {
                return std::nullopt;
            }
            moves.push_back({{first, count}, before});
            if (before < first) {
                std::rotate(target, from, end);
            } else {
                std::rotate(from, end, target);
            }
        }
        rank += count;
    }
    return moves;
}

RowSteps stepsTo(const std::vector<int>& placesAfter, std::size_t after) {
    std::vector<int> removed;
    std::vector<int> kept; // places afterwards, in the old order
    std::vector<int> rankAt(after, kGone);
    for (std::size_t i = 0; i < placesAfter.size(); ++i) {
        if (placesAfter[i] == kGone) {
            removed.push_back(static_cast<int>(i));
        } else {
            kept.push_back(placesAfter[i]);
            rankAt[static_cast<std::size_t>(placesAfter[i])] = 0;
        }
    }
    RowSteps steps;
    steps.removals = rangesOf(removed);
    std::ranges::reverse(steps.removals);

    std::vector<int> inserted;
    int rank = 0;
    for (std::size_t place = 0; place < after; ++place) {
        if (rankAt[place] == kGone) {
            inserted.push_back(static_cast<int>(place));
        } else {
            rankAt[place] = rank++;
        }
    }
    steps.insertions = rangesOf(inserted);
    if (std::ranges::is_sorted(kept)) {
        return steps;
    }
    std::vector<int> ranks;
    ranks.reserve(kept.size());
    for (const int place : kept) {
        ranks.push_back(rankAt[static_cast<std::size_t>(place)]);
    }
    if (auto moves = movesThatSort(ranks)) {
        steps.moves = std::move(*moves);
        return steps;
    }
    steps.reorders = true;
    steps.order.resize(ranks.size());
    for (std::size_t i = 0; i < ranks.size(); ++i) {
        steps.order[static_cast<std::size_t>(ranks[i])] = static_cast<int>(i);
    }
    return steps;
}

std::vector<RowSteps::Range> rangesOf(const std::vector<int>& ascendingRows) {
    std::vector<RowSteps::Range> ranges;
    for (const int row : ascendingRows) {
        if (!ranges.empty() && ranges.back().first + ranges.back().count == row) {
            ++ranges.back().count;
        } else {
            ranges.push_back({row, 1});
        }
    }
    return ranges;
}

} // namespace quillane
