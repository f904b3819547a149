#include "MenuBar/PopoverPlace.h"
#include <algorithm>
#include <array>

namespace quillane::PopoverPlace {

namespace {

// 0 inside.
int distance(const QRect& rect, QPoint point) {
    const int x = std::max({rect.left() - point.x(), 0, point.x() - rect.right()});
    const int y = std::max({rect.top() - point.y(), 0, point.y() - rect.bottom()});
    return x + y;
}

// The one on which the point lies, or that lies nearest to it.
const Screen& screenAt(QPoint point, const std::vector<Screen>& screens) {
    return *std::ranges::min_element(screens, {},
                                     [point](const Screen& s) { return distance(s.geometry, point); });
}

bool isInPanel(const Screen& screen, QPoint point) {
    return screen.geometry.contains(point) && !screen.available.contains(point);
}

// The right end of the first panel: above, below, right, left. Without any, as if there were one above.
QPoint cornerOf(const Screen& screen) {
    const QRect whole = screen.geometry;
    const QRect room = screen.available;
    if (room.top() > whole.top()) {
        return whole.topRight();
    }
    if (room.bottom() < whole.bottom()) {
        return whole.bottomRight();
    }
    if (room.right() < whole.right()) {
        return whole.bottomRight();
    }
    return room.left() > whole.left() ? whole.bottomLeft() : whole.topRight();
}

enum class Side { top, bottom, left, right };

// The one that the press lies beyond by most; inside, where a panel lies over windows, the one that is nearest.
Side sideOf(const QRect& room, QPoint press) {
    const std::array<std::pair<int, Side>, 4> beyond = {{{room.top() - press.y(), Side::top},
                                                         {press.y() - room.bottom(), Side::bottom},
                                                         {room.left() - press.x(), Side::left},
                                                         {press.x() - room.right(), Side::right}}};
    return std::ranges::max_element(beyond, {}, [](const auto& side) { return side.first; })->second;
}

// As near to `wanted` as `room` lets it be; where it has none, at its upper left corner.
QPoint within(const QRect& room, QSize size, QPoint wanted) {
    const int right = room.x() + room.width() - size.width();
    const int bottom = room.y() + room.height() - size.height();
    return {std::max(room.x(), std::min(wanted.x(), right)),
            std::max(room.y(), std::min(wanted.y(), bottom))};
}

QPoint beside(Side side, QPoint press, const QRect& room, QSize size) {
    const QPoint centred = press - QPoint(size.width() / 2, size.height() / 2);
    switch (side) {
    case Side::top:
        return {centred.x(), room.y()};
    case Side::bottom:
        return {centred.x(), room.y() + room.height() - size.height()};
    case Side::left:
        return {room.x(), centred.y()};
    case Side::right:
        return {room.x() + room.width() - size.width(), centred.y()};
    }
    return centred;
}

} // namespace

QPoint of(std::optional<QPoint> press, QPoint pointer, const std::vector<Screen>& screens, QSize size) {
    if (screens.empty()) {
        return {};
    }
    const Screen& screen = screenAt(press.value_or(pointer), screens);
    const QPoint item = press ? *press : isInPanel(screen, pointer) ? pointer : cornerOf(screen);
    const QRect room = screen.available.adjusted(kGap, kGap, -kGap, -kGap);
    const bool fits = size.width() <= room.width() && size.height() <= room.height();
    const QRect most = fits ? room : screen.available;
    return within(most, size, beside(sideOf(screen.available, item), item, room, size));
}

} // namespace quillane::PopoverPlace
