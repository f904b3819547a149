#pragma once
#include "NotificationCentre.h"
#include "NotificationClicks.h"
#include <functional>
#include <memory>

namespace quillane {

// Notifications of macOS, which also tells a click that started the program. Main thread only; `tasks` must outlive it
// and the last click.
class MacNotifications final : public UserNotifications {
  public:
    // Null where there is none: then everything is silent.
    using MakeCentre = std::function<std::unique_ptr<NotificationCentre>(NotificationCentre::Clicked)>;

    // To be made before the application has finished launching, else a click that started it is lost. `makeCentre` is
    // called at once.
    MacNotifications(TaskRunner& tasks, const MakeCentre& makeCentre);

    void requestAuthorization() override;
    void add(const UserNotification& notification) override;
    void setClickHandler(std::function<void(const Click&)> handler) override;

  private:
    NotificationClicks m_clicks;
    std::unique_ptr<NotificationCentre> m_centre;
};

} // namespace quillane
