#pragma once
#include "PortalSetting.h"

namespace quillane {

// Whether the desktop wants dark windows, as its settings portal tells. Light until the portal has answered,
// and where there is none. Main thread only; `tasks` must outlive it.
class ColorScheme final : public QObject {
    Q_OBJECT

  public:
    enum class Scheme { light, dark };

    explicit ColorScheme(TaskRunner& tasks, SessionBus bus = sharedSessionBus, QObject* parent = nullptr);

    Scheme scheme() const { return m_scheme; }

  signals:
    // After scheme() has become another one.
    void changed();

  private:
    void take(const QVariant& value);

    Scheme m_scheme = Scheme::light;
    PortalSetting m_setting;
};

} // namespace quillane
