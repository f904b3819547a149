#include "MessageBus.h"
#include "Descriptor.h"
#include "HexadecimalText.h"
#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <poll.h>
#include <span>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace quillane {
namespace {

using namespace std::chrono_literals;
using Moment = std::chrono::steady_clock::time_point;

constexpr const char* kSessionVariable = "DBUS_SESSION_BUS_ADDRESS";
constexpr std::string_view kSystemSocket = "unix:path=/run/dbus/system_bus_socket";
constexpr const char* kNoBus = "disabled:"; // a kind of address that nobody has
constexpr std::chrono::milliseconds kBetweenTries = 5ms;

enum class Answer { none, given, awaited };

std::string variable(const char* name) {
    const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): set before there are threads
    return value == nullptr ? std::string() : std::string(value);
}

std::string withoutEscapes(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        unsigned byte = 0;
        const bool isEscape =
            text.front() == '%' && text.size() > 2 &&
            std::from_chars(text.data() + 1, text.data() + 3, byte, 16).ptr == text.data() + 3;
        plain += isEscape ? static_cast<char>(byte) : text.front();
        text.remove_prefix(isEscape ? 3 : 1);
    }
    return plain;
}

// What stands in front of the next separator, which goes along.
std::string_view takeUpTo(char separator, std::string_view& text) {
    const auto end = std::min(text.find(separator), text.size());
    const auto part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

// The name of the socket, with a zero before one that is no file. Nothing for another kind of address.
std::optional<std::string> socketOf(std::string_view address) {
    if (takeUpTo(':', address) != "unix") {
        return std::nullopt;
    }
    while (!address.empty()) {
        auto value = takeUpTo(',', address);
        const auto key = takeUpTo('=', value);
        if (value.empty()) {
            continue;
        }
        if (key == "path") {
            return withoutEscapes(value);
        }
        if (key == "abstract") {
            return std::string(1, '\0') + withoutEscapes(value);
        }
        if (key == "runtime") {
            return variable("XDG_RUNTIME_DIR") + "/bus";
        }
    }
    return std::nullopt;
}

std::chrono::milliseconds until(Moment end) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    return std::max(left, 0ms);
}

// Empty where nobody listens, and while more wait for whoever does than it has room for.
Descriptor connectTo(const std::string& socket) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    Descriptor made(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (socket.size() >= sizeof(address.sun_path)) {
        errno = ENAMETOOLONG;
        return {};
    }
    if (!made) {
        return {};
    }
    std::memcpy(address.sun_path, socket.data(), socket.size());
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + socket.size());
    if (::connect(made.get(), reinterpret_cast<const sockaddr*>(&address), length) != 0) {
        made.reset();
    }
    return made;
}

// The first words of everybody who connects.
std::string greeting() {
    const std::string user = std::to_string(::getuid());
    return std::string(1, '\0') + "AUTH EXTERNAL " + hexadecimalText(std::as_bytes(std::span(user))) + "\r\n";
}

Answer answerOn(const Descriptor& connection, Moment end) {
    const auto words = greeting();
    if (::send(connection.get(), words.data(), words.size(), MSG_NOSIGNAL) < 0) {
        return Answer::none;
    }
    for (;;) {
        pollfd ready = {connection.get(), POLLIN, 0};
        const int count = ::poll(&ready, 1, static_cast<int>(until(end).count()));
        if (count == 0) {
            return Answer::awaited;
        }
        if (count > 0) {
            char first = 0;
            return ::recv(connection.get(), &first, 1, 0) == 1 ? Answer::given : Answer::none;
        }
        if (errno != EINTR) {
            return Answer::none;
        }
    }
}

Answer answerAt(const std::string& socket, Moment end) {
    for (;;) {
        if (const auto connection = connectTo(socket)) {
            return answerOn(connection, end);
        }
        if (errno != EAGAIN) {
            return Answer::none;
        }
        const auto pause = std::min(until(end), kBetweenTries);
        if (pause == 0ms) {
            return Answer::awaited;
        }
        (void)::poll(nullptr, 0, static_cast<int>(pause.count()));
    }
}

} // namespace

std::string MessageBus::sessionAddress() {
    auto told = variable(kSessionVariable);
    const auto folder = variable("XDG_RUNTIME_DIR");
    return !told.empty() || folder.empty() ? told : "unix:path=" + folder + "/bus";
}

std::string MessageBus::systemAddress() {
    const auto told = variable("DBUS_SYSTEM_BUS_ADDRESS");
    return told.empty() ? std::string(kSystemSocket) : told;
}

bool MessageBus::hasStopped(std::string_view addresses, std::chrono::milliseconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!addresses.empty()) {
        const auto socket = socketOf(takeUpTo(';', addresses));
        const auto answer = socket ? answerAt(*socket, end) : Answer::given;
        if (answer != Answer::none) {
            return answer == Answer::awaited;
        }
    }
    return false;
}

void MessageBus::leaveStoppedSessionBus() {
    if (hasStopped(sessionAddress())) {
        ::setenv(kSessionVariable, kNoBus, 1); // NOLINT(concurrency-mt-unsafe): before there are threads
    }
}

} // namespace quillane
