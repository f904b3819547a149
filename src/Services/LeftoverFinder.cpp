#include "LeftoverFinder.h"
#include "FileSystem.h"
#include "FootprintCalculator.h"
#include "SupportFileLocations.h"
#include "TextComparison.h"
#include <algorithm>
#include <optional>
#include <string_view>

namespace quillane::LeftoverFinder {
namespace {

using Confidence = LeftoverItem::Confidence;

// `identifier` is the application's and not empty.
std::optional<Confidence> match(std::string_view identifier, Text::CaselessText& appName,
                                const SupportFileLocations::Location& location, std::string_view name) {
    if (namesIdentifier(name, identifier)) {
        return Confidence::high;
    }
    if (location.allowsNameMatch && appName.equals(name)) {
        return Confidence::medium;
    }
    return std::nullopt;
}

} // namespace

bool namesIdentifier(std::string_view name, std::string_view identifier) {
    if (name.size() <= identifier.size()) {
        return name == identifier;
    }
    return (name.starts_with(identifier) && name[identifier.size()] == '.') ||
           (name.ends_with(identifier) && name[name.size() - identifier.size() - 1] == '.');
}

std::vector<LeftoverItem> leftovers(const Platform& platform, const InstalledApp& app,
                                    const StopToken& stop) {
    std::vector<LeftoverItem> items;
    const std::string identifier = app.bundleIdentifier.value_or("");
    if (identifier.empty()) {
        return items; // without an identifier nothing belongs to it, even where names would match
    }
    const auto home = platform.files.home();
    Text::CaselessText appName(app.name);
    for (const auto& location : SupportFileLocations::all(platform)) {
        const auto entries = platform.files.list(location.url);
        if (!entries) {
            continue;
        }
        for (const auto& entry : *entries) {
            const auto confidence = match(identifier, appName, location, entry.name);
            if (!confidence) {
                continue;
            }
            const auto url = location.url.appending(entry.name);
            items.push_back({url, location.category, *confidence,
                             FootprintCalculator::size(platform, url, stop),
                             !location.url.path().starts_with(home.path()), location.isCache});
        }
    }
    std::ranges::stable_sort(items, std::ranges::greater(), &LeftoverItem::bytes);
    return items;
}

} // namespace quillane::LeftoverFinder
