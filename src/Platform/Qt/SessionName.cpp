#include "SessionName.h"
#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>
#include <algorithm>
#include <utility>

namespace quillane {
namespace {

const auto kName = QStringLiteral("org.quillane.Quillane");
const auto kPath = QStringLiteral("/org/quillane/Quillane");
const auto kInterface = QStringLiteral("org.freedesktop.Application");
constexpr int kPatienceOfTheBus = 25'000; // milliseconds; for the name alone, which may come late
constexpr int kMostTries = 3;             // whoever has the name may be about to end

enum class Owner { self, other, unknown };

// In one call: nobody waits in a queue for the name, and nobody gives it up for another.
Owner ownerAfterAsking(const QDBusConnection& bus) {
    constexpr uint kDoNotQueue = 4;
    constexpr uint kIsOwner = 1;
    constexpr uint kExists = 3;
    constexpr uint kAlreadyOwner = 4;
    const auto service = QStringLiteral("org.freedesktop.DBus");
    auto call = QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/DBus"), service,
                                               QStringLiteral("RequestName"));
    call << kName << kDoNotQueue;
    const auto answer = bus.call(call, QDBus::Block, kPatienceOfTheBus).arguments();
    const uint code = answer.isEmpty() ? 0 : answer.first().toUInt();
    if (code == kIsOwner || code == kAlreadyOwner) {
        return Owner::self;
    }
    return code == kExists ? Owner::other : Owner::unknown;
}

QVariantMap platformData(const std::string& token) {
    if (token.empty()) {
        return {};
    }
    const auto text = QString::fromStdString(token);
    return {{QStringLiteral("desktop-startup-id"), text}, {QStringLiteral("activation-token"), text}};
}

// Nobody is told anything once nobody waits for it any more.
bool isHeard(const QDBusConnection& bus, const std::string& token,
             std::chrono::steady_clock::time_point end) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now()).count();
    if (left <= 0) {
        return false;
    }
    auto call = QDBusMessage::createMethodCall(kName, kPath, kInterface, QStringLiteral("Activate"));
    call.setAutoStartService(false);
    call << platformData(token);
    return bus.call(call, QDBus::Block, static_cast<int>(left)).type() == QDBusMessage::ReplyMessage;
}

} // namespace

SessionName::SessionName(SessionBus bus, QObject& object)
    : m_bus(std::move(bus))
    , m_object(object) {}

SessionName::~SessionName() {
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

SessionName::Standing SessionName::takeOrTell(const std::string& token, std::chrono::milliseconds patience) {
    return ask(Wish::takeOrTell, token, patience);
}

SessionName::Standing SessionName::tell(const std::string& token, std::chrono::milliseconds patience) {
    return ask(Wish::tell, token, patience);
}

SessionName::Standing SessionName::ask(Wish wish, const std::string& token,
                                       std::chrono::milliseconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    std::unique_lock lock(m_mutex);
    if (m_isTalking) {
        return Standing::absent;
    }
    if (m_thread.joinable()) {
        m_thread.join(); // it has said its last
    }
    m_isTalking = true;
    m_standing = Standing::absent;
    m_thread = std::thread([this, wish, token, end] { talk(wish, token, end); });
    m_changed.wait_until(lock, end, [this] { return !m_isTalking; });
    return m_standing;
}

void SessionName::talk(Wish wish, const std::string& token, Moment end) {
    if (auto bus = m_bus(); bus.isConnected()) {
        talkTo(bus, wish, token, end);
    }
    const std::lock_guard lock(m_mutex);
    m_isTalking = false;
    m_changed.notify_all();
}

void SessionName::talkTo(QDBusConnection& bus, Wish wish, const std::string& token, Moment end) {
    // The object first: who sees the name finds it.
    if (wish == Wish::takeOrTell &&
        !bus.registerObject(kPath, kInterface, &m_object, QDBusConnection::ExportAllSlots)) {
        return;
    }
    for (int attempt = 0; attempt < kMostTries; ++attempt) {
        const auto owner = wish == Wish::tell ? Owner::other : ownerAfterAsking(bus);
        if (owner != Owner::other) {
            note(owner == Owner::self ? Standing::ours : Standing::absent);
            return;
        }
        note(Standing::taken);
        if (isHeard(bus, token, end)) {
            note(Standing::heard);
            return;
        }
    }
}

void SessionName::note(Standing standing) {
    const std::lock_guard lock(m_mutex);
    m_standing = standing;
}

} // namespace quillane
