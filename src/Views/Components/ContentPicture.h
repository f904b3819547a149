#pragma once
#include <QPixmap>

class QWidget;

namespace quillane {

// What a widget shows, without its ground: for what goes from the screen by degrees while the widget itself is gone
// at once.
QPixmap contentPicture(QWidget& widget);

} // namespace quillane
