#include "InstanceSocket.h"

// The system itself starts a program once and brings it forward.
namespace quillane {

InstanceSocket::InstanceSocket(const std::string& name, uid_t user)
    : m_name(name)
    , m_user(user) {}

InstanceSocket InstanceSocket::underFreshName() {
    return InstanceSocket(std::string());
}

int InstanceSocket::descriptor() const {
    return -1;
}

std::optional<InstanceSocket::Message> InstanceSocket::next() const {
    return std::nullopt;
}

void InstanceSocket::answer(const Message& /*message*/) const {}

InstanceSocket::Answer InstanceSocket::tell(const std::string& /*name*/, const std::string& /*text*/,
                                            std::chrono::milliseconds /*patience*/, uid_t /*user*/) {
    return Answer::none;
}

} // namespace quillane
