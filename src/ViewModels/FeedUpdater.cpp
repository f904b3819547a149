#include "FeedUpdater.h"
#include "Defaults.h"
#include "TaskRunner.h"
#include "UpdateFeed.h"
#include "UpdateSettings.h"
#include <algorithm>
#include <utility>

namespace quillane {
namespace {

using Failure = UpdatePresenter::Failure;

Failure reasonOf(FeedSource::Failure failure) {
    return failure == FeedSource::Failure::unreachable ? Failure::unreachable : Failure::unreadable;
}

Failure reasonOf(UpdateFeed::Fault fault) {
    return fault == UpdateFeed::Fault::notSigned ? Failure::notSigned : Failure::unreadable;
}

// Nothing is left when the last check lies a whole period back, or ahead: a clock that was set back must not put the
// next one off.
Duration leftOf(Duration period, std::optional<Date> last, Date now) {
    const double whole = std::chrono::duration<double>(period).count();
    const double elapsed = last ? now.secondsSinceReferenceDate - last->secondsSinceReferenceDate : whole;
    return elapsed >= 0 && elapsed < whole
               ? std::chrono::duration_cast<Duration>(std::chrono::duration<double>(whole - elapsed))
               : Duration::zero();
}

} // namespace

FeedUpdater::FeedUpdater(VersionNumber installed, std::string publicKey, const Ports& ports)
    : m_installed(std::move(installed))
    , m_publicKey(std::move(publicKey))
    , m_ports(ports) {
    planFirst();
}

FeedUpdater::~FeedUpdater() {
    drop();
    m_ports.source.stop();
}

bool FeedUpdater::automaticallyChecksForUpdates() const {
    return m_ports.settings.boolean(UpdateSettings::kAutomaticallyChecks);
}

void FeedUpdater::setAutomaticallyChecksForUpdates(bool isOn) {
    if (isOn == automaticallyChecksForUpdates()) {
        return;
    }
    m_ports.settings.set(UpdateSettings::kAutomaticallyChecks, isOn);
    if (!isOn) {
        cancel(Asked::byItself);
    }
    m_wasRetried = false;
    planFirst();
}

std::optional<Date> FeedUpdater::lastUpdateCheckDate() const {
    return m_ports.settings.date(UpdateSettings::kLastCheck);
}

void FeedUpdater::checkForUpdates() {
    if (m_running) {
        return;
    }
    m_ports.presenter.showChecking([self = std::weak_ptr(m_self)] {
        if (const auto updater = self.lock()) {
            (*updater)->cancel(Asked::byPerson);
        }
    });
    check(Asked::byPerson);
}

void FeedUpdater::checkByItself() {
    m_timer.reset();
    if (m_running) {
        return; // the person's own, whose end plans the next one
    }
    check(Asked::byItself);
}

void FeedUpdater::check(Asked asked) {
    m_running = asked;
    m_ports.source.fetch(UpdateFeed::kMostBytes, [this, asked](const auto& answer) { end(asked, answer); });
    tellOfChange();
}

void FeedUpdater::cancel(Asked asked) {
    if (m_running != asked) {
        return;
    }
    m_ports.source.stop();
    m_running.reset();
    planAfterFailure();
    tellOfChange();
}

void FeedUpdater::end(Asked asked, const FeedSource::Answer& answer) {
    m_running.reset();
    const auto finding = judge(answer);
    if (const auto* const update = std::get_if<AppUpdate>(&finding)) {
        keep(*update);
        m_wasRetried = false;
        plan(kPeriod);
        present(*update, asked);
    } else {
        planAfterFailure();
        presentFailure(std::get<Failure>(finding), asked);
    }
    tellOfChange();
}

FeedUpdater::Finding FeedUpdater::judge(const FeedSource::Answer& answer) const {
    if (const auto* const failure = std::get_if<FeedSource::Failure>(&answer)) {
        return reasonOf(*failure);
    }
    auto read = UpdateFeed::read(std::get<std::string>(answer), m_publicKey);
    if (const auto* const fault = std::get_if<UpdateFeed::Fault>(&read)) {
        return reasonOf(*fault);
    }
    auto& update = std::get<AppUpdate>(read);
    if (isOlderThanSeen(update)) {
        return Failure::outdated;
    }
    return std::move(update);
}

bool FeedUpdater::isOlderThanSeen(const AppUpdate& update) const {
    const auto version = kept(UpdateSettings::kNewestVersion);
    const auto date = m_ports.settings.date(UpdateSettings::kNewestDate);
    return (version && update.version < *version) || (date && update.date < *date);
}

std::optional<VersionNumber> FeedUpdater::kept(std::string_view key) const {
    const auto value = m_ports.settings.value(key);
    const auto* const text = value ? std::get_if<std::string>(&*value) : nullptr;
    return text != nullptr ? VersionNumber::parse(*text) : std::nullopt;
}

void FeedUpdater::keep(const AppUpdate& update) {
    m_ports.settings.set(UpdateSettings::kNewestVersion, update.version.text());
    m_ports.settings.set(UpdateSettings::kNewestDate, update.date);
    m_ports.settings.set(UpdateSettings::kLastCheck, m_ports.clock.now());
}

void FeedUpdater::present(const AppUpdate& update, Asked asked) {
    if (update.version <= m_installed) {
        if (asked == Asked::byPerson) {
            m_ports.presenter.showUpToDate(m_installed);
        }
        return;
    }
    const auto shown = kept(UpdateSettings::kShownVersion);
    if (asked == Asked::byItself && shown && update.version <= *shown) {
        return;
    }
    m_ports.settings.set(UpdateSettings::kShownVersion, update.version.text());
    m_ports.presenter.showUpdate(update, m_installed, asked);
}

void FeedUpdater::presentFailure(Failure failure, Asked asked) {
    if (asked == Asked::byPerson) {
        m_ports.presenter.showFailure(failure);
    }
}

void FeedUpdater::planFirst() {
    plan(std::max(kAfterStart, leftOf(kPeriod, lastUpdateCheckDate(), m_ports.clock.now())));
}

// What a person's check did to the plan, if anything, was to stand in its way.
void FeedUpdater::planAfterFailure() {
    if (m_timer) {
        return;
    }
    plan(m_wasRetried ? kPeriod : kUntilRetry);
    m_wasRetried = !m_wasRetried;
}

void FeedUpdater::plan(Duration wait) {
    drop();
    if (automaticallyChecksForUpdates()) {
        m_timer = m_ports.clock.callAt(m_ports.clock.instant() + wait, [this] { checkByItself(); });
    }
}

void FeedUpdater::drop() {
    if (const auto timer = std::exchange(m_timer, std::nullopt)) {
        m_ports.clock.cancel(*timer);
    }
}

void FeedUpdater::tellOfChange() {
    m_ports.tasks.post([self = std::weak_ptr(m_self)] {
        const auto updater = self.lock();
        if (updater && (*updater)->m_changed) {
            (*updater)->m_changed();
        }
    });
}

} // namespace quillane
