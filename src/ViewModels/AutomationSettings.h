#pragma once
#include "Defaults.h"

namespace quillane::AutomationSettings {

// The values that settings have before the user has touched them. Called once at each launch, before any
// screen exists; nothing is written.
void registerDefaults(Defaults& defaults);

} // namespace quillane::AutomationSettings
