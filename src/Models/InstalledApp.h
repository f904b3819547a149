#pragma once
#include "AppSource.h"
#include "Architecture.h"
#include "Bytes.h"
#include "Date.h"
#include "FileURL.h"
#include "LeftoverItem.h"
#include <optional>
#include <string>
#include <vector>

namespace quillane {

class Calendar;

// One installed application and the support files that belong to it. Its identity is `url`.
// Built whole by AppScanner; only the last three fields are written afterwards, by the measuring stage and
// by the bookkeeping of a removal, through the library's list.
struct InstalledApp {
    FileURL url; // the .app bundle
    std::string name;
    std::optional<std::string> bundleIdentifier;
    std::string version = "-";      // "-" when missing
    std::string buildVersion = "-"; // "-" when missing
    std::optional<std::string> minimumSystemVersion;
    Architecture architecture = Architecture::unknown;
    AppSource source = AppSource::other;
    bool isMacAppStore = false;
    std::optional<Date> lastUsed;
    Bytes bundleBytes = 0; // 0 until measured
    std::vector<LeftoverItem> leftovers;
    bool isMeasured = false;

    const FileURL& id() const { return url; }
    // The bundle and all leftovers.
    Bytes totalBytes() const;
    Bytes leftoverBytes() const;
    // The leftovers that are regenerable, in their order.
    std::vector<LeftoverItem> cacheItems() const;
    // `lastUsed`, or the earliest date, so that what was never used sorts as the oldest.
    Date lastUsedSortKey() const { return lastUsed.value_or(Date::distantPast()); }
    // Whole calendar days from the last use to `now`; nothing when there is no last use.
    std::optional<int> daysSinceLastUse(Date now, const Calendar& calendar) const;

    friend bool operator==(const InstalledApp&, const InstalledApp&) = default;
};

} // namespace quillane

template <>
struct std::hash<quillane::InstalledApp> {
    std::size_t operator()(const quillane::InstalledApp& app) const noexcept;
};
