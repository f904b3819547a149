#include "Components/ProgressBar.h"
#include "Components/Tokens.h"
#include <QPainter>
#include <algorithm>

namespace quillane {

ProgressBar::ProgressBar(int width, int height, QWidget* parent)
    : QProgressBar(parent) {
    setTextVisible(false);
    setFixedSize(width, height);
}

double ProgressBar::shareOf(const QProgressBar& bar) {
    const double range = static_cast<double>(bar.maximum()) - bar.minimum();
    return range > 0 ? std::clamp((static_cast<double>(bar.value()) - bar.minimum()) / range, 0.0, 1.0) : 0;
}

void ProgressBar::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    const double radius = height() / 2.0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tokens.fill);
    painter.drawRoundedRect(rect(), radius, radius);
    const double share = shareOf(*this);
    if (share > 0) {
        // Never narrower than its round ends, so that a beginning is seen and keeps its shape.
        const double filled = std::max(share * width(), 2 * radius);
        painter.setBrush(tokens.accent);
        painter.drawRoundedRect(QRectF(0, 0, filled, height()), radius, radius);
    }
}

} // namespace quillane
