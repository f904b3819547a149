#include "Overview/ActionCard.h"
#include "Components/Label.h"
#include "Components/PushButton.h"
#include "Components/Tile.h"
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quillane {

ActionCard::ActionCard(const QString& symbol, Tint tint, QWidget* parent)
    : Card(parent)
    , m_symbol(symbol)
    , m_row(new QHBoxLayout(this))
    , m_title(Label::wrapped({}, TextStyle::heading()))
    , m_sentence(Label::wrapped({}, TextStyle::secondary())) {
    m_row->setContentsMargins(16, 11, 12, 12);
    m_row->setSpacing(12);
    m_row->addWidget(new Tile(symbol, tint), 0, Qt::AlignVCenter);
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addStretch();
    texts->addWidget(m_title);
    texts->addWidget(m_sentence);
    texts->addStretch();
    m_row->addLayout(texts, 1);
}

void ActionCard::setTexts(const QString& title, const QString& sentence) {
    m_title->setText(title);
    m_sentence->setText(sentence);
    setAccessibleName(title);
    setAccessibleDescription(sentence);
}

void ActionCard::addButton(PushButton* button) {
    m_row->addWidget(button, 0, Qt::AlignVCenter);
}

} // namespace quillane
