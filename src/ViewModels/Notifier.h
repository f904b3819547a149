#pragma once
#include "NotificationCenter.h"
#include "UserNotifications.h"
#include <functional>
#include <string>

namespace quillane {

// Answers the desktop's notifications for the program: a click on one brings the program forward and shows the
// section that the notification carries. Nothing else comes of a click. Those that arrive while the program is in
// front show and sound too, which is UserNotifications' own way.
//
// There is one, made before the first window, so that a click which launched the program finds it. Main thread only.
class Notifier {
  public:
    // The key of the section in a notification's user info. Its value is the title of a LibrarySection.
    static constexpr const char* kSection = "section";

    // Opens the window if need be and brings it to the front, with the token that the desktop gave, empty for none.
    using Activate = std::function<void(const std::string& activationToken)>;

    // All of them outlive it.
    Notifier(UserNotifications& notifications, NotificationCenter& center, Activate activate);
    ~Notifier();
    Notifier(const Notifier&) = delete;
    Notifier& operator=(const Notifier&) = delete;

  private:
    void didReceive(const UserNotifications::Click& click) const;

    UserNotifications& m_notifications;
    NotificationCenter& m_center;
    Activate m_activate;
};

} // namespace quillane
