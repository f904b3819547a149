#pragma once
#include "Review/ResultAlert.h"
#include <QObject>
#include <QPointer>

namespace quillane {

class AppLibrary;
struct ContentState;

// Takes the last cleanup back, wherever in the window that was asked for, and tells the outcome in an alert.
class PutBack : public QObject {
    Q_OBJECT
  public:
    // Belongs to the window. Library and state outlive it.
    PutBack(AppLibrary& library, ContentState& state, QWidget& window);

    // Nothing happens while one or a sweep runs, and when there is nothing to take back.
    void start();
    ResultAlert* alert() const { return m_alert; } // null while there is no report

  private:
    void finish(const Uninstaller::Report& report);

    AppLibrary& m_library;
    ContentState& m_state;
    QWidget& m_window;
    QPointer<ResultAlert> m_alert;
};

} // namespace quillane
