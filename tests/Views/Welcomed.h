#pragma once
#include "Defaults.h"
#include "DefaultsKeys.h"

namespace quillane {

// The settings of somebody who has been welcomed before: no sheet lies over a window that opens.
struct Welcomed {
    explicit Welcomed(Defaults& defaults) { defaults.set(DefaultsKeys::kHasSeenOnboarding, true); }
};

} // namespace quillane
