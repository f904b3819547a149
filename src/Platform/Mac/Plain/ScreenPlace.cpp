#include "ScreenPlace.h"
#include <cmath>

namespace quillane::ScreenPlace {
namespace {

constexpr double kFarthest = 1'000'000; // beyond any desktop; no comparison holds for what is no number

bool isSomewhere(double coordinate) {
    return std::abs(coordinate) < kFarthest;
}

} // namespace

std::optional<MenuBarExtra::Place> middleOf(const Rect& rect, double heightOfFirstScreen) {
    const double x = rect.x + rect.width / 2;
    const double y = heightOfFirstScreen - (rect.y + rect.height / 2);
    if (!(rect.width > 0) || !(rect.height > 0) || !isSomewhere(x) || !isSomewhere(y)) {
        return std::nullopt;
    }
    return MenuBarExtra::Place{.x = static_cast<int>(std::floor(x)), .y = static_cast<int>(std::floor(y))};
}

} // namespace quillane::ScreenPlace
