#pragma once
#include "Screen.h"

namespace quillane {

// The section Applications: its table with the status line, and its pane.
Screen makeApplicationsScreen(AppLibrary& library, ContentState& state);

} // namespace quillane
