#include "DesktopMenuBarExtra.h"
#include "FakePanel.h"
#include "PrivateBus.h"
#include "StepTaskRunner.h"
#include <QTest>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace quillane {
namespace {

class DesktopMenuBarExtraTest : public testing::Test {
  protected:
    // What was said on either side has arrived at the other, and has been told.
    void settle() {
        constexpr int kMostSteps = 4;
        for (int i = 0; i < kMostSteps; ++i) {
            m_tasks.runAll();
            for (const auto& bus : {client(), m_panelBus}) {
                if (bus.isConnected()) {
                    FakePanel::goAround(bus);
                }
            }
        }
        m_tasks.runAll();
    }
    bool until(const std::function<bool()>& condition) {
        return QTest::qWaitFor(
            [&] {
                m_tasks.runAll();
                return condition();
            },
            FakePanel::kPatience);
    }
    void show() {
        m_extra->insert();
        settle();
        ASSERT_TRUE(m_extra->isShown());
        m_shown.clear();
    }
    QDBusConnection client() const { return QDBusConnection(m_client); }

    PrivateBus m_bus;
    StepTaskRunner m_tasks;
    QDBusConnection m_panelBus = m_bus.connect();
    std::unique_ptr<FakePanel> m_panel = std::make_unique<FakePanel>(m_panelBus);
    QString m_client; // the name of the connection that was reached last; one that is held is not closed
    int m_reached = 0;
    std::vector<MenuBarExtra::Press> m_presses;
    std::vector<bool> m_shown;
    std::unique_ptr<DesktopMenuBarExtra> m_extra = std::make_unique<DesktopMenuBarExtra>(m_tasks, [this] {
        ++m_reached;
        const auto connection = m_bus.connect();
        m_client = connection.name();
        return connection;
    });

  private:
    void SetUp() override {
        m_extra->setHandlers({.pressed = [this](const auto& press) { m_presses.push_back(press); },
                              .chosen = {},
                              .shownChanged = [this] { m_shown.push_back(m_extra->isShown()); }});
    }
};

TEST_F(DesktopMenuBarExtraTest, TheBusIsReachedByAJobOnceForEachInsertion) {
    m_extra->setFigure("1 GB");
    m_tasks.runAll();
    EXPECT_EQ(m_reached, 0);
    m_extra->insert();
    m_extra->insert();
    EXPECT_EQ(m_reached, 0);
    EXPECT_EQ(m_tasks.waitingJobs(), 1U);
    settle();
    EXPECT_EQ(m_reached, 1);
    m_extra->withdraw();
    m_extra->insert();
    settle();
    EXPECT_EQ(m_reached, 2);
}

TEST_F(DesktopMenuBarExtraTest, ABusThatIsReachedTooLateIsLeftAgain) {
    m_extra->insert();
    m_tasks.runJob();
    const auto first = m_client;
    m_extra->withdraw();
    m_extra->insert();
    settle();
    EXPECT_TRUE(m_extra->isShown());
    EXPECT_NE(m_client, first);
    EXPECT_FALSE(QDBusConnection(first).isConnected());
    EXPECT_EQ(m_panel->items.size(), 1);
}

TEST_F(DesktopMenuBarExtraTest, ABusThatIsReachedForNobodyIsLeftAgain) {
    m_extra->insert();
    m_tasks.runJob();
    m_extra.reset();
    m_tasks.runAll();
    EXPECT_FALSE(client().isConnected());
}

TEST_F(DesktopMenuBarExtraTest, ItsConnectionEndsWithIt) {
    show();
    m_extra.reset();
    EXPECT_TRUE(until([this] { return m_panel->items.isEmpty(); }));
    EXPECT_FALSE(client().isConnected());
}

TEST_F(DesktopMenuBarExtraTest, ShowsOnlyWhileAPanelStandsBehindTheName) {
    m_panel->hasHost = false;
    m_extra->insert();
    settle();
    EXPECT_FALSE(m_extra->isShown());
    EXPECT_EQ(m_panel->items.size(), 1) << "it waits there for a panel";
    for (const bool isThere : {true, false, true}) {
        m_panel->tellOfHost(isThere);
        settle();
        EXPECT_EQ(m_extra->isShown(), isThere);
    }
    EXPECT_EQ(m_shown, (std::vector{true, false, true}));
}

TEST_F(DesktopMenuBarExtraTest, OfSeveralPanelsOneThatGoesLeavesTheOthers) {
    show();
    m_panel->tell("StatusNotifierHostUnregistered");
    settle();
    EXPECT_TRUE(m_extra->isShown());
    EXPECT_TRUE(m_shown.empty());
}

TEST_F(DesktopMenuBarExtraTest, WhatIsNoAnswerIsNoPanel) {
    for (const auto& answer : {QVariant(), QVariant(1), QVariant(QStringLiteral("true"))}) {
        m_panel->hasHost = answer;
        m_extra->insert();
        settle();
        EXPECT_GT(std::exchange(m_panel->questions, 0), 0);
        EXPECT_FALSE(m_extra->isShown()) << answer.typeName();
        m_extra->withdraw();
    }
}

TEST_F(DesktopMenuBarExtraTest, WhoIsRefusedDoesNotShowAndTriesAgainWithTheNextPanel) {
    m_panel->takes = false;
    m_extra->insert();
    settle();
    EXPECT_FALSE(m_extra->isShown());
    m_panel->takes = true;
    m_panel->tellOfHost(true);
    settle();
    EXPECT_TRUE(m_extra->isShown());
    m_panel->tellOfHost(true);
    settle();
    EXPECT_EQ(m_panel->registrations, 2) << "who is taken need not try";
}

TEST_F(DesktopMenuBarExtraTest, WhileOneAnswerIsMissingItDoesNotShow) {
    for (bool FakePanel::* answers : {&FakePanel::answersQuestions, &FakePanel::answersRegistrations}) {
        (*m_panel).*answers = false;
        m_extra->insert();
        settle();
        EXPECT_FALSE(m_extra->isShown());
        m_panel->answerAll();
        settle();
        EXPECT_TRUE(m_extra->isShown());
        m_extra->withdraw();
        EXPECT_TRUE(until([this] { return m_panel->items.isEmpty(); }));
    }
    EXPECT_EQ(m_shown, (std::vector{true, false, true, false}));
}

TEST_F(DesktopMenuBarExtraTest, AnAnswerOfWhoHasLostTheNameIsTooLate) {
    m_panel->answersQuestions = m_panel->answersRegistrations = false;
    m_extra->insert();
    settle();
    m_panel->giveNameUp();
    FakePanel next(m_bus.connect());
    next.answersRegistrations = false;
    settle();
    FakePanel::goAround(next.bus());
    m_panel->answerAll();
    settle();
    EXPECT_FALSE(m_extra->isShown());
    next.answerAll();
    EXPECT_TRUE(until([this] { return m_extra->isShown(); }));
    EXPECT_EQ(m_shown, std::vector{true});
}

TEST_F(DesktopMenuBarExtraTest, OnlyTheOwnerOfTheNameIsBelieved) {
    show();
    FakePanel stranger(m_bus.connect(), false);
    const auto item = m_panel->items.value(0);
    stranger.tell("StatusNotifierItemUnregistered", {item});
    stranger.tellOfHost(false);
    FakePanel::goAround(stranger.bus());
    settle();
    EXPECT_TRUE(m_extra->isShown());
    EXPECT_EQ(m_panel->questions, 1) << "nobody is asked for a stranger's word";
}

TEST_F(DesktopMenuBarExtraTest, FollowsTheNameFromOneToTheNext) {
    show();
    const auto first = std::move(m_panel);
    first->giveNameUp();
    settle();
    EXPECT_FALSE(m_extra->isShown());
    m_panel = std::make_unique<FakePanel>(m_bus.connect());
    EXPECT_TRUE(until([this] { return m_extra->isShown(); }));
    EXPECT_EQ(m_panel->items.size(), 1);
    EXPECT_EQ(m_shown, (std::vector{false, true}));
}

TEST_F(DesktopMenuBarExtraTest, WhatIsDroppedDoesNotShowUntilItIsTakenAgain) {
    show();
    const auto item = m_panel->items.value(0);
    m_panel->tell("StatusNotifierItemUnregistered", {QStringLiteral(":1.999/StatusNotifierItem")});
    settle();
    EXPECT_TRUE(m_extra->isShown()) << "that was another one";
    m_panel->tell("StatusNotifierItemUnregistered", {item});
    settle();
    EXPECT_FALSE(m_extra->isShown());
    m_panel->tell("StatusNotifierItemRegistered", {QStringLiteral(":1.999/StatusNotifierItem")});
    settle();
    EXPECT_FALSE(m_extra->isShown());
    m_panel->tell("StatusNotifierItemRegistered", {item.section(QLatin1Char('/'), 0, 0)});
    settle();
    EXPECT_TRUE(m_extra->isShown());
}

TEST_F(DesktopMenuBarExtraTest, NothingIsStartedForIt) {
    m_panel.reset();
    m_bus.offer(FakePanel::kName);
    m_extra->insert();
    settle();
    EXPECT_FALSE(m_bus.hasStarted(FakePanel::kName));
    EXPECT_FALSE(m_extra->isShown());
}

TEST_F(DesktopMenuBarExtraTest, ABusThatGoesTakesItAlong) {
    show();
    m_bus.die();
    EXPECT_TRUE(until([this] { return !m_shown.empty(); }));
    EXPECT_EQ(m_shown, std::vector{false});
    EXPECT_FALSE(m_extra->isShown());
    m_extra->setFigure("1 GB");
    m_extra->withdraw();
    m_tasks.runAll();
    EXPECT_EQ(m_shown.size(), 1U);
}

TEST_F(DesktopMenuBarExtraTest, WithoutABusNothingShows) {
    DesktopMenuBarExtra without(m_tasks, [] { return QDBusConnection(QStringLiteral("nowhere")); });
    without.insert();
    m_tasks.runAll();
    without.setFigure("1 GB");
    EXPECT_FALSE(without.isShown());
}

TEST_F(DesktopMenuBarExtraTest, ABusThatHasStoppedHoldsNobodyUp) {
    const auto connection = m_bus.connect();
    DesktopMenuBarExtra extra(m_tasks, [&] { return connection; });
    EXPECT_TRUE(m_bus.holdsNobodyUp([&] {
        extra.insert();
        m_tasks.runAll();
        extra.setFigure("1 GB");
        extra.withdraw();
        m_tasks.runAll();
    }));
}

TEST_F(DesktopMenuBarExtraTest, AClickIsNotToldWhenItIsGone) {
    show();
    m_panel->callItem("Activate", {300, 11});
    m_extra.reset();
    m_tasks.runAll();
    EXPECT_TRUE(m_presses.empty());
}

TEST_F(DesktopMenuBarExtraTest, APlaceThatIsOnNoScreenIsNone) {
    show();
    m_panel->callItem("Activate", {-3'000, 5});
    m_tasks.runAll();
    ASSERT_EQ(m_presses.size(), 1U);
    EXPECT_FALSE(m_presses.front().place);
}

} // namespace
} // namespace quillane
