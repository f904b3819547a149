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

} // namespace

bool RecorderDesk::shows(const Shown& expected) {
    Shown shown;
    for (const auto& notification : m_recorder.standing()) {
        shown.emplace_back(notification.title, notification.body);
    }
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

DunstDesk::DunstDesk()
    : m_environment(QProcessEnvironment::systemEnvironment()) {
    m_environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_bus.address());
    m_folder.file("dunstrc", "[global]\nmarkup = full\nnotification_limit = 20\n"
                             "[urgency_normal]\ntimeout = 0\n"
                             "[each]\nsummary = \"*\"\nscript = " +
                                 m_folder.at("each") + "\n");
    // Scripts run side by side and may end in any order.
    m_folder.file("each", "#!/bin/sh\nprintf '%s\\t%s\\t%s\\t%s\\n' \"$DUNST_TIMESTAMP\" \"$DUNST_ID\" "
                          "\"$DUNST_SUMMARY\" \"$DUNST_BODY\" >>" +
                              m_folder.at("record") + "\n");
    std::filesystem::permissions(m_folder.at("each"), std::filesystem::perms::owner_all);
    start();
}

DunstDesk::~DunstDesk() {
    stop();
}

void DunstDesk::start() {
    m_dunst.setProcessEnvironment(m_environment);
    m_dunst.start(QStringLiteral("dunst"),
                  {QStringLiteral("-conf"), QString::fromStdString(m_folder.at("dunstrc"))});
    EXPECT_TRUE(QTest::qWaitFor(
        [this] {
            return m_connection.interface()
                ->isServiceRegistered(QString::fromLatin1(FakeNotificationServer::kName))
                .value();
        },
        20'000))
        << m_dunst.readAllStandardError().toStdString();
}

void DunstDesk::stop() {
    m_dunst.kill();
    m_dunst.waitForFinished();
}

void DunstDesk::restart() {
    stop();
    m_folder.file("record", "");
    m_closed = 0;
    start();
    settle();
}

void DunstDesk::settle() {
    constexpr int kMostSteps = 6;
    auto question = QDBusMessage::createMethodCall(QString::fromLatin1(FakeNotificationServer::kName),
                                                   QString::fromLatin1(FakeNotificationServer::kPath),
                                                   QString::fromLatin1(FakeNotificationServer::kName),
                                                   QStringLiteral("GetServerInformation"));
    for (int i = 0; i < kMostSteps; ++i) {
        m_tasks.runAll();
        m_connection.call(question); // answered after all that was said before
        QCoreApplication::processEvents();
    }
    m_tasks.runAll();
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

QByteArray DunstDesk::control(const QStringList& arguments) {
    QProcess program;
    program.setProcessEnvironment(m_environment);
    program.start(QStringLiteral("dunstctl"), arguments);
    EXPECT_TRUE(program.waitForFinished());
    EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
    return program.readAllStandardOutput().trimmed();
}

int DunstDesk::countShown() {
    return control({QStringLiteral("count"), QStringLiteral("displayed")}).toInt();
}

bool DunstDesk::shows(const Shown& expected) {
    settle();
    Shown shown;
    const bool isSo = QTest::qWaitFor(
        [&] {
            std::vector<uint> order;
            std::map<uint, std::pair<std::string, std::string>> last;
            for (const auto& line : record()) {
                if (!last.contains(line.number)) {
                    order.push_back(line.number);
                }
                last[line.number] = line.words;
            }
            shown.clear();
            for (std::size_t i = m_closed; i < order.size(); ++i) {
                shown.push_back(last[order[i]]);
            }
            return shown == expected && countShown() == static_cast<int>(expected.size());
        },
        10'000);
    EXPECT_TRUE(isSo) << testing::PrintToString(shown) << ", and on the screen " << countShown();
    return isSo;
}

void DunstDesk::closeFirst() {
    const int before = countShown();
    control({QStringLiteral("close")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return countShown() < before; }));
    ++m_closed;
}

// It acts on the first one alone.
void DunstDesk::click(const std::string& title) {
    std::map<uint, std::string> titles;
    for (const auto& line : record()) {
        titles[line.number] = line.words.first;
    }
    auto first = std::next(titles.begin(), m_closed);
    for (; first != titles.end() && first->second != title; ++first) {
        closeFirst();
    }
    ASSERT_NE(first, titles.end()) << title;
    control({QStringLiteral("action"), QStringLiteral("0")});
}

std::unique_ptr<ServerDesk> serverDesk() {
    if (qEnvironmentVariable("QUILLANE_NOTIFICATION_SERVER") == QLatin1String("dunst")) {
        return std::make_unique<DunstDesk>();
    }
    return std::make_unique<FakeServerDesk>();
}

} // namespace quillane
