#pragma once
#include "InstalledApp.h"
#include "Platform.h"
#include "StopToken.h"
#include <string_view>
#include <vector>

// Which entries of the Library locations belong to an installed application.
namespace quillane::LeftoverFinder {

// The support files of `app`, largest first, equal sizes in the order of the locations. Empty for an
// application without a bundle identifier. Blocks; any thread, many at once.
std::vector<LeftoverItem> leftovers(const Platform& platform, const InstalledApp& app,
                                    const StopToken& stop = {});

// Whether an entry of this name belongs to the identifier, which must not be empty: the identifier itself, with a
// suffix ("id.plist"), or with a prefix ("TEAM.id"). Case counts.
bool namesIdentifier(std::string_view name, std::string_view identifier);

} // namespace quillane::LeftoverFinder
