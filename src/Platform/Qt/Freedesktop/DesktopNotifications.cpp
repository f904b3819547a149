#include "DesktopNotifications.h"
#include "DisplayName.h"
#include <QThread>
#include <algorithm>
#include <ranges>
#include <utility>

namespace quillane {
namespace {

// What a person is to read, whatever a label from outside holds.
QString shownText(const std::string& text) {
    auto shown = QString::fromStdString(Text::displayName(text));
    if (shown.size() > DesktopNotifications::kLongestText) {
        shown.truncate(DesktopNotifications::kLongestText - 1);
        if (shown.back().isHighSurrogate()) {
            shown.chop(1);
        }
        shown.append(QChar(0x2026));
    }
    return shown;
}

NotificationServer::Words wordsOf(const UserNotification& notification, bool takesMarkup) {
    const auto body = shownText(notification.body);
    return {shownText(notification.title), takesMarkup ? body.toHtmlEscaped() : body};
}

} // namespace

DesktopNotifications::DesktopNotifications(TaskRunner& tasks, SessionBus bus, Patience patience)
    : m_tasks(tasks)
    , m_bus(std::move(bus))
    , m_patience(patience) {}

void DesktopNotifications::add(const UserNotification& notification) {
    if (auto* const entry = entryFor(notification.identifier)) {
        entry->next = notification;
        sendWaiting();
    }
}

void DesktopNotifications::setClickHandler(std::function<void(const Click&)> handler) {
    m_handler = std::move(handler);
    tellLater();
}

void DesktopNotifications::withdrawAll() {
    std::vector<NotificationServer::Number> standing;
    for (const auto& entry : std::exchange(m_entries, {})) {
        if (entry.number.value != 0) {
            standing.push_back(entry.number);
        }
    }
    if (m_server) {
        m_server->closeAll(standing, m_patience.end);
    }
}

DesktopNotifications::Entry* DesktopNotifications::find(const std::string& identifier) {
    const auto found = std::ranges::find(m_entries, identifier, &Entry::identifier);
    return found == m_entries.end() ? nullptr : &*found;
}

DesktopNotifications::Entry* DesktopNotifications::find(const NotificationServer::Number& number) {
    const auto found = std::ranges::find(m_entries, number, &Entry::number);
    return found == m_entries.end() ? nullptr : &*found;
}

DesktopNotifications::Entry* DesktopNotifications::entryFor(const std::string& identifier) {
    if (auto* const known = find(identifier)) {
        return known;
    }
    if (m_entries.size() >= kMostStanding && !withdrawOldest()) {
        return nullptr;
    }
    m_entries.push_back({identifier});
    return &m_entries.back();
}

// What is on its way has no number yet by which it could be withdrawn.
bool DesktopNotifications::withdrawOldest() {
    const auto oldest = std::ranges::find_if(m_entries, [](const Entry& entry) { return !entry.sent; });
    if (oldest == m_entries.end()) {
        return false;
    }
    if (oldest->number.value != 0) {
        m_server->close(oldest->number);
    }
    m_entries.erase(oldest);
    return true;
}

void DesktopNotifications::dropEmpty() {
    std::erase_if(m_entries,
                  [](const Entry& entry) { return entry.number.value == 0 && !entry.sent && !entry.next; });
}

void DesktopNotifications::reach() {
    if (std::exchange(m_isReaching, true)) {
        return;
    }
    m_tasks.run(Priority::utility, [&tasks = m_tasks, bus = m_bus, patience = m_patience.answer,
                                    here = QThread::currentThread(), self = std::weak_ptr(m_self)] {
        std::shared_ptr<NotificationServer> server;
        if (const auto connection = bus(); connection.isConnected()) {
            server = std::make_shared<NotificationServer>(connection, patience);
            server->moveToThread(here);
        }
        tasks.post([server = std::move(server), self] {
            if (const auto notifications = self.lock()) {
                (*notifications)->meet(server);
            }
        });
    });
}

void DesktopNotifications::meet(std::shared_ptr<NotificationServer> server) {
    m_isReaching = false;
    m_server = std::move(server);
    if (m_server) {
        follow();
        sendWaiting();
    } else {
        m_entries.clear();
    }
}

void DesktopNotifications::follow() {
    auto* const server = m_server.get();
    QObject::connect(server, &NotificationServer::invoked, server,
                     [this](const NotificationServer::Number& number) { takeClick(number); });
    QObject::connect(
        server, &NotificationServer::tokenGiven, server,
        [this](const NotificationServer::Number& number, const QString& token) { keepToken(number, token); });
    QObject::connect(server, &NotificationServer::closed, server,
                     [this](const NotificationServer::Number& number) { forget(number); });
    QObject::connect(server, &NotificationServer::ownerChanged, server,
                     [this](const QString& owner) { changeOwner(owner); });
}

void DesktopNotifications::sendWaiting() {
    if (!m_server) {
        reach();
    } else if (m_takesMarkup) {
        sendWaiting(*m_takesMarkup);
    } else if (std::ranges::any_of(m_entries, [](const Entry& entry) { return entry.next.has_value(); }) &&
               !std::exchange(m_isAsking, true)) {
        m_server->askForAbilities([this](const auto& abilities) { learn(abilities); });
    }
}

void DesktopNotifications::sendWaiting(bool takesMarkup) {
    for (auto& entry : m_entries) {
        if (entry.next && !entry.sent) {
            const auto notification = *entry.next;
            entry.next.reset();
            send(entry, notification, takesMarkup);
        }
    }
}

void DesktopNotifications::send(Entry& entry, const UserNotification& notification, bool takesMarkup) {
    entry.sent = notification.userInfo;
    m_server->show(wordsOf(notification, takesMarkup), entry.number.value,
                   [this, identifier = entry.identifier](const auto& number) { stand(identifier, number); });
}

// A server that does not tell gets plain text, and is asked again for the next notification.
void DesktopNotifications::learn(const std::optional<NotificationServer::Abilities>& abilities) {
    m_isAsking = false;
    if (!abilities) {
        sendWaiting(false);
        return;
    }
    if (!isGone(abilities->server)) {
        m_takesMarkup = abilities->names.contains(QStringLiteral("body-markup"));
    }
    sendWaiting();
}

void DesktopNotifications::stand(const std::string& identifier,
                                 const std::optional<NotificationServer::Number>& number) {
    auto* const entry = find(identifier);
    if (entry == nullptr || !entry->sent) {
        return; // withdrawn with all
    }
    auto userInfo = std::move(*entry->sent);
    entry->sent.reset();
    if (number && !isGone(number->server)) {
        if (auto* const other = find(*number)) {
            other->number = {}; // it can't be both
        }
        entry->number = *number;
        entry->userInfo = std::move(userInfo);
        entry->token.clear();
    }
    dropEmpty();
    sendWaiting();
}

void DesktopNotifications::forget(const NotificationServer::Number& number) {
    if (auto* const entry = find(number)) {
        entry->number = {};
        dropEmpty();
    }
}

void DesktopNotifications::changeOwner(const QString& owner) {
    m_owner = owner;
    m_takesMarkup.reset();
    for (auto& entry : m_entries) {
        if (entry.number.server != owner) {
            entry.number = {};
        }
    }
    dropEmpty();
}

bool DesktopNotifications::isGone(const QString& server) const {
    return !m_owner.isEmpty() && !server.isEmpty() && m_owner != server;
}

void DesktopNotifications::keepToken(const NotificationServer::Number& number, const QString& token) {
    auto* const entry = find(number);
    if (entry != nullptr && token.size() <= kLongestToken) {
        entry->token = token.toStdString();
    }
}

// Clicks on one notification that have not been told yet are one.
void DesktopNotifications::takeClick(const NotificationServer::Number& number) {
    auto* const entry = find(number);
    const bool isKnown = std::ranges::find(m_clicks, number, &WaitingClick::number) != m_clicks.end();
    if (entry == nullptr || isKnown || m_clicks.size() >= kMostStanding) {
        return;
    }
    m_clicks.push_back({number, {entry->userInfo, std::exchange(entry->token, {})}});
    tellLater();
}

void DesktopNotifications::tellLater() {
    m_tasks.post([self = std::weak_ptr(m_self)] {
        if (const auto notifications = self.lock()) {
            (*notifications)->tell();
        }
    });
}

void DesktopNotifications::tell() {
    if (!m_handler) {
        return;
    }
    const auto handler = m_handler; // a handler may set another one
    for (const auto& waiting : std::exchange(m_clicks, {})) {
        handler(waiting.click);
    }
}

} // namespace quillane
