#include "SweepCategory.h"

namespace quillane {
namespace {

struct Words {
    std::string_view title;
    std::string_view symbol;
    std::string_view description;
};

// In declared order.
constexpr std::array<Words, kAllSweepCategories.size()> kWords = {{
    {"App Caches", "sparkles",
     "Caches, logs and saved window state from installed apps. Settings and user data are left alone."},
    {"Developer Caches", "hammer",
     "Build products and package caches that tools rebuild on their own. Project dependencies are never "
     "included."},
    {"Orphaned Files", "questionmark.folder",
     "Support files left behind by apps that are no longer installed."},
    {"Empty the Trash", "trash", "Everything already in your Trash, deleted for good."},
    {"Applications", "square.grid.2x2", "Application bundles and the support files that belong to them."},
    {"Files", "doc.on.doc", "Your own files. Nothing here can be regenerated."},
    {"Startup Items", "power", "Things macOS launches on its own."},
}};

const Words& words(SweepCategory category) {
    return kWords[static_cast<std::size_t>(category)];
}

} // namespace

std::string_view rawValue(SweepCategory category) {
    return words(category).title;
}

std::string_view symbol(SweepCategory category) {
    return words(category).symbol;
}

std::string_view description(SweepCategory category) {
    return words(category).description;
}

std::optional<SweepCategory> sweepCategoryFromRawValue(std::string_view text) {
    for (const auto category : kAllSweepCategories) {
        if (rawValue(category) == text) {
            return category;
        }
    }
    return std::nullopt;
}

} // namespace quillane
