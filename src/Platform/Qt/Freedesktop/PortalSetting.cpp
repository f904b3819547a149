#include "PortalSetting.h"
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
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

// Changes first, so that none is missed between the answer and the first of them: from whoever sends them, and sifted
// here, as Qt waits for the bus when it is to listen to one name.
void PortalSetting::listen(QDBusConnection bus) {
    if (!bus.isConnected()) {
        return;
    }
    bus.connect(QString(), kPath, kInterface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant, QDBusMessage)));
    followOwner(bus);
    auto question = QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
    question << m_group << m_key;
    ask(bus, question, [this](const QDBusPendingReply<QDBusVariant>& reply) {
        if (reply.isValid()) {
            emit told(unwrapped(reply.value().variant()));
        }
    });
}

// Who has the portal's name is known before the portal can have said anything.
void PortalSetting::followOwner(const QDBusConnection& bus) {
    auto* const watcher =
        new QDBusServiceWatcher(kService, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) { m_owner = owner; });
    const auto name = QStringLiteral("org.freedesktop.DBus");
    auto question = QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/DBus"), name,
                                                   QStringLiteral("GetNameOwner"));
    question << kService;
    ask(bus, question, [this](const QDBusPendingReply<QString>& reply) {
        if (!m_owner) { // else it has changed hands meanwhile
            m_owner = reply.isValid() ? reply.value() : QString();
        }
    });
}

template <class Answered>
void PortalSetting::ask(const QDBusConnection& bus, const QDBusMessage& question, Answered answered) {
    auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [answered = std::move(answered)](QDBusPendingCallWatcher* call) {
                answered(*call);
                call->deleteLater();
            });
}

void PortalSetting::settingChanged(const QString& group, const QString& key, const QDBusVariant& value,
                                   const QDBusMessage& signal) {
    if (signal.service() == m_owner && group == m_group && key == m_key) {
        emit told(unwrapped(value.variant()));
    }
}

} // namespace quillane
