#include "Overview/CompositionBar.h"
#include "Components/CategoryTint.h"
#include "Components/Look.h"
#include "Components/Tokens.h"
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <utility>

namespace quillane {

namespace {
constexpr int kHeight = 8;
constexpr double kGap = 2;
constexpr double kLeastWidth = 4; // so that a small part still shows
constexpr double kStrength = 0.85;
constexpr int kEaseMilliseconds = 180;
} // namespace

CompositionBar::CompositionBar(QWidget* parent)
    : QWidget(parent) {
    setFixedHeight(kHeight);
    m_easing.setEasingCurve(QEasingCurve::OutCubic);
    m_easing.setStartValue(0.0);
    m_easing.setEndValue(1.0);
    connect(&m_easing, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& way) { showStep(way.toDouble()); });
}

void CompositionBar::setParts(std::vector<Part> parts) {
    std::erase_if(parts, [](const Part& part) { return part.second <= 0; });
    if (m_parts == parts)
        return;
    m_parts = std::move(parts);
    easeTo(weightsOf(m_parts));
}

CompositionBar::Weights CompositionBar::weightsOf(const std::vector<Part>& parts) {
    // In floating point: this is a picture of the sizes and no figure.
    double total = 0;
    for (const auto& part : parts)
        total += static_cast<double>(part.second);
    Weights weights;
    for (const auto& [category, bytes] : parts)
        weights[category] = {static_cast<double>(bytes) / total, 1};
    return weights;
}

void CompositionBar::easeTo(Weights weights) {
    m_easing.stop();
    m_from = m_shown;
    m_to = std::move(weights);
    // Both ends name the same categories: what comes grows from nothing, what goes shrinks to it.
    for (const auto& [category, weight] : m_to)
        m_from.try_emplace(category);
    for (const auto& [category, weight] : m_from)
        m_to.try_emplace(category);
    const int milliseconds = isVisible() ? Look::duration(kEaseMilliseconds) : 0;
    if (milliseconds == 0) {
        showStep(1);
        return;
    }
    m_easing.setDuration(milliseconds);
    m_easing.start();
}

void CompositionBar::showStep(double way) {
    for (const auto& [category, to] : m_to) {
        const Weight& from = m_from.at(category);
        m_shown[category] = {std::lerp(from.share, to.share, way),
                             std::lerp(from.presence, to.presence, way)};
    }
    std::erase_if(m_shown, [](const auto& entry) { return entry.second.presence <= 0; });
    update();
}

std::vector<CompositionBar::Stretch> CompositionBar::stretches() const {
    double fixed = -kGap; // there is none after the last
    for (const auto& [category, weight] : m_shown)
        fixed += weight.presence * (kGap + kLeastWidth);
    const double shared = std::max(0.0, width() - std::max(0.0, fixed));
    std::vector<Stretch> stretches;
    double left = 0;
    for (const auto& [category, weight] : m_shown) {
        const double length = kLeastWidth * weight.presence + shared * weight.share;
        stretches.push_back({category, left, length});
        left += length + kGap * weight.presence;
    }
    return stretches;
}

void CompositionBar::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath track;
    track.addRoundedRect(rect(), kHeight / 2.0, kHeight / 2.0);
    painter.setClipPath(track);
    double end = 0;
    for (const auto& [category, left, length] : stretches()) {
        painter.fillRect(QRectF(left, 0, length, kHeight), faded(tokens.tint(tintOf(category)), kStrength));
        end = left + length;
    }
    painter.fillRect(QRectF(end, 0, width() - end, kHeight), tokens.fill);
}

} // namespace quillane
