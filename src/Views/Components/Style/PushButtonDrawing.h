#pragma once
#include <QSize>

class QPainter;
class QStyleOptionButton;
class QWidget;

// A push button as `PushButton` describes it, also for those that are painted on macOS.
namespace quillane::PushButtonDrawing {

// `widget` may be null or no PushButton; what it is then follows from the features of a plain button.
void draw(const QStyleOptionButton& option, QPainter& painter, const QWidget* widget);
QSize sizeOf(const QStyleOptionButton& option, const QWidget* widget);

} // namespace quillane::PushButtonDrawing
