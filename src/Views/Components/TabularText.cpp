#include "Components/TabularText.h"
#include <QPainter>
#include <algorithm>

namespace quillane::TabularText {

namespace {

double digitWidth(const QFontMetricsF& metrics) {
    double widest = 0;
    for (char digit = '0'; digit <= '9'; ++digit) {
        widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(digit)));
    }
    return widest;
}

bool isDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// Runs of other characters stay together, so that kerning and combining marks are kept.
template <typename Visit>
void eachPiece(const QString& text, Visit visit) {
    qsizetype from = 0;
    while (from < text.size()) {
        qsizetype to = from + 1;
        if (!isDigit(text[from])) {
            while (to < text.size() && !isDigit(text[to])) {
                ++to;
            }
        }
        visit(text.mid(from, to - from));
        from = to;
    }
}

double startOf(const QRectF& rect, double width, Qt::Alignment alignment) {
    if (alignment & Qt::AlignRight) {
        return rect.right() - width;
    }
    return (alignment & Qt::AlignHCenter) ? rect.center().x() - width / 2 : rect.left();
}

} // namespace

double width(const QFontMetricsF& metrics, const QString& text) {
    const double digit = digitWidth(metrics);
    double sum = 0;
    eachPiece(text, [&](const QString& piece) {
        sum += isDigit(piece[0]) ? digit : metrics.horizontalAdvance(piece);
    });
    return sum;
}

QString elided(const QFontMetricsF& metrics, const QString& text, double room) {
    if (width(metrics, text) <= room) {
        return text;
    }
    const QString ellipsis(QChar(0x2026));
    QString cut = text;
    while (!cut.isEmpty() && width(metrics, cut + ellipsis) > room) {
        cut.chop(1);
    }
    return cut + ellipsis;
}

void draw(QPainter& painter, const QRectF& rect, const QString& text, Qt::Alignment alignment) {
    const QFontMetricsF metrics(painter.font());
    const QString shown = elided(metrics, text, rect.width() + 0.5);
    const double digit = digitWidth(metrics);
    const double baseline = rect.center().y() + (metrics.ascent() - metrics.descent()) / 2;
    double x = startOf(rect, width(metrics, shown), alignment);
    eachPiece(shown, [&](const QString& piece) {
        const double advance = metrics.horizontalAdvance(piece);
        const double room = isDigit(piece[0]) ? digit : advance;
        painter.drawText(QPointF(x + (room - advance) / 2, baseline), piece);
        x += room;
    });
}

} // namespace quillane::TabularText
