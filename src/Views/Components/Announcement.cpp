#include "Components/Announcement.h"
#include <QAccessibleWidget>
#include <QWidget>

namespace quillane {

namespace {

const QString kName = QStringLiteral("announcement");

// Nothing that can be seen: Qt's bridge to the bus of assistive tools keeps alerts to itself, and what is heard there
// without having the focus is a notification that comes to be shown.
class Announcement : public QWidget {
  public:
    explicit Announcement(QWidget* window)
        : QWidget(window) {
        setObjectName(kName);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setGeometry(0, 0, 1, 1);
    }
};

QAccessibleInterface* make(const QString&, QObject* object) {
    auto* const announcement = dynamic_cast<Announcement*>(object);
    return announcement != nullptr ? new QAccessibleWidget(announcement, QAccessible::Notification) : nullptr;
}

QWidget* announcementOf(QWidget* window) {
    if (auto* const made = window->findChild<QWidget*>(kName, Qt::FindDirectChildrenOnly)) {
        return made;
    }
    QAccessible::installFactory(make); // which leaves out what is installed
    return new Announcement(window);
}

} // namespace

void announce(QWidget& from, const QString& text) {
    from.setAccessibleName(text);
    speak(from, text);
}

void speak(QWidget& from, const QString& text) {
    auto* const announcement = announcementOf(from.window());
    announcement->hide();
    announcement->setAccessibleName(text);
    announcement->show();
    QAccessibleEvent event(announcement, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

} // namespace quillane
