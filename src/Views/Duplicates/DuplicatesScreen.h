#pragma once
#include "State/Screen.h"

namespace quillane {

class AppLibrary;
struct ContentState;

// The section Duplicates: its table with the footer, and its pane.
Screen makeDuplicatesScreen(AppLibrary& library, ContentState& state);

} // namespace quillane
