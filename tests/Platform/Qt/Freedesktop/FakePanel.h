#pragma once
#include "NotifierMenu.h"
#include "NotifierPixmap.h"
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <QTest>
#include <QVariantMap>
#include <gtest/gtest.h>
#include <utility>

namespace quillane {

// A panel that shows items of the bus, and the one at whom they register: on a connection of its own.
class FakePanel : public QDBusVirtualObject {
    Q_OBJECT

  public:
    static constexpr const char* kName = "org.kde.StatusNotifierWatcher";
    static constexpr const char* kPath = "/StatusNotifierWatcher";
    static constexpr const char* kItem = "org.kde.StatusNotifierItem";

    explicit FakePanel(QDBusConnection bus, bool takesName = true)
        : m_bus(std::move(bus)) {
        registerNotifierTypes();
        registerNotifierMenuTypes();
        m_bus.registerVirtualObject(QString::fromLatin1(kPath), this);
        m_gone.setConnection(m_bus);
        m_gone.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
        connect(&m_gone, &QDBusServiceWatcher::serviceUnregistered, this, [this](const QString& name) {
            items.removeAll(name + QStringLiteral("/StatusNotifierItem"));
        });
        for (const char* signal : {"NewTitle", "NewToolTip", "NewIcon", "NewStatus", "NewMenu"}) {
            hear(signal, SLOT(hearItem(QDBusMessage)));
        }
        hear("XAyatanaNewLabel", SLOT(hearLabel(QString, QString, QDBusMessage)));
        if (takesName) {
            takeName();
        }
    }
    ~FakePanel() override {
        giveNameUp();
        m_bus.unregisterObject(QString::fromLatin1(kPath));
    }

    void takeName() { EXPECT_TRUE(m_bus.registerService(QString::fromLatin1(kName))); }
    void giveNameUp() { m_bus.unregisterService(QString::fromLatin1(kName)); }
    const QDBusConnection& bus() const { return m_bus; }

    QStringList items; // the name of the connection and the path of each, as they were registered
    bool takes = true; // else it refuses
    bool answersQuestions = true;
    bool answersRegistrations = true;
    QVariant hasHost = true; // what it answers with; an invalid one is an error
    int questions = 0;
    int registrations = 0;
    QStringList news; // the names of the signals of items, in their order
    QString label;    // that the last one of its signals told

    // Tells all who listen that a host has come or gone.
    void tellOfHost(bool isThere) {
        hasHost = isThere;
        tell(isThere ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered");
    }
    void tell(const char* signal, const QVariantList& arguments = {}) {
        auto message = QDBusMessage::createSignal(QString::fromLatin1(kPath), QString::fromLatin1(kName),
                                                  QString::fromLatin1(signal));
        message.setArguments(arguments);
        m_bus.send(message);
    }
    void answerAll() {
        answersQuestions = answersRegistrations = true;
        for (const auto& call : std::exchange(m_waiting, {})) {
            answer(call);
        }
    }

    // What the one item answers to a call, which has arrived there when this returns.
    QDBusMessage call(const QString& interface, const QString& method, const QVariantList& arguments) {
        auto answer = callAt(QStringLiteral("/StatusNotifierItem"), interface, method, arguments);
        EXPECT_NE(answer.type(), QDBusMessage::ErrorMessage) << qPrintable(answer.errorMessage());
        return answer;
    }
    // The same for the menu that the item names; the answer may be an error.
    QDBusMessage callMenu(const char* method, const QVariantList& arguments) {
        return callAt(property("Menu").value<QDBusObjectPath>().path(),
                      QStringLiteral("com.canonical.dbusmenu"), QString::fromLatin1(method), arguments);
    }
    // The lines of that menu, from the top; none where the item names no menu.
    QList<NotifierMenuLayout> menu() {
        if (property("Menu").value<QDBusObjectPath>().path() == QLatin1String("/NO_DBUSMENU")) {
            return {};
        }
        const auto answer = callMenu("GetLayout", {0, -1, QStringList()});
        return qdbus_cast<NotifierMenuLayout>(answer.arguments().value(1)).children;
    }
    QDBusMessage clickMenu(int id) {
        return callMenu("Event", {id, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(QString())),
                                  QVariant::fromValue(0U)});
    }
    void callItem(const char* method, const QVariantList& arguments) {
        call(QString::fromLatin1(kItem), QString::fromLatin1(method), arguments);
    }
    QVariant property(const char* name) {
        const auto answer = call(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                                 {QString::fromLatin1(kItem), QString::fromLatin1(name)});
        return answer.arguments().value(0).value<QDBusVariant>().variant();
    }

    // What was sent to this connection before this, and what came of it, has arrived.
    static void goAround(const QDBusConnection& bus) {
        const QDBusPendingCall call = bus.asyncCall(
            QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                           QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
        EXPECT_TRUE(QTest::qWaitFor([&] { return call.isFinished(); }, kPatience));
        QCoreApplication::processEvents();
    }

    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& /*bus*/) override {
        if (isRegistration(message) ? answersRegistrations : answersQuestions) {
            answer(message);
        } else {
            m_waiting.append(message);
        }
        return true;
    }

    static constexpr int kPatience = 60'000; // milliseconds, after which what should have come never comes

  private slots:
    void hearItem(const QDBusMessage& signal) { news.append(signal.member()); }
    void hearLabel(const QString& text, const QString& /*guide*/, const QDBusMessage& signal) {
        label = text;
        hearItem(signal);
    }

  private:
    QDBusMessage callAt(const QString& path, const QString& interface, const QString& method,
                        const QVariantList& arguments) {
        EXPECT_EQ(items.size(), 1);
        auto message = QDBusMessage::createMethodCall(items.value(0).section(QLatin1Char('/'), 0, 0), path,
                                                      interface, method);
        message.setArguments(arguments);
        const QDBusPendingCall call = m_bus.asyncCall(message);
        EXPECT_TRUE(QTest::qWaitFor([&] { return call.isFinished(); }, kPatience));
        return call.reply();
    }
    void hear(const char* signal, const char* slot) {
        m_bus.connect(QString(), QStringLiteral("/StatusNotifierItem"), QString::fromLatin1(kItem),
                      QString::fromLatin1(signal), this, slot);
    }
    static bool isRegistration(const QDBusMessage& message) {
        return message.member() == QLatin1String("RegisterStatusNotifierItem");
    }
    void answer(const QDBusMessage& message) {
        const bool isQuestion = message.member() == QLatin1String("Get");
        questions += isQuestion ? 1 : 0;
        registrations += isRegistration(message) ? 1 : 0;
        if (isQuestion && hasHost.isValid()) {
            m_bus.send(message.createReply(QVariant::fromValue(QDBusVariant(hasHost))));
        } else if (isRegistration(message) && takes) {
            take(message);
        } else {
            m_bus.send(message.createErrorReply(QDBusError::Failed, QStringLiteral("no")));
        }
    }
    void take(const QDBusMessage& message) {
        const auto item = message.service() + message.arguments().value(0).toString();
        if (!items.contains(item)) {
            items.append(item);
        }
        m_gone.addWatchedService(message.service());
        m_bus.send(message.createReply());
        tell("StatusNotifierItemRegistered", {item});
    }

    QDBusConnection m_bus;
    QDBusServiceWatcher m_gone;
    QList<QDBusMessage> m_waiting;
};

} // namespace quillane
