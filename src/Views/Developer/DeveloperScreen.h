#pragma once
#include "State/Screen.h"

namespace quillane {

class AppLibrary;
struct ContentState;

// The section Developer: its table with the footer, and its pane.
Screen makeDeveloperScreen(AppLibrary& library, ContentState& state);

} // namespace quillane
