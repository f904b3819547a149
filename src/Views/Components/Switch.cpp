#include "Components/Switch.h"
#include "Components/Look.h"
#include "Components/Tokens.h"
#include <QPainter>

namespace quillane {

namespace {
constexpr int kWidth = 38;
constexpr int kHeight = 22;
constexpr double kKnobInset = 2;
constexpr int kSlideMilliseconds = 120;
constexpr int kPressedPercent = 112;
} // namespace

Switch::Switch(const QString& name, QWidget* parent)
    : QAbstractButton(parent) {
    setCheckable(true);
    setAccessibleName(name);
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(kWidth, kHeight);
    setProperty("focusRadius", kHeight / 2.0);
    connect(&m_knob, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_position = value.toDouble();
        update();
    });
    connect(this, &QAbstractButton::toggled, this, &Switch::moveKnob);
}

QSize Switch::sizeHint() const {
    return {kWidth, kHeight};
}

bool Switch::hitButton(const QPoint& position) const {
    return rect().contains(position);
}

void Switch::moveKnob(bool on) {
    m_knob.stop();
    const int milliseconds = isVisible() ? Look::duration(kSlideMilliseconds) : 0;
    if (milliseconds == 0) {
        m_position = on ? 1 : 0;
        update();
        return;
    }
    m_knob.setDuration(milliseconds);
    m_knob.setStartValue(m_position);
    m_knob.setEndValue(on ? 1.0 : 0.0);
    m_knob.start();
}

void Switch::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    QColor track = isChecked() ? tokens.accent : tokens.switchOff;
    if (isDown()) {
        track = track.darker(kPressedPercent);
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1 : 0.4);
    painter.setPen(Qt::NoPen);
    painter.setBrush(track);
    painter.drawRoundedRect(rect(), kHeight / 2.0, kHeight / 2.0);
    const double side = kHeight - 2 * kKnobInset;
    painter.setBrush(Qt::white);
    painter.drawEllipse(QRectF(kKnobInset + m_position * (kWidth - kHeight), kKnobInset, side, side));
}

} // namespace quillane
