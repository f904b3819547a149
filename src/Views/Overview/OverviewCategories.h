#pragma once
#include "SweepCategory.h"
#include <array>

namespace quillane {

// What the Overview offers, in the order of its rows. The other categories are reached only through a removal
// that the user asks for by name.
inline constexpr std::array kOverviewCategories = {SweepCategory::caches, SweepCategory::developer,
                                                   SweepCategory::orphans, SweepCategory::trash};

} // namespace quillane
