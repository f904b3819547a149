#include "FakePowerDaemon.h"
#include "PowerProfile.h"
#include "PrivateBus.h"
#include "StepTaskRunner.h"
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace quillane {
namespace {

const auto kSaver = QStringLiteral("power-saver");
const auto kBalanced = QStringLiteral("balanced");

QDBusMessage busCall(const QString& method, const QVariantList& arguments = {}) {
    const auto name = QStringLiteral("org.freedesktop.DBus");
    auto call = QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/DBus"), name, method);
    call.setArguments(arguments);
    return call;
}

// What was sent to this connection before this has arrived, and nobody has heard of it yet.
void goAroundUnheard(const QDBusConnection& bus) {
    EXPECT_EQ(bus.call(busCall(QStringLiteral("GetId")), QDBus::Block).type(), QDBusMessage::ReplyMessage);
}

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

TEST_F(PowerProfileTest, ABusThatDiesTakesTheProfileWithIt) {
    m_present.profile = kSaver;
    m_present.takeName();
    start();
    ASSERT_TRUE(m_power.isLowPowerModeEnabled());
    m_bus.die();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_power.isLowPowerModeEnabled(); }, 60'000));
}

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

TEST_F(PowerProfileTest, WhatAFormerOwnerSaidBeforeItWasKnownThatHeIsOneIsNotHeard) {
    m_present.takeName();
    start();
    auto other = m_bus.connect();
    FakePowerDaemon next(other, QStringLiteral("org.freedesktop.UPower.PowerProfiles"),
                         QStringLiteral("/org/freedesktop/UPower/PowerProfiles"));
    next.profile = kSaver;
    m_present.giveNameUp();
    next.takeName();
    m_present.change(kBalanced);
    goAroundUnheard(m_daemons);
    goAroundUnheard(m_client);
    FakePowerDaemon::settle(other, m_client);
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

TEST_F(PowerProfileTest, NoDaemonIsStartedForThis) {
    const std::string control = "org.example.Control";
    const std::vector<std::string> names = {"org.freedesktop.UPower.PowerProfiles",
                                            "net.hadess.PowerProfiles"};
    for (const auto& name : names) {
        m_bus.offer(name);
    }
    m_bus.offer(control);
    start();
    static_cast<void>(m_client.asyncCall(
        busCall(QStringLiteral("StartServiceByName"), {QString::fromStdString(control), 0U})));
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_bus.hasStarted(control); })) << "as one that is asked for is";
    for (const auto& name : names) {
        EXPECT_FALSE(m_bus.hasStarted(name)) << name;
    }
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

class StoppedBusTest : public PowerProfileTest {
  protected:
    void SetUp() override {
        m_present.profile = kSaver;
        m_present.takeName();
        settle();
    }
    // Not even while this is done and the bus is silent.
    void expectThatNobodyWaits(const std::function<void()>& work) {
        EXPECT_TRUE(m_bus.holdsNobodyUp([&] {
            work();
            EXPECT_FALSE(m_power.isLowPowerModeEnabled());
        })) << "somebody waited for the bus";
        settle();
        EXPECT_TRUE(m_power.isLowPowerModeEnabled());
    }
};

TEST_F(StoppedBusTest, HoldsNobodyUpWhenItIsReached) {
    expectThatNobodyWaits([this] { m_tasks.runAll(); });
}

TEST_F(StoppedBusTest, HoldsNobodyUpWhenItHasToldTheOwnerOfTheName) {
    m_tasks.runAll();
    goAroundUnheard(m_client);
    expectThatNobodyWaits([] { QCoreApplication::processEvents(); });
}

} // namespace
} // namespace quillane
