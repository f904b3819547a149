#pragma once
#include "InstanceLock.h"
#include "InstanceSocket.h"
#include "PrivateBus.h"
#include "TemporaryFolder.h"
#include <QDBusConnectionInterface>
#include <QProcess>
#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <string>
#include <sys/prctl.h>
#include <sys/types.h>

namespace quillane {

inline const auto kNoBus = QStringLiteral("unix:path=/nowhere");
inline const auto kName = QStringLiteral("org.quillane.Quillane");
inline constexpr int kLong = 60'000; // milliseconds; a start may take as long as the machine likes

// One start of the program, ended with the test.
class Start {
  public:
    ~Start() { kill(); }
    void end() {
        m_process.terminate();
        EXPECT_TRUE(m_process.waitForFinished(kLong));
    }
    void kill() {
        m_process.kill();
        m_process.waitForFinished(kLong);
    }
    void send(int signal) const { ASSERT_EQ(::kill(static_cast<pid_t>(m_process.processId()), signal), 0); }
    bool runs() { return !m_process.waitForFinished(0) && m_process.state() == QProcess::Running; }
    // Its status, once it has ended by itself; -1 when it was killed or goes on.
    int status() {
        const bool hasEnded = m_process.waitForFinished(kLong) || m_process.state() == QProcess::NotRunning;
        return hasEnded && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }
    std::string words() { return m_process.readAllStandardError().toStdString(); }

  private:
    friend struct ProgramTest;
    QProcess m_process;
};

// The program over a home of its own, on a bus of its own.
struct ProgramTest : testing::Test {
    TemporaryFolder folder;
    PrivateBus bus;
    QString systemBus; // its address; empty for that of the machine

    // So that a folder that can't be written is one for the administrator too.
    static void heedPermissions() {
        constexpr int kOverride = 1; // the kernel's numbers
        constexpr int kReadSearch = 2;
        for (const int power : {kOverride, kReadSearch}) {
            (void)::prctl(PR_CAPBSET_DROP, power, 0, 0, 0); // nobody else has it
        }
    }
    void start(Start& start, const QString& busAddress, const QStringList& arguments = {}) const {
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
            environment.insert(QLatin1String(name), QString::fromStdString(folder.at("home")));
        }
        // On a display only where there is one for tests: the platform decides what Qt asks of the bus.
        const bool hasDisplay = qEnvironmentVariableIsSet("QUILLANE_WINDOW_MANAGER");
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"),
                           hasDisplay ? QStringLiteral("xcb") : QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), busAddress);
        if (!systemBus.isEmpty()) {
            environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), systemBus);
        }
        environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), QStringLiteral("token"));
        start.m_process.setProcessEnvironment(environment);
        start.m_process.setChildProcessModifier(heedPermissions);
        start.m_process.start(QStringLiteral(QUILLANE_PROGRAM), arguments);
        ASSERT_TRUE(start.m_process.waitForStarted(kLong));
    }
    // Whether a start listens by now whose window is there.
    bool isUp(std::chrono::milliseconds patience = std::chrono::minutes(1)) const {
        // By its name alone: to ask for the lock would be to have it for a moment.
        const auto name =
            InstanceLock(InstanceLock::pathBeside(folder.at("home/quillane/defaults.plist"))).readName();
        return !name.empty() &&
               InstanceSocket::tell(name, "activate\n", patience) == InstanceSocket::Answer::given;
    }
    void startAndWait(Start& first, const QString& busAddress, const QStringList& arguments = {}) const {
        start(first, busAddress, arguments);
        while (first.runs() && !isUp()) {
        }
        ASSERT_TRUE(first.runs()) << first.words();
    }
    bool hasOwner() { return bus.connect().interface()->isServiceRegistered(kName); }
};

} // namespace quillane
