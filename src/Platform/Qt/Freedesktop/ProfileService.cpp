#include "ProfileService.h"
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <utility>

namespace quillane {
namespace {

const auto kBus = QStringLiteral("org.freedesktop.DBus");
const auto kBusPath = QStringLiteral("/org/freedesktop/DBus");
const auto kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const auto kProfile = QStringLiteral("ActiveProfile");

} // namespace

ProfileService::ProfileService(QDBusConnection bus, Address address)
    : m_bus(std::move(bus))
    , m_address(std::move(address))
    , m_watcher(m_address.name, m_bus, QDBusServiceWatcher::WatchForOwnerChange) {
    // Changes first, so that none is missed between the answer and the first of them.
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) { setOwner(owner); });
    m_bus.connect(QString(), m_address.path, kProperties, QStringLiteral("PropertiesChanged"), this,
                  SLOT(propertiesChanged(QString, QVariantMap, QStringList, QDBusMessage)));
    askForOwner();
}

// What the bus sends is told in its order, answers and signals alike. Nothing is handed on when the call fails, whatever
// the reason: an error of the bus, of the daemon, or no answer.
template <class Answered>
void ProfileService::ask(const QDBusMessage& question, Answered answered) {
    auto* const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [answered = std::move(answered)](QDBusPendingCallWatcher* call) {
                answered(call->isError() ? QVariant() : call->reply().arguments().value(0));
                call->deleteLater();
            });
}

void ProfileService::askForOwner() {
    auto question = QDBusMessage::createMethodCall(kBus, kBusPath, kBus, QStringLiteral("GetNameOwner"));
    question << m_address.name;
    ask(question, [this](const QVariant& owner) { setOwner(owner.toString()); });
}

void ProfileService::setOwner(const QString& owner) {
    ++m_owners;
    m_owner = owner;
    m_profile.reset();
    if (!m_owner.isEmpty()) {
        askForProfile();
    }
}

void ProfileService::askForProfile() {
    auto question =
        QDBusMessage::createMethodCall(m_owner, m_address.path, kProperties, QStringLiteral("Get"));
    question << m_address.interface << kProfile;
    ask(question, [this, owners = m_owners, tellings = m_tellings](const QVariant& value) {
        if (owners == m_owners && tellings == m_tellings) {
            setProfile(value.userType() == qMetaTypeId<QDBusVariant>() ? value.value<QDBusVariant>().variant()
                                                                       : QVariant());
        }
    });
}

void ProfileService::setProfile(const QVariant& told) {
    ++m_tellings;
    m_profile = told.userType() == QMetaType::QString ? std::optional(told.toString()) : std::nullopt;
}

void ProfileService::propertiesChanged(const QString& interface, const QVariantMap& changed,
                                       const QStringList& invalidated, const QDBusMessage& signal) {
    // Everyone may say so, and a former owner may have said so when the name was already on its way to another.
    if (interface != m_address.interface || signal.service() != m_owner) {
        return;
    }
    if (const auto told = changed.constFind(kProfile); told != changed.constEnd()) {
        setProfile(*told);
    } else if (invalidated.contains(kProfile)) {
        askForProfile();
    }
}

} // namespace quillane
