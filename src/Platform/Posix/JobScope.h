#pragma once

namespace quillane {

// Held around each job of a thread that no framework of the system runs. What the system's calls leave to be let go
// later goes with it: without one it would stay as long as the thread. Each system's own; nothing happens on one that has
// no such thing. Destroyed on the thread that made it, in the reverse order of making.
class JobScope {
  public:
    JobScope();
    ~JobScope(); // NOLINT(performance-trivially-destructible): other systems have something to do
    JobScope(const JobScope&) = delete;
    JobScope& operator=(const JobScope&) = delete;

  private:
    [[maybe_unused]] void* m_pool; // the system's token
};

} // namespace quillane
