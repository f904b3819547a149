#pragma once
#include "SweepEntry.h"
#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

namespace quillane {

// A reviewed removal request: the value that opens the review sheet.
struct BulkRemoval {
    // Differs for every removal made in this process, so that a new request always opens a new sheet.
    std::uint64_t id = 0;
    std::string label; // becomes the label of what can be put back
    std::vector<SweepEntry> entries;
    std::unordered_set<FileURL> initiallyExcluded; // rows that start unticked

    // With a fresh id. Any thread.
    static BulkRemoval make(std::string label, std::vector<SweepEntry> entries,
                            std::unordered_set<FileURL> initiallyExcluded = {});
};

} // namespace quillane
