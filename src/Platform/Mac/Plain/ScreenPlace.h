#pragma once
#include "MenuBarExtra.h"
#include <optional>

// Places on the screens. The platform counts upwards from the lower edge of the first screen, in points, this program
// downwards from its upper edge. Other screens lie around the first, below zero too.
namespace quillane::ScreenPlace {

// As the platform counts.
struct Point {
    double x = 0;
    double y = 0;
};
// As the platform counts; the corner is the lower left one.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

// Where an item was pressed, as this program counts: its middle, or the pointer, where that has pressed it outside of
// what the system tells of it, as each screen has a menu bar and the item is told of one. Nothing where both
// are told nowhere. No pointer for a press by the keyboard.
std::optional<MenuBarExtra::Place> pressOn(const Rect& item, std::optional<Point> pointer,
                                           double heightOfFirstScreen);

} // namespace quillane::ScreenPlace
