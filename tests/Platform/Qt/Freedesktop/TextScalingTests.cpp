#include "FakePortal.h"
#include "PrivateBus.h"
#include "StepTaskRunner.h"
#include "TextScaling.h"
#include <QSignalSpy>
#include <gtest/gtest.h>
#include <limits>

namespace quillane {
namespace {

const auto kInterface = QStringLiteral("org.gnome.desktop.interface");
const auto kKey = QStringLiteral("text-scaling-factor");

class TextScalingTest : public testing::Test {
  protected:
    // The portal has been asked, and what it told before has arrived.
    void start() {
        m_tasks.runAll();
        EXPECT_TRUE(QTest::qWaitFor([&] { return m_portal.reads == 1; }));
        awaitArrival(m_portal, m_connection);
    }
    void tell(const QVariant& value) {
        m_portal.tell(kInterface, kKey, value);
        awaitArrival(m_portal, m_connection);
    }

    PrivateBus m_bus;
    StepTaskRunner m_tasks;
    FakePortal m_portal{m_bus.connect()};
    QDBusConnection m_connection = m_bus.connect();
    TextScaling m_scaling{m_tasks, [this] { return m_connection; }};
    QSignalSpy m_changes{&m_scaling, &TextScaling::changed};
};

TEST_F(TextScalingTest, TextIsOfTheUsualSizeUntilThePortalSaysOtherwise) {
    EXPECT_EQ(m_scaling.factor(), 1);
    start();
    EXPECT_EQ(m_scaling.factor(), 1);
    EXPECT_EQ(m_changes.count(), 0);
}

TEST_F(TextScalingTest, TakesThePortalsFactor) {
    m_portal.others = {{kKey, 1.25}};
    start();
    EXPECT_EQ(m_scaling.factor(), 1.25);
    EXPECT_EQ(m_changes.count(), 1);
}

TEST_F(TextScalingTest, FollowsChangesAndTellsEachOnce) {
    start();
    tell(1.5);
    tell(1.5);
    EXPECT_EQ(m_scaling.factor(), 1.5);
    EXPECT_EQ(m_changes.count(), 1);
    tell(1.0);
    EXPECT_EQ(m_scaling.factor(), 1);
    EXPECT_EQ(m_changes.count(), 2);
}

TEST_F(TextScalingTest, StaysWithinWhatDesktopsOffer) {
    start();
    tell(100.0);
    EXPECT_EQ(m_scaling.factor(), 3);
    tell(0.01);
    EXPECT_EQ(m_scaling.factor(), 0.5);
}

TEST_F(TextScalingTest, WhatIsNoSensibleNumberIsTheUsualSize) {
    start();
    for (const QVariant& value :
         {QVariant(0.0), QVariant(-2.0), QVariant(std::numeric_limits<double>::quiet_NaN()),
          QVariant(std::numeric_limits<double>::infinity()), QVariant(QStringLiteral("2")), QVariant(true)}) {
        tell(1.5);
        tell(value);
        EXPECT_EQ(m_scaling.factor(), 1) << value.typeName();
    }
}

TEST_F(TextScalingTest, OtherSettingsDontMatter) {
    start();
    m_portal.tell(QStringLiteral("org.example.other"), kKey, 2.0);
    m_portal.tell(kInterface, QStringLiteral("cursor-size"), 2.0);
    awaitArrival(m_portal, m_connection);
    EXPECT_EQ(m_scaling.factor(), 1);
    EXPECT_EQ(m_changes.count(), 0);
}

TEST(TextScalingLeft, IsNothingWhereTheDisplayIsThatMuchFinerAlready) {
    EXPECT_EQ(TextScaling::leftOf(1.25, 1.25), 1);
    EXPECT_EQ(TextScaling::leftOf(1.25, 2.5), 1) << "on a display of two pixels each";
    EXPECT_EQ(TextScaling::leftOf(1, 1), 1);
}

TEST(TextScalingLeft, IsAllOfItElsewhere) {
    EXPECT_EQ(TextScaling::leftOf(1.25, 1), 1.25);
    EXPECT_EQ(TextScaling::leftOf(1.5, 2), 1.5);
    EXPECT_EQ(TextScaling::leftOf(0.8, 1), 0.8);
}

} // namespace
} // namespace quillane
