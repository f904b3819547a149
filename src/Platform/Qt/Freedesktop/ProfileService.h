#pragma once
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <optional>

class QDBusMessage;

namespace quillane {

// The profile that a power daemon has in force under one of its names. Follows the name from owner to owner and
// heeds its present owner alone. Nothing here waits, also not for a bus that has stopped to answer: signals are heard
// from everyone and sifted here, since Qt waits for the bus when it is to listen to one name. Main thread only.
class ProfileService final : public QObject {
    Q_OBJECT

  public:
    struct Address {
        QString name; // on the bus
        QString path;
        QString interface;
    };

    ProfileService(QDBusConnection bus, Address address);
    ProfileService(const ProfileService&) = delete;
    ProfileService& operator=(const ProfileService&) = delete;

    // Such as "balanced". Absent while nobody has the name, has not answered yet, or has answered with anything else
    // than a profile.
    std::optional<QString> profile() const { return m_bus.isConnected() ? m_profile : std::nullopt; }

  private slots:
    void propertiesChanged(const QString& interface, const QVariantMap& changed,
                           const QStringList& invalidated, const QDBusMessage& signal);

  private:
    template <class Answered>
    void ask(const QDBusMessage& question, Answered answered);
    void askForOwner();
    void setOwner(const QString& owner);
    void askForProfile();
    void setProfile(const QVariant& told);

    QDBusConnection m_bus;
    Address m_address;
    QDBusServiceWatcher m_watcher;
    QString m_owner; // its unique name; empty for nobody
    std::optional<QString> m_profile;
    unsigned m_owners = 0;   // that have come and gone: an answer of an earlier one is too late
    unsigned m_tellings = 0; // of the profile: an answer that was on its way meanwhile is older
};

} // namespace quillane
