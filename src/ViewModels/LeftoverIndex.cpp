#include "LeftoverIndex.h"
#include <algorithm>

namespace quillane {

LeftoverIndex::LeftoverIndex(const std::vector<InstalledApp>& apps) {
    std::size_t leftovers = 0;
    for (const auto& app : apps) {
        leftovers += app.leftovers.size();
    }
    m_holders.reserve(leftovers);
    for (std::size_t place = 0; place < apps.size(); ++place) {
        for (const auto& item : apps[place].leftovers) {
            m_holders.emplace(item.url, place);
        }
    }
}

std::set<std::size_t> LeftoverIndex::take(const std::unordered_set<FileURL>& urls) {
    std::set<std::size_t> places;
    for (const auto& url : urls) {
        const auto [begin, end] = m_holders.equal_range(url);
        for (auto holder = begin; holder != end; ++holder) {
            const auto left = std::ranges::lower_bound(m_left, holder->second);
            if (left == m_left.end() || *left != holder->second) {
                places.insert(holder->second - static_cast<std::size_t>(left - m_left.begin()));
            }
        }
        m_holders.erase(begin, end);
    }
    return places;
}

void LeftoverIndex::appsLeft(const std::vector<std::size_t>& places) {
    std::vector<std::size_t> firstPlaces;
    firstPlaces.reserve(places.size());
    for (auto place : places) {
        for (const auto left : m_left) { // each one that stood before it has moved it up by one
            if (left > place) {
                break;
            }
            ++place;
        }
        firstPlaces.push_back(place);
    }
    m_left.insert(m_left.end(), firstPlaces.begin(), firstPlaces.end());
    std::ranges::sort(m_left);
}

} // namespace quillane
