#include "PrivateBus.h"
#include <QFile>
#include <atomic>
#include <chrono>
#include <csignal>
#include <future>
#include <gtest/gtest.h>
#include <sys/types.h>

namespace quillane {

PrivateBus::PrivateBus(const std::string& startedAtNeed) {
    m_folder.folder("services");
    if (!startedAtNeed.empty()) { // by a program that does nothing and has ended well
        m_folder.file("services/started.service",
                      "[D-BUS Service]\nName=" + startedAtNeed + "\nExec=/bin/true\n");
    }
    m_folder.file("bus.conf", "<busconfig><type>session</type><listen>unix:dir=" + m_folder.path() +
                                  "</listen><servicedir>" + m_folder.at("services") +
                                  "</servicedir><policy context=\"default\"><allow send_destination=\"*\"/>"
                                  "<allow receive_sender=\"*\"/><allow own=\"*\"/></policy></busconfig>");
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                    QStringLiteral("--config-file=") + QString::fromStdString(m_folder.at("bus.conf"))});
    while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead()) {
    }
    m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    EXPECT_FALSE(m_address.isEmpty()) << "the bus did not start";
}

PrivateBus::~PrivateBus() {
    for (const auto& name : m_names) {
        QDBusConnection::disconnectFromBus(name);
    }
    die();
}

void PrivateBus::freeze() {
    ASSERT_GT(m_daemon.processId(), 1);
    ASSERT_EQ(::kill(static_cast<pid_t>(m_daemon.processId()), SIGSTOP), 0);
}

void PrivateBus::thaw() {
    ASSERT_GT(m_daemon.processId(), 1);
    ASSERT_EQ(::kill(static_cast<pid_t>(m_daemon.processId()), SIGCONT), 0);
}

bool PrivateBus::holdsNobodyUp(const std::function<void()>& work) {
    freeze();
    std::promise<void> wentOn;
    auto watchdog = std::async(std::launch::async, [daemon = static_cast<pid_t>(m_daemon.processId()),
                                                    future = wentOn.get_future()] {
        constexpr int kMoments = 100; // long ones: a busy machine adds something to each
        bool inTime = false;
        for (int i = 0; i < kMoments && !inTime; ++i) {
            inTime = future.wait_for(std::chrono::milliseconds(100)) == std::future_status::ready;
        }
        ::kill(daemon, SIGCONT);
        return inTime;
    });
    work();
    wentOn.set_value();
    return watchdog.get();
}

void PrivateBus::die() {
    m_daemon.kill();
    m_daemon.waitForFinished();
}

void PrivateBus::offer(const std::string& name) {
    m_folder.file("services/" + name + ".service", "[D-BUS Service]\nName=" + name +
                                                       "\nExec=/usr/bin/touch " +
                                                       m_folder.at("started-" + name) + "\n");
}

bool PrivateBus::hasStarted(const std::string& name) const {
    return QFile::exists(QString::fromStdString(m_folder.at("started-" + name)));
}

QDBusConnection PrivateBus::connect() {
    static std::atomic<int> count = 0; // names of connections are the process's
    m_names.append(QStringLiteral("private %1").arg(++count));
    return QDBusConnection::connectToBus(m_address, m_names.last());
}

} // namespace quillane
