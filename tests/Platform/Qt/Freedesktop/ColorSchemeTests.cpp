#include "ColorScheme.h"
#include "FakePortal.h"
#include "PrivateBus.h"
#include "StepTaskRunner.h"
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace quillane {
namespace {

using Scheme = ColorScheme::Scheme;

const auto kGroup = QString::fromLatin1(FakePortal::kGroup);
const auto kKey = QString::fromLatin1(FakePortal::kKey);

class ColorSchemeTest : public testing::Test {
  protected:
    PrivateBus m_bus;
    StepTaskRunner m_tasks;

    // Has the portal been asked and its answer arrived?
    static void awaitAnswer(const FakePortal& portal) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return portal.reads > 0; }));
    }
    // Sends a message around the bus and back, so that what was sent before it has arrived.
    static void awaitRoundTrip(ColorScheme& scheme, FakePortal& portal) {
        QSignalSpy spy(&scheme, &ColorScheme::changed);
        portal.change(scheme.scheme() == Scheme::dark ? 2 : 1);
        EXPECT_TRUE(spy.count() > 0 || spy.wait());
    }
};

TEST_F(ColorSchemeTest, IsLightBeforeTheBusIsReachedAndConstructionReachesNothing) {
    bool isReached = false;
    const ColorScheme scheme(m_tasks, [&] {
        isReached = true;
        return m_bus.connect();
    });
    EXPECT_EQ(scheme.scheme(), Scheme::light);
    EXPECT_FALSE(isReached);
    EXPECT_EQ(m_tasks.waitingJobs(), 1U);
}

TEST_F(ColorSchemeTest, TakesThePortalsPreference) {
    FakePortal portal(m_bus.connect());
    portal.preference = 1;
    ColorScheme scheme(m_tasks, m_bus.reach());
    QSignalSpy spy(&scheme, &ColorScheme::changed);
    m_tasks.runAll();
    ASSERT_TRUE(spy.count() > 0 || spy.wait());
    EXPECT_EQ(scheme.scheme(), Scheme::dark);
    EXPECT_EQ(spy.count(), 1);
}

TEST_F(ColorSchemeTest, FollowsChangesAndTellsEachOnce) {
    FakePortal portal(m_bus.connect());
    ColorScheme scheme(m_tasks, m_bus.reach());
    m_tasks.runAll();
    awaitAnswer(portal);
    QSignalSpy spy(&scheme, &ColorScheme::changed);
    portal.change(1);
    ASSERT_TRUE(spy.wait());
    EXPECT_EQ(scheme.scheme(), Scheme::dark);
    portal.change(1);
    portal.change(0); // no preference is light
    ASSERT_TRUE(spy.wait());
    EXPECT_EQ(scheme.scheme(), Scheme::light);
    EXPECT_EQ(spy.count(), 2);
}

TEST_F(ColorSchemeTest, OtherSettingsDontMatter) {
    FakePortal portal(m_bus.connect());
    const auto connection = m_bus.connect();
    ColorScheme scheme(m_tasks, [connection] { return connection; });
    m_tasks.runAll();
    awaitAnswer(portal);
    const PortalListener listener(connection);
    QSignalSpy spy(&scheme, &ColorScheme::changed);
    const auto last = QStringLiteral("last");
    portal.change(1, QStringLiteral("org.example.other"), kKey);
    portal.change(1, kGroup, QStringLiteral("accent-color"));
    portal.change(0, kGroup, last);
    EXPECT_TRUE(QTest::qWaitFor([&] { return listener.keys.contains(last); }));
    EXPECT_EQ(spy.count(), 0);
    EXPECT_EQ(scheme.scheme(), Scheme::light);
}

TEST_F(ColorSchemeTest, ValuesBeyondTheKnownOnesAreLight) {
    FakePortal portal(m_bus.connect());
    portal.preference = 7;
    ColorScheme scheme(m_tasks, m_bus.reach());
    m_tasks.runAll();
    awaitAnswer(portal);
    awaitRoundTrip(scheme, portal); // becomes dark, so it was light
    EXPECT_EQ(scheme.scheme(), Scheme::dark);
}

TEST_F(ColorSchemeTest, IsLightWithoutAPortalAndWithoutABus) {
    ColorScheme withoutPortal(m_tasks, m_bus.reach());
    ColorScheme withoutBus(m_tasks, [] { return QDBusConnection(QStringLiteral("never connected")); });
    m_tasks.runAll();
    FakePortal later(m_bus.connect()); // whose first signal arrives after the failed question
    awaitRoundTrip(withoutPortal, later);
    EXPECT_EQ(withoutPortal.scheme(), Scheme::dark); // a portal that comes later is heard
    EXPECT_EQ(withoutBus.scheme(), Scheme::light);
}

TEST_F(ColorSchemeTest, MayGoBeforeTheBusIsReached) {
    auto scheme = std::make_unique<ColorScheme>(m_tasks, m_bus.reach());
    m_tasks.runJob();
    scheme.reset();
    m_tasks.settle();
    EXPECT_EQ(m_tasks.waitingJobs(), 0U);
}

} // namespace
} // namespace quillane
