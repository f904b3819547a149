// This system has no message bus, and so none that could have stopped.
#include "MessageBus.h"

namespace quillane {

std::string MessageBus::sessionAddress() {
    return {};
}

std::string MessageBus::systemAddress() {
    return {};
}

bool MessageBus::hasStopped(std::string_view /*addresses*/, std::chrono::milliseconds /*patience*/) {
    return false;
}

void MessageBus::leaveStoppedSessionBus() {}

} // namespace quillane
