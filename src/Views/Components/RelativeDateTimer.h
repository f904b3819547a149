#pragma once
#include "Clock.h"
#include <functional>
#include <optional>

namespace quillane {

// Calls back each time the words for a date, such as "2 minutes ago", have become others. Waits for the next
// change and not for ticks: an hour apart at most, so that a wall clock that was set is noticed. Main thread only.
class RelativeDateTimer {
  public:
    // The clock outlives the timer. `changed` must not destroy it.
    RelativeDateTimer(Clock& clock, std::function<void()> changed);
    ~RelativeDateTimer();
    RelativeDateTimer(const RelativeDateTimer&) = delete;
    RelativeDateTimer& operator=(const RelativeDateTimer&) = delete;

    // This date from now on, in place of any other.
    void follow(Date date);
    void stop();

    // From `now` until the words for `date` change, never early and at most a tenth of a second late; an hour
    // when they stay for that long.
    static Duration untilWordsChange(Date date, Date now, const Calendar& calendar);

  private:
    void wait();

    Clock& m_clock;
    std::function<void()> m_changed;
    Date m_date;
    std::optional<Clock::TimerId> m_timer;
};

} // namespace quillane
