#pragma once
#include "PortalSetting.h"

namespace quillane {

// Whether the user wants lines and edges that are easier to see, as the desktop's settings portal tells. Usual
// contrast until the portal has answered, and where there is none. Main thread only; `tasks` must outlive it.
class Contrast final : public QObject {
    Q_OBJECT

  public:
    explicit Contrast(TaskRunner& tasks, SessionBus bus = sharedSessionBus, QObject* parent = nullptr);

    bool isHigh() const { return m_isHigh; }

  signals:
    // After isHigh() has become another.
    void changed();

  private:
    void take(const QVariant& value);

    bool m_isHigh = false;
    PortalSetting m_setting;
};

} // namespace quillane
