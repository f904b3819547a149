#pragma once
#include "State/Screen.h"

namespace quillane {

class AppLibrary;
struct ContentState;

// The section Orphaned Files: its table with the footer, and its pane.
Screen makeOrphansScreen(AppLibrary& library, ContentState& state);

} // namespace quillane
