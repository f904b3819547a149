#pragma once
#include "Clock.h"
#include <QObject>
#include <chrono>
#include <functional>
#include <optional>

namespace quillane {

class AppLibrary;
class LibraryObserver;

// When the program ends. It goes on while a window is open, and without one only while a person can see it in the panel
// or the dock and reach it there. Whoever ends it, a sweep or a put back that runs comes to its end first. Main thread only.
class ProgramLife final : public QObject {
  public:
    // The library outlives it. `hasWindow` tells whether a window is open; `end` ends the program.
    ProgramLife(AppLibrary& library, std::function<bool()> hasWindow, std::function<void()> end);
    ~ProgramLife() override;

    // How long a program without a window waits for the panel to come back: panels are started anew within seconds.
    static constexpr std::chrono::seconds kPanelMayBeAway{60};

    // The system shows the program for as long as it runs, so that it ends only when somebody quits it.
    void liveInDock() { m_isInDock = true; }

    // A window is about to open. The user wants the program again: a quit that waits is taken back.
    void windowOpens();
    void windowHasClosed();
    // The item in the panel may have come or gone.
    void itemHasChanged();
    // Ends the program, now or when what must not be broken off has ended.
    void quit();
    // True from the moment when the end is asked for, which nothing takes back.
    bool hasEnded() const { return m_hasEnded; }

  protected:
    // Every other wish to quit: of a key, of the system, of the end of the session.
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    bool isBusy() const;
    bool isWanted() const;
    bool isShown() const;
    void endIfFree();
    void waitForPanel();
    void stopWaiting();

    AppLibrary& m_library;
    std::function<bool()> m_hasWindow;
    std::function<void()> m_end;
    bool m_isInDock = false;
    bool m_hadWindow = false;
    bool m_isQuitting = false;
    bool m_hasEnded = false;
    std::optional<Clock::TimerId> m_wait; // set while the program waits for a panel
    LibraryObserver* m_observer;
};

} // namespace quillane
