#include "Onboarding/FeatureChip.h"
#include "Components/Fonts.h"
#include "Components/Look.h"
#include "Components/Symbols.h"
#include "Components/Tokens.h"
#include <QPainter>
#include <QVariantAnimation>
#include <cmath>

namespace quillane {

namespace {

constexpr int kHeight = 28;
constexpr int kPadding = 12;
constexpr int kSymbol = 15;
constexpr int kGap = 7;
constexpr TextStyle kWords{12.5, QFont::Medium, Tint::Text, 0};

} // namespace

FeatureChip::FeatureChip(const QString& symbol, const QString& label, Tint tint, double delay,
                         QWidget* parent)
    : Label(label, kWords.tinted(tint), parent)
    , m_symbol(symbol)
    , m_delay(delay) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_entrance.addPause(static_cast<int>(std::lround(delay * 1000)));
    auto* const rise = new QVariantAnimation;
    rise->setDuration(kMilliseconds);
    rise->setEasingCurve(QEasingCurve::OutCubic);
    rise->setStartValue(0.0);
    rise->setEndValue(1.0);
    connect(rise, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { setProgress(value.toDouble()); });
    m_entrance.addAnimation(rise);
}

void FeatureChip::appear() {
    m_shown = true;
    m_entrance.stop();
    if (Look::reducedMotion()) {
        setProgress(1);
        return;
    }
    setProgress(0);
    m_entrance.start();
}

void FeatureChip::disappear() {
    m_shown = false;
    m_entrance.stop();
    setProgress(0);
}

void FeatureChip::setProgress(double progress) {
    m_progress = progress;
    update();
}

QSize FeatureChip::sizeHint() const {
    const double words = QFontMetricsF(font()).horizontalAdvance(text());
    return {static_cast<int>(std::ceil(words)) + 2 * kPadding + kSymbol + kGap,
            Fonts::rowHeight(kHeight, kWords.px) + kRise};
}

void FeatureChip::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    const QRectF place(0, 0, width(), height() - kRise);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(m_progress);
    painter.translate(0, kRise * (1 - m_progress));
    painter.setPen(tokens.line);
    painter.setBrush(tokens.card);
    const double radius = (place.height() - 1) / 2;
    painter.drawRoundedRect(place.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    Symbols::draw(painter, {kPadding, std::round((place.height() - kSymbol) / 2)}, kSymbol, m_symbol,
                  tokens.tint(tint()));
    painter.setFont(font());
    painter.setPen(tokens.text);
    painter.drawText(place.adjusted(kPadding + kSymbol + kGap, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                     text());
}

} // namespace quillane
