#pragma once
#include "InstalledApp.h"
#include "Platform.h"
#include "StopToken.h"
#include <vector>

// Which entries of the Library locations belong to an installed application.
namespace quillane::LeftoverFinder {

// The support files of `app`, largest first, equal sizes in the order of the locations. Empty for an
// application without a bundle identifier. Blocks; any thread, many at once.
std::vector<LeftoverItem> leftovers(const Platform& platform, const InstalledApp& app,
                                    const StopToken& stop = {});

} // namespace quillane::LeftoverFinder
