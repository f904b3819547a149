#pragma once
#include "Screen.h"

namespace quillane {

// The section Orphaned Files: its table with the footer, and its pane.
Screen makeOrphansScreen(AppLibrary& library, ContentState& state);

} // namespace quillane
