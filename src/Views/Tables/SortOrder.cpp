#include "Tables/SortOrder.h"
#include "TextComparison.h"

namespace quillane {

Ranks NameRanks::of(const std::vector<std::string_view>& names) {
    auto ranks = known(names);
    if (!ranks) {
        sort(names);
        ranks = m_ranks;
    }
    return std::move(*ranks);
}

// Those that were sorted and stand here too, whoever has gone from between them, keep the ranks that they had.
std::optional<Ranks> NameRanks::known(const std::vector<std::string_view>& names) const {
    if (names.size() > m_names.size()) {
        return std::nullopt;
    }
    Ranks ranks;
    ranks.reserve(names.size());
    std::size_t at = 0;
    for (const auto name : names) {
        while (at < m_names.size() && m_names[at] != name) {
            ++at;
        }
        if (at == m_names.size()) {
            return std::nullopt;
        }
        ranks.push_back(m_ranks[at++]);
    }
    return ranks;
}

void NameRanks::sort(const std::vector<std::string_view>& names) {
    m_names.assign(names.begin(), names.end());
    const auto order = Text::localizedStandardOrder(m_names);
    m_ranks.assign(m_names.size(), 0);
    for (std::size_t i = 1; i < order.size(); ++i) { // only identical names are equal in that order
        m_ranks[order[i]] = m_ranks[order[i - 1]] + (m_names[order[i - 1]] == m_names[order[i]] ? 0 : 1);
    }
}

} // namespace quillane
