#include "Components/FigureRow.h"
#include "Components/ElidedLabel.h"
#include "Components/Fonts.h"
#include "Components/SymbolView.h"
#include <QHBoxLayout>

namespace quillane {

namespace {
constexpr int kHeight = 32;
constexpr int kSymbol = 16;
constexpr TextStyle kFigureStyle{13, QFont::Medium};
} // namespace

FigureRow::FigureRow(const QString& symbol, const QString& title, Tint tint, QWidget* parent)
    : QWidget(parent)
    , m_symbol(symbol)
    , m_title(new ElidedLabel(title, TextStyle::body()))
    , m_figure(new Label({}, kFigureStyle)) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    row->addWidget(new SymbolView(symbol, kSymbol, tint), 0, Qt::AlignVCenter);
    row->addWidget(m_title, 1);
    m_figure->setTabular(true);
    m_figure->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    row->addWidget(m_figure);
    Fonts::follow(this, [this] { setFixedHeight(Fonts::rowHeight(kHeight)); });
    speak();
}

QString FigureRow::title() const {
    return m_title->text();
}

QString FigureRow::figure() const {
    return m_figure->text();
}

void FigureRow::setFigure(const QString& figure) {
    m_figure->setText(figure);
    speak();
}

void FigureRow::speak() {
    QStringList spoken{title(), figure()};
    spoken.removeAll(QString());
    setAccessibleName(spoken.join(QStringLiteral(", ")));
}

} // namespace quillane
