#pragma once
#include "Bytes.h"
#include "Clock.h"
#include "Defaults.h"
#include "MenuBar/MenuBarWay.h"
#include "MenuBarExtra.h"
#include "State/Scenes.h"
#include <QObject>
#include <QPointer>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillane {

class AppLibrary;
class LibraryObserver;
class MenuBarPopover;
class NotificationCenter;

// The item in the menu bar: it stands there while the setting wants it, with what could be reclaimed beside it, and a
// press on it opens the popover, or closes it. Where panels show a menu, it leads where the popover does. Main thread
// only.
class MenuBarItem : public QObject {
    Q_OBJECT
  public:
    // All of them outlive it. `quit` ends the program as the user asked for it.
    MenuBarItem(AppLibrary& library, NotificationCenter& notifications, Scenes& scenes,
                std::function<void()> quit);
    ~MenuBarItem() override;

    // Null while it is closed.
    MenuBarPopover* popover() const;
    void closePopover();
    // What stands beside the icon while that much is reclaimable; empty for the icon alone.
    static std::string figure(Bytes reclaimable);
    // What a menu offers then: the ids are those of MenuBarWay.
    static std::vector<MenuBarExtra::Entry> menu(Bytes reclaimable);

    // A press on the icon while the popover is open closes it, and some panels tell of the same press afterwards:
    // one that comes earlier than this after the closing opens nothing.
    static constexpr std::chrono::milliseconds kAfterClosing{300};

  signals:
    // The setting wants the item or doesn't any more, or a panel shows it or doesn't any more.
    void standingChanged();

  private:
    void followSetting();
    void render();
    void press(const MenuBarExtra::Press& press);
    void open(const MenuBarExtra::Press& press);
    void choose(const MenuBarExtra::Choice& choice);
    void noticeShown();
    void go(MenuBarWay way, const std::string& token);
    void showOverview(const std::string& token);

    AppLibrary& m_library;
    NotificationCenter& m_notifications;
    Scenes& m_scenes;
    std::function<void()> m_quit;
    MenuBarExtra& m_extra;
    Defaults::SubscriptionId m_subscription = 0;
    bool m_isInserted = false;
    std::string m_figure; // as the item was last told
    std::vector<MenuBarExtra::Entry> m_menu;
    QPointer<MenuBarPopover> m_popover;
    std::optional<Instant> m_closedAt;
    LibraryObserver* m_observer;
};

} // namespace quillane
