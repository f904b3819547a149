#include "Components/Spinner.h"
#include "Components/Look.h"
#include "Components/Tokens.h"
#include <QPainter>
#include <QTimerEvent>

namespace quillane {

namespace {
constexpr double kStrokeShare = 0.13;
constexpr int kSixteenths = 16; // QPainter counts angles in sixteenths of a degree
constexpr int kSpan = 90;
} // namespace

Spinner::Spinner(int side, QWidget* parent)
    : QWidget(parent) {
    setFixedSize(side, side);
    setAccessibleName(QStringLiteral("In progress"));
}

void Spinner::draw(QPainter& painter, const QRectF& rect, int step, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const double stroke = rect.width() * kStrokeShare;
    const QRectF ring =
        rect.adjusted(stroke / 2 + 0.5, stroke / 2 + 0.5, -stroke / 2 - 0.5, -stroke / 2 - 0.5);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(faded(color, 0.2), stroke));
    painter.drawEllipse(ring);
    painter.setPen(QPen(color, stroke, Qt::SolidLine, Qt::RoundCap));
    const int start = 90 - step * 360 / kSteps;
    painter.drawArc(ring, start * kSixteenths, -kSpan * kSixteenths);
    painter.restore();
}

void Spinner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    draw(painter, rect(), m_step, Tokens::current().link);
}

void Spinner::showEvent(QShowEvent*) {
    if (!Look::reducedMotion()) {
        m_timer.start(kStepMilliseconds, this);
    }
}

void Spinner::hideEvent(QHideEvent*) {
    m_timer.stop();
}

void Spinner::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_timer.timerId()) {
        return;
    }
    if (Look::reducedMotion()) {
        m_timer.stop();
        return;
    }
    m_step = (m_step + 1) % kSteps;
    update();
}

} // namespace quillane
