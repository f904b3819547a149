#pragma once
#include "OrphanItem.h"
#include "Platform.h"
#include "StopToken.h"
#include <set>
#include <string>
#include <vector>

// What removed applications left behind. Suspicious of its own conclusions: a name counts only when it has the
// shape of a bundle identifier of three parts, nothing of the system's counts, one installed application
// protects everything of its vendor, a change within the last 30 days protects what was changed, and the program of a
// launchd job that is there protects the job's property list.
namespace quillane::OrphanFinder {

// The entries directly inside the known Library locations that no installed application claims, largest first.
// A location that can't be listed contributes nothing. A stop gives what was found by then. Blocks; any
// thread but the main one.
std::vector<OrphanItem> orphans(const Platform& platform, const std::set<std::string>& installedIdentifiers,
                                const StopToken& stop = {});

} // namespace quillane::OrphanFinder
