#include "CompositionBar.h"
#include "CategoryTint.h"
#include "Tokens.h"
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <utility>

namespace quillane {

namespace {
constexpr int kHeight = 8;
constexpr double kGap = 2;
constexpr double kLeastWidth = 4; // so that a small part still shows
constexpr double kStrength = 0.85;
} // namespace

CompositionBar::CompositionBar(QWidget* parent)
    : QWidget(parent) {
    setFixedHeight(kHeight);
}

void CompositionBar::setParts(std::vector<Part> parts) {
    std::erase_if(parts, [](const Part& part) { return part.second <= 0; });
    if (m_parts == parts)
        return;
    m_parts = std::move(parts);
    update();
}

void CompositionBar::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath track;
    track.addRoundedRect(rect(), kHeight / 2.0, kHeight / 2.0);
    if (m_parts.empty()) {
        painter.fillPath(track, tokens.fill);
        return;
    }
    painter.setClipPath(track);
    const auto count = static_cast<double>(m_parts.size());
    // In floating point: this is a picture of the sizes and no figure.
    double total = 0;
    for (const auto& part : m_parts)
        total += static_cast<double>(part.second);
    const double shared = std::max(0.0, width() - (count - 1) * kGap - count * kLeastWidth);
    double left = 0;
    for (const auto& [category, bytes] : m_parts) {
        const double length = kLeastWidth + shared * static_cast<double>(bytes) / total;
        painter.fillRect(QRectF(left, 0, length, kHeight), faded(tokens.tint(tintOf(category)), kStrength));
        left += length + kGap;
    }
}

} // namespace quillane
