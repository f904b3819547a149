#pragma once
#include "BulkRemoval.h"
#include "Bytes.h"
#include "SweepCategory.h"
#include "SweepEntry.h"
#include "SweepReport.h"
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace quillane {

// What the review sheet shows and ticks: the entries by category, which of them stay, and the sums.
// The entries are fixed for its life. Ticking costs the same however many rows there are. Main thread only.
class SweepReview {
  public:
    struct Section {
        SweepCategory category = SweepCategory::caches;
        std::vector<std::size_t> rows; // indices into entries(), in their order
        Bytes tickedBytes = 0;
    };

    SweepReview(std::vector<SweepEntry> entries, const std::unordered_set<FileURL>& initiallyExcluded = {});

    const std::vector<SweepEntry>& entries() const { return m_entries; }
    // One for each category that has rows, in the order of the categories.
    const std::vector<Section>& sections() const { return m_sections; }

    // Ticked means that the location is not excluded: rows of one location are ticked together.
    bool isTicked(std::size_t entry) const { return m_ticked[entry]; }
    // Returns the entries whose tick changed: those of the same location.
    std::vector<std::size_t> setTicked(std::size_t entry, bool ticked);

    // The ticked entries in their order.
    std::vector<SweepEntry> included() const;
    std::size_t includedCount() const { return m_includedCount; }
    Bytes includedBytes() const { return m_includedBytes; }
    Bytes totalBytes() const { return m_totalBytes; }
    // A ticked row empties the Trash.
    bool emptiesTrash() const { return m_tickedTrashRows > 0; }

    // The words of the sheet.
    std::string headline() const;   // "2 items • 1.5 GB", of all entries
    std::string footer() const;     // "1 of 2 selected • 1 GB"
    std::string buttonText() const; // "Clean and Empty Trash" or "Move to Trash"

  private:
    void count(std::size_t entry, bool ticked);

    std::vector<SweepEntry> m_entries;
    std::vector<bool> m_ticked;
    std::vector<Section> m_sections;
    std::vector<std::size_t> m_sectionOfEntry;
    std::unordered_map<FileURL, std::vector<std::size_t>> m_entriesOfURL;
    std::size_t m_includedCount = 0;
    std::size_t m_tickedTrashRows = 0;
    Bytes m_includedBytes = 0;
    Bytes m_totalBytes = 0;
};

} // namespace quillane
