#pragma once
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QTest>
#include <QVariant>
#include <QVariantMap>
#include <gtest/gtest.h>

namespace quillane {

// The daemon for power profiles under one of its names, on a connection of its own.
class FakePowerDaemon : public QDBusVirtualObject {
    Q_OBJECT

  public:
    // Has no name before takeName().
    FakePowerDaemon(QDBusConnection bus, QString name, QString path)
        : m_bus(std::move(bus))
        , m_name(std::move(name))
        , m_path(std::move(path)) {
        m_bus.registerVirtualObject(m_path, this);
    }
    ~FakePowerDaemon() override { m_bus.unregisterObject(m_path); }

    void takeName() { EXPECT_TRUE(m_bus.registerService(m_name)); }
    void giveNameUp() { EXPECT_TRUE(m_bus.unregisterService(m_name)); }

    QVariant profile = QStringLiteral("balanced"); // what it answers with; an invalid one is an error
    bool answers = true;
    int questions = 0;

    // Another profile, told to all who listen.
    void change(const QVariant& value) {
        profile = value;
        tell({{QStringLiteral("ActiveProfile"), value}}, {});
    }
    // Another profile, of which only is told that it is no longer what it was.
    void changeWithoutValue(const QVariant& value) {
        profile = value;
        tell({}, {QStringLiteral("ActiveProfile")});
    }
    void tell(const QVariantMap& changed, const QStringList& invalidated, const QString& interface = {}) {
        auto signal = QDBusMessage::createSignal(m_path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                                 QStringLiteral("PropertiesChanged"));
        signal << (interface.isEmpty() ? m_name : interface) << changed << invalidated;
        m_bus.send(signal);
    }
    // What was sent to and fro before this has arrived.
    static void settle(const QDBusConnection& daemon, const QDBusConnection& client) {
        // To and fro: the question for the owner, the answer, the question for the profile, the answer.
        constexpr int kRounds = 4;
        for (int i = 0; i < kRounds; ++i) {
            goAround(client);
            goAround(daemon);
            goAround(client);
        }
    }
    // The answers to those who are still waiting.
    void answerAll() {
        for (const auto& question : std::exchange(m_waiting, {})) {
            answer(question);
        }
    }

    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& /*bus*/) override {
        ++questions;
        if (answers) {
            answer(message);
        } else {
            m_waiting.append(message);
        }
        return true;
    }

  private:
    // Messages of one connection arrive in their order: when the bus has answered this, it has passed on all before.
    static void goAround(const QDBusConnection& bus) {
        const QDBusPendingCall call = bus.asyncCall(
            QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                           QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
        EXPECT_TRUE(QTest::qWaitFor([&] { return call.isFinished(); }));
        QCoreApplication::processEvents();
    }
    void answer(const QDBusMessage& question) {
        const bool isKnown = question.member() == QLatin1String("Get") &&
                             question.arguments() == QVariantList{m_name, QStringLiteral("ActiveProfile")};
        if (isKnown && profile.isValid()) {
            m_bus.send(question.createReply(QVariant::fromValue(QDBusVariant(profile))));
        } else {
            m_bus.send(question.createErrorReply(m_name + QStringLiteral(".UnknownProperty"), QString()));
        }
    }

    QDBusConnection m_bus;
    QString m_name;
    QString m_path;
    QList<QDBusMessage> m_waiting;
};

} // namespace quillane
