#include "Startup/HealthBadge.h"
#include "Components/ShownText.h"
#include "Tables/TableRole.h"

namespace quillane::HealthBadge {

Tint tint(StartupItem::Health health) {
    switch (health) {
    case StartupItem::Health::ok:
        return Tint::Green;
    case StartupItem::Health::orphaned:
        return Tint::Orange;
    case StartupItem::Health::broken:
        return Tint::Red;
    }
    __builtin_unreachable();
}

QVariant cell(StartupItem::Health health, int role) {
    switch (role) {
    case Qt::DisplayRole:
        return words(rawValue(health));
    case kBadgeRole:
        return true;
    case kTintRole:
        return static_cast<int>(tint(health));
    default:
        return {};
    }
}

} // namespace quillane::HealthBadge
