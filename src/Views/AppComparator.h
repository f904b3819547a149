#pragma once
#include "InstalledApp.h"
#include "SortOrder.h"
#include <vector>

namespace quillane {

enum class AppSortKey { name, totalBytes, lastUsed, architecture, version };

// One step of the order of the applications table.
using AppComparator = SortStep<AppSortKey>;

// The order that the table begins with: largest first.
inline const std::vector<AppComparator> kInitialSortOrder = {{AppSortKey::totalBytes, true}};

// Sorted by the first comparator, ties by the next one and at last by the order given, which is by name.
// Names and versions sort as the Finder sorts them, so 1.2 stands before 1.18; architectures by their words.
std::vector<InstalledApp> sorted(std::vector<InstalledApp> apps, const std::vector<AppComparator>& order);

} // namespace quillane
