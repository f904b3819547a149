#pragma once
#include "NotificationCentre.h"
#include <memory>

namespace quillane {

// The notification centre of macOS, which tells clicks to the one that was made last. Null for a binary without a
// bundle, which has none. Main thread.
std::unique_ptr<NotificationCentre> makeNotificationCentre(NotificationCentre::Clicked clicked);

} // namespace quillane
