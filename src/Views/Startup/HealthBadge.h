#pragma once
#include "Components/Tint.h"
#include "StartupItem.h"
#include <QVariant>

namespace quillane {

// How well something that starts by itself is, as a small word in its tint.
namespace HealthBadge {

Tint tint(StartupItem::Health health);
// The cell that shows it, by role; see TableRole.
QVariant cell(StartupItem::Health health, int role);

} // namespace HealthBadge
} // namespace quillane
