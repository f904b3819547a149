#pragma once
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTest>
#include <QVariantMap>
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

namespace quillane {

// The server of notifications of a desktop, which does as it is told: it answers or does not, tells the truth or
// does not. Lives on the test's own thread and goes from the bus with this.
class FakeNotificationServer : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

  public:
    static constexpr const char* kName = "org.freedesktop.Notifications";
    static constexpr const char* kPath = "/org/freedesktop/Notifications";

    explicit FakeNotificationServer(QDBusConnection bus, uint first = 1)
        : m_bus(std::move(bus))
        , m_next(first) {
        m_bus.registerObject(QString::fromLatin1(kPath), this,
                             QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        m_bus.registerService(QString::fromLatin1(kName));
    }
    ~FakeNotificationServer() override { // NOLINT: Qt's own calls from a destructor
        m_bus.unregisterService(QString::fromLatin1(kName));
        m_bus.unregisterObject(QString::fromLatin1(kPath));
    }

    // What came with one call.
    struct Post {
        QString program;
        uint replaced = 0;
        QString icon;
        QString title;
        QString body;
        QStringList actions;
        QVariantMap hints;
        int timeout = 0;
        uint number = 0; // that it was given
    };

    QStringList abilities = {QStringLiteral("actions"), QStringLiteral("body"),
                             QStringLiteral("body-markup")};
    bool answersQuestions = true; // about its abilities
    bool answersPosts = true;
    std::function<void()> whenPosted = [] {}; // before the answer
    std::optional<uint> lie;                  // the number that every post gets

    int questions = 0;
    std::vector<Post> posts;    // all of them
    std::vector<Post> standing; // in the order in which their numbers came up
    std::vector<uint> withdrawn;
    std::vector<QDBusMessage> unanswered; // posts that wait for answer()

    const Post* standingWith(const QString& title) const {
        const auto found = std::ranges::find(standing, title, &Post::title);
        return found == standing.end() ? nullptr : &*found;
    }
    uint numberOf(const QString& title) const {
        const auto* const post = standingWith(title);
        return post == nullptr ? 0 : post->number;
    }
    void click(uint number) { emit ActionInvoked(number, QStringLiteral("default")); }
    void end(uint number) {
        std::erase_if(standing, [&](const Post& post) { return post.number == number; });
        emit NotificationClosed(number, 2);
    }
    // Lives on without the name, as one that another has replaced.
    void giveNameAway() { m_bus.unregisterService(QString::fromLatin1(kName)); }
    void answer(std::size_t index, uint number) { answerWith(index, number); }
    void answerWith(std::size_t index, const QVariant& answer) {
        m_bus.send(unanswered.at(index).createReply(answer));
    }
    void refuse(std::size_t index) {
        m_bus.send(unanswered.at(index).createErrorReply(QDBusError::Failed, QStringLiteral("no")));
    }

  public slots:
    // NOLINTBEGIN(readability-identifier-naming): the interface's own names
    QStringList GetCapabilities() {
        ++questions;
        if (!answersQuestions) {
            setDelayedReply(true);
        }
        return abilities;
    }
    uint Notify(const QString& program, uint replaced, const QString& icon, const QString& title,
                const QString& body, const QStringList& actions, const QVariantMap& hints, int timeout) {
        const uint number = lie ? *lie : replaced != 0 ? replaced : m_next++;
        posts.push_back({program, replaced, icon, title, body, actions, hints, timeout, number});
        const auto same = std::ranges::find(standing, number, &Post::number);
        if (same == standing.end()) {
            standing.push_back(posts.back());
        } else {
            *same = posts.back();
        }
        if (!answersPosts) {
            setDelayedReply(true);
            unanswered.push_back(message());
        }
        whenPosted();
        return number;
    }
    void CloseNotification(uint number) {
        withdrawn.push_back(number);
        std::erase_if(standing, [&](const Post& post) { return post.number == number; });
        emit NotificationClosed(number, 3);
    }

  signals:
    void ActionInvoked(uint number, const QString& action);
    void ActivationToken(uint number, const QString& token);
    void NotificationClosed(uint number, uint reason);
    // NOLINTEND(readability-identifier-naming)

  private:
    QDBusConnection m_bus;
    uint m_next;
};

constexpr int kLongWait = 60'000; // milliseconds, after which what should have come never comes

// Hears what a client's connection hears. What arrives here has arrived at all who listened before.
class EndListener : public QObject {
    Q_OBJECT

  public:
    explicit EndListener(QDBusConnection bus) {
        bus.connect(QString(), QString::fromLatin1(FakeNotificationServer::kPath),
                    QString::fromLatin1(FakeNotificationServer::kName), QStringLiteral("NotificationClosed"),
                    this, SLOT(hear(uint, uint)));
    }

    QSet<uint> ended;

  public slots:
    void hear(uint number, uint /*reason*/) { ended.insert(number); }
};

// What the server has said so far has arrived at whoever listens on this connection: messages arrive in the order in
// which they were sent.
inline void awaitArrival(FakeNotificationServer& server, const QDBusConnection& connection) {
    static uint last = 4'000'000'000; // nothing has such a number
    const EndListener listener(connection);
    // The bus knows that somebody listens when it has answered what was asked afterwards.
    connection.call(QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
    server.end(--last);
    EXPECT_TRUE(QTest::qWaitFor([&] { return listener.ended.contains(last); }, kLongWait));
    QCoreApplication::processEvents();
}

} // namespace quillane
