#include "Onboarding/SlideDeck.h"
#include "Components/ContentPicture.h"
#include "Components/Look.h"
#include "Onboarding/SlideView.h"
#include <QGraphicsOpacityEffect>
#include <QPainter>
#include <cmath>

namespace quillane {

SlideDeck::SlideDeck(QWidget* parent)
    : QStackedWidget(parent) {
    m_turning.setDuration(kMilliseconds);
    m_turning.setEasingCurve(QEasingCurve::OutCubic);
    m_turning.setStartValue(0.0);
    m_turning.setEndValue(1.0);
    connect(&m_turning, &QVariantAnimation::valueChanged, this, [this](const QVariant& progress) {
        if (!m_leaving.isNull()) {
            place(progress.toDouble());
        }
    });
    connect(&m_turning, &QAbstractAnimation::finished, this, &SlideDeck::settle);
}

SlideView* SlideDeck::slide(int page) const {
    return qobject_cast<SlideView*>(widget(page));
}

void SlideDeck::turnTo(int page, bool forward) {
    if (page == currentIndex()) {
        return;
    }
    const bool moves = isVisible() && !Look::reducedMotion();
    if (moves) {
        leaveBehind();
    } else {
        settle();
    }
    setCurrentIndex(page);
    if (moves) {
        m_direction = forward ? 1 : -1;
        currentWidget()->setGraphicsEffect(new QGraphicsOpacityEffect(currentWidget()));
        place(0);
        m_turning.start();
    }
}

// Taken before the page settles, so that one which is still on its way leaves from where it is.
void SlideDeck::leaveBehind() {
    const QPixmap picture = contentPicture(*currentWidget());
    const int x = currentWidget()->x();
    settle();
    m_leaving = picture;
    m_leavingX = x;
}

void SlideDeck::place(double progress) {
    auto* const slide = currentWidget();
    static_cast<QGraphicsOpacityEffect*>(slide->graphicsEffect())->setOpacity(progress);
    slide->move(m_direction * static_cast<int>(std::lround(kTravel * (1 - progress))), 0);
    update();
}

void SlideDeck::settle() {
    m_turning.stop();
    m_leaving = {};
    if (auto* const slide = currentWidget()) {
        slide->setGraphicsEffect(nullptr);
        slide->move(0, 0);
    }
    update();
}

void SlideDeck::paintEvent(QPaintEvent*) {
    if (m_leaving.isNull()) {
        return;
    }
    const double progress = m_turning.currentValue().toDouble();
    QPainter painter(this);
    painter.setOpacity(1 - progress);
    painter.drawPixmap(QPointF(m_leavingX - m_direction * kTravel * progress, 0), m_leaving);
}

void SlideDeck::hideEvent(QHideEvent* event) {
    QStackedWidget::hideEvent(event);
    if (!event->spontaneous()) {
        settle();
    }
}

} // namespace quillane
