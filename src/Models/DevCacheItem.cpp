#include "DevCacheItem.h"
#include "Calendar.h"

namespace quillane {

std::optional<int> DevCacheItem::daysSinceModified(Date now, const Calendar& calendar) const {
    return lastModified ? std::optional(calendar.daysBetween(*lastModified, now)) : std::nullopt;
}

} // namespace quillane
