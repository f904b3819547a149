#include "Components/DetailRow.h"
#include "Components/Fonts.h"
#include "Components/Label.h"
#include "Components/ValueField.h"
#include <QHBoxLayout>

namespace quillane {

DetailRow::DetailRow(const QString& label, const QString& value, QWidget* parent)
    : QWidget(parent)
    , m_label(new Label(label, TextStyle::row().tinted(Tint::Secondary)))
    , m_value(new ValueField(value)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(12);
    row->addWidget(m_label);
    row->addWidget(m_value, 1);
    Fonts::follow(this, [this] { setFixedHeight(Fonts::rowHeight(30, 12.5)); });
    m_value->setAccessibleName(label);
}

QString DetailRow::label() const {
    return m_label->text();
}

QString DetailRow::value() const {
    return m_value->text();
}

void DetailRow::setValue(const QString& value) {
    if (value != m_value->text()) {
        m_value->setText(value);
        m_value->setCursorPosition(0);
    }
}

} // namespace quillane
