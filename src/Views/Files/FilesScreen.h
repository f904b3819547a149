#pragma once
#include "State/Screen.h"

namespace quillane {

class AppLibrary;
struct ContentState;

// The section Files: lenses, table and footer, and its pane.
Screen makeFilesScreen(AppLibrary& library, ContentState& state);

} // namespace quillane
