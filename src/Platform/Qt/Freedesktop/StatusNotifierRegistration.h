#pragma once
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <optional>

class QDBusMessage;

namespace quillane {

// Makes the item known to the desktop's panels, through whoever has the name "org.kde.StatusNotifierWatcher": that one
// as well as each that comes after it. Nothing here waits, also not for a bus that has stopped to answer, and nothing is
// started for it. Main thread only.
class StatusNotifierRegistration final : public QObject {
    Q_OBJECT

  public:
    enum class State {
        unknown, // nobody has answered yet
        absent,  // there is nobody who shows items, or who would take this one
        taken    // a panel shows it
    };

    // For the item that stands on this connection at `path`.
    StatusNotifierRegistration(QDBusConnection bus, QString path);
    StatusNotifierRegistration(const StatusNotifierRegistration&) = delete;
    StatusNotifierRegistration& operator=(const StatusNotifierRegistration&) = delete;

    State state() const;

  signals:
    void changed(); // state() may have

  private slots:
    void hearHosts(const QDBusMessage& signal);
    void hearTaken(const QString& item, const QDBusMessage& signal);
    void hearDropped(const QString& item, const QDBusMessage& signal);
    void hearEnd();

  private:
    void hear(const char* signal, const char* slot);
    template <class Answered>
    void ask(const QDBusMessage& question, Answered answered);
    void askForOwner();
    void setOwner(const QString& owner);
    void askForHost(const QString& owner);
    void enroll(const QString& owner);
    bool isOurs(const QString& item) const;

    QDBusConnection m_bus;
    QString m_path;
    QDBusServiceWatcher m_watcher;
    std::optional<QString> m_owner; // its unique name; empty for nobody, absent while that is not known
    std::optional<bool> m_hasHost;  // absent while that is not known, as is the other
    std::optional<bool> m_isTaken;
    unsigned m_owners = 0;    // that have come and gone: an answer of an earlier one is too late
    unsigned m_questions = 0; // for a host: the answer to an earlier one is older, or of an earlier owner
};

} // namespace quillane
