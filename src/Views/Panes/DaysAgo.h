#pragma once
#include "Components/ShownText.h"
#include "Formatting.h"
#include <QString>
#include <optional>

namespace quillane {

// "8 days ago", with 1 too, or "Unknown" where there is no count of days.
inline QString daysAgo(const std::optional<int>& days) {
    return days ? words(Formatting::number(*days) + " days ago") : QStringLiteral("Unknown");
}

} // namespace quillane
