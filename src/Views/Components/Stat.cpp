#include "Components/Stat.h"
#include "Components/FittedLabel.h"
#include <QVBoxLayout>

namespace quillane {

Stat::Stat(const QString& label, const QString& value, bool emphasized, QWidget* parent)
    : QWidget(parent)
    , m_label(new ElidedLabel(label, TextStyle::statLabel()))
    , m_value(new FittedLabel(value, TextStyle::detailTitle().tinted(emphasized ? Tint::Link : Tint::Text))) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(1);
    column->addWidget(m_label);
    column->addWidget(m_value);
    setValue(value);
}

QString Stat::label() const {
    return m_label->text();
}

QString Stat::value() const {
    return m_value->text();
}

void Stat::setValue(const QString& value) {
    m_value->setText(value);
    setAccessibleName(label() + QStringLiteral(", ") + value);
}

void Stat::setEmphasized(bool emphasized) {
    m_value->setTint(emphasized ? Tint::Link : Tint::Text);
}

void Stat::setLabel(const QString& label) {
    m_label->setText(label);
    setValue(value());
}

bool Stat::isEmphasized() const {
    return m_value->tint() == Tint::Link;
}

} // namespace quillane
