#include "Components/Announcement.h"
#include <QAccessible>
#include <QWidget>

namespace quillane {

void announce(QWidget& from, const QString& text) {
    from.setAccessibleName(text);
    if (QAccessible::isActive()) {
        QAccessibleEvent event(&from, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace quillane
