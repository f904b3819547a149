#include "AppComparator.h"
#include "TextComparison.h"
#include <algorithm>
#include <cstddef>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>

namespace quillane {

namespace {

using Ranks = std::vector<std::size_t>; // by position in the list; equal where the key is equal

// Numbers the sort keys, so that the sort itself compares nothing but numbers.
template <class KeyOf>
Ranks ranksBy(const std::vector<InstalledApp>& apps, KeyOf keyOf) {
    std::vector<std::pair<decltype(keyOf(apps.front())), std::size_t>> keys;
    keys.reserve(apps.size());
    for (std::size_t i = 0; i < apps.size(); ++i) {
        keys.emplace_back(keyOf(apps[i]), i);
    }
    std::ranges::sort(keys, [](const auto& a, const auto& b) { return a.first < b.first; });
    Ranks ranks(apps.size());
    for (std::size_t i = 1; i < keys.size(); ++i) {
        ranks[keys[i].second] = ranks[keys[i - 1].second] + (keys[i - 1].first < keys[i].first ? 1 : 0);
    }
    return ranks;
}

Ranks ranksByName(const std::vector<InstalledApp>& apps) {
    std::vector<std::string> names;
    names.reserve(apps.size());
    for (const auto& app : apps) {
        names.push_back(app.name);
    }
    const auto order = Text::localizedStandardOrder(names);
    Ranks ranks(apps.size());
    for (std::size_t i = 1; i < order.size(); ++i) { // only identical names are equal in that order
        ranks[order[i]] = ranks[order[i - 1]] + (names[order[i - 1]] == names[order[i]] ? 0 : 1);
    }
    return ranks;
}

Ranks ranksBy(const std::vector<InstalledApp>& apps, AppComparator::Key key) {
    switch (key) {
    case AppComparator::Key::name:
        return ranksByName(apps);
    case AppComparator::Key::totalBytes:
        return ranksBy(apps, [](const InstalledApp& app) { return app.totalBytes(); });
    case AppComparator::Key::lastUsed:
        return ranksBy(apps, [](const InstalledApp& app) { return app.lastUsedSortKey(); });
    case AppComparator::Key::architecture:
        return ranksBy(apps, [](const InstalledApp& app) { return app.architecture; });
    case AppComparator::Key::version:
        return ranksBy(apps, [](const InstalledApp& app) -> std::string_view { return app.version; });
    }
    __builtin_unreachable();
}

} // namespace

std::vector<InstalledApp> sorted(std::vector<InstalledApp> apps, const std::vector<AppComparator>& order) {
    std::vector<std::pair<Ranks, bool>> steps;
    for (const auto& comparator : order) {
        steps.emplace_back(ranksBy(apps, comparator.key), comparator.isReverse);
    }

    std::vector<std::size_t> places(apps.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    std::ranges::sort(places, [&](std::size_t a, std::size_t b) {
        for (const auto& [ranks, isReverse] : steps) {
            if (ranks[a] != ranks[b]) {
                return (ranks[a] < ranks[b]) != isReverse;
            }
        }
        return a < b;
    });

    std::vector<InstalledApp> result;
    result.reserve(apps.size());
    for (const auto place : places) {
        result.push_back(std::move(apps[place]));
    }
    return result;
}

} // namespace quillane
