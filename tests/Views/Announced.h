#pragma once
#include <QAccessible>
#include <QStringList>

namespace quillane {

// What is announced to assistive tools while one lives, as they hear it: a notification that comes to be shown.
class Announced {
  public:
    Announced() {
        said().clear();
        m_before = QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
            if (event->type() == QAccessible::ObjectShow &&
                event->accessibleInterface()->role() == QAccessible::Notification) {
                said() << event->accessibleInterface()->text(QAccessible::Name);
            }
        });
    }
    ~Announced() { QAccessible::installUpdateHandler(m_before); }
    Announced(const Announced&) = delete;
    Announced& operator=(const Announced&) = delete;

    static QStringList texts() { return said(); }

  private:
    static QStringList& said() { // the handler is a plain function
        static QStringList texts;
        return texts;
    }
    QAccessible::UpdateHandler m_before;
};

} // namespace quillane
