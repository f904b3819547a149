#pragma once
#include "MainQueue.h"
#include "WakePipe.h"
#include <QSocketNotifier>

namespace quillane {

// Lets Qt's event loop run the jobs of a MainQueue: a post makes a pipe readable, the loop sees it, and each
// time the jobs that wait then are run, so that painting and input get their turn between. Made and
// destroyed on the main thread, after the QCoreApplication and before it goes. The queue must outlive it.
class QtMainLoop final {
  public:
    explicit QtMainLoop(MainQueue& queue);
    ~QtMainLoop();
    QtMainLoop(const QtMainLoop&) = delete;
    QtMainLoop& operator=(const QtMainLoop&) = delete;

  private:
    MainQueue& m_queue;
    WakePipe m_pipe;
    QSocketNotifier m_notifier;
};

} // namespace quillane
