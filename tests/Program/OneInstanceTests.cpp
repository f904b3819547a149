// One program a person, tried with the program.
#include "InstanceLock.h"
#include "InstanceSocket.h"
#include "PrivateBus.h"
#include "TemporaryFolder.h"
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QProcess>
#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <string>
#include <sys/types.h>

namespace quillane {
namespace {

using namespace std::chrono_literals;

const auto kNoBus = QStringLiteral("unix:path=/nowhere");
const auto kName = QStringLiteral("org.quillane.Quillane");
constexpr int kLong = 60'000; // milliseconds; a start may take as long as the machine likes

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
    friend struct OneInstance;
    QProcess m_process;
};

struct OneInstance : testing::Test {
    TemporaryFolder folder;
    PrivateBus bus;

    void start(Start& start, const QString& busAddress, const QStringList& arguments = {}) const {
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
            environment.insert(QLatin1String(name), QString::fromStdString(folder.at("home")));
        }
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), busAddress);
        environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), QStringLiteral("token"));
        start.m_process.setProcessEnvironment(environment);
        start.m_process.start(QStringLiteral(QUILLANE_PROGRAM), arguments);
        ASSERT_TRUE(start.m_process.waitForStarted(kLong));
    }
    // Whether a start listens by now whose window is there.
    bool isUp() const {
        // By its name alone: to ask for the lock would be to have it for a moment.
        const auto name =
            InstanceLock(InstanceLock::pathBeside(folder.at("home/quillane/defaults.plist"))).readName();
        return !name.empty() &&
               InstanceSocket::tell(name, "activate\n", 1min) == InstanceSocket::Answer::given;
    }
    void startAndWait(Start& first, const QString& busAddress, const QStringList& arguments = {}) const {
        start(first, busAddress, arguments);
        while (first.runs() && !isUp()) {
        }
        ASSERT_TRUE(first.runs()) << first.words();
    }
    bool hasOwner() { return bus.connect().interface()->isServiceRegistered(kName); }
};

TEST_F(OneInstance, ASecondStartEndsAndTheFirstGoesOnWhateverBusEachHas) {
    folder.folder("home");
    PrivateBus other;
    for (const auto& [ofFirst, ofSecond] :
         {std::pair{bus.address(), bus.address()}, std::pair{bus.address(), other.address()},
          std::pair{bus.address(), kNoBus}, std::pair{kNoBus, bus.address()}, std::pair{kNoBus, kNoBus}}) {
        SCOPED_TRACE(ofFirst.toStdString() + ", " + ofSecond.toStdString());
        Start first;
        startAndWait(first, ofFirst);
        EXPECT_EQ(hasOwner(), ofFirst != kNoBus);
        Start second;
        start(second, ofSecond);
        EXPECT_EQ(second.status(), 0) << second.words();
        EXPECT_TRUE(first.runs()) << first.words();
    }
}

TEST_F(OneInstance, WhileTheFirstIsStoppedASecondStartSaysSoAndEnds) {
    folder.folder("home");
    Start first;
    startAndWait(first, bus.address());
    first.send(SIGSTOP);
    for (const auto& address : {bus.address(), kNoBus}) {
        Start second;
        start(second, address);
        EXPECT_EQ(second.status(), 1);
        EXPECT_EQ(second.words(), "Quillane is already running, and does not answer.\n");
    }
    first.send(SIGCONT);
    EXPECT_TRUE(isUp());
    EXPECT_TRUE(first.runs());
}

TEST_F(OneInstance, AfterTheFirstWasKilledTheNextStartIsTheFirst) {
    folder.folder("home");
    for (const auto& address : {bus.address(), kNoBus}) {
        Start first;
        startAndWait(first, address);
        first.kill();
        Start next;
        startAndWait(next, address);
        EXPECT_EQ(hasOwner(), address != kNoBus);
    }
}

TEST_F(OneInstance, OnABusThatHasStoppedThereIsOneProgramToo) {
    folder.folder("home");
    bus.freeze();
    Start first;
    startAndWait(first, bus.address());
    Start second;
    start(second, bus.address());
    EXPECT_EQ(second.status(), 0) << second.words();
    EXPECT_TRUE(first.runs());
    bus.thaw();
}

TEST_F(OneInstance, TheDesktopCallsTheProgramOnTheBus) {
    folder.folder("home");
    Start first;
    startAndWait(first, bus.address());
    auto call = QDBusMessage::createMethodCall(kName, QStringLiteral("/org/quillane/Quillane"),
                                               QStringLiteral("org.freedesktop.Application"),
                                               QStringLiteral("ActivateAction"));
    for (const auto* section : {"Startup", "no section"}) {
        call.setArguments(
            {QStringLiteral("show-section"), QVariantList{QString::fromLatin1(section)}, QVariantMap()});
        EXPECT_EQ(bus.connect().call(call, QDBus::Block, kLong).type(), QDBusMessage::ReplyMessage);
    }
    EXPECT_TRUE(first.runs()) << first.words();
}

TEST_F(OneInstance, OneThatIsRelaunchedComesUpWhenTheOtherHasGone) {
    folder.folder("home");
    Start old;
    startAndWait(old, bus.address());
    Start anew;
    start(anew, bus.address(), {QStringLiteral("--relaunched")});
    old.end();
    while (anew.runs() && !isUp()) {
    }
    EXPECT_TRUE(anew.runs()) << anew.words();
    EXPECT_TRUE(hasOwner());
}

} // namespace
} // namespace quillane
