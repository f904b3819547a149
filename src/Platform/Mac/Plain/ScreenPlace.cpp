#include "ScreenPlace.h"
#include <cmath>

namespace quillane::ScreenPlace {
namespace {

constexpr double kFarthest = 1'000'000; // beyond any desktop; no comparison holds for what is no number

bool isSomewhere(Point point) {
    return std::abs(point.x) < kFarthest && std::abs(point.y) < kFarthest;
}

bool isWithin(const Rect& rect, Point point) {
    return point.x >= rect.x && point.x <= rect.x + rect.width && point.y >= rect.y &&
           point.y <= rect.y + rect.height;
}

} // namespace

std::optional<MenuBarExtra::Place> pressOn(const Rect& item, std::optional<Point> pointer,
                                           double heightOfFirstScreen) {
    const Point middle = {item.x + item.width / 2, item.y + item.height / 2};
    const bool isThere = item.width > 0 && item.height > 0 && isSomewhere(middle);
    const Point told = pointer && !isWithin(item, *pointer) ? *pointer : middle;
    const Point turned = {told.x, heightOfFirstScreen - told.y};
    if ((!isThere && !pointer) || !isSomewhere(turned)) {
        return std::nullopt;
    }
    return MenuBarExtra::Place{.x = static_cast<int>(std::floor(turned.x)),
                               .y = static_cast<int>(std::floor(turned.y))};
}

} // namespace quillane::ScreenPlace
