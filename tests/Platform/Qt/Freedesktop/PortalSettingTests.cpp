#include "FakePortal.h"
#include "PortalSetting.h"
#include "PrivateBus.h"
#include "StepTaskRunner.h"
#include <QDBusMessage>
#include <QMetaType>
#include <QSignalSpy>
#include <cstdlib>
#include <gtest/gtest.h>

namespace quillane {
namespace {

const auto kGroup = QStringLiteral("org.freedesktop.appearance");
const auto kKey = QStringLiteral("contrast");

constexpr auto kPortal = "org.freedesktop.portal.Desktop";

QDBusMessage busCall(const QString& method) {
    const auto name = QStringLiteral("org.freedesktop.DBus");
    return QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/DBus"), name, method);
}

class PortalSettingTest : public testing::Test {
  protected:
    PrivateBus m_bus;
    StepTaskRunner m_tasks;
    QDBusConnection m_portals = m_bus.connect();
    FakePortal m_portal{m_portals};
    PortalSetting m_setting{m_tasks, m_bus.reach(), kGroup, kKey};
    QSignalSpy m_told{&m_setting, &PortalSetting::told};
};

TEST_F(PortalSettingTest, TellsTheValueThatStandsAndEachOneAfterItWithoutTheirWraps) {
    m_portal.others = {{kKey, QStringLiteral("high")}};
    m_tasks.runAll();
    ASSERT_TRUE(m_told.count() > 0 || m_told.wait());
    m_portal.tell(kGroup, kKey, 3);
    ASSERT_TRUE(m_told.wait());
    ASSERT_EQ(m_told.count(), 2);
    EXPECT_EQ(m_told[0][0].value<QVariant>(), QVariant(QStringLiteral("high")));
    EXPECT_EQ(m_told[1][0].value<QVariant>(), QVariant(3));
}

TEST_F(PortalSettingTest, TellsNothingOfASettingThatTheDesktopDoesNotHave) {
    m_tasks.runAll();
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_portal.reads == 1; }));
    m_portal.tell(kGroup, kKey, 3); // arrives behind the answer
    ASSERT_TRUE(m_told.wait());
    ASSERT_EQ(m_told.count(), 1);
    EXPECT_EQ(m_told[0][0].value<QVariant>(), QVariant(3));
}

TEST_F(PortalSettingTest, HearsThePortalAloneAlsoWhenItIsAnotherOneThanAtFirst) {
    m_tasks.runAll();
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_portal.reads == 1; }));
    auto strangers = m_bus.connect();
    const auto tell = [&strangers](int value) {
        auto signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
                                                 QStringLiteral("org.freedesktop.portal.Settings"),
                                                 QStringLiteral("SettingChanged"));
        signal << kGroup << kKey << QVariant::fromValue(QDBusVariant(value));
        strangers.send(signal);
        strangers.call(busCall(QStringLiteral("GetId"))); // it has been passed on
    };
    tell(1);
    m_portals.unregisterService(QString::fromLatin1(kPortal));
    EXPECT_TRUE(strangers.registerService(QString::fromLatin1(kPortal)));
    tell(2);
    ASSERT_TRUE(m_told.wait());
    ASSERT_EQ(m_told.count(), 1);
    EXPECT_EQ(m_told[0][0].value<QVariant>(), QVariant(2));
}

TEST_F(PortalSettingTest, ABusThatHasStoppedHoldsNobodyUp) {
    EXPECT_TRUE(m_bus.holdsNobodyUp([&] { m_tasks.runAll(); }));
    m_portal.others = {{kKey, 1}};
    EXPECT_TRUE(m_told.count() > 0 || m_told.wait());
}

// In a process of its own: whoever else uses the type, as the fake portal does, makes it known to all.
TEST(PortalSettingDeathTest, HearsOfChangesWithoutAnyoneElseWhoKnowsTheirType) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto isTypeKnown = [] {
        StepTaskRunner tasks;
        const PortalSetting setting(tasks, sharedSessionBus, kGroup, kKey);
        return QMetaType::fromName("QDBusVariant").isValid();
    };
    EXPECT_EXIT(std::_Exit(isTypeKnown() ? 0 : 1), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace quillane
