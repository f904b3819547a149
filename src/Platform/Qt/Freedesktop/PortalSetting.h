#pragma once
#include "SessionBus.h"
#include "TaskRunner.h"
#include <QObject>
#include <memory>
#include <optional>

class QDBusMessage;
class QDBusVariant;

namespace quillane {

// One setting of the desktop, as its settings portal tells it. Nothing here waits: the bus is reached by a job
// and asked without blocking. Main thread only; `tasks` must outlive it.
class PortalSetting final : public QObject {
    Q_OBJECT

  public:
    PortalSetting(TaskRunner& tasks, SessionBus bus, QString group, QString key, QObject* parent = nullptr);

  signals:
    // The value that stands, when the portal has answered, and each one after it. Never without a portal, and
    // not before it is first changed on a desktop that does not have the setting.
    void told(const QVariant& value);

  private slots:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value,
                        const QDBusMessage& signal);

  private:
    void listen(QDBusConnection bus);
    void followOwner(const QDBusConnection& bus);
    template <class Answered>
    void ask(const QDBusConnection& bus, const QDBusMessage& question, Answered answered);

    QString m_group;
    QString m_key;
    std::optional<QString>
        m_owner; // the portal's unique name; empty for nobody, absent while that is not known
    // Jobs hold it weakly and look at it on the main thread, where this is destroyed.
    std::shared_ptr<PortalSetting*> m_self = std::make_shared<PortalSetting*>(this);
};

} // namespace quillane
