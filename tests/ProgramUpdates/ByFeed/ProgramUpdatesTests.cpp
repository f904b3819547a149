#include "FeedSigner.h"
#include "FeedUpdater.h"
#include "HttpsFeed.h"
#include "ManualClock.h"
#include "NetworkTest.h"
#include "ProgramUpdates.h"
#include "SettingsHome.h"
#include "StepTaskRunner.h"
#include "UpdateSettings.h"
#include "Updates/UpdateWindow.h"
#include "Updates/UpdateWindows.h"
#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

using namespace quillane;
using Stage = UpdateWindow::Stage;

namespace {

constexpr int kPatience = 60'000; // milliseconds, for what comes at once

UpdateWindow* openWindow() {
    for (auto* widget : QApplication::topLevelWidgets()) {
        if (auto* const window = qobject_cast<UpdateWindow*>(widget)) {
            return window;
        }
    }
    return nullptr;
}

bool waitForStage(Stage stage) {
    return QTest::qWaitFor([&] { return openWindow() != nullptr && openWindow()->stage() == stage; },
                           kPatience);
}

class UpdatesByFeed : public NetworkTest {
  protected:
    SettingsHome m_home;
    StepTaskRunner m_runner;
    ManualClock m_clock{m_runner};
};

TEST_F(UpdatesByFeed, AskThePlaceThatWasNamedWhenThePersonWantsItOrADayHasGone) {
    ProgramUpdates updates(m_clock, m_runner, m_home.path());
    auto& updater = updates.updater();
    EXPECT_EQ(updater.installedVersion(), QUILLANE_VERSION);
    EXPECT_FALSE(updater.automaticallyChecksForUpdates());
    EXPECT_EQ(m_clock.sleepers(), 0U);
    ASSERT_TRUE(updater.canCheckForUpdates());
    updater.checkForUpdates();
    EXPECT_TRUE(waitForStage(Stage::failure)) << "nobody is there";
    EXPECT_EQ(updater.lastUpdateCheckDate(), std::nullopt);
    updater.setAutomaticallyChecksForUpdates(true);
    EXPECT_EQ(m_clock.sleepers(), 1U);
}

// All of it but the address and the key, which a build has in itself.
class FeedOnTheWire : public UpdatesByFeed {
  protected:
    FeedOnTheWire() { launch(); }

    void launch() {
        m_updater.reset();
        m_settings = std::make_unique<FileDefaults>(m_home.file("updates.plist"));
        m_updater = std::make_unique<FeedUpdater>(
            *VersionNumber::parse("1.2"), m_signer.publicKey(),
            FeedUpdater::Ports{m_source, m_windows, *m_settings, m_clock, m_runner});
    }
    static std::string announcement(const std::string& version) {
        return R"({"version": ")" + version +
               R"(", "date": "2026-11-22T10:00:00Z", "page": "https://example.org/", "notes": "New."})";
    }
    // The stage that the window comes to when this is the feed.
    std::optional<Stage> check(const std::string& feed) {
        m_server.on("/feed", FeedServer::page(feed));
        m_updater->checkForUpdates();
        EXPECT_EQ(m_windows.window()->stage(), Stage::checking);
        const bool hasEnded =
            QTest::qWaitFor([&] { return m_windows.window()->stage() != Stage::checking; }, kPatience);
        return hasEnded ? std::optional(m_windows.window()->stage()) : std::nullopt;
    }

    FeedSigner m_signer;
    HttpsFeed m_source{m_server.address("/feed")};
    UpdateWindows m_windows;
    std::unique_ptr<FileDefaults> m_settings;
    std::unique_ptr<FeedUpdater> m_updater;
};

TEST_F(FeedOnTheWire, AGoodFeedIsShownAndAForgedOrAReplayedOneChangesNothing) {
    const auto older = m_signer.feed(announcement("1.3"));
    const auto newer = m_signer.feed(announcement("1.4"));
    EXPECT_EQ(check(older), Stage::update);
    EXPECT_EQ(check(newer), Stage::update);
    const auto date = m_updater->lastUpdateCheckDate();
    EXPECT_EQ(date, m_clock.now());
    m_clock.setNow(m_clock.now().addingSeconds(100));
    launch(); // what is known is in the file
    EXPECT_EQ(check(older), Stage::failure);
    EXPECT_EQ(check(FeedSigner(2).feed(announcement("1.5"))), Stage::failure);
    EXPECT_EQ(check(newer.substr(0, newer.size() - 1)), Stage::failure);
    EXPECT_EQ(check(newer + std::string(100'000, ' ')), Stage::failure);
    EXPECT_EQ(check(""), Stage::failure);
    EXPECT_EQ(m_updater->lastUpdateCheckDate(), date);
    EXPECT_EQ(m_settings->value(UpdateSettings::kNewestVersion), Defaults::Value(std::string("1.4")));
    EXPECT_EQ(check(newer), Stage::update);
}

TEST_F(FeedOnTheWire, ClosingTheWindowEndsTheCheck) {
    m_updater->checkForUpdates();
    m_windows.window()->close();
    EXPECT_TRUE(m_updater->canCheckForUpdates());
    m_server.on("/feed", FeedServer::page(m_signer.feed(announcement("1.3"))));
    EXPECT_EQ(check(m_signer.feed(announcement("1.3"))), Stage::update);
    EXPECT_EQ(m_server.requests.size(), 1U);
}

} // namespace
