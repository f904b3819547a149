#include "FakePowerDaemon.h"
#include "PowerProfile.h"
#include "PrivateBus.h"
#include "StepTaskRunner.h"
#include <QDBusPendingCall>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace quillane {
namespace {

const auto kSaver = QStringLiteral("power-saver");
const auto kBalanced = QStringLiteral("balanced");

class PowerProfileTest : public testing::Test {
  protected:
    // The bus has been reached and what the daemons say has arrived.
    void start() {
        m_tasks.runAll();
        settle();
    }
    void settle() { FakePowerDaemon::settle(m_daemons, m_client); }

    PrivateBus m_bus;
    StepTaskRunner m_tasks;
    QDBusConnection m_daemons = m_bus.connect();
    QDBusConnection m_client = m_bus.connect();
    FakePowerDaemon m_present{m_daemons, QStringLiteral("org.freedesktop.UPower.PowerProfiles"),
                              QStringLiteral("/org/freedesktop/UPower/PowerProfiles")};
    FakePowerDaemon m_former{m_daemons, QStringLiteral("net.hadess.PowerProfiles"),
                             QStringLiteral("/net/hadess/PowerProfiles")};
    PowerProfile m_power{m_tasks, [this] { return m_client; }};
};

TEST_F(PowerProfileTest, IsOffBeforeTheBusIsReachedAndConstructionReachesNothing) {
    m_present.profile = kSaver;
    m_present.takeName();
    settle();
    EXPECT_EQ(m_tasks.waitingJobs(), 1U);
    EXPECT_FALSE(m_power.isLowPowerModeEnabled());
    EXPECT_EQ(m_present.questions, 0);
}

TEST_F(PowerProfileTest, IsOffWithoutADaemonAndWithoutABus) {
    start();
    EXPECT_FALSE(m_power.isLowPowerModeEnabled());
    const PowerProfile without(m_tasks, [] { return QDBusConnection(QStringLiteral("nowhere")); });
    m_tasks.runAll();
    EXPECT_FALSE(without.isLowPowerModeEnabled());
}

TEST_F(PowerProfileTest, IsOnInTheOneProfileThatSavesPower) {
    m_present.takeName();
    start();
    for (const auto& [profile, isOn] : {std::pair(kSaver, true),
                                        {kBalanced, false},
                                        {QStringLiteral("performance"), false},
                                        {QStringLiteral("Power-Saver"), false},
                                        {QString(), false},
                                        {kSaver, true}}) {
        m_present.change(profile);
        settle();
        EXPECT_EQ(m_power.isLowPowerModeEnabled(), isOn) << profile.toStdString();
    }
}

TEST_F(PowerProfileTest, EitherNameIsAskedWhenItStands) {
    for (auto* daemon : {&m_present, &m_former}) {
        daemon->profile = kSaver;
        daemon->takeName();
        PowerProfile power(m_tasks, [this] { return m_client; });
        start();
        EXPECT_TRUE(power.isLowPowerModeEnabled());
        EXPECT_GT(daemon->questions, 0);
        daemon->giveNameUp();
    }
}

TEST_F(PowerProfileTest, WhereBothStandThePresentNameHasTheWord) {
    m_present.takeName();
    m_former.takeName();
    m_former.profile = kSaver;
    start();
    EXPECT_FALSE(m_power.isLowPowerModeEnabled());
    m_present.change(kSaver);
    m_former.change(kBalanced);
    settle();
    EXPECT_TRUE(m_power.isLowPowerModeEnabled());
}

TEST_F(PowerProfileTest, APresentNameThatAnswersWithAnErrorLeavesTheWordToTheFormer) {
    m_present.profile = QVariant();
    m_present.takeName();
    m_former.profile = kSaver;
    m_former.takeName();
    start();
    EXPECT_TRUE(m_power.isLowPowerModeEnabled());
}

TEST_F(PowerProfileTest, ADaemonThatComesLaterIsHeardAndOneThatGoesIsOff) {
    start();
    m_former.profile = kSaver;
    m_former.takeName();
    settle();
    EXPECT_TRUE(m_power.isLowPowerModeEnabled());
    m_former.giveNameUp();
    settle();
    EXPECT_FALSE(m_power.isLowPowerModeEnabled());
    m_former.takeName();
    settle();
    EXPECT_TRUE(m_power.isLowPowerModeEnabled());
}

TEST_F(PowerProfileTest, WhoHasNotTheNameIsNotHeard) {
    m_present.takeName();
    start();
    auto other = m_bus.connect();
    FakePowerDaemon impostor(other, QStringLiteral("org.freedesktop.UPower.PowerProfiles"),
                             QStringLiteral("/org/freedesktop/UPower/PowerProfiles"));
    impostor.change(kSaver);
    FakePowerDaemon::settle(other, m_client);
    EXPECT_FALSE(m_power.isLowPowerModeEnabled());
}

TEST_F(PowerProfileTest, AnOwnerThatHasHandedTheNameOnIsNotHeardAnyMore) {
    m_present.takeName();
    start();
    auto other = m_bus.connect();
    FakePowerDaemon next(other, QStringLiteral("org.freedesktop.UPower.PowerProfiles"),
                         QStringLiteral("/org/freedesktop/UPower/PowerProfiles"));
    next.profile = kSaver;
    m_present.giveNameUp();
    next.takeName();
    FakePowerDaemon::settle(other, m_client);
    ASSERT_TRUE(m_power.isLowPowerModeEnabled());
    m_present.change(kBalanced);
    settle();
    EXPECT_TRUE(m_power.isLowPowerModeEnabled());
}

TEST_F(PowerProfileTest, AChangeThatIsToldWithoutItsValueIsAskedFor) {
    m_present.takeName();
    start();
    m_present.changeWithoutValue(kSaver);
    settle();
    EXPECT_TRUE(m_power.isLowPowerModeEnabled());
}

TEST_F(PowerProfileTest, OtherPropertiesAndInterfacesChangeNothing) {
    m_present.profile = kSaver;
    m_present.takeName();
    start();
    const int asked = m_present.questions;
    m_present.tell({{QStringLiteral("Degraded"), kBalanced}}, {QStringLiteral("Actions")});
    m_present.tell({{QStringLiteral("ActiveProfile"), kBalanced}}, {}, QStringLiteral("org.example.Other"));
    settle();
    EXPECT_TRUE(m_power.isLowPowerModeEnabled());
    EXPECT_EQ(m_present.questions, asked);
}

TEST_F(PowerProfileTest, WhatIsNoTextIsNoProfile) {
    m_present.takeName();
    start();
    for (const auto& value : std::vector<QVariant>{1, true, QStringList{kSaver}, QByteArray("power-saver"),
                                                   QVariantMap{{kSaver, kSaver}}}) {
        m_present.change(kSaver);
        settle();
        ASSERT_TRUE(m_power.isLowPowerModeEnabled());
        m_present.change(value);
        settle();
        EXPECT_FALSE(m_power.isLowPowerModeEnabled()) << value.typeName();
        m_present.change(kSaver);
        m_present.changeWithoutValue(value);
        settle();
        EXPECT_FALSE(m_power.isLowPowerModeEnabled()) << value.typeName() << ", answered";
    }
}

TEST_F(PowerProfileTest, AnAnswerThatIsOlderThanAChangeIsNotHeard) {
    m_present.answers = false;
    m_present.takeName();
    start();
    EXPECT_EQ(m_present.questions, 1);
    EXPECT_FALSE(m_power.isLowPowerModeEnabled()) << "not told yet";
    m_present.change(kSaver);
    settle();
    EXPECT_TRUE(m_power.isLowPowerModeEnabled());
    m_present.profile = kBalanced;
    m_present.answerAll();
    settle();
    EXPECT_TRUE(m_power.isLowPowerModeEnabled());
}

TEST_F(PowerProfileTest, AnAnswerOfAnOwnerThatHasGoneIsNotHeard) {
    m_present.answers = false;
    m_present.profile = kSaver;
    m_present.takeName();
    start();
    m_present.giveNameUp();
    settle();
    m_present.answerAll();
    settle();
    EXPECT_FALSE(m_power.isLowPowerModeEnabled());
}

TEST_F(PowerProfileTest, ADaemonIsNotStartedForThis) {
    // What could be started would have to be known to the bus: nothing is asked of a name that nobody has.
    start();
    EXPECT_EQ(m_present.questions + m_former.questions, 0);
    m_present.takeName();
    settle();
    EXPECT_EQ(m_present.questions, 1);
}

TEST_F(PowerProfileTest, ItMayGoWhileItIsWaitingForAnything) {
    m_present.answers = false;
    m_present.takeName();
    auto power = std::make_unique<PowerProfile>(m_tasks, [this] { return m_client; });
    power.reset(); // before the bus is reached
    m_tasks.runAll();
    power = std::make_unique<PowerProfile>(m_tasks, [this] { return m_client; });
    m_tasks.runAll();
    power.reset(); // before its owner is known
    settle();
    power = std::make_unique<PowerProfile>(m_tasks, [this] { return m_client; });
    start();
    power.reset(); // before the daemon has answered
    m_present.answerAll();
    m_present.change(kSaver);
    settle();
}

// How long a call waits that gives up by itself, in milliseconds: less than Qt waits for a bus, and more than a
// machine stands still.
constexpr int kPatience = 20'000;

TEST_F(PowerProfileTest, ABusThatHasStoppedToAnswerHoldsNobodyUp) {
    m_present.profile = kSaver;
    m_present.takeName();
    settle();
    m_bus.stopAnswering();
    const QDBusPendingCall patience = m_client.asyncCall(
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")),
        kPatience);
    m_tasks.runAll(); // the bus is reached, and nothing more
    EXPECT_FALSE(m_power.isLowPowerModeEnabled());
    QCoreApplication::processEvents();
    EXPECT_FALSE(patience.isFinished()) << "somebody waited for the bus";
    m_bus.goOn();
    settle();
    EXPECT_TRUE(m_power.isLowPowerModeEnabled());
}

} // namespace
} // namespace quillane
