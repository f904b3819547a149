#pragma once
#include "State/Screen.h"

namespace quillane {

class AppLibrary;
struct ContentState;

// The section Startup: its table with the footer, and its pane.
Screen makeStartupScreen(AppLibrary& library, ContentState& state);

} // namespace quillane
