#pragma once
#include "Components/Tint.h"
#include "LibrarySection.h"
#include "State/Screen.h"
#include <span>

namespace quillane {

class AppLibrary;
struct ContentState;

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
