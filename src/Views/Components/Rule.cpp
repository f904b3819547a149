#include "Components/Rule.h"
#include "Components/Hairline.h"
#include "Components/Tokens.h"
#include <QPainter>

namespace quillane {

Rule::Rule(Weight weight, Qt::Orientation orientation, QWidget* parent)
    : QWidget(parent)
    , m_weight(weight) {
    if (orientation == Qt::Horizontal) {
        setFixedHeight(1);
    } else {
        setFixedWidth(1);
    }
}

void Rule::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    QPainter painter(this);
    Hairline::fill(painter, rect(), m_weight == Weight::Edge ? tokens.line : tokens.line2);
}

} // namespace quillane
