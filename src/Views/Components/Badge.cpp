#include "Components/Badge.h"
#include "Components/Fonts.h"
#include "Components/Symbols.h"
#include "Components/TabularText.h"
#include "Components/Tokens.h"
#include <QPainter>
#include <cmath>

namespace quillane {

namespace {

struct Measure {
    int height;
    int padding; // left and right of the word
    double px;
    int weight;
    double tracking;
};

Measure measureOf(Badge::Kind kind) {
    switch (kind) {
    case Badge::Kind::Chip:
        return {22, 9, 12, QFont::Medium, 0};
    case Badge::Kind::Capsule:
        return {18, 8, 11.5, QFont::DemiBold, 0};
    case Badge::Kind::State:
        return {18, 8, 11, QFont::DemiBold, 0};
    case Badge::Kind::Permanent:
        return {16, 6, 9.5, QFont::Bold, 0.6};
    }
    return {22, 9, 12, QFont::Medium, 0};
}

QFont fontOf(const Measure& measure) {
    return Fonts::of(measure.px, measure.weight, measure.tracking);
}

constexpr int kSymbol = 13;
constexpr int kSymbolGap = 5;
constexpr int kLeast = 24; // of a count of one digit
constexpr double kWhiteGround = 0.22;

void drawGround(QPainter& painter, const QRectF& rect, Tint tint, bool onSelection) {
    const Tokens& tokens = Tokens::current();
    const double radius = rect.height() / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(onSelection ? faded(Qt::white, kWhiteGround) : tokens.soft(tint));
    painter.drawRoundedRect(rect, radius, radius);
    if (tokens.highContrast && !onSelection) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(tokens.tint(tint));
        painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5, radius - 0.5);
    }
}

} // namespace

Badge::Badge(const QString& text, const QString& symbol, Tint tint, Kind kind, QWidget* parent)
    : QWidget(parent)
    , m_tint(tint)
    , m_kind(kind) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setContent(text, symbol, tint);
}

Badge* Badge::permanent(QWidget* parent) {
    return new Badge(QStringLiteral("PERMANENT"), {}, Tint::Red, Kind::Permanent, parent);
}

void Badge::setContent(const QString& text, const QString& symbol, Tint tint) {
    m_text = text;
    m_symbol = symbol;
    m_tint = tint;
    setAccessibleName(text);
    updateGeometry();
    update();
}

QSize Badge::sizeHint() const {
    return sizeOf(m_text, m_symbol, m_kind);
}

QSize Badge::sizeOf(const QString& text, const QString& symbol, Kind kind) {
    const Measure measure = measureOf(kind);
    const QFontMetricsF metrics(fontOf(measure));
    double width = TabularText::width(metrics, text) + 2 * measure.padding;
    if (!symbol.isEmpty()) {
        width += kSymbol + kSymbolGap;
    }
    const int least = kind == Kind::Capsule ? kLeast : 0;
    return {std::max(least, static_cast<int>(std::ceil(width))),
            Fonts::rowHeight(measure.height, measure.px, 4)};
}

void Badge::draw(QPainter& painter, const QRectF& rect, const QString& text, const QString& symbol, Tint tint,
                 Kind kind, bool onSelection) {
    const Measure measure = measureOf(kind);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    drawGround(painter, rect, tint, onSelection);
    const QColor color = onSelection ? QColor(Qt::white) : Tokens::current().tint(tint);
    QRectF words = rect.adjusted(measure.padding, 0, -measure.padding, 0);
    if (!symbol.isEmpty()) {
        const double top = std::round(rect.center().y() - kSymbol / 2.0);
        Symbols::draw(painter, {words.left() - 1, top}, kSymbol, symbol, color);
        words.setLeft(words.left() + kSymbol + kSymbolGap - 1);
    }
    painter.setFont(fontOf(measure));
    painter.setPen(color);
    TabularText::draw(painter, words, text, symbol.isEmpty() ? Qt::AlignHCenter : Qt::AlignLeft);
    painter.restore();
}

void Badge::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    draw(painter, rect(), m_text, m_symbol, m_tint, m_kind);
}

} // namespace quillane
