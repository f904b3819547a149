#include "Review/ResultMark.h"
#include "Components/Look.h"
#include "Components/Symbols.h"
#include "Components/Tint.h"
#include "Components/Tokens.h"
#include <QPainter>

namespace quillane {

namespace {
constexpr int kSymbol = 34;
constexpr double kSmallest = 0.8;
} // namespace

ResultMark::ResultMark(bool succeeded, QWidget* parent)
    : QWidget(parent)
    , m_succeeded(succeeded) {
    setFixedSize(kSide, kSide);
    setAccessibleName(succeeded ? QStringLiteral("Succeeded") : QStringLiteral("Some items failed"));
    m_entrance.setDuration(kMilliseconds);
    m_entrance.setEasingCurve(QEasingCurve::OutCubic);
    m_entrance.setStartValue(0.0);
    m_entrance.setEndValue(1.0);
    connect(&m_entrance, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_shown = value.toDouble();
        update();
    });
}

QString ResultMark::symbol() const {
    return m_succeeded ? QStringLiteral("checkmark") : QStringLiteral("exclamationmark");
}

void ResultMark::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!m_hasEntered && !Look::reducedMotion()) {
        m_entrance.start();
    }
    m_hasEntered = true;
}

void ResultMark::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    const Tint tint = m_succeeded ? Tint::Green : Tint::Orange;
    const double scale = kSmallest + (1 - kSmallest) * m_shown;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setOpacity(m_shown);
    painter.translate(QRectF(rect()).center());
    painter.scale(scale, scale);
    painter.setPen(tokens.highContrast ? QPen(tokens.tint(tint)) : QPen(Qt::NoPen));
    painter.setBrush(tokens.soft(tint));
    constexpr double kRadius = kSide / 2.0 - 0.5;
    painter.drawEllipse(QPointF(), kRadius, kRadius);
    Symbols::draw(painter, {-kSymbol / 2.0, -kSymbol / 2.0}, kSymbol, symbol(), tokens.tint(tint));
}

} // namespace quillane
