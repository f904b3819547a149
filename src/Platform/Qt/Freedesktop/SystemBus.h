#pragma once
#include "MessageBus.h"
#include <QDBusConnection>
#include <functional>

namespace quillane {

// How the machine's message bus is reached. Connecting may block for as long as the bus takes to answer, so it is
// called by jobs and never on the main thread. Any thread; the connection may be used by any thread.
using SystemBus = std::function<QDBusConnection()>;

// None where it has stopped: whoever waited for that one would hold up all who reach for the user's bus, by Qt on the
// main thread too.
inline QDBusConnection sharedSystemBus() {
    return MessageBus::hasStopped(MessageBus::systemAddress()) ? QDBusConnection(QString())
                                                               : QDBusConnection::systemBus();
}

} // namespace quillane
