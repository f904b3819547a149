#include "MacNotifications.h"
#include "NotificationWords.h"
#include <utility>

namespace quillane {

MacNotifications::MacNotifications(TaskRunner& tasks, const MakeCentre& makeCentre)
    : m_clicks(tasks)
    , m_centre(makeCentre(m_clicks.entrance())) {}

void MacNotifications::requestAuthorization() {
    if (m_centre) {
        m_centre->requestAuthorization();
    }
}

void MacNotifications::add(const UserNotification& notification) {
    if (!m_centre) {
        return;
    }
    auto shown = notification;
    shown.title = NotificationWords::shown(notification.title);
    shown.body = NotificationWords::shown(notification.body);
    m_centre->add(shown);
}

void MacNotifications::setClickHandler(std::function<void(const Click&)> handler) {
    m_clicks.setHandler(std::move(handler));
}

} // namespace quillane
