#pragma once
#include "WakePipe.h"
#include <QSocketNotifier>
#include <functional>

namespace quillane {

// Hears when the system or a person in a terminal asks the program to end (SIGTERM, SIGINT, SIGHUP), so that it can end
// as by its own command. Each of them is heard once: who asks again ends it at once. One that was ignored when the
// program began stays ignored. One object at a time, on the main thread; when it goes all is as it was.
class EndSignals final {
  public:
    // `asked` is called on the main thread, at a later turn.
    explicit EndSignals(std::function<void()> asked);
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

  private:
    WakePipe m_pipe;
    QSocketNotifier m_notifier;
};

} // namespace quillane
