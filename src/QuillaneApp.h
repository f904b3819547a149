#pragma once
#include "AppLibrary.h"
#include "NotificationCenter.h"
#include "Notifier.h"
#include "Platform.h"
#include "Settings/SettingsView.h"
#include "Shell/ContentView.h"
#include "State/Scenes.h"
#include "UpdaterController.h"
#include <QPointer>
#include <string>

namespace quillane {

// The application: the one library, what steers the window, what answers the desktop's notifications, and the
// windows, which may be closed and opened again while the library lives on. Main thread only; there is one at a time.
class QuillaneApp final : public Scenes {
  public:
    // The ports outlive the application.
    explicit QuillaneApp(const Platform& platform);
    ~QuillaneApp();

    void showWindow(const std::string& activationToken = {}) override;
    void showSettings(SettingsTab tab) override;
    UpdaterController& updater() override { return m_updater; }
    // Null while it is closed.
    ContentView* window() const;
    SettingsView* settings() const;

    AppLibrary& library() { return m_library; }
    NotificationCenter& notifications() { return m_notifications; }

  private:
    // What the library reads goes after it, what reads the library goes before it.
    const Platform m_platform;
    NotificationCenter m_notifications;
    AppLibrary m_library;
    // Made with the application and so before the first window: a member rather than a global, as it needs the ports.
    Notifier m_notifier{m_platform.notifications, m_notifications,
                        [this](const std::string& token) { showWindow(token); }};
    UpdaterController m_updater{m_platform.updater};
    QPointer<ContentView> m_window;    // deletes itself when it is closed
    QPointer<SettingsView> m_settings; // so does this
};

} // namespace quillane
