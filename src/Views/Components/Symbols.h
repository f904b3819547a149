#pragma once
#include "Components/Tint.h"
#include <QIcon>
#include <QPixmap>
#include <QPointF>
#include <QString>
#include <QStringList>

class QPainter;

// The symbols that are compiled into the program, by name: "trash", "folder", "chevron.down". They have one
// colour, which is chosen while painting. "BrandMark" and "AppIcon" keep their own colours.
namespace quillane::Symbols {

// Null for a name that does not exist. Cached by name, side, colour and device ratio.
QPixmap pixmap(const QString& name, double side, const QColor& color, double devicePixelRatio);

void draw(QPainter& painter, QPointF topLeft, double side, const QString& name, const QColor& color);

// For buttons, menus and line edits. It keeps the tint and not the colour, so it follows a change of mode;
// a disabled icon is faded, a selected one white.
QIcon icon(const QString& name, Tint tint = Tint::Text);

bool exists(const QString& name);
QStringList names();

} // namespace quillane::Symbols
