#pragma once
#include <QPoint>
#include <QRect>
#include <optional>
#include <vector>

namespace quillane::PanelPlace {

// A screen of the desktop: where it lies in device-independent pixels, and how many of its own go into one. Its corner
// has the same coordinates in both.
struct Screen {
    QRect geometry;
    double scale = 1;
};

// Where a panel's click was, in device-independent pixels, from what the panel told. Panels tell either these or those
// of the display, and don't tell which: where it makes a difference, the nearer to the pointer is meant. Without a
// pointer that can be trusted it is what was told. Nothing for 0, 0, with which panels tell that they don't know, and
// for what is on no screen.
std::optional<QPoint> placeOf(QPoint told, const std::vector<Screen>& screens, std::optional<QPoint> pointer);
// The same with the screens and the pointer that there are. Main thread.
std::optional<QPoint> placeOf(QPoint told);

} // namespace quillane::PanelPlace
