#pragma once
#include "AppLibrary.h"
#include "NotificationCenter.h"
#include "Platform.h"
#include "Shell/ContentView.h"
#include <QPointer>

namespace quillane {

// The application: the one library, what steers the window, and the window itself, which may be closed and
// opened again while the library lives on. Main thread only; there is one at a time.
class QuillaneApp {
  public:
    // The ports outlive the application.
    explicit QuillaneApp(const Platform& platform);
    ~QuillaneApp();
    QuillaneApp(const QuillaneApp&) = delete;
    QuillaneApp& operator=(const QuillaneApp&) = delete;

    // Opens the window, or brings the one that is open to the front.
    void showWindow();
    // Null while it is closed.
    ContentView* window() const;

    AppLibrary& library() { return m_library; }
    NotificationCenter& notifications() { return m_notifications; }

  private:
    // What the library reads goes after it, what reads the library goes before it.
    const Platform m_platform;
    NotificationCenter m_notifications;
    AppLibrary m_library;
    QPointer<ContentView> m_window; // deletes itself when it is closed
};

} // namespace quillane
