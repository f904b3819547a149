#pragma once
#include "LibrarySection.h"
#include "Tint.h"
#include <functional>
#include <span>

class QWidget;

namespace quillane {

class AppLibrary;
struct ContentState;

// One section of the window, put together. The widgets are handed to whoever asked for them.
struct Screen {
    QWidget* content = nullptr; // the middle column below its first row; takes the focus for its main control
    QWidget* detail = nullptr;  // the right column, its first row included
    // The number in the sidebar; 0 shows none. Reads the library and is observed.
    std::function<int()> badge;
};

// How a section is made. Library and state outlive the widgets.
struct StandingScreen {
    LibrarySection section;
    Screen (*make)(AppLibrary& library, ContentState& state);
    Tint badgeTint = Tint::Secondary; // Tint::Orange where the badge counts problems
};

// The sections that the window has, in the order of the sidebar. A section joins by one entry here.
std::span<const StandingScreen> standingScreens();

// Where the window begins: Overview where it stands, else the first section.
LibrarySection initialSection();

} // namespace quillane
