#include "Contrast.h"
#include "FakePortal.h"
#include "PrivateBus.h"
#include "StepTaskRunner.h"
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace quillane {
namespace {

const auto kAppearance = QStringLiteral("org.freedesktop.appearance");
const auto kKey = QStringLiteral("contrast");

class ContrastTest : public testing::Test {
  protected:
    // The portal has been asked, and what it told before has arrived.
    void start() {
        m_tasks.runAll();
        EXPECT_TRUE(QTest::qWaitFor([&] { return m_portal.reads == 1; }));
        awaitArrival(m_portal, m_connection);
    }

    PrivateBus m_bus;
    StepTaskRunner m_tasks;
    FakePortal m_portal{m_bus.connect()};
    QDBusConnection m_connection = m_bus.connect();
    Contrast m_contrast{m_tasks, [this] { return m_connection; }};
    QSignalSpy m_changes{&m_contrast, &Contrast::changed};
};

TEST_F(ContrastTest, IsUsualUntilThePortalSaysOtherwise) {
    EXPECT_FALSE(m_contrast.isHigh());
    m_portal.others = {{kKey, 0U}};
    start();
    EXPECT_FALSE(m_contrast.isHigh());
    EXPECT_EQ(m_changes.count(), 0);
}

TEST_F(ContrastTest, IsHighWhereTheUserPrefersIt) {
    m_portal.others = {{kKey, 1U}};
    start();
    EXPECT_TRUE(m_contrast.isHigh());
    EXPECT_EQ(m_changes.count(), 1);
}

TEST_F(ContrastTest, FollowsChangesAndTellsEachOnce) {
    start();
    m_portal.tell(kAppearance, kKey, 1U);
    m_portal.tell(kAppearance, kKey, 1U);
    awaitArrival(m_portal, m_connection);
    EXPECT_TRUE(m_contrast.isHigh());
    EXPECT_EQ(m_changes.count(), 1);
    m_portal.tell(kAppearance, kKey, 0U);
    awaitArrival(m_portal, m_connection);
    EXPECT_FALSE(m_contrast.isHigh());
    EXPECT_EQ(m_changes.count(), 2);
}

TEST_F(ContrastTest, WhatIsNoAnswerChangesNothing) {
    start();
    m_portal.tell(kAppearance, kKey, 7U);
    m_portal.tell(kAppearance, kKey, QStringLiteral("high"));
    m_portal.tell(QStringLiteral("org.example.other"), kKey, 1U);
    m_portal.tell(kAppearance, QStringLiteral("accent-color"), 1U);
    awaitArrival(m_portal, m_connection);
    EXPECT_FALSE(m_contrast.isHigh());
    EXPECT_EQ(m_changes.count(), 0);
}

} // namespace
} // namespace quillane
