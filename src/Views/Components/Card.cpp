#include "Components/Card.h"
#include "Components/Tokens.h"
#include <QLinearGradient>
#include <QPainter>

namespace quillane {

Card::Card(QWidget* parent, Kind kind)
    : QWidget(parent)
    , m_kind(kind) {}

void Card::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF edge = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -1.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tokens.shadow);
    painter.drawRoundedRect(edge.translated(0, 1), kRadius, kRadius);
    if (m_kind == Kind::Hero) {
        QLinearGradient gradient(0, 0, 0, height());
        gradient.setColorAt(0, tokens.heroTop);
        gradient.setColorAt(1, tokens.heroBottom);
        painter.setBrush(gradient);
    } else {
        painter.setBrush(tokens.card);
    }
    painter.setPen(tokens.line);
    painter.drawRoundedRect(edge, kRadius, kRadius);
}

} // namespace quillane
