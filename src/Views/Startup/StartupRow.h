#pragma once
#include "StartupItem.h"
#include "State/SortStep.h"
#include "Tables/SortOrder.h"
#include <optional>
#include <string>
#include <vector>

namespace quillane {

// What the startup table shows of an item, and nothing that it does not show.
struct StartupRow {
    FileURL url;
    std::string label;
    StartupItem::Kind kind = StartupItem::Kind::agent;
    StartupItem::Health health = StartupItem::Health::ok;
    std::optional<std::string> ownerName;
    std::string schedule;
    std::optional<bool> isLoaded;
    bool isAtHome = false;
    bool isProtected = false;
    friend bool operator==(const StartupRow&, const StartupRow&) = default;
};

// What a row is made of. The item is the library's and stays where it is.
struct StartupRecord {
    const StartupItem* item;
    bool isAtHome = false;
    bool isProtected = false;

    const FileURL& key() const { return item->url; }
    bool isShownBy(const StartupRow& shown) const { return shown == row(); }
    StartupRow row() const;
};

// Sorted by the first comparator, ties by the next one and at last by the order given. Labels sort as plain text,
// upper case before lower case, as the finder sorts them.
std::vector<StartupRecord> sorted(std::vector<StartupRecord> records,
                                  const std::vector<StartupComparator>& order);

} // namespace quillane
