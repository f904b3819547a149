#include "ColorScheme.h"
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace quillane {
namespace {

const auto kService = QStringLiteral("org.freedesktop.portal.Desktop");
const auto kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const auto kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const auto kGroup = QStringLiteral("org.freedesktop.appearance");
const auto kKey = QStringLiteral("color-scheme");
constexpr unsigned kPrefersDark = 1; // 0 is no preference, 2 prefers light

// Read() wraps its answer twice, the signal once.
QVariant unwrapped(QVariant value) {
    constexpr int kMostWraps = 4;
    for (int i = 0; i < kMostWraps && value.userType() == qMetaTypeId<QDBusVariant>(); ++i) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

} // namespace

ColorScheme::ColorScheme(TaskRunner& tasks, SessionBus bus, QObject* parent)
    : QObject(parent) {
    tasks.run(Priority::userInitiated, [&tasks, bus = std::move(bus), self = std::weak_ptr(m_self)] {
        tasks.post([connection = bus(), self] {
            if (const auto scheme = self.lock()) {
                (*scheme)->listen(connection);
            }
        });
    });
}

void ColorScheme::listen(QDBusConnection bus) {
    if (!bus.isConnected()) {
        return;
    }
    // Changes first, so that none is missed between the answer and the first of them.
    bus.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    auto message = QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
    message << kGroup << kKey;
    auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
        const QDBusPendingReply<QDBusVariant> reply = *call;
        if (reply.isValid()) {
            take(reply.value().variant());
        }
        call->deleteLater();
    });
}

void ColorScheme::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group == kGroup && key == kKey) {
        take(value.variant());
    }
}

void ColorScheme::take(const QVariant& value) {
    const auto scheme = unwrapped(value).toUInt() == kPrefersDark ? Scheme::dark : Scheme::light;
    if (scheme != m_scheme) {
        m_scheme = scheme;
        emit changed();
    }
}

} // namespace quillane
