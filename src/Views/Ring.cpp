#include "Ring.h"
#include "Symbols.h"
#include "Tokens.h"
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace quillane {

namespace {
constexpr double kStroke = 9;
constexpr int kSymbol = 38;
constexpr int kFullTurn = 360 * 16; // in the painter's sixteenths of a degree
constexpr int kTwelveOClock = 90 * 16;
} // namespace

Ring::Ring(const QString& symbol, QWidget* parent)
    : QProgressBar(parent)
    , m_symbol(symbol) {
    setTextVisible(false);
    setFixedSize(kSide, kSide);
}

void Ring::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    constexpr double kInset = kStroke / 2;
    const QRectF circle = QRectF(rect()).adjusted(kInset, kInset, -kInset, -kInset);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(tokens.fill, kStroke));
    painter.drawEllipse(circle);
    const double range = static_cast<double>(maximum()) - minimum();
    const double share = range > 0 ? std::clamp((value() - minimum()) / range, 0.0, 1.0) : 0;
    if (share > 0) {
        painter.setPen(QPen(tokens.accent, kStroke, Qt::SolidLine, Qt::RoundCap));
        painter.drawArc(circle, kTwelveOClock, -static_cast<int>(std::lround(share * kFullTurn)));
    }
    constexpr double kAt = (kSide - kSymbol) / 2.0;
    Symbols::draw(painter, {kAt, kAt}, kSymbol, m_symbol, tokens.link);
}

} // namespace quillane
