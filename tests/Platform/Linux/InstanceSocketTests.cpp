#include "InstanceSocket.h"
#include "TemporaryFolder.h"
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

bool hasMessage(const InstanceSocket& socket) {
    pollfd ready = {socket.descriptor(), POLLIN, 0};
    return ::poll(&ready, 1, 0) == 1;
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

TEST(InstanceSocket, AFreshNameIsAnotherEachTimeAndIsListenedUnder) {
    const auto one = InstanceSocket::underFreshName();
    const auto other = InstanceSocket::underFreshName();
    EXPECT_NE(one.name(), other.name());
    EXPECT_EQ(one.name().size(), 32U);
    EXPECT_EQ(one.name().find_first_not_of("0123456789abcdef"), std::string::npos);
    ASSERT_TRUE(Stranger(one.name()).send("text"));
    EXPECT_TRUE(hasMessage(one));
    EXPECT_FALSE(hasMessage(other));
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

// As a program may that binds a path of its own.
TEST(InstanceSocket, ASenderWhoseAddressTakesAllTheRoomThereIsGetsItsAnswer) {
    const auto name = ownName();
    const InstanceSocket first(name);
    const TemporaryFolder folder;
    sockaddr_un own = {};
    own.sun_family = AF_UNIX;
    const auto path = folder.at(std::string(sizeof(own.sun_path) - folder.at("x").size() + 1, 'x'));
    ASSERT_EQ(path.size(), sizeof(own.sun_path)); // no zero behind it
    std::memcpy(own.sun_path, path.data(), path.size());
    const Stranger sender(name);
    ASSERT_EQ(::bind(sender.descriptor(), reinterpret_cast<const sockaddr*>(&own), sizeof(own)), 0);
    ASSERT_TRUE(sender.send("text"));
    const auto message = first.next();
    ASSERT_TRUE(message);
    EXPECT_LE(message->from.size(), sizeof(own));
    first.answer(*message);
    char text[8] = {};
    EXPECT_EQ(::recv(sender.descriptor(), text, sizeof(text), 0), 5);
    EXPECT_STREQ(text, "heard");
}

TEST(InstanceSocket, WhatAnotherUserSaysIsNotHeard) {
    const auto name = ownName();
    const InstanceSocket ofAnother(name, ::getuid() + 1);
    ASSERT_TRUE(Stranger(name).send("text"));
    EXPECT_FALSE(ofAnother.next());
    EXPECT_FALSE(hasMessage(ofAnother)); // it is gone for good
}

TEST(InstanceSocket, WhoSendsWithoutAnEndIsLookedAtForAWhileOnly) {
    const auto name = ownName();
    const InstanceSocket ofAnother(name, ::getuid() + 1);
    const Stranger stranger(name);
    int sent = 0;
    while (sent <= InstanceSocket::kMostAtOnce && stranger.send("text")) {
        ++sent;
    }
    ASSERT_GT(sent, InstanceSocket::kMostAtOnce);
    EXPECT_FALSE(ofAnother.next());
    EXPECT_TRUE(hasMessage(ofAnother)); // for another look
    EXPECT_FALSE(ofAnother.next());
    EXPECT_FALSE(hasMessage(ofAnother));
}

TEST(InstanceSocket, AnAnswerOfAnotherUserIsNone) {
    const auto name = ownName();
    const InstanceSocket first(name);
    Answer answer = Answer::none;
    std::thread second([&] { answer = InstanceSocket::tell(name, "text", 200ms, ::getuid() + 1); });
    waitForMessage(first);
    first.answer(*first.next());
    second.join();
    EXPECT_EQ(answer, Answer::awaited);
}

} // namespace
} // namespace quillane
