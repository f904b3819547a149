#include "SessionInstance.h"
#include "Workspace.h"
#include <QSocketNotifier>
#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <utility>

namespace quillane {
namespace {

using namespace std::chrono_literals;
using Moment = std::chrono::steady_clock::time_point;

constexpr std::chrono::milliseconds kBetweenLooks = 50ms;
constexpr std::string_view kActivate = "activate\n"; // with the token behind it
constexpr const char* kNothing = "";                 // asks for nothing, and is not answered
constexpr std::size_t kMostWaiting = 16;

// Letters of any language, and nothing that could be more than one value in an environment or on a display.
std::string usable(std::string token) {
    const bool isText = std::ranges::none_of(token, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || byte == 0x7F;
    });
    return isText && token.size() <= SessionInstance::kLongestToken ? std::move(token) : std::string();
}

std::string tokenIn(const QVariantMap& platformData) {
    for (const auto* key : {"activation-token", "desktop-startup-id"}) {
        if (auto token = usable(platformData.value(QLatin1String(key)).toString().toStdString());
            !token.empty()) {
            return token;
        }
    }
    return {};
}

std::chrono::milliseconds leftUntil(Moment end) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    return std::max(left, 0ms);
}

std::string variable(const char* name) {
    const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): before threads
    return value == nullptr ? std::string() : usable(value);
}

// Where nobody reads it, the status of the end says as much.
void say(std::string_view words) {
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, words.data(), words.size());
}

} // namespace

SessionInstance::SessionInstance(const std::string& settings, SessionBus bus, Patience patience)
    : m_patience(patience)
    , m_lock(InstanceLock::pathBeside(settings))
    , m_name(std::move(bus), *this) {}

SessionInstance::~SessionInstance() = default;

std::string SessionInstance::tokenOfThisStart() {
    auto token = variable("XDG_ACTIVATION_TOKEN");
    return token.empty() ? variable("DESKTOP_STARTUP_ID") : token;
}

SessionInstance::Standing SessionInstance::stand(const std::string& token, bool isRelaunched) {
    const auto endOfOld =
        std::chrono::steady_clock::now() + (isRelaunched ? m_patience.end : std::chrono::milliseconds(0));
    auto holder = isRelaunched ? m_lock.takeWithin(m_patience.end) : m_lock.take();
    auto standing = standAlone(token, holder, endOfOld);
    if (standing == Standing::secondUnheard) { // whoever has not answered may have been about to end
        holder = m_lock.take();
        standing = holder == InstanceLock::Holder::self ? standWithLock() : standing;
    }
    return standing;
}

SessionInstance::Standing SessionInstance::standAlone(const std::string& token, InstanceLock::Holder holder,
                                                      Moment endOfOld) {
    switch (holder) {
    case InstanceLock::Holder::self:
        return standWithLock();
    case InstanceLock::Holder::other:
        return tellHolder(token) ? Standing::second : Standing::secondUnheard;
    case InstanceLock::Holder::unknown:
        break;
    }
    return standWithoutLock(token, endOfOld);
}

// Whoever listens under the name that is written there may be anybody, once its holder has gone: the bus is asked too.
bool SessionInstance::tellHolder(const std::string& token) {
    const auto answer = tellBySocket(token, std::chrono::steady_clock::now() + m_patience.answer);
    if (answer == InstanceSocket::Answer::given) {
        return true;
    }
    const auto end = std::chrono::steady_clock::now() + m_patience.answer;
    return m_name.tell(token, leftUntil(end)) == SessionName::Standing::heard ||
           (answer == InstanceSocket::Answer::none && // it may have come to listen by now
            tellBySocket(token, end) == InstanceSocket::Answer::given);
}

InstanceSocket::Answer SessionInstance::tellBySocket(const std::string& token, Moment end) const {
    const auto name = m_lock.readName();
    return name.empty() ? InstanceSocket::Answer::none
                        : InstanceSocket::tell(name, std::string(kActivate) + token, leftUntil(end));
}

// Whoever has the name on the bus works on other settings, or is about to end, or is no Quillane.
SessionInstance::Standing SessionInstance::standWithLock() {
    listen();
    (void)m_name.take(m_patience.answer);
    return Standing::first;
}

// Where there are no locks, what stands in the file that could not be locked tells as much, on this machine.
SessionInstance::Standing SessionInstance::standWithoutLock(const std::string& token, Moment endOfOld) {
    waitForOld(endOfOld);
    const auto answer = tellBySocket(token, std::chrono::steady_clock::now() + m_patience.answer);
    if (answer == InstanceSocket::Answer::given) {
        return Standing::second;
    }
    switch (m_name.takeOrTell(token, m_patience.answer)) {
    case SessionName::Standing::heard:
        return Standing::second;
    case SessionName::Standing::taken:
        return Standing::secondUnheard;
    case SessionName::Standing::ours:
    case SessionName::Standing::absent:
        break;
    }
    if (answer == InstanceSocket::Answer::awaited) {
        return Standing::secondUnheard;
    }
    listen();
    return Standing::first;
}

// As long as the one that has started this one anew is to be seen. It is not told anything: it would stay.
void SessionInstance::waitForOld(Moment end) {
    const auto isThere = [&] {
        const auto name = m_lock.readName();
        return (!name.empty() && InstanceSocket::tell(name, kNothing, 0ms) != InstanceSocket::Answer::none) ||
               m_name.take(std::min(leftUntil(end), m_patience.answer)) == SessionName::Standing::taken;
    };
    while (std::chrono::steady_clock::now() < end && isThere()) {
        std::this_thread::sleep_for(kBetweenLooks);
    }
}

void SessionInstance::listen() {
    m_socket = InstanceSocket::underFreshName();
    if (m_socket->descriptor() < 0 || !m_lock.writeName(m_socket->name())) {
        m_socket.reset(); // nobody would find it
    }
}

std::optional<int> SessionInstance::endOfSecond(int argc, char** argv) {
    const bool isRelaunched = std::any_of(
        argv + 1, argv + argc, [](const char* a) { return std::string_view(a) == Workspace::kRelaunched; });
    switch (stand(tokenOfThisStart(), isRelaunched)) {
    case Standing::first:
        break;
    case Standing::second:
        return EXIT_SUCCESS;
    case Standing::secondUnheard:
        say(std::string(kUnheard) + '\n');
        return EXIT_FAILURE;
    }
    return std::nullopt;
}

void SessionInstance::follow(Handler handler) {
    m_handler = std::move(handler);
    for (const auto& request : std::exchange(m_waiting, {})) {
        (void)m_handler(request);
    }
    if (m_socket && m_notifier == nullptr) {
        m_notifier = new QSocketNotifier(m_socket->descriptor(), QSocketNotifier::Read, this);
        connect(m_notifier, &QSocketNotifier::activated, this, [this] {
            if (m_socket) {
                read(*m_socket);
            }
        });
    }
}

void SessionInstance::read(const InstanceSocket& socket) {
    for (int count = 0; count < InstanceSocket::kMostAtOnce; ++count) { // what is left has its turn later
        const auto message = socket.next();
        if (!message) {
            break;
        }
        if (message->text.starts_with(kActivate) &&
            hear({usable(message->text.substr(kActivate.size())), std::nullopt})) {
            socket.answer(*message);
        }
    }
}

bool SessionInstance::hear(Request request) {
    if (m_handler) {
        return m_handler(request);
    }
    if (m_waiting.size() < kMostWaiting) {
        m_waiting.push_back(std::move(request));
    }
    return true;
}

void SessionInstance::hearOnBus(Request request) {
    if (!hear(std::move(request)) && calledFromDBus()) {
        sendErrorReply(QDBusError::Failed, QStringLiteral("The program is about to end."));
    }
}

void SessionInstance::Activate(const QVariantMap& platformData) {
    hearOnBus({tokenIn(platformData), std::nullopt});
}

// There are no documents of its own.
void SessionInstance::Open(const QStringList& /*uris*/, const QVariantMap& platformData) {
    Activate(platformData);
}

void SessionInstance::ActivateAction(const QString& action, const QVariantList& parameters,
                                     const QVariantMap& platformData) {
    const bool isText = parameters.size() == 1 && parameters.first().userType() == QMetaType::QString;
    if (action == QLatin1String("show-section") && isText) {
        hearOnBus({tokenIn(platformData), parameters.first().toString().toStdString()});
    }
}

} // namespace quillane
