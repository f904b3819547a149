#pragma once
#include "SessionBus.h"
#include "TemporaryFolder.h"
#include <QProcess>
#include <QString>
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
    // It accepts and answers nothing from now on, until it is thawed.
    void freeze();
    void thaw();
    // As when a session ends.
    void die();

  private:
    TemporaryFolder m_folder;
    QProcess m_daemon;
    QString m_address;
    QStringList m_names;
};

} // namespace quillane
