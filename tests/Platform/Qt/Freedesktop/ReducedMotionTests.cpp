#include "FakePortal.h"
#include "PrivateBus.h"
#include "ReducedMotion.h"
#include "StepTaskRunner.h"
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace quillane {
namespace {

const auto kAppearance = QStringLiteral("org.freedesktop.appearance");
const auto kShared = QStringLiteral("reduced-motion");
const auto kInterface = QStringLiteral("org.gnome.desktop.interface");
const auto kAnimations = QStringLiteral("enable-animations");

class ReducedMotionTest : public testing::Test {
  protected:
    // The portal has been asked for everything, and what it told before has arrived.
    void start() {
        m_tasks.runAll();
        EXPECT_TRUE(QTest::qWaitFor([&] { return m_portal.reads == 2; }));
        awaitArrival();
    }
    void awaitArrival() { quillane::awaitArrival(m_portal, m_connection); }

    PrivateBus m_bus;
    StepTaskRunner m_tasks;
    FakePortal m_portal{m_bus.connect()};
    QDBusConnection m_connection = m_bus.connect();
    ReducedMotion m_motion{m_tasks, [this] { return m_connection; }};
    QSignalSpy m_changes{&m_motion, &ReducedMotion::changed};
};

TEST_F(ReducedMotionTest, ThingsMoveUntilThePortalSaysOtherwise) {
    EXPECT_FALSE(m_motion.isOn());
    m_portal.others = {{kShared, 0U}, {kAnimations, true}};
    start();
    EXPECT_FALSE(m_motion.isOn());
    EXPECT_EQ(m_changes.count(), 0);
}

TEST_F(ReducedMotionTest, TheSettingThatDesktopsShareIsHeeded) {
    m_portal.others = {{kShared, 1U}, {kAnimations, true}};
    start();
    EXPECT_TRUE(m_motion.isOn());
    EXPECT_EQ(m_changes.count(), 1);
}

TEST_F(ReducedMotionTest, SoAreAnimationsThatAreSwitchedOff) {
    m_portal.others = {{kShared, 0U}, {kAnimations, false}};
    start();
    EXPECT_TRUE(m_motion.isOn());
    EXPECT_EQ(m_changes.count(), 1);
}

TEST_F(ReducedMotionTest, ItFollowsChangesAndTellsEachOnce) {
    start();
    m_portal.tell(kInterface, kAnimations, false);
    m_portal.tell(kAppearance, kShared, 1U);
    awaitArrival();
    EXPECT_TRUE(m_motion.isOn());
    EXPECT_EQ(m_changes.count(), 1);
    m_portal.tell(kAppearance, kShared, 0U);
    awaitArrival();
    EXPECT_TRUE(m_motion.isOn()) << "animations are still off";
    m_portal.tell(kInterface, kAnimations, true);
    awaitArrival();
    EXPECT_FALSE(m_motion.isOn());
    EXPECT_EQ(m_changes.count(), 2);
}

TEST_F(ReducedMotionTest, WhatIsNoAnswerChangesNothing) {
    start();
    m_portal.tell(kInterface, kAnimations, QStringLiteral("false"));
    m_portal.tell(kAppearance, kShared, 7U);
    m_portal.tell(QStringLiteral("org.example.other"), kAnimations, false);
    m_portal.tell(kAppearance, kAnimations, false);
    awaitArrival();
    EXPECT_FALSE(m_motion.isOn());
    EXPECT_EQ(m_changes.count(), 0);
}

} // namespace
} // namespace quillane
