#pragma once
#include <QDBusConnection>
#include <functional>

namespace quillane {

// How the machine's message bus is reached. Connecting may block for as long as the bus takes to answer, so it is
// called by jobs and never on the main thread. Any thread; the connection may be used by any thread.
using SystemBus = std::function<QDBusConnection()>;

inline QDBusConnection sharedSystemBus() {
    return QDBusConnection::systemBus();
}

} // namespace quillane
