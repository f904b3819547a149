#pragma once
#include <QString>

class QWidget;

namespace quillane {

// Tells assistive tools something that has no control of its own, without taking the focus. It becomes the
// accessible name of `from`. Costs nothing while no such tool runs.
void announce(QWidget& from, const QString& text);

} // namespace quillane
