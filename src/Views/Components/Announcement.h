#pragma once
#include <QString>

class QWidget;

namespace quillane {

// Tells assistive tools something that has no control of its own, without taking the focus. It becomes the
// accessible name of `from`.
void announce(QWidget& from, const QString& text);
// The same, and `from`, a widget of the window in which it is said, keeps its name.
void speak(QWidget& from, const QString& text);

} // namespace quillane
