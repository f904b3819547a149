#include "Settings/SettingsRow.h"
#include "Components/Fonts.h"
#include "Components/Label.h"
#include "Components/Switch.h"
#include <QHBoxLayout>
#include <QMouseEvent>
#include <utility>

namespace quillane {

namespace {

constexpr int kSides = 14; // and the edge of the card
constexpr int kAboveAndBelow = 6;
constexpr int kGap = 14;

} // namespace

SettingsRow::SettingsRow(const QString& words, QWidget* control, QWidget* parent)
    : QWidget(parent)
    , m_label(Label::wrapped(words, TextStyle::body()))
    , m_row(new QHBoxLayout(this)) {
    m_row->setContentsMargins(kSides, kAboveAndBelow, kSides, kAboveAndBelow);
    m_row->setSpacing(kGap);
    m_row->addWidget(m_label, 1);
    if (control != nullptr) {
        m_row->addWidget(control);
    }
    Fonts::follow(this, [this] { setMinimumHeight(Fonts::rowHeight(kHeight)); });
}

void SettingsRow::addBefore(QWidget* control) {
    m_row->insertWidget(1, control);
}

SwitchRow::SwitchRow(const QString& words, QWidget* parent)
    : SwitchRow(words, new Switch(words), parent) {}

SwitchRow::SwitchRow(const QString& words, Switch* control, QWidget* parent)
    : SettingsRow(words, control, parent)
    , m_switch(control) {}

bool SwitchRow::isOnWords(const QMouseEvent& event) const {
    return event.button() == Qt::LeftButton && label()->geometry().contains(event.position().toPoint());
}

void SwitchRow::mousePressEvent(QMouseEvent* event) {
    m_isPressed = isOnWords(*event);
}

void SwitchRow::mouseReleaseEvent(QMouseEvent* event) {
    if (std::exchange(m_isPressed, false) && isOnWords(*event)) {
        m_switch->click();
    }
}

} // namespace quillane
