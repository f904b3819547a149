#pragma once
#include "Screen.h"

namespace quillane {

// The section Developer: its table with the footer, and its pane.
Screen makeDeveloperScreen(AppLibrary& library, ContentState& state);

} // namespace quillane
