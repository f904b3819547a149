#pragma once
#include "Calendar.h"
#include "Clock.h"
#include "StepTaskRunner.h"
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

namespace quillane {

// Time that stands still until the test moves it. The wall clock moves along with the continuous one and can
// be set apart from it.
class ManualClock final : public Clock {
  public:
    explicit ManualClock(StepTaskRunner& runner, const std::string& timeZone = "GMT");
    ~ManualClock() override { m_timers->clear(); }
    ManualClock(const ManualClock&) = delete;
    ManualClock& operator=(const ManualClock&) = delete;

    Date now() const override { return m_now; }
    Calendar calendar() const override { return m_calendar; }
    Instant instant() const override { return m_instant; }
    TimerId callAt(Instant when, Job job) override;
    void cancel(TimerId timer) override;

    // The wall clock alone, as when the user sets it.
    void setNow(Date now) { m_now = now; }
    void setCalendar(const std::string& timeZone) { m_calendar = Calendar(timeZone); }

    // Moves both clocks, stopping at each deadline on the way. At each, and before and after, everything that
    // can run runs, so that chains of sleeps advance as they would.
    void advance(Duration duration);
    // The same without running anything: timers that come due are posted only.
    void advanceWithoutRunning(Duration duration);

    // Timers that were set and have neither come due nor been taken back.
    std::size_t sleepers() const { return m_deadlines.size(); }

  private:
    struct Timer {
        Instant when;
        Job job;
    };
    using Timers = std::map<TimerId, Timer>;

    void moveTo(Instant when);
    // Moves to the next deadline if it comes by `end`, and posts its job.
    bool fireNextBy(Instant end);

    StepTaskRunner& m_runner;
    Calendar m_calendar;
    Date m_now = Date::fromUnix(1'700'000'000); // 2023-11-14 22:13:20 UTC
    Instant m_instant{std::chrono::hours(1)};
    TimerId m_lastTimer = 0;
    std::shared_ptr<Timers> m_timers = std::make_shared<Timers>();
    std::set<std::pair<Instant, TimerId>> m_deadlines;
};

} // namespace quillane
