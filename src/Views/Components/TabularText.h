#pragma once
#include <QFontMetricsF>
#include <QRectF>
#include <QString>

class QPainter;

// Text whose digits all take the width of the widest digit, so that figures below each other line up. Qt 6.4
// cannot switch on the figures of equal width that a font has.
namespace quillane::TabularText {

double width(const QFontMetricsF& metrics, const QString& text);

// One line in the painter's font and pen, centred vertically in `rect`; horizontally by AlignLeft, AlignRight
// or AlignHCenter. Elided at its end when `rect` is too narrow.
void draw(QPainter& painter, const QRectF& rect, const QString& text, Qt::Alignment alignment);

QString elided(const QFontMetricsF& metrics, const QString& text, double width);

} // namespace quillane::TabularText
