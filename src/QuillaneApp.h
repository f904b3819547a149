#pragma once
#include "AppLibrary.h"
#include "NotificationCenter.h"
#include "Notifier.h"
#include "Platform.h"
#include "Shell/ContentView.h"
#include <QPointer>
#include <string>

namespace quillane {

// The application: the one library, what steers the window, what answers the desktop's notifications, and the window
// itself, which may be closed and opened again while the library lives on. Main thread only; there is one at a time.
class QuillaneApp {
  public:
    // The ports outlive the application.
    explicit QuillaneApp(const Platform& platform);
    ~QuillaneApp();
    QuillaneApp(const QuillaneApp&) = delete;
    QuillaneApp& operator=(const QuillaneApp&) = delete;

    // Opens the window, or brings the one that is open to the front, out of the dock too. With what the desktop gave
    // for it along with a click or a start; empty for nothing.
    void showWindow(const std::string& activationToken = {});
    // Null while it is closed.
    ContentView* window() const;

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
    QPointer<ContentView> m_window; // deletes itself when it is closed
};

} // namespace quillane
