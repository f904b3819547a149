#include "Components/DateWords.h"
#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace quillane {

namespace {

QEvent::Type told() {
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

} // namespace

bool dateWordsMayDiffer(const QEvent& event) {
    return event.type() == QEvent::Show || event.type() == QEvent::WindowActivate || event.type() == told();
}

void tellDateWordsMayDiffer() {
    for (QWidget* const widget : QApplication::allWidgets()) {
        QCoreApplication::postEvent(widget, new QEvent(told()));
    }
}

} // namespace quillane
