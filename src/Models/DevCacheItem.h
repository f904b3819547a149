#pragma once
#include "Bytes.h"
#include "Date.h"
#include "FileURL.h"
#include "Hashing.h"
#include <optional>
#include <string>

namespace quillane {

class Calendar;

// A folder in which a tool of developers keeps what it can make or fetch again. Its identity is `url`.
struct DevCacheItem {
    FileURL url;                      // what a removal would move
    std::string tool;                 // the owner, such as "Xcode"
    std::string kind;                 // what it is, such as "Derived data"
    Bytes bytes = 0;                  // on disk; above 0 in what the finder gives
    std::optional<Date> lastModified; // of the folder itself; absent when it can't be read
    bool safeToSweep = false;         // whether a cleanup may include it without being asked for it
    std::string consequence;          // one sentence: what removing it costs

    const FileURL& id() const { return url; }
    // `lastModified`, or the earliest date, so that what has no date sorts as the oldest.
    Date lastModifiedSortKey() const { return lastModified.value_or(Date::distantPast()); }
    // 0 for what a cleanup includes, 1 for the rest.
    int sweepSortKey() const { return safeToSweep ? 0 : 1; }
    // Whole calendar days from the last change to `now`; absent when there is no date.
    std::optional<int> daysSinceModified(Date now, const Calendar& calendar) const;

    friend bool operator==(const DevCacheItem&, const DevCacheItem&) = default;
};

} // namespace quillane

template <>
struct std::hash<quillane::DevCacheItem> {
    std::size_t operator()(const quillane::DevCacheItem& item) const noexcept {
        return quillane::hashOf(item.url, item.tool, item.kind, item.bytes, item.lastModified,
                                item.safeToSweep, item.consequence);
    }
};
