#include "Components/Hairline.h"
#include <QPainter>
#include <QTransform>
#include <algorithm>
#include <cmath>

namespace quillane::Hairline {

namespace {

// From a place and a length on the screen to those of a line that begins at a whole pixel.
void snap(double& begin, double& length) {
    begin = std::round(begin);
    length = std::max(1.0, std::floor(length));
}

} // namespace

void fill(QPainter& painter, const QRectF& line, const QColor& color) {
    const QTransform toScreen = painter.deviceTransform();
    const QRectF there = toScreen.mapRect(line);
    double x = there.x();
    double y = there.y();
    double width = there.width();
    double height = there.height();
    if (line.height() <= line.width()) {
        snap(y, height);
    } else {
        snap(x, width);
    }
    const bool smooths = painter.testRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::Antialiasing, false); // the way back is not exact to the last digit
    painter.fillRect(toScreen.inverted().mapRect(QRectF(x, y, width, height)), color);
    painter.setRenderHint(QPainter::Antialiasing, smooths);
}

} // namespace quillane::Hairline
