#pragma once
#include "SessionBus.h"
#include "TaskRunner.h"
#include <QObject>
#include <memory>

class QDBusPendingCallWatcher;
class QDBusVariant;

namespace quillane {

// Whether the desktop wants dark windows, as its settings portal tells. Light until the portal has answered,
// and where there is none. Nothing here waits: the bus is reached by a job and asked without blocking.
// Main thread only; `tasks` must outlive it.
class ColorScheme final : public QObject {
    Q_OBJECT

  public:
    enum class Scheme { light, dark };

    explicit ColorScheme(TaskRunner& tasks, SessionBus bus = sharedSessionBus, QObject* parent = nullptr);

    Scheme scheme() const { return m_scheme; }

  signals:
    // After scheme() has become another one.
    void changed();

  private slots:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

  private:
    void listen(QDBusConnection bus);
    void take(const QVariant& value);

    Scheme m_scheme = Scheme::light;
    // Jobs hold it weakly and look at it on the main thread, where this is destroyed.
    std::shared_ptr<ColorScheme*> m_self = std::make_shared<ColorScheme*>(this);
};

} // namespace quillane
