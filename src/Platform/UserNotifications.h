#pragma once
#include <functional>
#include <map>
#include <string>

namespace quillane {

// A notification of the desktop's. It sounds as the desktop's do, and is delivered at once.
struct UserNotification {
    std::string identifier; // a later one with the same identifier takes the place of this one
    std::string title;      // plain text, as is the body
    std::string body;
    std::map<std::string, std::string> userInfo; // comes back with the click
    friend bool operator==(const UserNotification&, const UserNotification&) = default;
};

// The desktop's notifications. Nothing is reported: where there is no service, or the user wants none, nothing shows.
// Main thread only; nothing waits.
class UserNotifications {
  public:
    // A click on a notification of this program.
    struct Click {
        std::map<std::string, std::string> userInfo; // of the notification that stood when it was clicked
        std::string activationToken; // with which a window may come to the front; empty for none
        friend bool operator==(const Click&, const Click&) = default;
    };

    virtual ~UserNotifications() = default;
    // Asks the user for permission to notify, where the system has such a question and has not put it before.
    virtual void requestAuthorization() = 0;
    // Shows a notification with banner and sound, also while the program is in front. Of several with one identifier
    // the last one stands.
    virtual void add(const UserNotification& notification) = 0;
    // Who is told of clicks from now on, on the main thread at a later turn; an empty function for nobody. What was
    // clicked while there was nobody is told to the first one. A click on a notification that this program did not
    // add, or that is gone, is told to nobody.
    virtual void setClickHandler(std::function<void(const Click&)> handler) = 0;
};

} // namespace quillane
