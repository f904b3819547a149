#pragma once
#include "Descriptor.h"
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace quillane {

// The way from one start of the program to another that needs no message bus. Whoever listens has an address of the
// system's own, made of a name that both know; it goes with the process and leaves nothing on the disk. Messages are
// whole or not there. Only what a program of the same user says is heard, on both sides. Where the system has no
// such addresses nobody listens.
class InstanceSocket {
  public:
    // Bytes; a longer message is none.
    static constexpr std::size_t kLongest = 2048;

    struct Message {
        std::string text;
        std::string from; // the address of whoever waits for an answer, in the system's form
    };
    enum class Answer {
        given,
        awaited, // somebody has the message, or has no room for it, and has not answered
        none     // nobody listens
    };

    // Does not listen when somebody else has the address already.
    explicit InstanceSocket(const std::string& name);

    // Can be read from while a message waits. Negative when this does not listen.
    int descriptor() const;
    // The next message, in the order of their coming; nothing when none waits. Never waits.
    std::optional<Message> next() const;
    void answer(const Message& message) const;

    // Tells whoever listens under the name, and waits until it has answered, but no longer than `patience`.
    static Answer tell(const std::string& name, const std::string& text, std::chrono::milliseconds patience);

  private:
    Descriptor m_socket;
};

} // namespace quillane
