#pragma once
#include <QRegion>
#include <QStyleOptionMenuItem>
#include <optional>

class QPainter;
class QWidget;

// The ground of a menu and the marks on it. Words and icons of a line are the base style's.
namespace quillane::MenuDrawing {

// `menu` may be null.
void drawGround(QPainter& painter, const QRect& rect, const QWidget* menu);
void drawDivider(QPainter& painter, const QRect& line);
// Draws the ground of the chosen line, and answers what is to be drawn on it: the same in white.
QStyleOptionMenuItem drawChosen(const QStyleOptionMenuItem& item, QPainter& painter);
// What cuts the corners where the screen cannot blend them; nothing where it can. `menu` may be null.
std::optional<QRegion> maskOf(const QWidget* menu);

} // namespace quillane::MenuDrawing
