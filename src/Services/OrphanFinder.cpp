#include "OrphanFinder.h"
#include "Characters.h"
#include "Clock.h"
#include "FileSystem.h"
#include "FootprintCalculator.h"
#include "LaunchdJob.h"
#include "SupportFileLocations.h"
#include "VendorPrefix.h"
#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_set>

namespace quillane::OrphanFinder {
namespace {

constexpr double kUntouchedSeconds = 30 * 24 * 60 * 60; // what was touched since then is left alone
constexpr std::size_t kFewestDots = 2;                  // "com.example.tool": less is an ordinary name
constexpr std::string_view kSystemIdentifier = "com.apple";

// What the installed applications claim. All in comparable form: lower case, composed.
class Claims {
  public:
    explicit Claims(const std::set<std::string>& installedIdentifiers) {
        for (const auto& installed : installedIdentifiers) {
            auto identifier = Text::lowercased(installed);
            if (auto vendor = vendorPrefix(identifier)) {
                m_vendors.insert(*std::move(vendor));
            }
            m_identifiers.insert(std::move(identifier));
        }
    }

    // Whether the candidate, in comparable form, is a claimed identifier, extends one, or is of its vendor.
    bool hold(const std::string& candidate) const {
        if (m_identifiers.contains(candidate)) {
            return true;
        }
        for (auto dot = candidate.find('.'); dot != std::string::npos; dot = candidate.find('.', dot + 1)) {
            if (m_identifiers.contains(candidate.substr(0, dot))) {
                return true;
            }
        }
        const auto vendor = vendorPrefix(candidate);
        return vendor && m_vendors.contains(*vendor);
    }

  private:
    std::unordered_set<std::string> m_identifiers;
    std::unordered_set<std::string> m_vendors;
};

bool isOfTheSystem(std::string_view candidate) {
    return candidate.starts_with(kSystemIdentifier) &&
           (candidate.size() == kSystemIdentifier.size() || candidate[kSystemIdentifier.size()] == '.');
}

bool hasTheShape(const std::string& candidate) {
    return Text::fullStops(candidate).size() >= kFewestDots;
}

// The identifier to report, or nothing when the name is no orphan's. Every candidate must be unclaimed, so that
// nothing wrapped around a claimed identifier hides it.
std::optional<std::string>
unclaimedIdentifier(std::string_view name, const std::vector<std::string>& candidates, const Claims& claims) {
    if (name.starts_with('.') || std::ranges::none_of(candidates, hasTheShape)) {
        return std::nullopt;
    }
    for (const auto& candidate : candidates) {
        const auto comparable = Text::lowercased(candidate);
        if (isOfTheSystem(comparable) || claims.hold(comparable)) {
            return std::nullopt;
        }
    }
    return *std::ranges::find_if(candidates.rbegin(), candidates.rend(), hasTheShape);
}

std::optional<Date> modified(const Platform& platform, const FileURL& url) {
    const auto values = platform.files.resourceValues(url);
    return values ? std::optional(values->contentModified) : std::nullopt;
}

// Where what lies is started by the system and not by an application.
bool holdsLaunchdJobs(const SupportFileLocations::Location& location) {
    const auto name = location.url.lastPathComponent();
    return name == "LaunchAgents" || name == "LaunchDaemons";
}

} // namespace

// The cheap tests come first: the name, then the date. What has passed them is opened where it may be the list of a
// living job, and only what is reported is measured.
std::vector<OrphanItem> orphans(const Platform& platform, const std::set<std::string>& installedIdentifiers,
                                const StopToken& stop) {
    const Claims claims(installedIdentifiers);
    const auto cutOff = platform.clock.now().addingSeconds(-kUntouchedSeconds);
    const auto home = platform.files.home();
    std::vector<OrphanItem> items;
    for (const auto& location : SupportFileLocations::all(platform)) {
        if (stop.stopRequested()) {
            break;
        }
        const auto entries = platform.files.list(location.url);
        if (!entries) {
            continue;
        }
        const bool areJobs = holdsLaunchdJobs(location);
        for (const auto& entry : *entries) {
            if (stop.stopRequested()) {
                break;
            }
            const auto candidates = SupportFileLocations::identifierCandidates(entry.name);
            const auto identifier = unclaimedIdentifier(entry.name, candidates, claims);
            if (!identifier) {
                continue;
            }
            const auto url = location.url.appending(entry.name);
            const auto lastModified = modified(platform, url);
            if (lastModified && *lastModified > cutOff) {
                continue;
            }
            if (areJobs && LaunchdJob::hasItsProgram(platform, url)) {
                continue;
            }
            items.push_back({url, location.category, *identifier,
                             vendorPrefix(Text::lowercased(candidates.back())).value_or(*identifier),
                             FootprintCalculator::size(platform, url, stop), lastModified,
                             !location.url.path().starts_with(home.path())});
        }
    }
    std::ranges::stable_sort(items, std::ranges::greater(), &OrphanItem::bytes);
    return items;
}

} // namespace quillane::OrphanFinder
