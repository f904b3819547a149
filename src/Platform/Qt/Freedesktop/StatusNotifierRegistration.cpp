#include "StatusNotifierRegistration.h"
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <limits>
#include <utility>

namespace quillane {
namespace {

const auto kWatcher = QStringLiteral("org.kde.StatusNotifierWatcher"); // the interface has the same name
const auto kWatcherPath = QStringLiteral("/StatusNotifierWatcher");
const auto kBus = QStringLiteral("org.freedesktop.DBus");
const auto kBusPath = QStringLiteral("/org/freedesktop/DBus");

// An answer may take as long as it likes: one that came after an end of patience would be lost, and whoever ends without
// an answer is told by the bus.
constexpr int kForEver = std::numeric_limits<int>::max();

// The one value of an answer. Invalid for an error, whoever it comes from, and where there was no answer.
QVariant valueOf(const QDBusPendingCallWatcher& call) {
    return call.isError() ? QVariant() : call.reply().arguments().value(0);
}

} // namespace

StatusNotifierRegistration::StatusNotifierRegistration(QDBusConnection bus, QString path)
    : m_bus(std::move(bus))
    , m_path(std::move(path))
    , m_watcher(kWatcher, m_bus, QDBusServiceWatcher::WatchForOwnerChange) {
    // Changes first, so that none is missed between the answer and the first of them.
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) { setOwner(owner); });
    hear("StatusNotifierHostRegistered", SLOT(hearHosts(QDBusMessage)));
    hear("StatusNotifierHostUnregistered", SLOT(hearHosts(QDBusMessage)));
    hear("StatusNotifierItemRegistered", SLOT(hearTaken(QString, QDBusMessage)));
    hear("StatusNotifierItemUnregistered", SLOT(hearDropped(QString, QDBusMessage)));
    // The connection's own word that it has come to its end.
    m_bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                  QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                  SLOT(hearEnd()));
    askForOwner();
}

StatusNotifierRegistration::State StatusNotifierRegistration::state() const {
    const auto isFalse = [](const std::optional<bool>& told) { return told.has_value() && !*told; };
    if ((m_owner && m_owner->isEmpty()) || isFalse(m_hasHost) || isFalse(m_isTaken)) {
        return State::absent;
    }
    return m_owner && m_hasHost && m_isTaken ? State::taken : State::unknown;
}

// From whoever sends it, and sifted where it arrives: Qt waits for the bus when it is to listen to one name.
void StatusNotifierRegistration::hear(const char* signal, const char* slot) {
    m_bus.connect(QString(), kWatcherPath, kWatcher, QString::fromLatin1(signal), this, slot);
}

template <class Answered>
void StatusNotifierRegistration::ask(const QDBusMessage& question, Answered answered) {
    auto* const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question, kForEver), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [answered = std::move(answered)](QDBusPendingCallWatcher* call) {
                answered(*call);
                call->deleteLater();
            });
}

void StatusNotifierRegistration::askForOwner() {
    auto question = QDBusMessage::createMethodCall(kBus, kBusPath, kBus, QStringLiteral("GetNameOwner"));
    question << kWatcher;
    ask(question, [this](const QDBusPendingCallWatcher& call) {
        if (!m_owner) { // else the name has changed hands meanwhile
            setOwner(valueOf(call).toString());
        }
    });
}

void StatusNotifierRegistration::setOwner(const QString& owner) {
    ++m_owners;
    m_owner = owner;
    m_hasHost.reset();
    m_isTaken.reset();
    if (!owner.isEmpty()) {
        askForHost(owner);
        enroll(owner);
    }
    emit changed();
}

void StatusNotifierRegistration::askForHost(const QString& owner) {
    auto question = QDBusMessage::createMethodCall(
        owner, kWatcherPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << kWatcher << QStringLiteral("IsStatusNotifierHostRegistered");
    question.setAutoStartService(false);
    ask(question, [this, questions = ++m_questions](const QDBusPendingCallWatcher& call) {
        if (questions == m_questions) {
            const auto told = valueOf(call).value<QDBusVariant>().variant();
            m_hasHost = told.userType() == QMetaType::Bool && told.toBool();
            emit changed();
        }
    });
}

void StatusNotifierRegistration::enroll(const QString& owner) {
    auto call = QDBusMessage::createMethodCall(owner, kWatcherPath, kWatcher,
                                               QStringLiteral("RegisterStatusNotifierItem"));
    call << m_path; // who it is that registers it the bus says
    call.setAutoStartService(false);
    m_isTaken.reset();
    ask(call, [this, owners = m_owners](const QDBusPendingCallWatcher& answer) {
        if (owners == m_owners && !m_isTaken) {
            m_isTaken = !answer.isError();
            emit changed();
        }
    });
}

// A panel that comes is a new chance also where the item was refused before.
void StatusNotifierRegistration::hearHosts(const QDBusMessage& signal) {
    if (m_owner != signal.service()) {
        return;
    }
    askForHost(signal.service());
    if (m_isTaken == false) {
        enroll(signal.service());
    }
}

void StatusNotifierRegistration::hearTaken(const QString& item, const QDBusMessage& signal) {
    if (m_owner == signal.service() && isOurs(item)) {
        m_isTaken = true;
        emit changed();
    }
}

void StatusNotifierRegistration::hearDropped(const QString& item, const QDBusMessage& signal) {
    if (m_owner == signal.service() && isOurs(item)) {
        m_isTaken = false;
        emit changed();
    }
}

void StatusNotifierRegistration::hearEnd() {
    setOwner(QString());
}

// The path stands behind the name of who registered it, or that name alone.
bool StatusNotifierRegistration::isOurs(const QString& item) const {
    const auto name = m_bus.baseService();
    return item == name || item == name + m_path;
}

} // namespace quillane
