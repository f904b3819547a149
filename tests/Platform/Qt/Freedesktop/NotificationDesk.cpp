#include "NotificationDesk.h"
#include <QDBusConnectionInterface>
#include <QFile>
#include <QTextDocumentFragment>
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>

namespace quillane {
namespace {

// As a server with markup shows it.
std::string plain(const QString& markup) {
    return QTextDocumentFragment::fromHtml(markup).toPlainText().toStdString();
}

NotificationDesk::Shown wordsOf(const std::vector<UserNotification>& standing) {
    NotificationDesk::Shown shown;
    for (const auto& notification : standing) {
        shown.emplace_back(notification.title, notification.body);
    }
    return shown;
}

} // namespace

bool RecorderDesk::shows(const Shown& expected) {
    const auto shown = wordsOf(m_recorder.standing());
    EXPECT_EQ(shown, expected);
    return shown == expected;
}

void RecorderDesk::click(const std::string& title) {
    for (const auto& notification : m_recorder.standing()) {
        if (notification.title == title) {
            m_recorder.click(notification.identifier);
        }
    }
}

bool CentreDesk::shows(const Shown& expected) {
    const auto shown = wordsOf(m_screen.standing);
    EXPECT_EQ(shown, expected);
    return shown == expected;
}

void FakeServerDesk::settle() {
    constexpr int kMostSteps = 4; // the question, two notifications, a click
    for (int i = 0; i < kMostSteps; ++i) {
        m_tasks.runAll();
        m_connection.interface()->isServiceRegistered(QStringLiteral("none")); // what was said has arrived
        QCoreApplication::processEvents();                                     // and is answered
        awaitArrival(*m_server, m_connection);
    }
    m_tasks.runAll();
}

bool FakeServerDesk::shows(const Shown& expected) {
    settle();
    Shown shown;
    for (const auto& post : m_server->standing) {
        shown.emplace_back(post.title.toStdString(), plain(post.body));
    }
    EXPECT_EQ(shown, expected);
    return shown == expected;
}

void FakeServerDesk::click(const std::string& title) {
    m_server->click(m_server->numberOf(QString::fromStdString(title)));
}

void FakeServerDesk::restart() {
    m_server.reset();
    m_server = std::make_unique<FakeNotificationServer>(m_bus.connect());
    settle();
}

ProgramDesk::ProgramDesk()
    : m_environment(QProcessEnvironment::systemEnvironment()) {
    m_environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_bus.address());
}

ProgramDesk::~ProgramDesk() {
    stop();
}

void ProgramDesk::start(const QString& program, const QStringList& arguments) {
    m_server.setProcessEnvironment(m_environment);
    m_server.start(program, arguments);
    const auto name = QString::fromLatin1(FakeNotificationServer::kName);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_connection.interface()->isServiceRegistered(name).value(); },
                                kLongWait))
        << m_server.readAllStandardError().toStdString();
}

void ProgramDesk::stop() {
    m_server.kill();
    m_server.waitForFinished();
}

void ProgramDesk::restart() {
    stop();
    m_closed = 0;
    start(m_server.program(), m_server.arguments());
    settle();
}

void ProgramDesk::settle() {
    constexpr int kMostSteps = 6;
    const auto name = QString::fromLatin1(FakeNotificationServer::kName);
    const auto question =
        QDBusMessage::createMethodCall(name, QString::fromLatin1(FakeNotificationServer::kPath), name,
                                       QStringLiteral("GetServerInformation"));
    for (int i = 0; i < kMostSteps; ++i) {
        m_tasks.runAll();
        m_connection.call(question); // answered after all that was said before
        QCoreApplication::processEvents();
    }
    m_tasks.runAll();
}

QByteArray ProgramDesk::outputOf(const QString& program, const QStringList& arguments, bool mayFail) const {
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished());
    EXPECT_TRUE(mayFail || process.exitCode() == 0) << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput().trimmed();
}

DunstDesk::DunstDesk() {
    m_folder.file("dunstrc", "[global]\nmarkup = full\nnotification_limit = 20\n"
                             "[urgency_normal]\ntimeout = 0\n"
                             "[each]\nsummary = \"*\"\nscript = " +
                                 m_folder.at("each") + "\n");
    // Scripts run side by side and may end in any order.
    m_folder.file("each", "#!/bin/sh\nprintf '%s\\t%s\\t%s\\t%s\\n' \"$DUNST_TIMESTAMP\" \"$DUNST_ID\" "
                          "\"$DUNST_SUMMARY\" \"$DUNST_BODY\" >>" +
                              m_folder.at("record") + "\n");
    std::filesystem::permissions(m_folder.at("each"), std::filesystem::perms::owner_all);
    start(QStringLiteral("dunst"), {QStringLiteral("-conf"), QString::fromStdString(m_folder.at("dunstrc"))});
}

void DunstDesk::restart() {
    m_folder.file("record", "");
    ProgramDesk::restart();
}

std::vector<DunstDesk::Line> DunstDesk::record() const {
    QFile file(QString::fromStdString(m_folder.at("record")));
    std::vector<Line> lines;
    if (file.open(QIODevice::ReadOnly)) {
        for (const auto& text : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
            const auto parts = text.split(QLatin1Char('\t'));
            if (parts.size() == 4) {
                lines.push_back({parts[0].toLongLong(), parts[1].toUInt(),
                                 std::pair(parts[2].toStdString(), plain(parts[3]))});
            }
        }
    }
    std::ranges::stable_sort(lines, {}, &Line::time);
    return lines;
}

int DunstDesk::countShown() const {
    return outputOf(QStringLiteral("dunstctl"), {QStringLiteral("count"), QStringLiteral("displayed")})
        .toInt();
}

// Numbers rise, and one that is replaced keeps its number.
NotificationDesk::Shown DunstDesk::shown() const {
    std::map<uint, Shown::value_type> last;
    for (const auto& line : record()) {
        last[line.number] = line.words;
    }
    Shown shown;
    for (auto it = std::next(last.begin(), std::min<std::ptrdiff_t>(m_closed, std::ssize(last)));
         it != last.end(); ++it) {
        shown.push_back(it->second);
    }
    return shown;
}

bool DunstDesk::shows(const Shown& expected) {
    settle();
    const bool isSo = QTest::qWaitFor(
        [&] { return shown() == expected && countShown() == static_cast<int>(expected.size()); }, kLongWait);
    EXPECT_TRUE(isSo) << testing::PrintToString(shown()) << ", and on the screen " << countShown();
    return isSo;
}

void DunstDesk::closeFirst() {
    const int before = countShown();
    outputOf(QStringLiteral("dunstctl"), {QStringLiteral("close")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return countShown() < before; }, kLongWait));
    ++m_closed;
}

// It acts on the first one alone.
void DunstDesk::click(const std::string& title) {
    while (!shown().empty() && shown().front().first != title) {
        closeFirst();
    }
    ASSERT_FALSE(shown().empty()) << title;
    outputOf(QStringLiteral("dunstctl"), {QStringLiteral("action"), QStringLiteral("0")});
}

DaemonDesk::DaemonDesk() {
    start(QStringLiteral("/usr/lib/notification-daemon/notification-daemon"));
}

QStringList DaemonDesk::windows() const {
    const auto found = outputOf(QStringLiteral("xdotool"),
                                {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                 QStringLiteral("--class"), QStringLiteral("notification-daemon")},
                                true); // it fails when there is none
    return QString::fromLatin1(found).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

int DaemonDesk::countShown() const {
    return static_cast<int>(windows().size());
}

bool DaemonDesk::shows(const Shown& expected) {
    settle();
    return QTest::qWaitFor([&] { return countShown() == static_cast<int>(expected.size()); }, kLongWait);
}

// The daemon closes what was clicked.
void DaemonDesk::click(const std::string& /*title*/) {
    const auto there = windows();
    ASSERT_EQ(there.size(), 1);
    outputOf(QStringLiteral("xdotool"),
             {QStringLiteral("mousemove"), QStringLiteral("--window"), there.front(), QStringLiteral("60"),
              QStringLiteral("30"), QStringLiteral("click"), QStringLiteral("1")});
    EXPECT_TRUE(QTest::qWaitFor([this] { return countShown() == 0; }, kLongWait));
}

std::unique_ptr<ServerDesk> serverDesk() {
    const auto name = qEnvironmentVariable("QUILLANE_NOTIFICATION_SERVER");
    if (name == QLatin1String("dunst")) {
        return std::make_unique<DunstDesk>();
    }
    if (name == QLatin1String("notification-daemon")) {
        return std::make_unique<DaemonDesk>();
    }
    return std::make_unique<FakeServerDesk>();
}

} // namespace quillane
