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

enum class Queue { no, yes };

// In one call. Nobody gives the name up for another.
Owner ownerAfterAsking(const QDBusConnection& bus, Queue queue) {
    constexpr uint kDoNotQueue = 4;
    constexpr uint kIsOwner = 1;
    constexpr uint kInQueue = 2;
    constexpr uint kExists = 3;
    constexpr uint kAlreadyOwner = 4;
    const auto service = QStringLiteral("org.freedesktop.DBus");
    auto call = QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/DBus"), service,
                                               QStringLiteral("RequestName"));
    call << kName << (queue == Queue::no ? kDoNotQueue : 0);
    const auto answer = bus.call(call, QDBus::Block, kPatienceOfTheBus).arguments();
    const uint code = answer.isEmpty() ? 0 : answer.first().toUInt();
    if (code == kIsOwner || code == kAlreadyOwner) {
        return Owner::self;
    }
    return code == kExists || code == kInQueue ? Owner::other : Owner::unknown;
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

SessionName::Standing standingOf(Owner owner) {
    if (owner == Owner::unknown) {
        return SessionName::Standing::absent;
    }
    return owner == Owner::self ? SessionName::Standing::ours : SessionName::Standing::taken;
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

SessionName::Standing SessionName::take(std::chrono::milliseconds patience) {
    return ask({Manner::take, {}, std::chrono::steady_clock::now() + patience});
}

SessionName::Standing SessionName::takeOrTell(const std::string& token, std::chrono::milliseconds patience) {
    return ask({Manner::takeOrTell, token, std::chrono::steady_clock::now() + patience});
}

SessionName::Standing SessionName::tell(const std::string& token, std::chrono::milliseconds patience) {
    return ask({Manner::tell, token, std::chrono::steady_clock::now() + patience});
}

SessionName::Standing SessionName::ask(Wish wish) {
    const auto end = wish.end;
    std::unique_lock lock(m_mutex);
    m_standing = Standing::absent;
    m_wish = std::move(wish);
    if (!m_isTalking) {
        if (m_thread.joinable()) {
            m_thread.join(); // it has said its last
        }
        m_isTalking = true;
        m_thread = std::thread([this] { talk(); });
    }
    m_changed.wait_until(lock, end, [this] { return !m_isTalking; });
    return m_standing;
}

void SessionName::talk() {
    while (const auto wish = nextWish()) {
        if (auto bus = m_bus(); bus.isConnected()) {
            talkTo(bus, *wish);
        }
    }
}

std::optional<SessionName::Wish> SessionName::nextWish() {
    const std::lock_guard lock(m_mutex);
    auto wish = std::exchange(m_wish, std::nullopt);
    if (!wish) {
        m_isTalking = false;
        m_changed.notify_all();
    }
    return wish;
}

void SessionName::talkTo(QDBusConnection& bus, const Wish& wish) {
    // The object first: who sees the name finds it.
    if (wish.manner != Manner::tell &&
        !bus.registerObject(kPath, kInterface, &m_object, QDBusConnection::ExportAllSlots) &&
        bus.objectRegisteredAt(kPath) != &m_object) {
        return;
    }
    if (wish.manner == Manner::take) {
        note(standingOf(ownerAfterAsking(bus, Queue::yes)));
        return;
    }
    for (int attempt = 0; attempt < kMostTries; ++attempt) {
        const auto owner = wish.manner == Manner::tell ? Owner::other : ownerAfterAsking(bus, Queue::no);
        note(standingOf(owner));
        if (owner != Owner::other) {
            return;
        }
        if (isHeard(bus, wish.token, wish.end)) {
            note(Standing::heard);
            return;
        }
    }
}

// What an older wish has come to is nobody's answer.
void SessionName::note(Standing standing) {
    const std::lock_guard lock(m_mutex);
    if (!m_wish) {
        m_standing = standing;
    }
}

} // namespace quillane
