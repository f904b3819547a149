#pragma once
#include <QAccessible>
#include <QCoreApplication>
#include <QEvent>
#include <QStringList>
#include <QWidget>

namespace quillane {

// What is announced to assistive tools while it lives, as they hear it: a notification that comes to be shown. Qt
// tells nobody anything on a platform without such tools, so it is seen at the widget.
class Announced : public QObject {
  public:
    Announced() { QCoreApplication::instance()->installEventFilter(this); }

    QStringList texts() const { return m_texts; }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        auto* const widget = qobject_cast<QWidget*>(object);
        if (widget != nullptr && event->type() == QEvent::Show && isNotification(*widget)) {
            m_texts << widget->accessibleName();
        }
        return false;
    }

  private:
    static bool isNotification(QWidget& widget) {
        if (widget.objectName() != QLatin1String("announcement")) {
            return false; // and is met by nobody because of us
        }
        auto* const met = QAccessible::queryAccessibleInterface(&widget);
        return met != nullptr && met->role() == QAccessible::Notification;
    }

    QStringList m_texts;
};

} // namespace quillane
