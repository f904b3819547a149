#pragma once
#include "Updater.h"
#include <memory>
#include <string>

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

  private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace quillane
