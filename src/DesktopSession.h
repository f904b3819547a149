#pragma once
#include "ContinuousClock.h"
#include "DesktopLook.h"
#include "MainQueue.h"
#include "QtMainLoop.h"
#include "TimeZoneWatch.h"
#include <optional>

class QApplication;

namespace quillane {

class TaskRunner;

// The program's name, icon and desktop file, by which desktops match its windows, dialogs and notifications to what
// is installed. Before the first window.
void introduceToDesktop();

// What a program with a window stands on, besides its ports: the look, time, and Qt's loop as the main
// thread. Made after the QApplication and before the task runner, which posts to its queue.
class DesktopSession {
  public:
    explicit DesktopSession(QApplication& application);
    DesktopSession(const DesktopSession&) = delete;
    DesktopSession& operator=(const DesktopSession&) = delete;

    MainQueue& mainQueue() { return m_mainQueue; }
    ContinuousClock& clock() { return m_clock; }
    // From now on the window looks as the desktop wants it (DesktopLook), and tells dates in the time zone that the
    // machine has.
    // Stop before the runner goes.
    void followDesktop(TaskRunner& tasks);
    void stopFollowing();

  private:
    MainQueue m_mainQueue;
    QtMainLoop m_loop{m_mainQueue};
    ContinuousClock m_clock{m_mainQueue};
    std::optional<DesktopLook> m_look;
    std::optional<TimeZoneWatch> m_timeZone;
};

} // namespace quillane
