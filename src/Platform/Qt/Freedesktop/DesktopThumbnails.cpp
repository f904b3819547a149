#include "DesktopThumbnails.h"
#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusReply>
#include <QMimeDatabase>
#include <QStringList>
#include <algorithm>
#include <array>
#include <chrono>
#include <optional>
#include <thread>
#include <utility>

namespace quillane {
namespace {

constexpr int kTimeout =
    std::chrono::duration_cast<std::chrono::milliseconds>(DesktopThumbnails::kPatience).count();

QDBusMessage callOf(const char* method) {
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.thumbnails.Thumbnailer1"),
                                          QStringLiteral("/org/freedesktop/thumbnails/Thumbnailer1"),
                                          QStringLiteral("org.freedesktop.thumbnails.Thumbnailer1"),
                                          QString::fromLatin1(method));
}

// Nothing where there is no service or it does not answer in time; a refusal is an answer without values.
std::optional<QList<QVariant>> answerTo(const QDBusConnection& bus, const QDBusMessage& call) {
    if (!bus.isConnected()) {
        return std::nullopt;
    }
    const auto reply = bus.call(call, QDBus::Block, kTimeout);
    if (reply.type() == QDBusMessage::ReplyMessage) {
        return reply.arguments();
    }
    const auto kind = QDBusError(reply).type();
    const bool isSilence = kind == QDBusError::NoReply || kind == QDBusError::Timeout ||
                           kind == QDBusError::TimedOut || kind == QDBusError::ServiceUnknown ||
                           kind == QDBusError::Disconnected;
    return isSilence ? std::nullopt : std::optional(QList<QVariant>());
}

// Two lists side by side: a kind of place and a type of file. Files of the machine are the kind "file".
QSet<QString> typesIn(const QList<QVariant>& answer) {
    if (answer.size() < 2) {
        return {};
    }
    const auto places = answer.at(0).toStringList();
    const auto types = answer.at(1).toStringList();
    QSet<QString> found;
    for (qsizetype i = 0; i < std::min(places.size(), types.size()); ++i) {
        if (places.at(i) == QLatin1String("file")) {
            found.insert(types.at(i));
        }
    }
    return found;
}

QSet<QString> flavorsIn(const QList<QVariant>& answer) {
    const auto list = answer.isEmpty() ? QStringList() : answer.first().toStringList();
    return {list.begin(), list.end()};
}

// By the name alone: the service looks inside.
QString typeOf(const FileURL& url) {
    const auto name = url.lastPathComponent();
    return QMimeDatabase()
        .mimeTypeForFile(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())),
                         QMimeDatabase::MatchExtension)
        .name();
}

// The smallest that is no smaller than the picture wants, else the largest that the service makes.
QString flavorFor(const QSet<QString>& made, int side) {
    struct Flavor {
        const char* name;
        int side;
    };
    constexpr std::array kFlavors = {Flavor{"normal", 128}, Flavor{"large", 256}, Flavor{"x-large", 512},
                                     Flavor{"xx-large", 1024}};
    QString best = QStringLiteral("large");
    for (const auto& flavor : kFlavors) {
        if (made.contains(QString::fromLatin1(flavor.name))) {
            best = QString::fromLatin1(flavor.name);
            if (flavor.side >= side) {
                break;
            }
        }
    }
    return best;
}

} // namespace

DesktopThumbnails::DesktopThumbnails(ThumbnailStore store, const Clock& clock, SessionBus bus, Pause pause)
    : m_store(std::move(store))
    , m_clock(clock)
    , m_bus(std::move(bus))
    , m_pause(std::move(pause)) {}

void DesktopThumbnails::sleepThisThread(Duration duration) {
    std::this_thread::sleep_for(duration);
}

std::shared_ptr<const IconImage> DesktopThumbnails::made(const FileURL& url, Date modified, int side,
                                                         const StopToken& stop) {
    const auto able = abilities();
    const auto type = typeOf(url);
    if (!able.types.contains(type) || stop.stopRequested()) {
        return nullptr;
    }
    auto request = callOf("Queue");
    request << QStringList(QString::fromStdString(ThumbnailStore::uriOf(url))) << QStringList(type)
            << flavorFor(able.flavors, side) << QStringLiteral("foreground") << 0U;
    const auto bus = m_bus();
    const auto handle = answerTo(bus, request);
    if (!handle) {
        rest();
    }
    if (!handle || handle->isEmpty()) {
        return nullptr;
    }
    auto thumbnail = awaited(url, modified, stop);
    if (!thumbnail) {
        auto withdrawal = callOf("Dequeue");
        withdrawal << handle->first();
        bus.call(withdrawal, QDBus::NoBlock);
    }
    return thumbnail;
}

// The service has signals for it that do not always come; its files do.
std::shared_ptr<const IconImage> DesktopThumbnails::awaited(const FileURL& url, Date modified,
                                                            const StopToken& stop) const {
    const auto end = m_clock.instant() + kPatience;
    while (!stop.stopRequested()) {
        if (auto thumbnail = m_store.best(url, modified, 0)) {
            return thumbnail;
        }
        if (m_clock.instant() >= end) {
            return nullptr;
        }
        m_pause(kBetweenLooks);
    }
    return nullptr;
}

// The lock is not held while the service is asked: several threads may ask for the same at first, and none waits for
// another.
DesktopThumbnails::Abilities DesktopThumbnails::abilities() {
    {
        const std::lock_guard lock(m_mutex);
        if (m_abilities) {
            return *m_abilities;
        }
        if (m_restsUntil && m_clock.instant() < *m_restsUntil) {
            return {};
        }
    }
    const auto bus = m_bus();
    const auto supported = answerTo(bus, callOf("GetSupported"));
    const auto types = supported ? typesIn(*supported) : QSet<QString>();
    if (types.isEmpty()) {
        rest();
        return {};
    }
    const auto flavors = answerTo(bus, callOf("GetFlavors"));
    if (!flavors) {
        rest();
        return {};
    }
    Abilities told{types, flavorsIn(*flavors)};
    const std::lock_guard lock(m_mutex);
    if (m_restsUntil && m_clock.instant() < *m_restsUntil) {
        return {}; // it has fallen silent meanwhile
    }
    m_abilities = told;
    return told;
}

// What it could do is asked anew afterwards: another service may have taken its place.
void DesktopThumbnails::rest() {
    const std::lock_guard lock(m_mutex);
    m_abilities.reset();
    m_restsUntil = m_clock.instant() + kRest;
}

} // namespace quillane
