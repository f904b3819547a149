#include "InstanceSocket.h"
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <poll.h>
#include <random>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace quillane {
namespace {

using Moment = std::chrono::steady_clock::time_point;

constexpr const char* kAnswer = "heard";

constexpr int kMostNames = 4; // each of them is free, but for a system that has no room for a socket

// Of the system's own randomness.
std::string freshName() {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::random_device random;
    std::string name;
    for (int part = 0; part < 4; ++part) {
        const std::uint32_t bits = random();
        for (unsigned shift = 0; shift < 32; shift += 4) {
            name += kDigits[bits >> shift & 0xF];
        }
    }
    return name;
}

struct Address {
    sockaddr_un address = {};
    socklen_t length = 0;
};

// Not in the file system: the name begins with a zero.
Address addressOf(const std::string& name) {
    Address made;
    made.address.sun_family = AF_UNIX;
    const std::string text =
        std::string(1, '\0') + "org.quillane.Quillane/" + std::to_string(::getuid()) + "/" + name;
    const auto length = std::min(text.size(), sizeof(made.address.sun_path));
    std::memcpy(made.address.sun_path, text.data(), length);
    made.length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + length);
    return made;
}

// One that is told who sends, and gets an address itself when it sends.
Descriptor newSocket() {
    Descriptor made(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const int yes = 1;
    if (made && ::setsockopt(made.get(), SOL_SOCKET, SO_PASSCRED, &yes, sizeof(yes)) != 0) {
        made.reset();
    }
    return made;
}

bool isFrom(uid_t user, msghdr& header) {
    for (cmsghdr* part = CMSG_FIRSTHDR(&header); part != nullptr; part = CMSG_NXTHDR(&header, part)) {
        if (part->cmsg_level == SOL_SOCKET && part->cmsg_type == SCM_CREDENTIALS) {
            ucred sender = {};
            std::memcpy(&sender, CMSG_DATA(part), sizeof(sender));
            return sender.uid == user;
        }
    }
    return false;
}

struct Received {
    InstanceSocket::Message message;
    bool counts = false; // of this user, and whole
};

// A path that takes all the room of an address counts a zero more. It is reached without that, and not with it.
std::string addressIn(const sockaddr_storage& from, socklen_t length) {
    return {reinterpret_cast<const char*>(&from), std::min<std::size_t>(length, sizeof(sockaddr_un))};
}

// Nothing when none waits.
std::optional<Received> receive(int socket, uid_t user) {
    std::array<char, InstanceSocket::kLongest> text = {};
    sockaddr_storage from = {};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> parts = {};
    iovec place = {text.data(), text.size()};
    msghdr header = {};
    header.msg_name = &from;
    header.msg_namelen = sizeof(from);
    header.msg_iov = &place;
    header.msg_iovlen = 1;
    header.msg_control = parts.data();
    header.msg_controllen = parts.size();
    ssize_t length = -1;
    do {
        length = ::recvmsg(socket, &header, MSG_CMSG_CLOEXEC);
    } while (length < 0 && errno == EINTR);
    if (length < 0) {
        return std::nullopt;
    }
    Received received;
    received.counts = isFrom(user, header) && (header.msg_flags & MSG_TRUNC) == 0;
    received.message.text.assign(text.data(), static_cast<std::size_t>(length));
    received.message.from = addressIn(from, header.msg_namelen);
    return received;
}

// However many others send meanwhile.
bool isAnswered(int socket, uid_t user, Moment end) {
    for (;;) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now()).count();
        pollfd ready = {socket, POLLIN, 0};
        const int count = left <= 0 ? 0 : ::poll(&ready, 1, static_cast<int>(left));
        if (count == 0 || (count < 0 && errno != EINTR)) {
            return false;
        }
        const auto received = receive(socket, user);
        if (received && received->counts && received->message.text == kAnswer) {
            return true;
        }
    }
}

} // namespace

InstanceSocket::InstanceSocket(const std::string& name, uid_t user)
    : m_name(name)
    , m_user(user)
    , m_socket(newSocket()) {
    const auto own = addressOf(name);
    if (m_socket &&
        ::bind(m_socket.get(), reinterpret_cast<const sockaddr*>(&own.address), own.length) != 0) {
        m_socket.reset();
    }
}

InstanceSocket InstanceSocket::underFreshName() {
    InstanceSocket made(freshName());
    for (int again = 1; again < kMostNames && made.descriptor() < 0; ++again) {
        made = InstanceSocket(freshName());
    }
    return made;
}

int InstanceSocket::descriptor() const {
    return m_socket.get();
}

std::optional<InstanceSocket::Message> InstanceSocket::next() const {
    for (int dropped = 0; dropped < kMostAtOnce; ++dropped) {
        auto received = receive(m_socket.get(), m_user);
        if (!received) {
            break;
        }
        if (received->counts) {
            return std::move(received->message);
        }
    }
    return std::nullopt;
}

void InstanceSocket::answer(const Message& message) const {
    // Whoever asked may be gone.
    (void)::sendto(m_socket.get(), kAnswer, std::strlen(kAnswer), MSG_NOSIGNAL,
                   reinterpret_cast<const sockaddr*>(message.from.data()),
                   static_cast<socklen_t>(message.from.size()));
}

InstanceSocket::Answer InstanceSocket::tell(const std::string& name, const std::string& text,
                                            std::chrono::milliseconds patience, uid_t user) {
    const auto end = std::chrono::steady_clock::now() + patience;
    const auto socket = newSocket();
    const auto other = addressOf(name);
    if (!socket || text.size() > kLongest) {
        return Answer::none;
    }
    if (::sendto(socket.get(), text.data(), text.size(), MSG_NOSIGNAL,
                 reinterpret_cast<const sockaddr*>(&other.address), other.length) < 0) {
        // A queue that is full is of one that does not look at it.
        return errno == EAGAIN ? Answer::awaited : Answer::none;
    }
    return isAnswered(socket.get(), user, end) ? Answer::given : Answer::awaited;
}

} // namespace quillane
