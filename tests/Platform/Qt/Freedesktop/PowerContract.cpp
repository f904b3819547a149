// What every Power owes its callers, run over the adapter and the fake.
#include "FakePower.h"
#include "FakePowerDaemon.h"
#include "PowerProfile.h"
#include "PrivateBus.h"
#include "StepTaskRunner.h"
#include <gtest/gtest.h>
#include <memory>

namespace quillane {
namespace {

// A machine on which power can be saved.
struct Machine {
    virtual ~Machine() = default;
    virtual const Power& power() const = 0;
    virtual void save(bool saves) = 0; // and everyone has heard of it
};

struct FakeMachine final : Machine {
    const Power& power() const override { return m_power; }
    void save(bool saves) override { m_power.isLowPower = saves; }
    FakePower m_power;
};

struct DaemonMachine final : Machine {
    DaemonMachine() {
        m_daemon.takeName();
        m_tasks.runAll();
    }
    const Power& power() const override { return m_power; }
    void save(bool saves) override {
        m_daemon.change(saves ? QStringLiteral("power-saver") : QStringLiteral("balanced"));
        FakePowerDaemon::settle(m_daemons, m_client);
    }

    PrivateBus m_bus;
    StepTaskRunner m_tasks;
    QDBusConnection m_daemons = m_bus.connect();
    QDBusConnection m_client = m_bus.connect();
    FakePowerDaemon m_daemon{m_daemons, QStringLiteral("net.hadess.PowerProfiles"),
                             QStringLiteral("/net/hadess/PowerProfiles")};
    PowerProfile m_power{m_tasks, [this] { return m_client; }};
};

struct Kind {
    const char* name;
    std::unique_ptr<Machine> (*make)();
};

class PowerContract : public testing::TestWithParam<Kind> {
  protected:
    std::unique_ptr<Machine> m_machine = GetParam().make();
};

TEST_P(PowerContract, NothingIsSavedUnlessItIsChosen) {
    EXPECT_FALSE(m_machine->power().isLowPowerModeEnabled());
}

TEST_P(PowerContract, WhatIsChosenIsToldUntilItIsChosenOtherwise) {
    for (const bool saves : {true, true, false, true, false}) {
        m_machine->save(saves);
        EXPECT_EQ(m_machine->power().isLowPowerModeEnabled(), saves);
        EXPECT_EQ(m_machine->power().isLowPowerModeEnabled(), saves) << "asked again";
    }
}

INSTANTIATE_TEST_SUITE_P(
    Machines, PowerContract,
    testing::Values(Kind{"Daemon", [] { return std::unique_ptr<Machine>(new DaemonMachine); }},
                    Kind{"Fake", [] { return std::unique_ptr<Machine>(new FakeMachine); }}),
    [](const auto& kind) { return kind.param.name; });

} // namespace
} // namespace quillane
