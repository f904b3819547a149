#pragma once
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusVariant>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTest>
#include <gtest/gtest.h>

namespace quillane {

// The settings portal of a desktop.
class FakePortal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

  public:
    static constexpr const char* kGroup = "org.freedesktop.appearance";
    static constexpr const char* kKey = "color-scheme";

    explicit FakePortal(QDBusConnection bus) {
        bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                           QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }

    uint preference = 0;
    QMap<QString, QVariant> others; // by their keys
    int reads = 0;

    void change(uint value, const QString& group = QString::fromLatin1(kGroup),
                const QString& key = QString::fromLatin1(kKey)) {
        preference = value;
        tell(group, key, value);
    }
    void tell(const QString& group, const QString& key, const QVariant& value) {
        emit SettingChanged(group, key, QDBusVariant(value));
    }

  public slots:
    QDBusVariant Read(const QString& group, const QString& key) { // NOLINT: the portal's own name
        ++reads;
        if (group == QLatin1String(kGroup) && key == QLatin1String(kKey)) {
            return wrapped(preference);
        }
        if (!others.contains(key)) {
            sendErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"));
        }
        return wrapped(others.value(key, 0U));
    }

  signals:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value); // NOLINT

  private:
    static QDBusVariant wrapped(const QVariant& value) {
        return QDBusVariant(QVariant::fromValue(QDBusVariant(value)));
    }
};

// Hears what a client's connection hears. What arrives here has arrived at all who listened before.
class PortalListener : public QObject {
    Q_OBJECT

  public:
    explicit PortalListener(QDBusConnection bus) {
        bus.connect(QStringLiteral("org.freedesktop.portal.Desktop"),
                    QStringLiteral("/org/freedesktop/portal/desktop"),
                    QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"), this,
                    SLOT(hear(QString, QString, QDBusVariant)));
    }

    QStringList keys;

  public slots:
    void hear(const QString& /*group*/, const QString& key, const QDBusVariant& /*value*/) {
        keys.append(key);
    }
};

// What the portal has told so far has arrived at whoever listens on this connection: messages arrive in the order
// in which they were sent.
inline void awaitArrival(FakePortal& portal, const QDBusConnection& connection) {
    const PortalListener listener(connection);
    const auto last = QStringLiteral("last");
    portal.tell(QString::fromLatin1(FakePortal::kGroup), last, 0U);
    EXPECT_TRUE(QTest::qWaitFor([&] { return listener.keys.contains(last); }));
    QCoreApplication::processEvents();
}

} // namespace quillane
