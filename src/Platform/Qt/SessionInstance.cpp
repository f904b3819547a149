#include "SessionInstance.h"
#include <QSocketNotifier>
#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace quillane {
namespace {

constexpr std::string_view kActivate = "activate\n"; // with the token behind it
constexpr std::size_t kMostWaiting = 16;
constexpr std::string_view kUnheard = "Quillane is already running, and does not answer.\n";

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

std::chrono::milliseconds SessionInstance::left() const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_end - std::chrono::steady_clock::now());
    return std::max(left, std::chrono::milliseconds(0));
}

SessionInstance::Standing SessionInstance::stand(const std::string& token, bool isRelaunched) {
    auto holder = isRelaunched ? m_lock.takeWithin(m_patience.end) : m_lock.take();
    m_end = std::chrono::steady_clock::now() + m_patience.answer;
    if (holder == InstanceLock::Holder::other) {
        if (tellHolder(token)) {
            return Standing::second;
        }
        holder = m_lock.take(); // it may have been about to end
        m_end = std::chrono::steady_clock::now() + m_patience.answer;
    }
    return holder == InstanceLock::Holder::other ? Standing::secondUnheard : standAlone(token, holder);
}

bool SessionInstance::tellHolder(const std::string& token) {
    const auto bySocket = [&] { return tellBySocket(token); };
    auto answer = bySocket();
    if (answer == InstanceSocket::Answer::none) { // it may have none, or none yet
        if (m_name.tell(token, left()) == SessionName::Standing::heard) {
            return true;
        }
        answer = bySocket();
    }
    return answer == InstanceSocket::Answer::given;
}

InstanceSocket::Answer SessionInstance::tellBySocket(const std::string& token) const {
    return InstanceSocket::tell(m_lock.name(), std::string(kActivate) + token, left());
}

// Where there are no locks the socket of the file that could not be locked tells as much, on this machine.
SessionInstance::Standing SessionInstance::standAlone(const std::string& token, InstanceLock::Holder holder) {
    const bool hasLock = holder == InstanceLock::Holder::self;
    if (!m_lock.name().empty()) {
        m_socket.emplace(m_lock.name());
        const auto other =
            hasLock || m_socket->descriptor() >= 0 ? InstanceSocket::Answer::none : tellBySocket(token);
        if (other != InstanceSocket::Answer::none) {
            return other == InstanceSocket::Answer::given ? Standing::second : Standing::secondUnheard;
        }
    }
    return standByName(token, hasLock);
}

// Whoever has the name and does not answer works on other settings where this start has the lock of its own.
SessionInstance::Standing SessionInstance::standByName(const std::string& token, bool hasLock) {
    const auto standing = m_name.takeOrTell(token, left());
    if (standing == SessionName::Standing::heard) {
        return Standing::second;
    }
    return standing == SessionName::Standing::taken && !hasLock ? Standing::secondUnheard : Standing::first;
}

std::optional<int> SessionInstance::endOfSecond(int argc, char** argv) {
    const bool isRelaunched =
        std::any_of(argv + 1, argv + argc, [](const char* a) { return std::string_view(a) == kRelaunched; });
    switch (stand(tokenOfThisStart(), isRelaunched)) {
    case Standing::first:
        break;
    case Standing::second:
        return EXIT_SUCCESS;
    case Standing::secondUnheard:
        say(kUnheard);
        return EXIT_FAILURE;
    }
    return std::nullopt;
}

void SessionInstance::follow(std::function<void(const Request&)> handler) {
    m_handler = std::move(handler);
    for (const auto& request : std::exchange(m_waiting, {})) {
        m_handler(request);
    }
    if (m_socket && m_socket->descriptor() >= 0 && m_notifier == nullptr) {
        m_notifier = new QSocketNotifier(m_socket->descriptor(), QSocketNotifier::Read, this);
        connect(m_notifier, &QSocketNotifier::activated, this, [this] {
            if (m_socket) {
                read(*m_socket);
            }
        });
    }
}

void SessionInstance::read(const InstanceSocket& socket) {
    while (const auto message = socket.next()) {
        if (message->text.starts_with(kActivate)) {
            hear({usable(message->text.substr(kActivate.size())), std::nullopt});
            socket.answer(*message);
        }
    }
}

void SessionInstance::hear(Request request) {
    if (m_handler) {
        m_handler(request);
    } else if (m_waiting.size() < kMostWaiting) {
        m_waiting.push_back(std::move(request));
    }
}

void SessionInstance::Activate(const QVariantMap& platformData) {
    hear({tokenIn(platformData), std::nullopt});
}

// There are no documents of its own.
void SessionInstance::Open(const QStringList& /*uris*/, const QVariantMap& platformData) {
    Activate(platformData);
}

void SessionInstance::ActivateAction(const QString& action, const QVariantList& parameters,
                                     const QVariantMap& platformData) {
    const bool isText = parameters.size() == 1 && parameters.first().userType() == QMetaType::QString;
    if (action == QLatin1String("show-section") && isText) {
        hear({tokenIn(platformData), parameters.first().toString().toStdString()});
    }
}

} // namespace quillane
