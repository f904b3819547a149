#include "Components/Tile.h"
#include "Components/Symbols.h"
#include "Components/Tokens.h"
#include <QPainter>
#include <cmath>

namespace quillane {

namespace {
constexpr double kRadiusShare = 0.25;
constexpr double kSymbolShare = 0.55;
constexpr double kGroundShare = 0.13;
} // namespace

Tile::Tile(const QString& symbol, Tint tint, int side, int symbolSide, QWidget* parent)
    : QWidget(parent)
    , m_symbol(symbol)
    , m_tint(tint)
    , m_symbolSide(symbolSide > 0 ? symbolSide : 2 * static_cast<int>(std::lround(side * kSymbolShare / 2))) {
    setFixedSize(side, side);
}

void Tile::setSymbol(const QString& symbol, Tint tint) {
    m_symbol = symbol;
    m_tint = tint;
    update();
}

void Tile::paintEvent(QPaintEvent*) {
    const QColor color = Tokens::current().tint(m_tint);
    const double radius = width() * kRadiusShare;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(faded(color, kGroundShare));
    painter.drawRoundedRect(rect(), radius, radius);
    if (Tokens::current().highContrast) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(color);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    }
    const double corner = (width() - m_symbolSide) / 2.0;
    Symbols::draw(painter, {corner, corner}, m_symbolSide, m_symbol, color);
}

} // namespace quillane
