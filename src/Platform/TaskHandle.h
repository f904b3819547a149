#pragma once
#include "StopToken.h"

namespace quillane {

// A root task that was started in a TaskScope. Copies stand for the same task; dropping the handle changes
// nothing. It has no equality, so that a published handle always notifies.
class TaskHandle {
  public:
    // Asks the task to stop: its sleeps end and its jobs see the request. The task itself goes on until it
    // looks. Main thread only; never resumes the task inside the call.
    void cancel() const { m_stop.requestStop(); }
    bool isCancelled() const { return m_stop.stopRequested(); }

  private:
    friend class TaskScope;
    StopSource m_stop;
};

} // namespace quillane
