#pragma once
#include "InstalledApp.h"
#include "State/SortStep.h"
#include "Tables/SortOrder.h"
#include <optional>
#include <string>
#include <vector>

namespace quillane {

// What the applications table shows of an application, and nothing that it does not show: a change elsewhere
// in the record repaints no row.
struct AppRow {
    FileURL url;
    std::string name;
    bool isMacAppStore = false;
    bool isMeasured = false;
    Bytes totalBytes = 0;
    std::optional<Date> lastUsed;
    Architecture architecture = Architecture::unknown;
    std::string version;
    bool isProtected = false;

    friend bool operator==(const AppRow&, const AppRow&) = default;
};

// What a row is made of. The application is the library's and stays where it is.
struct AppRecord {
    const InstalledApp* app;
    bool isProtected = false;

    const FileURL& key() const { return app->url; }
    bool isShownBy(const AppRow& shown) const;
    AppRow row() const;
};

// Sorted by the first comparator, ties by the next one and at last by the order given, which is by name.
// Names and versions sort as the Finder sorts them, so 1.2 stands before 1.18; architectures by their words. `names`
// remembers what the last call sorted, of the same table.
std::vector<AppRecord> sorted(std::vector<AppRecord> records, const std::vector<AppComparator>& order,
                              NameRanks& names);

} // namespace quillane
