#pragma once
#include "NotificationCentre.h"
#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quillane {

// What a Mac shows of one program, in the order in which identifiers came up, and who is told of clicks. Outlives the
// centres that are made over it. Main thread.
struct FakeNotificationScreen {
    std::vector<UserNotification> standing;
    int questions = 0; // for permission
    NotificationCentre::Clicked clicked;

    std::unique_ptr<NotificationCentre> make(NotificationCentre::Clicked told);
    // On what stands with this title; nothing where there is none.
    void click(const std::string& title) const {
        for (const auto& notification : standing) {
            if (notification.title == title) {
                clicked(notification.userInfo);
                return;
            }
        }
    }
};

class FakeNotificationCentre final : public NotificationCentre {
  public:
    explicit FakeNotificationCentre(FakeNotificationScreen& screen)
        : m_screen(screen) {}

    void requestAuthorization() override { ++m_screen.questions; }
    void add(const UserNotification& notification) override {
        auto& standing = m_screen.standing;
        const auto same = std::ranges::find(standing, notification.identifier, &UserNotification::identifier);
        if (same == standing.end()) {
            standing.push_back(notification);
        } else {
            *same = notification;
        }
    }

  private:
    FakeNotificationScreen& m_screen;
};

inline std::unique_ptr<NotificationCentre> FakeNotificationScreen::make(NotificationCentre::Clicked told) {
    clicked = std::move(told);
    return std::make_unique<FakeNotificationCentre>(*this);
}

} // namespace quillane
