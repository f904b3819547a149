#pragma once
#include <QDBusConnection>
#include <atomic>
#include <functional>

namespace quillane {

// How the user's message bus is reached. Connecting may block for as long as the bus takes to answer, so it is
// called by jobs and never on the main thread. Any thread; the connection may be used by any thread.
using SessionBus = std::function<QDBusConnection()>;

inline QDBusConnection sharedSessionBus() {
    return QDBusConnection::sessionBus();
}

// A new connection each time, which whoever asked for it closes by its name. Nobody shares it.
inline QDBusConnection ownSessionBus() {
    static std::atomic<int> count = 0; // names of connections are the process's
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("own %1").arg(++count));
}

} // namespace quillane
