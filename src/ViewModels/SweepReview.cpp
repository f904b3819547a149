#include "SweepReview.h"
#include "Formatting.h"
#include <array>
#include <utility>

namespace quillane {

SweepReview::SweepReview(std::vector<SweepEntry> entries,
                         const std::unordered_set<FileURL>& initiallyExcluded)
    : m_entries(std::move(entries))
    , m_ticked(m_entries.size(), false)
    , m_sectionOfEntry(m_entries.size(), 0) {
    std::array<std::vector<std::size_t>, kAllSweepCategories.size()> rows;
    m_entriesOfURL.reserve(m_entries.size());
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        rows[static_cast<std::size_t>(m_entries[i].category)].push_back(i);
        m_entriesOfURL[m_entries[i].url].push_back(i);
        m_totalBytes = checkedSum(m_totalBytes, m_entries[i].bytes);
    }
    for (const auto category : kAllSweepCategories) {
        auto& mine = rows[static_cast<std::size_t>(category)];
        if (mine.empty()) {
            continue;
        }
        for (const auto entry : mine) {
            m_sectionOfEntry[entry] = m_sections.size();
        }
        m_sections.push_back({category, std::move(mine), 0});
    }
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        if (!initiallyExcluded.contains(m_entries[i].url)) {
            count(i, true);
        }
    }
}

void SweepReview::count(std::size_t entry, bool ticked) {
    const Bytes bytes = ticked ? m_entries[entry].bytes : -m_entries[entry].bytes;
    auto& section = m_sections[m_sectionOfEntry[entry]];
    section.tickedBytes = checkedSum(section.tickedBytes, bytes);
    m_includedBytes = checkedSum(m_includedBytes, bytes);
    m_includedCount = ticked ? m_includedCount + 1 : m_includedCount - 1;
    if (m_entries[entry].category == SweepCategory::trash) {
        m_tickedTrashRows = ticked ? m_tickedTrashRows + 1 : m_tickedTrashRows - 1;
    }
    m_ticked[entry] = ticked;
}

std::vector<std::size_t> SweepReview::setTicked(std::size_t entry, bool ticked) {
    if (m_ticked[entry] == ticked) {
        return {};
    }
    const auto& together = m_entriesOfURL.at(m_entries[entry].url);
    for (const auto row : together) {
        count(row, ticked);
    }
    return together;
}

std::vector<SweepEntry> SweepReview::included() const {
    std::vector<SweepEntry> ticked;
    ticked.reserve(m_includedCount);
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        if (m_ticked[i]) {
            ticked.push_back(m_entries[i]);
        }
    }
    return ticked;
}

std::string SweepReview::headline() const {
    return Formatting::counted(static_cast<std::int64_t>(m_entries.size()), "item") + " • " +
           Formatting::byteCount(m_totalBytes);
}

std::string SweepReview::footer() const {
    return Formatting::number(static_cast<std::int64_t>(m_includedCount)) + " of " +
           Formatting::number(static_cast<std::int64_t>(m_entries.size())) + " selected • " +
           Formatting::byteCount(m_includedBytes);
}

std::string SweepReview::buttonText() const {
    return emptiesTrash() ? "Clean and Empty Trash" : "Move to Trash";
}

} // namespace quillane
