#pragma once
#include "NotificationClicks.h"
#include "UserNotifications.h"
#include <memory>

namespace quillane {

// Notifications of macOS, which also tells a click that started the program. A binary without a bundle has none of
// them, and everything is silent. Main thread only; `tasks` must outlive it and the program's last click.
class MacNotifications final : public UserNotifications {
  public:
    // To be made before the application has finished launching, else a click that started it is lost.
    explicit MacNotifications(TaskRunner& tasks);
    ~MacNotifications() override;
    MacNotifications(const MacNotifications&) = delete;
    MacNotifications& operator=(const MacNotifications&) = delete;

    void requestAuthorization() override;
    void add(const UserNotification& notification) override;
    void setClickHandler(std::function<void(const Click&)> handler) override;

  private:
    struct System;

    NotificationClicks m_clicks;
    std::unique_ptr<System> m_system; // null without a bundle
};

} // namespace quillane
