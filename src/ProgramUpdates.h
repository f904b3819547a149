#pragma once
#include "Updater.h"
#include <functional>
#include <memory>
#include <string>

class QWidget;

namespace quillane {

class Clock;
class TaskRunner;

// What looks for newer versions of this program, as it was set up when it was built: by the feed that was named then,
// or not at all. One source for each; the build chooses. Keeps what it knows in a file of its own beside the settings
// of the person whose home this is. Main thread only.
class ProgramUpdates {
  public:
    // The clock and the tasks outlive it. The application stands already.
    ProgramUpdates(Clock& clock, TaskRunner& tasks, const std::string& home);
    ~ProgramUpdates();
    ProgramUpdates(const ProgramUpdates&) = delete;
    ProgramUpdates& operator=(const ProgramUpdates&) = delete;

    Updater& updater();
    // Is told of each window in which an update is shown, when it is about to open, and whether a person asked for it.
    void setOpening(const std::function<void(QWidget& window, bool isAskedFor)>& opening);

  private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace quillane
