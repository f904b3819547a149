#pragma once
#include "Clock.h"
#include "FeedSource.h"
#include "UpdatePresenter.h"
#include "Updater.h"
#include "VersionNumber.h"
#include <memory>
#include <variant>

namespace quillane {

class Defaults;
class TaskRunner;

// Looks for newer versions in a signed feed (UpdateFeed) and shows them. It fetches nothing but the feed and installs
// nothing. What is not signed, can't be read or is older than what was read before changes nothing of what is kept, and
// is told to nobody but a person who has asked. Main thread only.
//
// While automatic checks are on there is one a day, by the continuous clock: a minute after the start, or when the last
// one is a day ago. One that fails is tried once more after an hour, since a machine that wakes has no network yet. Each
// version is shown once unasked, and always to a person who asks.
class FeedUpdater final : public Updater {
  public:
    static constexpr Duration kAfterStart = std::chrono::minutes(1);
    static constexpr Duration kPeriod = std::chrono::hours(24);
    static constexpr Duration kUntilRetry = std::chrono::hours(1);

    // All of them outlive it.
    struct Ports {
        FeedSource& source;
        UpdatePresenter& presenter;
        Defaults& settings; // those of UpdateSettings
        Clock& clock;
        TaskRunner& tasks;
    };

    // `publicKey` is that of UpdateFeed::read. Asks nobody yet.
    FeedUpdater(VersionNumber installed, std::string publicKey, const Ports& ports);
    ~FeedUpdater() override;
    FeedUpdater(const FeedUpdater&) = delete;
    FeedUpdater& operator=(const FeedUpdater&) = delete;

    bool automaticallyChecksForUpdates() const override;
    // Switched off it also ends an automatic check that runs.
    void setAutomaticallyChecksForUpdates(bool isOn) override;
    bool canCheckForUpdates() const override { return !m_running; }
    // Of the last check that told something: one that fails leaves it.
    std::optional<Date> lastUpdateCheckDate() const override;
    void checkForUpdates() override;
    std::optional<std::string> installedVersion() const override { return m_installed.text(); }
    void setChangeHandler(std::function<void()> changed) override { m_changed = std::move(changed); }

  private:
    using Asked = UpdatePresenter::Asked;
    using Finding = std::variant<AppUpdate, UpdatePresenter::Failure>;

    void check(Asked asked);
    void checkByItself();
    void end(Asked asked, const FeedSource::Answer& answer);
    void cancel(Asked asked);
    Finding judge(const FeedSource::Answer& answer) const;
    bool isOlderThanSeen(const AppUpdate& update) const;
    std::optional<VersionNumber> kept(std::string_view key) const;
    void keep(const AppUpdate& update);
    void present(const AppUpdate& update, Asked asked);
    void presentFailure(UpdatePresenter::Failure failure, Asked asked);
    // The next automatic check, if they are on; the one that was planned is not.
    void plan(Duration wait);
    void planFirst();
    void planAfterFailure();
    void drop();
    void tellOfChange();

    const VersionNumber m_installed;
    const std::string m_publicKey;
    Ports m_ports;
    std::optional<Asked> m_running; // the check
    std::optional<Clock::TimerId> m_timer;
    bool m_wasRetried = false; // the automatic check that failed
    std::function<void()> m_changed;
    // What is posted holds it weakly, and so do cancels that were handed out.
    std::shared_ptr<FeedUpdater*> m_self = std::make_shared<FeedUpdater*>(this);
};

} // namespace quillane
