#pragma once
#include "PortalSetting.h"

namespace quillane {

// How much larger than usual the user wants text, as the desktop's settings portal tells. 1 until the portal has
// answered, and where there is none or it tells no sensible number. Main thread only; `tasks` must outlive it.
class TextScaling final : public QObject {
    Q_OBJECT

  public:
    explicit TextScaling(TaskRunner& tasks, SessionBus bus = sharedSessionBus, QObject* parent = nullptr);

    // What desktops offer; what lies outside becomes the nearer of the two.
    static constexpr double kLeast = 0.5;
    static constexpr double kMost = 3;

    double factor() const { return m_factor; }

    // What is left to do of `factor` on a display of this device pixel ratio. Some desktops tell an X display
    // that its pixels are finer instead; then the whole window is that much larger already, and it is 1.
    static double leftOf(double factor, double devicePixelRatio);

  signals:
    // After factor() has become another.
    void changed();

  private:
    void take(const QVariant& value);

    double m_factor = 1;
    PortalSetting m_setting;
};

} // namespace quillane
