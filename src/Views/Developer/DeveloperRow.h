#pragma once
#include "DevCacheItem.h"
#include "State/SortStep.h"
#include "Tables/SortOrder.h"
#include <optional>
#include <string>
#include <vector>

namespace quillane {

// What the developer table shows of a location, and nothing that it does not show.
struct DeveloperRow {
    FileURL url;
    std::string tool;
    std::string kind;
    Bytes bytes = 0;
    std::optional<Date> lastModified;
    bool safeToSweep = false;
    bool isProtected = false;
    friend bool operator==(const DeveloperRow&, const DeveloperRow&) = default;
};

// What a row is made of. The location is the library's and stays where it is.
struct DeveloperRecord {
    const DevCacheItem* item;
    bool isProtected = false;

    const FileURL& key() const { return item->url; }
    bool isShownBy(const DeveloperRow& shown) const;
    DeveloperRow row() const;
};

// Sorted by the first comparator, ties by the next one and at last by the order given. Words sort as the
// Finder sorts names; what has no date is the oldest. `names` remembers the words of the last call, of the same table.
std::vector<DeveloperRecord> sorted(std::vector<DeveloperRecord> records,
                                    const std::vector<DeveloperComparator>& order, NameRanks& names);

} // namespace quillane
