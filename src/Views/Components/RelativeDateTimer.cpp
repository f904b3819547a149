#include "Components/RelativeDateTimer.h"
#include <array>
#include <utility>

namespace quillane {

namespace {

using namespace std::chrono_literals;

constexpr Duration kTolerance = 100ms;
// How far ahead is looked, the nearest first: the words change every second, minute or hour, or more seldom.
constexpr std::array<Duration, 3> kHorizons = {1s, 1min, 1h};

Date later(Date date, Duration duration) {
    return date.addingSeconds(std::chrono::duration<double>(duration).count());
}

} // namespace

RelativeDateTimer::RelativeDateTimer(Clock& clock, std::function<void()> changed)
    : m_clock(clock)
    , m_changed(std::move(changed)) {}

RelativeDateTimer::~RelativeDateTimer() {
    stop();
}

void RelativeDateTimer::follow(Date date) {
    stop();
    m_date = date;
    wait();
}

void RelativeDateTimer::stop() {
    if (const auto timer = std::exchange(m_timer, std::nullopt)) {
        m_clock.cancel(*timer);
    }
}

void RelativeDateTimer::wait() {
    const Duration pause = untilWordsChange(m_date, m_clock.now(), m_clock.calendar());
    m_timer = m_clock.callAt(m_clock.instant() + pause, [this] {
        wait();
        m_changed();
    });
}

Duration RelativeDateTimer::untilWordsChange(Date date, Date now, const Calendar& calendar) {
    const auto words = calendar.relativeDescription(date, now);
    const auto isOther = [&](Duration after) {
        return calendar.relativeDescription(date, later(now, after)) != words;
    };
    for (const Duration horizon : kHorizons) {
        if (!isOther(horizon)) {
            continue;
        }
        Duration same{0};
        Duration other = horizon;
        while (other - same > kTolerance) {
            const Duration middle = same + (other - same) / 2;
            (isOther(middle) ? other : same) = middle;
        }
        return other;
    }
    return kHorizons.back();
}

} // namespace quillane
