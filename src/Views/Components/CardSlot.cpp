#include "Components/CardSlot.h"
#include "Components/ContentPicture.h"
#include "Components/Look.h"
#include <QPainter>
#include <QVBoxLayout>
#include <QVariantAnimation>
#include <cmath>

namespace quillane {

CardSlot::CardSlot(QWidget* card, int gap, QWidget* parent)
    : QWidget(parent)
    , m_card(card)
    , m_gap(gap) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, gap, 0, 0);
    column->setSpacing(0);
    column->addWidget(card);
    card->hide();
    hide();
    connect(addStep(kFadeMilliseconds), &QVariantAnimation::valueChanged, this, [this](const QVariant& left) {
        m_opacity = left.toDouble();
        update();
    });
    connect(addStep(kCloseMilliseconds), &QVariantAnimation::valueChanged, this,
            [this](const QVariant& left) {
                setFixedHeight(static_cast<int>(std::lround(m_fullHeight * left.toDouble())));
            });
    connect(&m_departure, &QAbstractAnimation::finished, this, &CardSlot::close);
}

// What is left, from all to nothing.
QVariantAnimation* CardSlot::addStep(int milliseconds) {
    auto* const step = new QVariantAnimation;
    step->setDuration(milliseconds);
    step->setEasingCurve(QEasingCurve::OutCubic);
    step->setStartValue(1.0);
    step->setEndValue(0.0);
    m_departure.addAnimation(step);
    return step;
}

void CardSlot::setShown(bool shown) {
    if (shown != m_card->isHidden()) {
        return;
    }
    if (shown) {
        m_departure.stop();
        release();
        m_card->show();
        show();
    } else if (isVisible() && !Look::reducedMotion()) {
        depart();
    } else {
        m_card->hide();
        close();
    }
}

void CardSlot::depart() {
    m_picture = contentPicture(*m_card);
    m_opacity = 1;
    m_fullHeight = height();
    setFixedHeight(m_fullHeight);
    m_card->hide();
    m_departure.start();
}

void CardSlot::close() {
    hide();
    release();
}

void CardSlot::release() {
    m_picture = {};
    setMinimumHeight(0);
    setMaximumHeight(QWIDGETSIZE_MAX);
}

void CardSlot::paintEvent(QPaintEvent*) {
    if (m_picture.isNull()) {
        return;
    }
    QPainter painter(this);
    painter.setOpacity(m_opacity);
    painter.drawPixmap(QPoint(0, m_gap), m_picture);
}

} // namespace quillane
