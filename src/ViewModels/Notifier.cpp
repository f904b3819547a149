#include "Notifier.h"
#include <utility>

namespace quillane {
namespace {

// Not the title of any section: the window comes forward and stays where it is.
constexpr const char* kNoSection = "overview";

} // namespace

Notifier::Notifier(UserNotifications& notifications, NotificationCenter& center, Activate activate)
    : m_notifications(notifications)
    , m_center(center)
    , m_activate(std::move(activate)) {
    m_notifications.setClickHandler([this](const UserNotifications::Click& click) { didReceive(click); });
}

Notifier::~Notifier() {
    m_notifications.setClickHandler({});
}

void Notifier::didReceive(const UserNotifications::Click& click) const {
    const auto section = click.userInfo.find(kSection);
    const std::string title = section == click.userInfo.end() ? kNoSection : section->second;
    m_activate(click.activationToken);
    m_center.post(NotificationName::kShowSection, title);
}

} // namespace quillane
