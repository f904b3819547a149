#pragma once
#include "TaskRunner.h"
#include "UserNotifications.h"
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace quillane {

// A desktop that keeps every notification and is clicked by the test. Main thread.
class RecordingNotifications final : public UserNotifications {
  public:
    // Clicks are told at a turn of this runner's main thread.
    explicit RecordingNotifications(TaskRunner& tasks)
        : m_tasks(tasks) {}

    // All that were added, in order, also those whose place was taken.
    std::vector<UserNotification> added;
    int authorizationRequests = 0;

    // What stands on the desktop: of each identifier the last one, in the order in which identifiers came up.
    std::vector<UserNotification> standing() const {
        std::vector<UserNotification> result;
        for (const auto& notification : added) {
            const auto same =
                std::ranges::find(result, notification.identifier, &UserNotification::identifier);
            if (same == result.end()) {
                result.push_back(notification);
            } else {
                *same = notification;
            }
        }
        return result;
    }
    // A click on the one that stands with this identifier; nothing when there is none.
    void click(const std::string& identifier, std::string activationToken = {}) {
        for (const auto& notification : standing()) {
            if (notification.identifier == identifier) {
                m_clicks.push_back({notification.userInfo, std::move(activationToken)});
                tellLater();
                return;
            }
        }
    }

    void requestAuthorization() override { ++authorizationRequests; }
    void add(const UserNotification& notification) override { added.push_back(notification); }
    void setClickHandler(std::function<void(const Click&)> handler) override {
        m_handler = std::move(handler);
        tellLater();
    }

  private:
    void tellLater() {
        m_tasks.post([this] { tell(); });
    }
    void tell() {
        if (!m_handler) {
            return;
        }
        const auto handler = m_handler;
        for (const auto& click : std::exchange(m_clicks, {})) {
            handler(click);
        }
    }

    TaskRunner& m_tasks;
    std::function<void(const Click&)> m_handler;
    std::vector<Click> m_clicks; // not told yet
};

} // namespace quillane
