#pragma once
#include "AppLibrary.h"
#include "MenuBar/MenuBarItem.h"
#include "NotificationCenter.h"
#include "Notifier.h"
#include "Platform.h"
#include "ProgramLife.h"
#include "Settings/SettingsView.h"
#include "Shell/ContentView.h"
#include "State/Scenes.h"
#include "UpdaterController.h"
#include <QPointer>
#include <functional>
#include <string>

namespace quillane {

// The application: the one library, what steers the window, what answers the desktop's notifications, the item in the
// menu bar, and the windows, which may be closed and opened again while the library lives on. Main thread only; there
// is one at a time.
class QuillaneApp final : public Scenes {
  public:
    // Ends the event loop of the program.
    static void endProgram();
    // The ports outlive the application. It calls `end` when the program is to end: ProgramLife says when.
    explicit QuillaneApp(const Platform& platform, std::function<void()> end = endProgram);
    ~QuillaneApp();

    void showWindow(const std::string& activationToken = {}) override;
    void showSettings(SettingsTab tab) override;
    UpdaterController& updater() override { return m_updater; }
    // Another window, which is about to open and deletes itself when it is closed: the program goes on while it is open.
    // One that nobody has asked for takes no quit back.
    void countWindow(QWidget& window, bool isAskedFor);
    // Null while it is closed.
    ContentView* window() const;
    MenuBarItem& menuBarItem() { return m_item; }
    SettingsView* settings() const;

    AppLibrary& library() { return m_library; }
    NotificationCenter& notifications() { return m_notifications; }

    // For a system that shows the program in its dock for as long as it runs. It goes on without a window then until
    // somebody quits it, and opens one when it becomes active without: so a click in the dock is told.
    void liveInDock();

    void quit() { m_life.quit(); }
    // True once the end was asked for: no window opens any more that anybody would see.
    bool hasEnded() const { return m_life.hasEnded(); }

  private:
    bool hasWindow() const;
    // Takes in what was typed into a window and not ended.
    void finishInput();
    void makeWindow();
    // Of a window that is about to open, and that deletes itself when it is closed.
    void follow(QWidget& window);

    // What the library reads goes after it, what reads the library goes before it.
    const Platform m_platform;
    NotificationCenter m_notifications;
    AppLibrary m_library;
    // Made with the application and so before the first window: a member rather than a global, as it needs the ports.
    Notifier m_notifier{m_platform.notifications, m_notifications,
                        [this](const std::string& token) { showWindow(token); }};
    UpdaterController m_updater{m_platform.updater};
    ProgramLife m_life;
    MenuBarItem m_item;
    QPointer<ContentView> m_window;    // deletes itself when it is closed
    QPointer<SettingsView> m_settings; // so does this
    QPointer<QWidget> m_other;         // and this, which is counted only
};

} // namespace quillane
