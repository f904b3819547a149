#pragma once
#include "Clock.h"
#include <memory>
#include <optional>

namespace quillane {

// The system's continuous clock, and one thread's wait on it.
class DeadlineWait {
  public:
    DeadlineWait();
    ~DeadlineWait();
    DeadlineWait(const DeadlineWait&) = delete;
    DeadlineWait& operator=(const DeadlineWait&) = delete;

    // The continuous clock: time that the machine slept counts. Any thread.
    static Instant instant();
    // Blocks without using CPU until the deadline has come or interrupt() was called since the last wait
    // ended; may also return early. Without a deadline waits for interrupt() alone. One thread at a time.
    void wait(std::optional<Instant> deadline);
    // Any thread.
    void interrupt();

  private:
    struct System;
    std::unique_ptr<System> m_system;
};

} // namespace quillane
