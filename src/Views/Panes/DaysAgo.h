#pragma once
#include <QString>
#include <optional>

namespace quillane {

// "8 days ago", with 1 too, or "Unknown" where there is no count of days.
inline QString daysAgo(const std::optional<int>& days) {
    return days ? QStringLiteral("%1 days ago").arg(*days) : QStringLiteral("Unknown");
}

} // namespace quillane
