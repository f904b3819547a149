#include "PortalSetting.h"
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <utility>

namespace quillane {
namespace {

const auto kService = QStringLiteral("org.freedesktop.portal.Desktop");
const auto kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const auto kInterface = QStringLiteral("org.freedesktop.portal.Settings");

// Read() wraps its answer twice, the signal once.
QVariant unwrapped(QVariant value) {
    constexpr int kMostWraps = 4;
    for (int i = 0; i < kMostWraps && value.userType() == qMetaTypeId<QDBusVariant>(); ++i) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

} // namespace

PortalSetting::PortalSetting(TaskRunner& tasks, SessionBus bus, QString group, QString key, QObject* parent)
    : QObject(parent)
    , m_group(std::move(group))
    , m_key(std::move(key)) {
    qRegisterMetaType<QDBusVariant>(); // a slot of a type that Qt does not know by name can't be connected
    tasks.run(Priority::userInitiated, [&tasks, bus = std::move(bus), self = std::weak_ptr(m_self)] {
        tasks.post([connection = bus(), self] {
            if (const auto setting = self.lock()) {
                (*setting)->listen(connection);
            }
        });
    });
}

void PortalSetting::listen(QDBusConnection bus) {
    if (!bus.isConnected()) {
        return;
    }
    // Changes first, so that none is missed between the answer and the first of them.
    bus.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    auto message = QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
    message << m_group << m_key;
    auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
        const QDBusPendingReply<QDBusVariant> reply = *call;
        if (reply.isValid()) {
            emit told(unwrapped(reply.value().variant()));
        }
        call->deleteLater();
    });
}

void PortalSetting::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group == m_group && key == m_key) {
        emit told(unwrapped(value.variant()));
    }
}

} // namespace quillane
