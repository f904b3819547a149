#include "PrivateBus.h"
#include <atomic>
#include <csignal>
#include <gtest/gtest.h>

namespace quillane {

PrivateBus::PrivateBus(const std::string& startedAtNeed) {
    if (!startedAtNeed.empty()) { // by a program that does nothing and has ended well
        m_folder.file("started.service", "[D-BUS Service]\nName=" + startedAtNeed + "\nExec=/bin/true\n");
    }
    m_folder.file("bus.conf", "<busconfig><type>session</type><listen>unix:dir=" + m_folder.path() +
                                  "</listen><servicedir>" + m_folder.path() +
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
    ::kill(static_cast<pid_t>(m_daemon.processId()), SIGSTOP);
}

void PrivateBus::thaw() {
    ::kill(static_cast<pid_t>(m_daemon.processId()), SIGCONT);
}

void PrivateBus::die() {
    m_daemon.kill();
    m_daemon.waitForFinished();
}

QDBusConnection PrivateBus::connect() {
    static std::atomic<int> count = 0; // names of connections are the process's
    m_names.append(QStringLiteral("private %1").arg(++count));
    return QDBusConnection::connectToBus(m_address, m_names.last());
}

} // namespace quillane
