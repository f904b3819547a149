#pragma once
#include "State/Screen.h"

namespace quillane {

class AppLibrary;
struct ContentState;

// The section Applications: its table with the status line, and its pane.
Screen makeApplicationsScreen(AppLibrary& library, ContentState& state);

} // namespace quillane
