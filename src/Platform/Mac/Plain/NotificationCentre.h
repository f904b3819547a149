#pragma once
#include "NotificationClicks.h"
#include "UserNotifications.h"
#include <functional>

namespace quillane {

// The system's notifications, of which this program's alone are told. Main thread only; nothing waits, and nothing is
// reported.
class NotificationCentre {
  public:
    // Told of each click, on any thread, also after the centre's end: with the user info of what was clicked.
    using Clicked = std::function<void(NotificationClicks::UserInfo)>;

    virtual ~NotificationCentre() = default;
    // Puts the system's question, unless it has been answered before.
    virtual void requestAuthorization() = 0;
    // Shows it with banner and sound at once, in the place of the one that has its identifier.
    virtual void add(const UserNotification& notification) = 0;
};

} // namespace quillane
