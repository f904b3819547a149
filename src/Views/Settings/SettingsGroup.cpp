#include "Settings/SettingsGroup.h"
#include "Components/Card.h"
#include "Components/Label.h"
#include "Components/Rule.h"
#include <QVBoxLayout>

namespace quillane {

namespace {

constexpr int kInset = 14; // of heading and sentence, which may reach further at its end than it begins
constexpr int kInsetAtEnd = 2;
constexpr int kGap = 6;
constexpr int kEdge = 1;
constexpr int kShadow = 1; // below the card

} // namespace

SettingsGroup::SettingsGroup(const QString& heading, const QString& footnote, QWidget* parent)
    : QWidget(parent)
    , m_heading(Label::wrapped(heading, TextStyle::heading()))
    , m_card(new Card)
    , m_rows(new QVBoxLayout(m_card))
    , m_footnote(Label::wrapped({}, TextStyle::statLabel())) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap);
    column->addWidget(m_heading);
    column->addWidget(m_card);
    column->addWidget(m_footnote);
    m_rows->setContentsMargins(kEdge, kEdge, kEdge, kEdge + kShadow);
    m_rows->setSpacing(0);
    for (auto* const label : {m_heading, m_footnote}) {
        label->setContentsMargins(kInset, 0, kInsetAtEnd, 0);
    }
    m_heading->setVisible(!heading.isEmpty());
    m_card->setAccessibleName(heading);
    setFootnote(footnote);
}

void SettingsGroup::addRow(QWidget* row) {
    if (m_rows->count() > 0) {
        m_rows->addWidget(new Rule(Rule::Weight::Row));
    }
    m_rows->addWidget(row);
}

void SettingsGroup::setFootnote(const QString& words) {
    m_footnote->setText(words);
    m_footnote->setVisible(!words.isEmpty());
    m_card->setAccessibleDescription(words);
}

} // namespace quillane
