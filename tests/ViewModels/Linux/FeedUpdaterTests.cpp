#include "FakeFeedSource.h"
#include "FeedSigner.h"
#include "FeedUpdater.h"
#include "ManualClock.h"
#include "MemoryDefaults.h"
#include "StepTaskRunner.h"
#include "UpdateFeed.h"
#include "UpdateSettings.h"
#include "UpdaterController.h"
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace quillane;
using namespace std::chrono_literals;
using Asked = UpdatePresenter::Asked;
using Failure = UpdatePresenter::Failure;

namespace {

const std::string kNewsDate = "2023-11-20T08:00:00Z";
const std::vector<std::string> kUpToDate = {"checking", "up to date with 1.2"};

std::string announcement(const std::string& version, const std::string& date = kNewsDate) {
    return R"({"version": ")" + version + R"(", "date": ")" + date + R"(", "page": "https://example.org/"})";
}

class Notes final : public UpdatePresenter {
  public:
    void showChecking(std::function<void()> end) override {
        shown.emplace_back("checking");
        cancel = std::move(end);
    }
    void showUpdate(const AppUpdate& update, const VersionNumber& installed, Asked asked) override {
        shown.push_back(update.version.text() + " instead of " + installed.text() +
                        (asked == Asked::byItself ? ", unasked" : ""));
    }
    void showUpToDate(const VersionNumber& installed) override {
        shown.push_back("up to date with " + installed.text());
    }
    void showFailure(Failure failure) override {
        shown.emplace_back("failure");
        failures.push_back(failure);
    }

    std::vector<std::string> shown;
    std::vector<Failure> failures;
    std::function<void()> cancel;
};

class FeedUpdaterTest : public testing::Test {
  protected:
    void launch() {
        m_updater.reset();
        m_updater = std::make_unique<FeedUpdater>(
            *VersionNumber::parse("1.2"), m_signer.publicKey(),
            FeedUpdater::Ports{m_source, m_presenter, m_settings, m_clock, m_runner});
    }
    // With automatic checks, at a moment when the first one is due.
    void launchWithChecks() {
        m_settings.set(UpdateSettings::kAutomaticallyChecks, true);
        launch();
    }
    void answer(FeedSource::Answer answer) {
        m_source.answer(std::move(answer));
        m_runner.settle();
    }
    void announce(const std::string& version, const std::string& date = kNewsDate) {
        answer(m_signer.feed(announcement(version, date)));
    }
    // The person asks, and this is what is found.
    void ask(const FeedSource::Answer& found) {
        m_updater->checkForUpdates();
        answer(found);
    }
    void askAndAnnounce(const std::string& version, const std::string& date = kNewsDate) {
        ask(m_signer.feed(announcement(version, date)));
    }
    // Whether time leads to a fetch right at the end of this, and not before.
    bool isDueAfter(Duration duration) {
        const int before = m_source.fetches;
        m_clock.advance(duration - 1ms);
        if (m_source.fetches != before) {
            return false;
        }
        m_clock.advance(1ms);
        return m_source.fetches == before + 1;
    }
    // Shows the failure to the person, and keeps what was known.
    void expectFailure(const FeedSource::Answer& found, Failure failure) {
        const auto last = m_updater->lastUpdateCheckDate();
        const auto version = m_settings.value(UpdateSettings::kNewestVersion);
        const auto date = m_settings.date(UpdateSettings::kNewestDate);
        m_clock.setNow(m_clock.now().addingSeconds(100));
        m_presenter.shown.clear();
        ask(found);
        EXPECT_EQ(m_presenter.shown, (std::vector<std::string>{"checking", "failure"}));
        ASSERT_FALSE(m_presenter.failures.empty());
        EXPECT_EQ(m_presenter.failures.back(), failure);
        EXPECT_EQ(m_updater->lastUpdateCheckDate(), last);
        EXPECT_EQ(m_settings.value(UpdateSettings::kNewestVersion), version);
        EXPECT_EQ(m_settings.date(UpdateSettings::kNewestDate), date);
        EXPECT_TRUE(m_updater->canCheckForUpdates());
    }

    StepTaskRunner m_runner;
    ManualClock m_clock{m_runner};
    MemoryDefaults m_settings;
    FakeFeedSource m_source{m_runner};
    Notes m_presenter;
    FeedSigner m_signer;
    std::unique_ptr<FeedUpdater> m_updater;
};

} // namespace

TEST_F(FeedUpdaterTest, ANewerVersionIsShownToWhoAsks) {
    launch();
    askAndAnnounce("1.10");
    EXPECT_EQ(m_presenter.shown, (std::vector<std::string>{"checking", "1.10 instead of 1.2"}));
    EXPECT_EQ(m_updater->lastUpdateCheckDate(), m_clock.now());
    askAndAnnounce("1.10");
    EXPECT_EQ(m_presenter.shown.back(), "1.10 instead of 1.2") << "as often as it is asked for";
    EXPECT_EQ(m_presenter.shown.size(), 4U);
}

TEST_F(FeedUpdaterTest, WhatIsNotNewerIsToldAsTheNewest) {
    for (const char* version : {"1.2", "1.2.0", "1.1.9", "0.9"}) {
        m_settings = MemoryDefaults();
        launch();
        m_presenter.shown.clear();
        askAndAnnounce(version);
        EXPECT_EQ(m_presenter.shown, kUpToDate) << version;
        EXPECT_EQ(m_updater->lastUpdateCheckDate(), m_clock.now()) << version;
    }
}

TEST_F(FeedUpdaterTest, ThePersonIsToldWhyACheckFailedAndTheDateStaysThatOfTheLastGoodOne) {
    launch();
    askAndAnnounce("1.2");
    const std::string feed = m_signer.feed(announcement("1.3"));
    auto forged = feed;
    forged[forged.size() - 3] ^= 1;
    expectFailure(FeedSource::Failure::unreachable, Failure::unreachable);
    expectFailure(FeedSource::Failure::noPage, Failure::unreadable);
    expectFailure(FeedSource::Failure::tooLarge, Failure::unreadable);
    expectFailure(std::string(UpdateFeed::kMostBytes + 1, 'a'), Failure::unreadable);
    expectFailure(std::string(), Failure::notSigned);
    expectFailure(forged, Failure::notSigned);
    expectFailure(FeedSigner(2).feed(announcement("1.3")), Failure::notSigned);
    expectFailure(announcement("1.3"), Failure::notSigned);
    expectFailure(m_signer.feed("{"), Failure::unreadable);
    expectFailure(m_signer.feed(announcement("1.x")), Failure::unreadable);
}

TEST_F(FeedUpdaterTest, WhatIsOlderThanWhatWasReadBeforeIsBelievedNoMore) {
    launch();
    askAndAnnounce("1.4");
    expectFailure(m_signer.feed(announcement("1.3")), Failure::outdated);
    expectFailure(m_signer.feed(announcement("1.2")), Failure::outdated);
    expectFailure(m_signer.feed(announcement("1.5", "2023-11-20T07:59:59Z")), Failure::outdated);
    expectFailure(m_signer.feed(announcement("1.3", "2023-12-24T00:00:00Z")), Failure::outdated);
    launch();
    expectFailure(m_signer.feed(announcement("1.3")), Failure::outdated);
    m_presenter.shown.clear();
    askAndAnnounce("1.4");
    EXPECT_EQ(m_presenter.shown.back(), "1.4 instead of 1.2") << "the same is no older";
    askAndAnnounce("1.4.1", "2023-11-20T08:00:01Z");
    EXPECT_EQ(m_presenter.shown.back(), "1.4.1 instead of 1.2");
}

TEST_F(FeedUpdaterTest, WhatWasKeptAndIsNoVersionStandsInNobodysWay) {
    m_settings.set(UpdateSettings::kNewestVersion, std::string("9.9.9-beta"));
    m_settings.set(UpdateSettings::kShownVersion, std::int64_t{7});
    launchWithChecks();
    m_clock.advance(FeedUpdater::kAfterStart);
    announce("1.3");
    EXPECT_EQ(m_presenter.shown, (std::vector<std::string>{"1.3 instead of 1.2, unasked"}));
}

TEST_F(FeedUpdaterTest, NobodyIsAskedUnlessThePersonWantsIt) {
    launch();
    EXPECT_FALSE(m_updater->automaticallyChecksForUpdates());
    EXPECT_EQ(m_clock.sleepers(), 0U);
    m_clock.advance(100h);
    EXPECT_EQ(m_source.fetches, 0);
    askAndAnnounce("1.3");
    EXPECT_EQ(m_clock.sleepers(), 0U);
}

TEST_F(FeedUpdaterTest, TheFirstCheckComesAMinuteAfterTheStart) {
    launchWithChecks();
    EXPECT_TRUE(isDueAfter(FeedUpdater::kAfterStart));
}

TEST_F(FeedUpdaterTest, ThereIsOneCheckADay) {
    launchWithChecks();
    m_clock.advance(FeedUpdater::kAfterStart);
    for (int day = 0; day < 3; ++day) {
        announce("1.2");
        EXPECT_EQ(m_clock.sleepers(), 1U) << day;
        EXPECT_TRUE(isDueAfter(FeedUpdater::kPeriod)) << day;
    }
}

TEST_F(FeedUpdaterTest, AStartLessThanADayAfterTheLastCheckWaitsForTheRest) {
    m_settings.set(UpdateSettings::kLastCheck, m_clock.now().addingSeconds(-20.0 * 3600));
    launchWithChecks();
    EXPECT_TRUE(isDueAfter(4h));
}

TEST_F(FeedUpdaterTest, AStartWhenTheNextCheckIsAboutToBeDueWaitsAMinuteAllTheSame) {
    m_settings.set(UpdateSettings::kLastCheck, m_clock.now().addingSeconds(-24.0 * 3600 + 5));
    launchWithChecks();
    EXPECT_TRUE(isDueAfter(FeedUpdater::kAfterStart));
}

TEST_F(FeedUpdaterTest, ALastCheckThatLiesAheadOrNowhereDoesNotPutTheNextOneOff) {
    for (const double ahead : {3600.0, 1e9, 1e300}) {
        m_settings.set(UpdateSettings::kLastCheck, m_clock.now().addingSeconds(ahead));
        launchWithChecks();
        EXPECT_TRUE(isDueAfter(FeedUpdater::kAfterStart)) << ahead;
    }
}

TEST_F(FeedUpdaterTest, TheDayGoesByTheContinuousClockAndNotByTheWallClock) {
    launchWithChecks();
    m_clock.advance(FeedUpdater::kAfterStart);
    announce("1.2");
    m_clock.setNow(m_clock.now().addingSeconds(-90.0 * 24 * 3600));
    EXPECT_TRUE(isDueAfter(FeedUpdater::kPeriod));
}

TEST_F(FeedUpdaterTest, ACheckThatFailsUnaskedIsToldToNobodyAndTriedOnceMoreAfterAnHour) {
    launchWithChecks();
    m_clock.advance(FeedUpdater::kAfterStart);
    for (int day = 0; day < 2; ++day) {
        answer(FeedSource::Failure::unreachable);
        EXPECT_TRUE(isDueAfter(FeedUpdater::kUntilRetry)) << day;
        answer(std::string("no feed"));
        EXPECT_TRUE(isDueAfter(FeedUpdater::kPeriod)) << day;
    }
    EXPECT_TRUE(m_presenter.shown.empty());
    EXPECT_EQ(m_updater->lastUpdateCheckDate(), std::nullopt);
}

TEST_F(FeedUpdaterTest, EachVersionIsShownOnceUnasked) {
    launchWithChecks();
    m_clock.advance(FeedUpdater::kAfterStart);
    announce("1.2");
    m_clock.advance(FeedUpdater::kPeriod);
    announce("1.3");
    m_clock.advance(FeedUpdater::kPeriod);
    announce("1.3");
    const std::vector<std::string> first = {"1.3 instead of 1.2, unasked"};
    EXPECT_EQ(m_presenter.shown, first);
    launch();
    m_clock.advance(FeedUpdater::kPeriod);
    announce("1.3");
    EXPECT_EQ(m_presenter.shown, first) << "nor at the next launch";
    m_clock.advance(FeedUpdater::kPeriod);
    announce("1.4");
    EXPECT_EQ(m_presenter.shown.back(), "1.4 instead of 1.2, unasked");
}

TEST_F(FeedUpdaterTest, WhatWasShownToWhoAskedIsNotShownUnasked) {
    launchWithChecks();
    askAndAnnounce("1.3");
    m_presenter.shown.clear();
    m_clock.advance(FeedUpdater::kPeriod);
    announce("1.3");
    EXPECT_TRUE(m_presenter.shown.empty());
}

TEST_F(FeedUpdaterTest, AGoodCheckOfThePersonsIsTheOneOfTheDay) {
    launchWithChecks();
    m_clock.advance(30s);
    askAndAnnounce("1.2");
    EXPECT_TRUE(isDueAfter(FeedUpdater::kPeriod));
}

TEST_F(FeedUpdaterTest, AFailedCheckOfThePersonsLeavesThePlanAsItIs) {
    launchWithChecks();
    m_clock.advance(30s);
    ask(FeedSource::Failure::unreachable);
    EXPECT_TRUE(isDueAfter(30s));
}

TEST_F(FeedUpdaterTest, ACheckThatComesDueDuringOneOfThePersonsIsMadeUpForWhenThatFails) {
    launchWithChecks();
    m_updater->checkForUpdates();
    m_clock.advance(FeedUpdater::kAfterStart);
    EXPECT_EQ(m_source.fetches, 1);
    answer(FeedSource::Failure::unreachable);
    EXPECT_TRUE(isDueAfter(FeedUpdater::kUntilRetry));
}

TEST_F(FeedUpdaterTest, TheFlagBeginsAndEndsTheChecks) {
    launch();
    m_updater->setAutomaticallyChecksForUpdates(true);
    EXPECT_TRUE(m_settings.boolean(UpdateSettings::kAutomaticallyChecks));
    EXPECT_TRUE(isDueAfter(FeedUpdater::kAfterStart));
    announce("1.2");
    m_updater->setAutomaticallyChecksForUpdates(false);
    EXPECT_EQ(m_clock.sleepers(), 0U);
    m_updater->setAutomaticallyChecksForUpdates(true);
    EXPECT_TRUE(isDueAfter(FeedUpdater::kPeriod)) << "today's has been";
}

TEST_F(FeedUpdaterTest, TheFlagThatIsSetAsItIsPutsNothingOff) {
    launchWithChecks();
    m_clock.advance(30s);
    m_updater->setAutomaticallyChecksForUpdates(true);
    EXPECT_TRUE(isDueAfter(30s));
}

TEST_F(FeedUpdaterTest, SwitchedOffAnAutomaticCheckEndsAndThePersonsGoesOn) {
    launchWithChecks();
    m_clock.advance(FeedUpdater::kAfterStart);
    m_updater->setAutomaticallyChecksForUpdates(false);
    EXPECT_TRUE(m_updater->canCheckForUpdates());
    EXPECT_FALSE(m_source.isFetching());
    EXPECT_EQ(m_clock.sleepers(), 0U);
    m_updater->setAutomaticallyChecksForUpdates(true);
    m_updater->checkForUpdates();
    m_updater->setAutomaticallyChecksForUpdates(false);
    announce("1.3");
    EXPECT_EQ(m_presenter.shown.back(), "1.3 instead of 1.2");
}

TEST_F(FeedUpdaterTest, OneCheckRunsAtATime) {
    launchWithChecks();
    m_updater->checkForUpdates();
    EXPECT_FALSE(m_updater->canCheckForUpdates());
    m_updater->checkForUpdates();
    EXPECT_EQ(m_source.fetches, 1);
    EXPECT_EQ(m_presenter.shown.size(), 1U);
    announce("1.2");
    EXPECT_TRUE(m_updater->canCheckForUpdates());
}

TEST_F(FeedUpdaterTest, ThePersonMayCancelAndNothingComesOfIt) {
    launchWithChecks();
    m_updater->checkForUpdates();
    m_source.answer(m_signer.feed(announcement("1.3"))); // on its way
    m_presenter.cancel();
    m_runner.settle();
    EXPECT_TRUE(m_updater->canCheckForUpdates());
    EXPECT_EQ(m_updater->lastUpdateCheckDate(), std::nullopt);
    EXPECT_EQ(m_presenter.shown, (std::vector<std::string>{"checking"}));
    EXPECT_TRUE(isDueAfter(FeedUpdater::kAfterStart));
}

TEST_F(FeedUpdaterTest, ACancelThatComesTooLateEndsNothingElse) {
    launchWithChecks();
    askAndAnnounce("1.2");
    m_clock.advance(FeedUpdater::kPeriod);
    m_presenter.cancel();
    EXPECT_TRUE(m_source.isFetching()) << "the automatic check";
    m_updater.reset();
    m_presenter.cancel();
}

TEST_F(FeedUpdaterTest, WhoObservesItIsToldWhenACheckBeginsAndEnds) {
    launch();
    const UpdaterController controller(*m_updater);
    m_updater->checkForUpdates();
    m_runner.settle();
    EXPECT_FALSE(controller.canCheckForUpdates.get());
    announce("1.2");
    EXPECT_TRUE(controller.canCheckForUpdates.get());
    EXPECT_EQ(controller.lastUpdateCheckDate.get(), m_clock.now());
    m_updater->checkForUpdates();
    m_runner.settle();
    EXPECT_FALSE(controller.canCheckForUpdates.get());
    m_presenter.cancel();
    m_runner.settle();
    EXPECT_TRUE(controller.canCheckForUpdates.get());
}

TEST_F(FeedUpdaterTest, ItMayGoDuringACheck) {
    launchWithChecks();
    m_updater->checkForUpdates();
    m_source.answer(m_signer.feed(announcement("1.3")));
    m_updater.reset();
    m_clock.advance(FeedUpdater::kPeriod);
    EXPECT_EQ(m_presenter.shown.size(), 1U);
    EXPECT_EQ(m_source.fetches, 1);
}
