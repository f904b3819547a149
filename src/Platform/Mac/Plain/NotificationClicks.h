#pragma once
#include "TaskRunner.h"
#include "UserNotifications.h"
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace quillane {

// Clicks on notifications between the system, which tells them on any thread, and the one who is told of them. Those
// that come while there is nobody wait for the first, such as the one that started the program. Main thread only;
// `tasks` must outlive it.
class NotificationClicks {
  public:
    using UserInfo = std::map<std::string, std::string>;

    // Of those that wait; what comes beyond is dropped.
    static constexpr std::size_t kMostWaiting = 64;

    explicit NotificationClicks(TaskRunner& tasks)
        : m_tasks(tasks) {}
    NotificationClicks(const NotificationClicks&) = delete;
    NotificationClicks& operator=(const NotificationClicks&) = delete;

    // As UserNotifications::setClickHandler.
    void setHandler(std::function<void(const UserNotifications::Click&)> handler);
    // What the system calls with a click, on any thread, also when this is gone; `tasks` must live then.
    std::function<void(UserInfo)> entrance() const;

  private:
    void take(UserInfo userInfo);
    void tell();

    TaskRunner& m_tasks;
    std::function<void(const UserNotifications::Click&)> m_handler;
    std::vector<UserNotifications::Click> m_waiting;
    // Jobs hold it weakly and look at it on the main thread, where this is destroyed.
    std::shared_ptr<NotificationClicks*> m_self = std::make_shared<NotificationClicks*>(this);
};

} // namespace quillane
