#pragma once
#include <array>
#include <optional>
#include <string_view>

namespace quillane {

// What can be removed. The declared order is the order used wherever all categories are walked.
enum class SweepCategory { caches, developer, orphans, trash, apps, files, startup };

inline constexpr std::array kAllSweepCategories = {
    SweepCategory::caches, SweepCategory::developer, SweepCategory::orphans, SweepCategory::trash,
    SweepCategory::apps,   SweepCategory::files,     SweepCategory::startup};

// The title shown to the user, such as "App Caches"; also the form that is hashed and encoded.
std::string_view rawValue(SweepCategory category);
std::optional<SweepCategory> sweepCategoryFromRawValue(std::string_view text);
// The name of the category's symbol image.
std::string_view symbol(SweepCategory category);
// One or two sentences on what the category holds.
std::string_view description(SweepCategory category);

} // namespace quillane
