#include "BulkRemoval.h"
#include <atomic>
#include <utility>

namespace quillane {

BulkRemoval BulkRemoval::make(std::string label, std::vector<SweepEntry> entries,
                              std::unordered_set<FileURL> initiallyExcluded) {
    static std::atomic<std::uint64_t> lastId = 0;
    return {++lastId, std::move(label), std::move(entries), std::move(initiallyExcluded)};
}

} // namespace quillane
