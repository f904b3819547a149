#pragma once
#include <QFont>
#include <functional>

class QObject;

namespace quillane::Fonts {

// The application's font in `px` logical pixels at the usual text size, times the scale. Qt draws whole sizes
// only, and rounds sizes in points to whole pixels too, so a half goes to its even neighbour: 11.5 is drawn as
// 12, 12.5 as 12. `tracking` is extra space between letters, in pixels.
QFont of(double px, int weight = QFont::Normal, double tracking = 0);

// How much larger than usual the user wants text: 1 when nothing is set.
double scale();
void setScale(double factor);

// Calls `adjust` now, and after each change of the scale while `context` lives: for what sets its own font or
// height.
void follow(QObject* context, const std::function<void()>& adjust);

// The height of a row or control that is `base` high at the usual text size: never less than the font and
// `air` pixels round it need.
int rowHeight(int base, double px = 13, int air = 12);

} // namespace quillane::Fonts
