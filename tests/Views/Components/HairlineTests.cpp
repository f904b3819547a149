#include "Components/Hairline.h"
#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace quillane {
namespace {

constexpr int kSide = 60;

// How many rows or columns of the screen's pixels the line has coloured; -1 when one of them is half coloured.
int thickness(const QRectF& line, double ratio) {
    QImage screen(QSize(kSide, kSide) * ratio, QImage::Format_ARGB32_Premultiplied);
    screen.setDevicePixelRatio(ratio);
    screen.fill(Qt::white);
    QPainter painter(&screen);
    painter.setRenderHint(QPainter::Antialiasing);
    Hairline::fill(painter, line, Qt::black);
    painter.end();
    const bool isLevel = line.width() > line.height();
    const QPoint middle = (line.center() * ratio).toPoint();
    int coloured = 0;
    for (int i = 0; i < screen.width(); ++i) {
        const QColor found = isLevel ? screen.pixelColor(middle.x(), i) : screen.pixelColor(i, middle.y());
        if (found == QColor(Qt::black)) {
            ++coloured;
        } else if (found != QColor(Qt::white)) {
            return -1;
        }
    }
    return coloured;
}

TEST(Hairline, LinesAreEquallyThickWhereverTheyLie) {
    for (const auto& [ratio, pixels] :
         {std::pair(1.0, 1), std::pair(1.25, 1), std::pair(1.5, 1), std::pair(1.75, 1), std::pair(2.0, 2),
          std::pair(2.5, 2), std::pair(3.0, 3)}) {
        for (int at = 5; at < 15; ++at) {
            EXPECT_EQ(thickness(QRectF(3, at, 50, 1), ratio), pixels) << ratio << ", " << at;
            EXPECT_EQ(thickness(QRectF(at, 3, 1, 50), ratio), pixels) << ratio << ", " << at;
        }
    }
}

TEST(Hairline, ALineStaysWhereItIsDrawn) {
    QImage screen(30, 30, QImage::Format_ARGB32_Premultiplied);
    screen.setDevicePixelRatio(1.5);
    screen.fill(Qt::white);
    QPainter painter(&screen);
    painter.translate(2, 4);
    Hairline::fill(painter, QRectF(0, 3, 10, 1), Qt::black);
    painter.end();
    EXPECT_EQ(screen.pixelColor(10, 11), QColor(Qt::black)) << "7 x 1.5, to the nearest";
    EXPECT_EQ(screen.pixelColor(10, 10), QColor(Qt::white));
    EXPECT_EQ(screen.pixelColor(10, 12), QColor(Qt::white));
    EXPECT_EQ(screen.pixelColor(1, 11), QColor(Qt::white));
    EXPECT_EQ(screen.pixelColor(25, 11), QColor(Qt::white));
}

} // namespace
} // namespace quillane
