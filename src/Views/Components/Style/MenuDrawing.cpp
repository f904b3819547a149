#include "Components/Style/MenuDrawing.h"
#include "Components/Hairline.h"
#include "Components/RoundRegion.h"
#include "Components/Style/ControlGround.h"
#include "Components/Tokens.h"
#include <QPainter>
#include <QWidget>

namespace quillane {

namespace {

constexpr double kRadius = 9;

bool isMasked(const QWidget* menu) {
    return menu != nullptr && menu->isWindow() && !menu->testAttribute(Qt::WA_TranslucentBackground);
}

} // namespace

std::optional<QRegion> MenuDrawing::maskOf(const QWidget* menu) {
    if (!isMasked(menu)) {
        return std::nullopt;
    }
    return roundRegion(menu->size(), kRadius);
}

// A mask needs the edge's colour up to its own edge.
void MenuDrawing::drawGround(QPainter& painter, const QRect& rect, const QWidget* menu) {
    const Tokens& tokens = Tokens::current();
    painter.save();
    if (isMasked(menu)) {
        painter.fillRect(rect, tokens.line);
    }
    ControlGround::draw(painter, rect, kRadius, tokens.card, tokens.line);
    painter.restore();
}

void MenuDrawing::drawDivider(QPainter& painter, const QRect& line) {
    constexpr int kInset = 10;
    Hairline::fill(painter, QRect(line.left() + kInset, line.center().y(), line.width() - 2 * kInset, 1),
                   Tokens::current().line2);
}

QStyleOptionMenuItem MenuDrawing::drawChosen(const QStyleOptionMenuItem& item, QPainter& painter) {
    constexpr double kLineRadius = 5;
    ControlGround::draw(painter, QRectF(item.rect).adjusted(1, 0, -1, 0), kLineRadius, Tokens::current().sel,
                        Qt::transparent);
    QStyleOptionMenuItem plain = item;
    plain.state.setFlag(QStyle::State_Selected, false);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        plain.palette.setColor(role, Qt::white);
    }
    if (!item.icon.isNull()) {
        const QSize side(item.maxIconWidth, item.maxIconWidth);
        plain.icon = QIcon(item.icon.pixmap(side, painter.device()->devicePixelRatioF(), QIcon::Selected));
    }
    return plain;
}

} // namespace quillane
