#pragma once
#include "Descriptor.h"
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <sys/types.h>
#include <unistd.h>

namespace quillane {

// The way from one start of the program to another that needs no message bus. Whoever listens has an address of the
// system's own, made of a name that both know; it goes with the process and leaves nothing on the disk. Any user may
// have an address of any name first, so the name is one that nobody can guess. Messages are whole or not there. Only what a program of the same user says is heard, on both sides. Where the system has no
// such addresses nobody listens.
class InstanceSocket {
  public:
    // Bytes; a longer message is none.
    static constexpr std::size_t kLongest = 2048;
    // Messages that one look takes: whoever sends without an end keeps nobody from anything else.
    static constexpr int kMostAtOnce = 8;

    struct Message {
        std::string text;
        std::string from; // the address of whoever waits for an answer, in the system's form
    };
    enum class Answer {
        given,
        awaited, // somebody has the message, or has no room for it, and has not answered
        none     // nobody listens
    };

    // Does not listen when somebody else has the address already. What another user than this one says is not heard.
    explicit InstanceSocket(const std::string& name, uid_t user = ::getuid());

    // Listens under a name that nobody had or could know: digits and letters from a to f, 128 bits. Not at all where
    // the system has no sockets left.
    static InstanceSocket underFreshName();

    const std::string& name() const { return m_name; }
    // Can be read from while a message waits. Negative when this does not listen.
    int descriptor() const;
    // The next message, in the order of their coming; nothing when none waits, or only such as are not heard have come
    // one after the other: then there may be more. Never waits.
    std::optional<Message> next() const;
    void answer(const Message& message) const;

    // Tells whoever listens under the name, and waits until this user has answered, but no longer than `patience`.
    static Answer tell(const std::string& name, const std::string& text, std::chrono::milliseconds patience,
                       uid_t user = ::getuid());

  private:
    std::string m_name;
    [[maybe_unused]] uid_t m_user; // where there are no such addresses
    Descriptor m_socket;
};

} // namespace quillane
