#pragma once
#include "InstalledApp.h"
#include "State/SortStep.h"
#include <vector>

namespace quillane {

// Sorted by the first comparator, ties by the next one and at last by the order given, which is by name.
// Names sort as the Finder sorts them, architectures by their words, versions as plain text.
std::vector<InstalledApp> sorted(std::vector<InstalledApp> apps, const std::vector<AppComparator>& order);

} // namespace quillane
