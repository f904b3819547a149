#pragma once
#include "InstalledApp.h"
#include <vector>

namespace quillane {

// One step of the order of the applications table.
struct AppComparator {
    enum class Key { name, totalBytes, lastUsed, architecture, version };
    Key key = Key::totalBytes;
    bool isReverse = false;
    friend bool operator==(const AppComparator&, const AppComparator&) = default;
};

// The order that the table begins with: largest first.
inline const std::vector<AppComparator> kInitialSortOrder = {{AppComparator::Key::totalBytes, true}};

// Sorted by the first comparator, ties by the next one and at last by the order given, which is by name.
// Names sort as the Finder sorts them, architectures by their words, versions as plain text.
std::vector<InstalledApp> sorted(std::vector<InstalledApp> apps, const std::vector<AppComparator>& order);

} // namespace quillane
