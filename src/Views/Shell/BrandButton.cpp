#include "Shell/BrandButton.h"
#include "Components/FocusRing.h"
#include "Components/Fonts.h"
#include "Components/Symbols.h"
#include "Components/Tokens.h"
#include "Components/ToolbarRow.h"
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

namespace quillane {

namespace {

constexpr int kMarkSide = 22;
constexpr int kLeft = 16;
constexpr int kGap = 9;
constexpr int kRadius = 7;

} // namespace

BrandButton::BrandButton(QWidget* parent)
    : QAbstractButton(parent) {
    setText(QStringLiteral("Quillane"));
    Fonts::follow(this, [this] { setFixedHeight(ToolbarRow::scaledHeight()); });
    setMouseTracking(true);
    setFocusPolicy(Qt::NoFocus);
    setProperty("drawsFocusRing", true); // inside the part that lights up
    connect(this, &BrandButton::clicked, this, &BrandButton::openMenu);
}

void BrandButton::setMenu(QMenu* menu) {
    m_menu = menu;
    setFocusPolicy(menu ? Qt::TabFocus : Qt::NoFocus);
    setToolTip(menu ? QStringLiteral("Menu") : QString());
}

void BrandButton::openMenu() {
    if (m_menu) {
        m_menu->popup(mapToGlobal(QPoint(kLeft - 6, contentRect().bottom() + 3)));
    }
}

QSize BrandButton::sizeHint() const {
    return {196, ToolbarRow::scaledHeight()};
}

QRect BrandButton::contentRect() const {
    const int words = QFontMetrics(Fonts::of(14, QFont::DemiBold)).horizontalAdvance(text());
    return {kLeft - 6, (height() - 34) / 2, kMarkSide + kGap + words + 14, 34};
}

void BrandButton::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_menu && (isDown() || contentRect().contains(mapFromGlobal(QCursor::pos())))) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(isDown() ? tokens.side : faded(tokens.side, 0.45));
        painter.drawRoundedRect(contentRect(), kRadius, kRadius);
    }
    Symbols::draw(painter, QPointF(kLeft, (height() - kMarkSide) / 2.0), kMarkSide,
                  QStringLiteral("BrandMark"), tokens.link);
    painter.setFont(Fonts::of(14, QFont::DemiBold));
    painter.setPen(tokens.text);
    painter.drawText(rect().adjusted(kLeft + kMarkSide + kGap, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                     text());
    if (hasFocus() && FocusRing::isShownFor(this)) {
        FocusRing::drawInside(painter, contentRect(), kRadius);
    }
}

void BrandButton::mouseMoveEvent(QMouseEvent* event) {
    QAbstractButton::mouseMoveEvent(event);
    update();
}

void BrandButton::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}

bool BrandButton::hitButton(const QPoint& position) const {
    return m_menu && contentRect().contains(position);
}

void BrandButton::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        openMenu();
        return;
    default:
        QAbstractButton::keyPressEvent(event);
    }
}

} // namespace quillane
