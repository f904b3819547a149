#pragma once
#include <QPoint>
#include <QRect>
#include <QSize>
#include <optional>
#include <vector>

// Where a popover stands beside the item in the panel that it belongs to. All in device-independent pixels of the
// desktop.
namespace quillane::PopoverPlace {

struct Screen {
    QRect geometry;  // the whole of it
    QRect available; // what no panel takes
};

// From the edge of what is available, and at the least from its other edges.
inline constexpr int kGap = 8;

// The upper left corner of a popover of `size`. It stands off the edge at which the panel lies that was pressed at
// `press`, as near to the press as it can, and wholly on that screen; one that is too large shows its upper left part.
// A press that nobody told is taken to be at `pointer` if that lies in a panel, and else in the right corner of the
// first panel of the pointer's screen. At {0, 0} where there is no screen.
QPoint of(std::optional<QPoint> press, QPoint pointer, const std::vector<Screen>& screens, QSize size);

} // namespace quillane::PopoverPlace
