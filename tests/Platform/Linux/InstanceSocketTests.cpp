#include "InstanceSocket.h"
#include <chrono>
#include <cstddef>
#include <cstring>
#include <gtest/gtest.h>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace quillane {
namespace {

using namespace std::chrono_literals;
using Answer = InstanceSocket::Answer;

// Nobody else's name.
std::string ownName() {
    static int count = 0;
    return "test-" + std::to_string(::getpid()) + "-" + std::to_string(++count);
}

void waitForMessage(const InstanceSocket& socket) {
    pollfd ready = {socket.descriptor(), POLLIN, 0};
    ASSERT_EQ(::poll(&ready, 1, 60'000), 1);
}

// Sends to the socket as any program could.
class Stranger {
  public:
    explicit Stranger(const std::string& name)
        : m_socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
        const std::string text =
            std::string(1, '\0') + "org.quillane.Quillane/" + std::to_string(::getuid()) + "/" + name;
        m_address.sun_family = AF_UNIX;
        std::memcpy(m_address.sun_path, text.data(), text.size());
        m_length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + text.size());
    }
    bool send(const std::string& text) const {
        return ::sendto(m_socket.get(), text.data(), text.size(), MSG_NOSIGNAL,
                        reinterpret_cast<const sockaddr*>(&m_address),
                        m_length) == static_cast<ssize_t>(text.size());
    }
    bool bind() const {
        return ::bind(m_socket.get(), reinterpret_cast<const sockaddr*>(&m_address), m_length) == 0;
    }
    int descriptor() const { return m_socket.get(); }

  private:
    Descriptor m_socket;
    sockaddr_un m_address = {};
    socklen_t m_length = 0;
};

TEST(InstanceSocket, WhatIsToldArrivesWholeAndIsAnswered) {
    const auto name = ownName();
    const InstanceSocket first(name);
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    for (const auto& text : {std::string("a b\n"), bytes, std::string(InstanceSocket::kLongest, 'x')}) {
        Answer answer = Answer::none;
        std::thread second([&] { answer = InstanceSocket::tell(name, text, 1min); });
        waitForMessage(first);
        const auto message = first.next();
        ASSERT_TRUE(message);
        EXPECT_EQ(message->text, text);
        first.answer(*message);
        second.join();
        EXPECT_EQ(answer, Answer::given);
        EXPECT_FALSE(first.next());
    }
}

TEST(InstanceSocket, NobodyListensUnderANameThatNobodyHas) {
    EXPECT_EQ(InstanceSocket::tell(ownName(), "text", 1min), Answer::none);
}

TEST(InstanceSocket, OneThatHasTheMessageAndDoesNotAnswerIsNotWaitedForLonger) {
    const auto name = ownName();
    const InstanceSocket first(name);
    EXPECT_EQ(InstanceSocket::tell(name, "text", 1ms), Answer::awaited);
    const auto message = first.next();
    ASSERT_TRUE(message); // it is told when it comes to read
    first.answer(*message);
}

TEST(InstanceSocket, OneThatReadsNothingAnyMoreFillsItsQueueAndNotMore) {
    const auto name = ownName();
    const InstanceSocket first(name);
    const Stranger stranger(name);
    int sent = 0;
    while (stranger.send("text") && sent < 100'000) {
        ++sent;
    }
    EXPECT_LT(sent, 100'000);
    EXPECT_EQ(InstanceSocket::tell(name, "text", 1min), Answer::awaited);
}

TEST(InstanceSocket, ASecondOneOfTheNameDoesNotListen) {
    const auto name = ownName();
    const InstanceSocket first(name);
    EXPECT_GE(first.descriptor(), 0);
    EXPECT_LT(InstanceSocket(name).descriptor(), 0);
}

TEST(InstanceSocket, TheNameIsFreeOnceItsHolderIsKilled) {
    const auto name = ownName();
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(InstanceSocket(name).descriptor() >= 0 ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_GE(InstanceSocket(name).descriptor(), 0);
}

TEST(InstanceSocket, AMessageThatIsTooLongIsNone) {
    const auto name = ownName();
    const InstanceSocket first(name);
    const std::string text(InstanceSocket::kLongest + 1, 'x');
    EXPECT_EQ(InstanceSocket::tell(name, text, 1min), Answer::none);
    ASSERT_TRUE(Stranger(name).send(text));
    ASSERT_TRUE(Stranger(name).send("next"));
    EXPECT_EQ(first.next()->text, "next");
}

TEST(InstanceSocket, AnEmptyMessageAndOneWithoutAnAddressDoNoHarm) {
    const auto name = ownName();
    const InstanceSocket first(name);
    ASSERT_TRUE(Stranger(name).send(""));
    const auto message = first.next();
    ASSERT_TRUE(message);
    EXPECT_EQ(message->text, "");
    first.answer(*message);
    EXPECT_FALSE(first.next());
}

// Who may change its user sends as another one.
TEST(InstanceSocket, WhatAnotherUserSaysIsNotHeard) {
    if (::getuid() != 0) {
        return; // only an administrator can try
    }
    const auto name = ownName();
    const InstanceSocket first(name);
    const pid_t child = ::fork();
    if (child == 0) {
        const Stranger stranger(name);
        ::_exit(::setuid(65534) == 0 && stranger.send("text") ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    ASSERT_TRUE(Stranger(name).send("next"));
    EXPECT_EQ(first.next()->text, "next");
}

TEST(InstanceSocket, AnAnswerOfAnotherUserIsNone) {
    if (::getuid() != 0) {
        return;
    }
    const auto name = ownName();
    const Stranger squatter(name);
    ASSERT_TRUE(squatter.bind());
    const pid_t child = ::fork();
    if (child == 0) {
        sockaddr_un from = {};
        socklen_t length = sizeof(from);
        char text[8];
        pollfd ready = {squatter.descriptor(), POLLIN, 0};
        const bool isAnswered =
            ::setuid(65534) == 0 && ::poll(&ready, 1, 60'000) == 1 &&
            ::recvfrom(squatter.descriptor(), text, sizeof(text), 0, reinterpret_cast<sockaddr*>(&from),
                       &length) > 0 &&
            ::sendto(squatter.descriptor(), "heard", 5, 0, reinterpret_cast<sockaddr*>(&from), length) == 5;
        ::_exit(isAnswered ? 0 : 1);
    }
    // The answer comes long before the patience ends, which is tried out as there is nothing to wait for.
    EXPECT_EQ(InstanceSocket::tell(name, "text", 300ms), Answer::awaited);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace quillane
