#pragma once
#include "MenuBarExtra.h"
#include <optional>

// Places on the screens. The platform counts upwards from the lower edge of the first screen, in points, this program
// downwards from its upper edge. Other screens lie around the first, below zero too.
namespace quillane::ScreenPlace {

// As the platform counts; the corner is the lower left one.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

// The middle of it, as this program counts. Nothing for what has no width or height, and for what lies nowhere.
std::optional<MenuBarExtra::Place> middleOf(const Rect& rect, double heightOfFirstScreen);

} // namespace quillane::ScreenPlace
