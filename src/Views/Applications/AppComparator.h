#pragma once
#include "InstalledApp.h"
#include "Tables/SortOrder.h"
#include <vector>

namespace quillane {

enum class AppSortKey { name, totalBytes, lastUsed, architecture, version };

// One step of the order of the applications table.
using AppComparator = SortStep<AppSortKey>;

// The order that the table begins with: largest first.
inline const std::vector<AppComparator> kInitialSortOrder = {{AppSortKey::totalBytes, true}};

// Sorted by the first comparator, ties by the next one and at last by the order given, which is by name.
// Names sort as the Finder sorts them, architectures by their words, versions as plain text.
std::vector<InstalledApp> sorted(std::vector<InstalledApp> apps, const std::vector<AppComparator>& order);

} // namespace quillane
