#pragma once
#include "Calendar.h"
#include "Date.h"
#include "TaskRunner.h"
#include <chrono>
#include <cstdint>

namespace quillane {

using Duration = std::chrono::nanoseconds;
// A reading of the continuous clock, which goes on while the machine sleeps. Its zero means nothing.
using Instant = std::chrono::time_point<std::chrono::steady_clock, Duration>;

// Time. Everything that waits or prints a date asks here, so that tests own the time.
class Clock {
  public:
    using TimerId = std::uint64_t;

    virtual ~Clock() = default;
    // The wall clock. Any thread.
    virtual Date now() const = 0;
    // The user's calendar, in the time zone of this moment: asked for anew at each use, for the zone may change
    // while the program runs. Any thread.
    virtual Calendar calendar() const = 0;
    // The continuous clock. Any thread.
    virtual Instant instant() const = 0;
    // Runs `job` once on the main thread when `when` has come; at a later turn when it is already past.
    // Timers run in the order of their times, those of one time in the order of their setting.
    // Main thread only.
    virtual TimerId callAt(Instant when, Job job) = 0;
    // Takes a timer back: its job does not run any more, even when its time has come but not its turn. An id
    // that is unknown or whose job has begun is ignored. Main thread only.
    virtual void cancel(TimerId timer) = 0;
};

} // namespace quillane
