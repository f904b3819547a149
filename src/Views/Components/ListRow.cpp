#include "Components/ListRow.h"
#include "Components/ElidedLabel.h"
#include "Components/SymbolView.h"
#include <QHBoxLayout>

namespace quillane {

ListRow::ListRow(const QString& symbol, const QString& title, const QString& subtitle, const QString& size,
                 Tint tint, QWidget* parent)
    : QWidget(parent)
    , m_symbol(new SymbolView(symbol, 16, tint))
    , m_title(new ElidedLabel(title, TextStyle::row()))
    , m_subtitle(new ElidedLabel(subtitle, TextStyle::caption(), Qt::ElideMiddle))
    , m_size(new Label(size, TextStyle::secondary())) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 6, 0, 6);
    row->setSpacing(9);
    row->addWidget(m_symbol, 0, Qt::AlignVCenter);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addWidget(m_title);
    texts->addWidget(m_subtitle);
    row->addLayout(texts, 1);
    m_size->setTabular(true);
    m_size->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    row->addWidget(m_size);
    // Only now that they lie in the row: on their own they would be windows, and a window closes open menus.
    m_subtitle->setVisible(!subtitle.isEmpty());
    m_size->setVisible(!size.isEmpty());
    speak();
}

QString ListRow::title() const {
    return m_title->text();
}

QString ListRow::subtitle() const {
    return m_subtitle->text();
}

QString ListRow::sizeText() const {
    return m_size->text();
}

void ListRow::setSymbolHelp(const QString& help) {
    m_symbol->setToolTip(help);
    speak();
}

void ListRow::speak() {
    QStringList spoken{title(), subtitle(), sizeText(), m_symbol->toolTip()};
    spoken.removeAll(QString());
    setAccessibleName(spoken.join(QStringLiteral(", ")));
}

} // namespace quillane
