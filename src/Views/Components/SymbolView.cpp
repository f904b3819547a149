#include "Components/SymbolView.h"
#include "Components/Symbols.h"
#include "Components/Tokens.h"
#include <QPainter>

namespace quillane {

SymbolView::SymbolView(const QString& symbol, int side, Tint tint, QWidget* parent)
    : QWidget(parent)
    , m_symbol(symbol)
    , m_tint(tint) {
    setFixedSize(side, side);
}

void SymbolView::setSymbol(const QString& symbol, Tint tint) {
    m_symbol = symbol;
    m_tint = tint;
    update();
}

void SymbolView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Symbols::draw(painter, {0, 0}, width(), m_symbol, Tokens::current().tint(m_tint));
}

} // namespace quillane
