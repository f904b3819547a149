#pragma once
#include "SessionBus.h"
#include "TemporaryFolder.h"
#include <QProcess>
#include <QString>
#include <functional>
#include <string>

namespace quillane {

// A message bus of the test's own, on which nothing lives but what the test puts there.
class PrivateBus {
  public:
    // A call to the service named here waits until somebody takes the name, as if a program were being started for it.
    explicit PrivateBus(const std::string& startedAtNeed = {});
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    // A new connection each time, closed when the bus goes.
    QDBusConnection connect();
    SessionBus reach() {
        return [connection = connect()] { return connection; };
    }
    // For DBUS_SESSION_BUS_ADDRESS of other programs.
    const QString& address() const { return m_address; }
    // From now on nobody is answered any more, the bus itself being asked or not. Everyone stays connected.
    void freeze();
    // What was asked meanwhile is answered.
    void thaw();
    // Whether this comes to its end while the bus is frozen, before this process has run for ten seconds, which is less
    // than Qt waits for a bus. While the process is halted nothing is counted. The bus is thawed then.
    bool holdsNobodyUp(const std::function<void()>& work);
    // As when a session ends.
    void die();

    // Somebody who has not come yet takes this name when the bus starts him: it can, and it can be seen that it did.
    void offer(const std::string& name);
    bool hasStarted(const std::string& name) const;

  private:
    TemporaryFolder m_folder;
    QProcess m_daemon;
    QString m_address;
    QStringList m_names;
};

} // namespace quillane
