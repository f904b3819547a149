#include "Components/StatusRow.h"
#include "Components/Fonts.h"
#include "Components/Hairline.h"
#include "Components/Label.h"
#include "Components/Tokens.h"
#include <QHBoxLayout>
#include <QPainter>

namespace quillane {

StatusRow::StatusRow(QWidget* parent)
    : QWidget(parent)
    , m_row(new QHBoxLayout(this))
    , m_left(new Label({}, TextStyle::secondary()))
    , m_dot(new Label(QStringLiteral("•"), TextStyle::secondary().tinted(Tint::Tertiary)))
    , m_extra(new Label({}, TextStyle::secondary()))
    , m_right(new Label({}, TextStyle::secondary())) {
    Fonts::follow(this, [this] { setFixedHeight(Fonts::rowHeight(kHeight, 12)); });
    m_row->setContentsMargins(16, 1, 15, 0); // the line between the columns is the sixteenth
    m_row->setSpacing(8);
    m_row->addWidget(m_left);
    m_row->addWidget(m_dot);
    m_row->addWidget(m_extra);
    m_row->addStretch(1);
    m_row->addWidget(m_right);
    m_extra->setTabular(true);
    m_right->setTabular(true);
    m_right->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setTexts({}, {}, {});
}

void StatusRow::setTexts(const QString& left, const QString& extra, const QString& right) {
    m_left->setText(left);
    m_left->setVisible(!left.isEmpty());
    m_extra->setText(extra);
    m_extra->setVisible(!extra.isEmpty());
    m_dot->setVisible(!left.isEmpty() && !extra.isEmpty());
    m_right->setText(right);
    m_right->setVisible(!right.isEmpty());
}

void StatusRow::addBefore(QWidget* widget) {
    m_row->insertWidget(0, widget);
}

void StatusRow::addBehind(QWidget* widget) {
    m_row->insertWidget(m_row->indexOf(m_extra) + 1, widget);
}

void StatusRow::addBeforeRight(QWidget* widget) {
    m_row->insertWidget(m_row->indexOf(m_right), widget);
}

void StatusRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Hairline::fill(painter, QRect(0, 0, width(), 1), Tokens::current().line);
}

} // namespace quillane
