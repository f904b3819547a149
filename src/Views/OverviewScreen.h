#pragma once
#include "Screen.h"

namespace quillane {

// The section Overview: how much can come back now, and what that is.
Screen makeOverviewScreen(AppLibrary& library, ContentState& state);

} // namespace quillane
