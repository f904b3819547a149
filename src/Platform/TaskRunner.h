#pragma once
#include <functional>

namespace quillane {

// How much a piece of work matters. The adapters map it to the system's classes of service.
enum class Priority {
    userInitiated, // the user waits for it
    utility,       // the user sees its progress
    background     // nobody waits: lower CPU and I/O priority
};

using Job = std::function<void()>;

// Where work runs: pools of threads, one for each priority, and the main thread.
class TaskRunner {
  public:
    virtual ~TaskRunner() = default;
    // Any thread. Runs the job on a pool of that priority: jobs of one pool begin in the order of the calls
    // and run side by side up to the pool's limit, so a job must not wait for another of its own pool. A
    // runner that stops drops what has not begun. Jobs don't throw.
    virtual void run(Priority priority, Job job) = 0;
    // Any thread. Runs the job on the main thread at a later turn, first in first out, never inside the call.
    virtual void post(Job job) = 0;
};

} // namespace quillane
