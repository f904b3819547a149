#include "NotificationServer.h"
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QVariantMap>
#include <utility>

namespace quillane {
namespace {

const auto kService = QStringLiteral("org.freedesktop.Notifications");
const auto kPath = QStringLiteral("/org/freedesktop/Notifications");
const auto kDesktopFile = QStringLiteral("org.quillane.Quillane"); // also the name of the icon
const auto kClickAction = QStringLiteral("default"); // what a click does, by the interface's own word
constexpr int kServersChoice = -1;                   // how long a notification shows
constexpr uchar kNormalUrgency = 1;

QDBusMessage callOf(const char* method, const QString& server = kService) {
    return QDBusMessage::createMethodCall(server, kPath, kService, QString::fromLatin1(method));
}

// For the server that gave the number: with another one it is another program's.
QDBusMessage endOf(const NotificationServer::Number& number) {
    auto call = callOf("CloseNotification", number.server);
    call.setAutoStartService(false); // nothing stands where there is no server
    call << number.value;
    return call;
}

QVariantMap hints() {
    return {{QStringLiteral("urgency"), QVariant::fromValue<uchar>(kNormalUrgency)},
            {QStringLiteral("desktop-entry"), kDesktopFile},
            {QStringLiteral("sound-name"), QStringLiteral("message-new-instant")}};
}

// The only value of an answer of this type.
template <class T>
std::optional<T> valueOf(const QDBusMessage& answer) {
    const auto values = answer.arguments();
    if (answer.type() != QDBusMessage::ReplyMessage || values.size() != 1 ||
        values.first().userType() != qMetaTypeId<T>()) {
        return std::nullopt;
    }
    return values.first().value<T>();
}

// Who was asked has left the bus, or is no server any more.
bool isNobodyThere(const QDBusMessage& answer) {
    const auto error = QDBusError(answer).type();
    return answer.type() == QDBusMessage::ErrorMessage &&
           (error == QDBusError::ServiceUnknown || error == QDBusError::UnknownObject);
}

} // namespace

NotificationServer::NotificationServer(QDBusConnection bus, std::chrono::milliseconds patience)
    : m_bus(std::move(bus))
    , m_patience(static_cast<int>(patience.count())) {
    hear("ActionInvoked", SLOT(hearAction(uint, QString, QDBusMessage)));
    hear("ActivationToken", SLOT(hearToken(uint, QString, QDBusMessage)));
    hear("NotificationClosed", SLOT(hearEnd(uint, uint, QDBusMessage)));
    auto* const watcher =
        new QDBusServiceWatcher(kService, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) {
                m_owner = owner;
                emit ownerChanged(owner);
            });
}

// Before anything else is asked, so that the bus has answered when the server does.
void NotificationServer::askForOwner() {
    if (std::exchange(m_hasAskedForOwner, true)) {
        return;
    }
    const auto bus = QStringLiteral("org.freedesktop.DBus");
    auto question = QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                                   QStringLiteral("GetNameOwner"));
    question << kService;
    await(m_bus.asyncCall(question, m_patience), [this](const QDBusMessage& message) {
        if (m_owner.isEmpty()) {
            m_owner = valueOf<QString>(message).value_or(QString());
        }
    });
}

// Newer versions of the library give an answer the name that was asked, and not that of who answered: that is who had
// the name then, or who was started for the question.
QString NotificationServer::senderOf(const QDBusMessage& answer, const QString& asked) const {
    if (answer.service().startsWith(QLatin1Char(':'))) {
        return answer.service();
    }
    return asked.isEmpty() ? m_owner : asked;
}

// From whoever sends it: what it is worth its sender's name tells, and nobody has to be asked who the server is.
void NotificationServer::hear(const char* signal, const char* slot) {
    m_bus.connect(QString(), kPath, kService, QString::fromLatin1(signal), this, slot);
}

void NotificationServer::askForAbilities(std::function<void(const std::optional<Abilities>&)> answer) {
    askForOwner();
    await(m_bus.asyncCall(callOf("GetCapabilities"), m_patience),
          [this, asked = m_owner, answer = std::move(answer)](const QDBusMessage& message) {
              const auto names = valueOf<QStringList>(message);
              answer(names ? std::optional(Abilities{senderOf(message, asked), *names}) : std::nullopt);
          });
}

void NotificationServer::show(const Words& words, uint replaced, Shown answer) {
    askForOwner();
    post(m_owner, words, replaced, std::move(answer));
}

// To the server that is known, so that it is known whose number comes back; one that has gone meanwhile leaves it to
// whoever has the name then, or is started for it.
void NotificationServer::post(const QString& server, const Words& words, uint replaced, Shown answer) {
    auto call = callOf("Notify", server.isEmpty() ? kService : server);
    call << QStringLiteral("Quillane") << replaced << kDesktopFile << words.title << words.body
         << QStringList({kClickAction, QStringLiteral("Open Quillane")}) << hints() << kServersChoice;
    await(m_bus.asyncCall(call, m_patience),
          [this, server, words, answer = std::move(answer)](const QDBusMessage& message) {
              if (!server.isEmpty() && isNobodyThere(message)) {
                  post({}, words, 0, answer);
                  return;
              }
              const auto number = valueOf<uint>(message);
              answer(number && *number != 0 ? std::optional(Number{senderOf(message, server), *number})
                                            : std::nullopt);
          });
}

void NotificationServer::close(const Number& number) {
    m_bus.asyncCall(endOf(number), m_patience);
}

void NotificationServer::closeAll(const std::vector<Number>& numbers, std::chrono::milliseconds patience) {
    std::vector<QDBusPendingCall> calls;
    calls.reserve(numbers.size());
    for (const auto& number : numbers) {
        calls.push_back(m_bus.asyncCall(endOf(number), static_cast<int>(patience.count())));
    }
    for (auto& call : calls) {
        call.waitForFinished();
    }
}

void NotificationServer::await(const QDBusPendingCall& call,
                               std::function<void(const QDBusMessage&)> answer) {
    auto* const watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [answer = std::move(answer)](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                answer(finished->reply());
            });
}

void NotificationServer::hearAction(uint number, const QString& action, const QDBusMessage& message) {
    if (action == kClickAction) {
        emit invoked({message.service(), number});
    }
}

void NotificationServer::hearToken(uint number, const QString& token, const QDBusMessage& message) {
    emit tokenGiven({message.service(), number}, token);
}

void NotificationServer::hearEnd(uint number, uint /*reason*/, const QDBusMessage& message) {
    emit closed({message.service(), number});
}

} // namespace quillane
