#include "Components/ProgressRing.h"
#include "Components/Look.h"
#include "Components/ProgressBar.h"
#include "Components/Symbols.h"
#include "Components/Tokens.h"
#include <QPainter>
#include <cmath>

namespace quillane {

namespace {
constexpr int kSide = 118;
constexpr double kStroke = 9;
constexpr double kSymbol = 38;
constexpr int kEaseMilliseconds = 180;
constexpr int kSixteenths = 16; // QPainter counts angles in sixteenths of a degree
} // namespace

ProgressRing::ProgressRing(const QString& symbol, QWidget* parent)
    : QProgressBar(parent)
    , m_symbol(symbol) {
    setTextVisible(false);
    setFixedSize(kSide, kSide);
    m_ease.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_ease, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_shown = value.toDouble();
        update();
    });
    connect(this, &QProgressBar::valueChanged, this, &ProgressRing::easeToValue);
}

void ProgressRing::easeToValue() {
    const double share = ProgressBar::shareOf(*this);
    m_ease.stop();
    const int milliseconds = isVisible() ? Look::duration(kEaseMilliseconds) : 0;
    if (milliseconds == 0) {
        m_shown = share;
        update();
        return;
    }
    m_ease.setDuration(milliseconds);
    m_ease.setStartValue(m_shown);
    m_ease.setEndValue(share);
    m_ease.start();
}

void ProgressRing::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const QRectF ring = QRectF(rect()).adjusted(kStroke / 2, kStroke / 2, -kStroke / 2, -kStroke / 2);
    painter.setPen(QPen(tokens.fill, kStroke));
    painter.drawEllipse(ring);
    if (m_shown > 0) {
        painter.setPen(QPen(tokens.accent, kStroke, Qt::SolidLine, Qt::RoundCap));
        painter.drawArc(ring, 90 * kSixteenths, -static_cast<int>(std::lround(m_shown * 360 * kSixteenths)));
    }
    const double corner = (kSide - kSymbol) / 2;
    Symbols::draw(painter, {corner, corner}, kSymbol, m_symbol, tokens.link);
}

} // namespace quillane
