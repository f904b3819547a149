#include "NotificationClicks.h"
#include <utility>

namespace quillane {

void NotificationClicks::setHandler(std::function<void(const UserNotifications::Click&)> handler) {
    m_handler = std::move(handler);
    m_tasks.post([self = std::weak_ptr(m_self)] {
        if (const auto clicks = self.lock()) {
            (*clicks)->tell();
        }
    });
}

std::function<void(NotificationClicks::UserInfo)> NotificationClicks::entrance() const {
    return [&tasks = m_tasks, self = std::weak_ptr(m_self)](const UserInfo& userInfo) {
        tasks.post([self, userInfo] {
            if (const auto clicks = self.lock()) {
                (*clicks)->take(userInfo);
            }
        });
    };
}

void NotificationClicks::take(UserInfo userInfo) {
    if (m_waiting.size() < kMostWaiting) {
        m_waiting.push_back({std::move(userInfo), {}});
    }
    tell();
}

void NotificationClicks::tell() {
    if (!m_handler) {
        return;
    }
    const auto handler = m_handler; // a handler may set another one
    for (const auto& click : std::exchange(m_waiting, {})) {
        handler(click);
    }
}

} // namespace quillane
