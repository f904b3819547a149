#pragma once
#include "MenuBarExtra.h"
#include "TrayOwner.h"
#include <QPoint>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

class QMenu;
class QSystemTrayIcon;

namespace quillane {

// The item for panels that know of no bus: a small window that they take into their tray, which X11 alone has. Follows
// the tray as it comes and goes. Needs a QApplication. Main thread only.
class EmbeddedTrayItem final {
  public:
    struct Handlers {
        std::function<void()> shownChanged;        // at a later turn
        std::function<void(QPoint place)> pressed; // on the icon, in device-independent pixels
        std::function<void(int id)> chosen;        // an entry of the menu
    };

    EmbeddedTrayItem(QString title, Handlers handlers);
    ~EmbeddedTrayItem();
    EmbeddedTrayItem(const EmbeddedTrayItem&) = delete;
    EmbeddedTrayItem& operator=(const EmbeddedTrayItem&) = delete;

    bool isShown() const { return m_icon != nullptr; }
    // What is told under the pointer.
    void setTitle(const QString& title);
    // What the right button opens; empty for nothing, and then that is a press as any other.
    void setMenu(const std::vector<MenuBarExtra::Entry>& entries);

  private:
    void attachMenu();
    void follow();

    QString m_title;
    Handlers m_handlers;
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon; // while there is a tray
    TrayOwner m_owner{[this] {
        follow();
        m_handlers.shownChanged();
    }};
};

} // namespace quillane
