#pragma once
#include "State/Screen.h"

namespace quillane {

class AppLibrary;
struct ContentState;

// The section Overview: how much can come back now, and what that is.
Screen makeOverviewScreen(AppLibrary& library, ContentState& state);

} // namespace quillane
