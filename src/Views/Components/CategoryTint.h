#pragma once
#include "Components/Tint.h"
#include "SweepCategory.h"

namespace quillane {

// The colour that a category wears wherever it is drawn.
constexpr Tint tintOf(SweepCategory category) {
    switch (category) {
    case SweepCategory::caches:
        return Tint::Caches;
    case SweepCategory::developer:
        return Tint::Developer;
    case SweepCategory::orphans:
        return Tint::Orphans;
    case SweepCategory::trash:
        return Tint::Trash;
    case SweepCategory::apps:
        return Tint::Apps;
    case SweepCategory::files:
        return Tint::Files;
    case SweepCategory::startup:
        return Tint::Startup;
    }
    return Tint::Secondary;
}

} // namespace quillane
