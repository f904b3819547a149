#pragma once
#include "Clock.h"
#include "DeadlineWait.h"
#include "LocalCalendar.h"
#include "MainQueue.h"
#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <thread>
#include <utility>

namespace quillane {

// The machine's clocks. One thread waits for the earliest timer and posts what is due; it uses no CPU
// between. Timers that have not run when the clock is destroyed never do.
class ContinuousClock final : public Clock {
  public:
    // Timers run as jobs of this queue, which must outlive the clock.
    explicit ContinuousClock(MainQueue& mainQueue);
    ~ContinuousClock() override;
    ContinuousClock(const ContinuousClock&) = delete;
    ContinuousClock& operator=(const ContinuousClock&) = delete;

    Date now() const override;
    Calendar calendar() const override { return m_calendar.current(); }
    Instant instant() const override { return DeadlineWait::instant(); }
    TimerId callAt(Instant when, Job job) override;
    void cancel(TimerId timer) override;

  private:
    // The timers that were set and not taken back, due or not. Main thread only; shared with the posted
    // jobs, which may come after the clock has gone.
    struct Timer {
        Instant when;
        Job job;
    };
    using Timers = std::map<TimerId, Timer>;

    void watch();
    // Posts what is due and tells when the next timer is.
    std::optional<Instant> fireDue();

    MainQueue& m_mainQueue;
    const LocalCalendar m_calendar;
    std::shared_ptr<Timers> m_timers = std::make_shared<Timers>();
    TimerId m_lastTimer = 0; // main thread only
    std::mutex m_mutex;      // guards m_deadlines
    std::set<std::pair<Instant, TimerId>> m_deadlines;
    std::atomic<bool> m_stopping = false;
    DeadlineWait m_wait;
    std::thread m_thread; // last: begins when all else stands
};

} // namespace quillane
