#include "InstanceSocket.h"

// The system itself starts a program once and brings it forward.
namespace quillane {

InstanceSocket::InstanceSocket(const std::string& /*name*/) {}

int InstanceSocket::descriptor() const {
    return -1;
}

std::optional<InstanceSocket::Message> InstanceSocket::next() const {
    return std::nullopt;
}

void InstanceSocket::answer(const Message& /*message*/) const {}

InstanceSocket::Answer InstanceSocket::tell(const std::string& /*name*/, const std::string& /*text*/,
                                            std::chrono::milliseconds /*patience*/) {
    return Answer::none;
}

} // namespace quillane
