// What happens once an hour without being asked: a scan when one is due, the nudges, and the weekly reminder. Nothing
// here removes anything.
#include "AppLibrary.h"
#include "Clock.h"
#include "Defaults.h"
#include "DefaultsKeys.h"
#include "Power.h"
#include "Sleep.h"
#include <algorithm>
#include <chrono>
#include <utility>

namespace quillane {
namespace {

using namespace std::chrono_literals;

constexpr Duration kTickInterval = 3600s;
// How long a tick waits for its scan, and how often it looks.
constexpr Duration kMostForScan = 600s;
constexpr Duration kScanPoll = 2s;
// The same for the startup items.
constexpr Duration kMostForStartup = 60s;
constexpr Duration kStartupPoll = 1s;

constexpr double kSecondsPerHour = 3600;
constexpr double kSecondsPerWeek = 604'800;
constexpr Bytes kLeastToRemindOf = 500'000'001; // more than 500 MB

// In seconds. Any number of hours that a setting can hold has its product.
double scanPeriod(const Defaults& defaults) {
    const auto hours = std::max(std::int64_t{1}, defaults.integer(DefaultsKeys::kScanFrequencyHours));
    return static_cast<double>(hours) * kSecondsPerHour;
}

// When it was last. One that lies further ahead than a whole period was noted by a clock that was wrong, and would put
// everything off until then: it counts as none.
Date lastBefore(Date now, std::optional<Date> noted, double period) {
    return noted && *noted <= now.addingSeconds(period) ? *noted : Date::distantPast();
}

} // namespace

std::optional<Date> AppLibrary::lastAutomaticScan() const {
    return m_platform.defaults.date(DefaultsKeys::kLastScan);
}

void AppLibrary::setLastAutomaticScan(std::optional<Date> date) {
    if (date) {
        m_platform.defaults.set(DefaultsKeys::kLastScan, *date);
    } else {
        m_platform.defaults.clear(DefaultsKeys::kLastScan);
    }
}

void AppLibrary::startAutomationLoop() {
    if (!m_automationLoop) {
        m_automationLoop = m_tasks.start([this](StopToken stop) { return automationLoop(std::move(stop)); });
    }
}

// The next hour begins when the tick has ended.
Task<> AppLibrary::automationLoop(StopToken stop) {
    while (!stop.stopRequested()) {
        co_await Sleep(m_platform, kTickInterval, stop);
        co_await automationTick(stop);
    }
}

Task<> AppLibrary::automationTick(StopToken stop) {
    if (isScanning() || *isSweeping || m_platform.power.isLowPowerModeEnabled()) {
        co_return;
    }
    const Date now = m_platform.clock.now();
    if (isAutomaticScanDue(now)) {
        co_await scanAutomatically(now, stop);
    }
    evaluateNudges();
    remindWeekly(now);
}

bool AppLibrary::isAutomaticScanDue(Date now) const {
    const auto& defaults = m_platform.defaults;
    const double period = scanPeriod(defaults);
    const auto last = lastBefore(now, lastAutomaticScan(), period);
    return defaults.boolean(DefaultsKeys::kScheduledScans) && last.addingSeconds(period) <= now;
}

// What does not come to its end is not waited for for ever, and its moment is noted all the same: a scan that is
// stuck is not asked for anew an hour later.
Task<> AppLibrary::scanAutomatically(Date now, StopToken stop) {
    refresh(ScanReason::automatic);
    for (Duration waited = 0s; isScanning() && waited < kMostForScan; waited += kScanPoll) {
        co_await Sleep(m_platform, kScanPoll, stop);
    }
    setLastAutomaticScan(now);
    if (!*isLoadingStartup) { // each load that hangs keeps a thread
        loadStartupItems();
    }
    for (Duration waited = 0s; *isLoadingStartup && waited < kMostForStartup; waited += kStartupPoll) {
        co_await Sleep(m_platform, kStartupPoll, stop);
    }
}

void AppLibrary::remindWeekly(Date now) {
    auto& defaults = m_platform.defaults;
    if (!defaults.boolean(DefaultsKeys::kWeeklyReminder)) {
        return;
    }
    const auto last = lastBefore(now, defaults.date(DefaultsKeys::kLastReminder), kSecondsPerWeek);
    const double elapsed = now.secondsSinceReferenceDate - last.secondsSinceReferenceDate;
    if (elapsed <= kSecondsPerWeek) {
        return;
    }
    if (const Bytes reclaimable = selectedSweepBytes(); reclaimable >= kLeastToRemindOf) {
        postWeeklyReminder(reclaimable);
        defaults.set(DefaultsKeys::kLastReminder, now);
    }
}

} // namespace quillane
