#pragma once
#include "PortalSetting.h"

namespace quillane {

// Whether the user wants nothing to move, as the desktop's settings portal tells: by the setting that all
// desktops share, or by animations that are switched off. Things move until the portal has answered, and where
// there is none. Main thread only; `tasks` must outlive it.
class ReducedMotion final : public QObject {
    Q_OBJECT

  public:
    explicit ReducedMotion(TaskRunner& tasks, const SessionBus& bus = sharedSessionBus,
                           QObject* parent = nullptr);

    bool isOn() const { return m_prefersReduced || !m_animates; }

  signals:
    // After isOn() has become another.
    void changed();

  private:
    void set(bool& field, bool value);

    bool m_prefersReduced = false;
    bool m_animates = true;
    PortalSetting m_shared;
    PortalSetting m_animations;
};

} // namespace quillane
