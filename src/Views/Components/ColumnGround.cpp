#include "Components/ColumnGround.h"
#include "Components/Tokens.h"
#include <QPainter>

namespace quillane {

ColumnGround::ColumnGround(Ground ground, QWidget* parent)
    : QWidget(parent)
    , m_ground(ground) {}

void ColumnGround::setGround(Ground ground) {
    m_ground = ground;
    update();
}

void ColumnGround::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    const QColor color = m_ground == Ground::Page   ? tokens.page
                         : m_ground == Ground::Base ? tokens.base
                                                    : tokens.sidebar;
    QPainter(this).fillRect(rect(), color);
}

} // namespace quillane
