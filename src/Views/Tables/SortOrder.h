#pragma once
#include <algorithm>
#include <cstddef>
#include <functional>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace quillane {

// By position in a list; equal where what the list is sorted by is equal.
using Ranks = std::vector<std::size_t>;

// Numbers the sort keys, so that the sort itself compares nothing but numbers.
template <class Record, class KeyOf>
Ranks ranksBy(const std::vector<Record>& records, KeyOf keyOf) {
    using Key = std::decay_t<std::invoke_result_t<KeyOf&, const Record&>>;
    std::vector<std::pair<Key, std::size_t>> keys;
    keys.reserve(records.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
        keys.emplace_back(std::invoke(keyOf, records[i]), i);
    }
    const auto isLess = [](const auto& a, const auto& b) { return a.first < b.first; };
    if (!std::ranges::is_sorted(keys, isLess)) {
        std::ranges::sort(keys, isLess);
    }
    Ranks ranks(records.size());
    for (std::size_t i = 1; i < keys.size(); ++i) {
        ranks[keys[i].second] = ranks[keys[i - 1].second] + (keys[i - 1].first < keys[i].first ? 1 : 0);
    }
    return ranks;
}

// The same for names and versions, which sort as the Finder sorts names: numbers by value. What that costs is paid for a list of names and not again for
// what a search leaves of it or what remains when some have gone: their order stays as it is.
class NameRanks {
  public:
    // By position, and not without gaps. O(n) for names that were sorted before and stand in the order of then.
    Ranks of(const std::vector<std::string_view>& names);
    template <class Record, class NameOf>
    Ranks of(const std::vector<Record>& records, NameOf nameOf) {
        std::vector<std::string_view> names;
        names.reserve(records.size());
        for (const auto& record : records) {
            names.push_back(std::invoke(nameOf, record));
        }
        return of(names);
    }

  private:
    std::optional<Ranks> known(const std::vector<std::string_view>& names) const;
    void sort(const std::vector<std::string_view>& names);

    std::vector<std::string> m_names; // as they were last sorted
    Ranks m_ranks;                    // theirs
};

// Sorted by the first step (see SortStep), ties by the next one and at last by the order given, whatever the
// direction. `ranksOf` numbers the records by one key.
template <class Record, class Step, class RanksOf>
std::vector<Record> sortedBySteps(std::vector<Record> records, const std::vector<Step>& order,
                                  RanksOf ranksOf) {
    std::vector<std::pair<Ranks, bool>> steps;
    steps.reserve(order.size());
    for (const auto& step : order) {
        steps.emplace_back(ranksOf(records, step.key), step.isReverse);
    }

    std::vector<std::size_t> places(records.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    const auto isBefore = [&](std::size_t a, std::size_t b) {
        for (const auto& [ranks, isReverse] : steps) {
            if (ranks[a] != ranks[b]) {
                return (ranks[a] < ranks[b]) != isReverse;
            }
        }
        return a < b;
    };
    if (std::ranges::is_sorted(places,
                               isBefore)) { // lists come with the largest first, which is how tables begin
        return records;
    }
    std::ranges::sort(places, isBefore);

    std::vector<Record> result;
    result.reserve(records.size());
    for (const auto place : places) {
        result.push_back(std::move(records[place]));
    }
    return result;
}

} // namespace quillane
