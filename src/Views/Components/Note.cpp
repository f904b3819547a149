#include "Components/Note.h"
#include "Components/Label.h"
#include "Components/SymbolView.h"
#include "Components/Tokens.h"
#include <QHBoxLayout>
#include <QPainter>

namespace quillane {

namespace {
constexpr int kRadius = 9;
constexpr int kSymbol = 15;
} // namespace

Note::Note(const QString& symbol, const QString& text, Tint tint, QWidget* parent)
    : QWidget(parent)
    , m_symbol(new SymbolView(symbol, kSymbol, tint))
    , m_text(Label::wrapped(text, TextStyle::note()))
    , m_tint(tint) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(12, 10, 12, 10);
    row->setSpacing(9);
    row->addWidget(m_symbol, 0, Qt::AlignTop);
    row->addWidget(m_text, 1);
    setContent(symbol, text, tint);
}

QString Note::text() const {
    return m_text->text();
}

void Note::setContent(const QString& symbol, const QString& text, Tint tint) {
    m_tint = tint;
    m_symbol->setSymbol(symbol, tint);
    m_text->setText(text);
    update();
}

void Note::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(tokens.highContrast ? QPen(tokens.tint(m_tint)) : QPen(Qt::NoPen));
    painter.setBrush(tokens.soft(m_tint));
    const double inset = tokens.highContrast ? 0.5 : 0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), kRadius, kRadius);
}

} // namespace quillane
