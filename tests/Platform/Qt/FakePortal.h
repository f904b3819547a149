#pragma once
#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <QStringList>

namespace quillane {

// The settings portal of a desktop.
class FakePortal : public QObject {
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
    int reads = 0;

    void change(uint value, const QString& group = QString::fromLatin1(kGroup),
                const QString& key = QString::fromLatin1(kKey)) {
        preference = value;
        emit SettingChanged(group, key, QDBusVariant(value));
    }

  public slots:
    QDBusVariant Read(const QString& group, const QString& key) { // NOLINT: the portal's own name
        ++reads;
        return QDBusVariant(QVariant::fromValue(
            QDBusVariant(group == QLatin1String(kGroup) && key == QLatin1String(kKey) ? QVariant(preference)
                                                                                      : QVariant())));
    }

  signals:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value); // NOLINT
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

} // namespace quillane
