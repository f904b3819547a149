#pragma once
#include "Clock.h"

namespace quillane {

// A clock that stands still, for what asks for nothing but the date: timers never fire.
class StandingClock final : public Clock {
  public:
    explicit StandingClock(Date now = Date{800'000'000})
        : m_now(now) {}

    Date now() const override { return m_now; }
    const Calendar& calendar() const override { return m_calendar; }
    Instant instant() const override { return {}; }
    TimerId callAt(Instant /*when*/, Job /*job*/) override { return 0; }
    void cancel(TimerId /*timer*/) override {}

  private:
    Date m_now;
    Calendar m_calendar{"GMT"};
};

} // namespace quillane
