#include "Components/Stepper.h"
#include <QKeyEvent>
#include <QWheelEvent>

namespace quillane {

Stepper::Stepper(const QString& name, int least, int most, const QString& prefix, const QString& suffix,
                 QWidget* parent)
    : QSpinBox(parent) {
    setAccessibleName(name);
    setRange(least, most);
    setPrefix(prefix);
    setSuffix(suffix);
    setAlignment(Qt::AlignRight);
    setKeyboardTracking(false);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

bool Stepper::isBeingTyped() const {
    return text() != prefix() + textFromValue(value()) + suffix();
}

void Stepper::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && isBeingTyped()) {
        setValue(value());
        selectAll();
        return;
    }
    QSpinBox::keyPressEvent(event);
}

void Stepper::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

} // namespace quillane
