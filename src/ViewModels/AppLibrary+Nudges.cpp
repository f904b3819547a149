// What is told when it becomes true: too much that could go, too little room, new leftovers, a new thing that starts
// by itself. Each is told once and stays quiet until it has cleared and returned. Nothing here removes anything.
#include "AppLibrary.h"
#include "Defaults.h"
#include "DefaultsKeys.h"
#include "DisplayName.h"
#include "FileSystem.h"
#include "Formatting.h"
#include "OrphanGroup.h"
#include "UserNotifications.h"
#include <algorithm>
#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillane {
namespace {

constexpr Bytes kBytesPerGB = 1'000'000'000;
constexpr double kPercent = 100;
constexpr std::size_t kMostLabelsTold = 3;

// A limit of the settings: what is below 1 counts as 1.
std::int64_t limitAt(const Defaults& defaults, std::string_view key) {
    return std::max(std::int64_t{1}, defaults.integer(key));
}

// A limit beyond all bytes is never reached.
Bytes gigabytes(std::int64_t count) {
    Bytes bytes = 0;
    return __builtin_mul_overflow(count, kBytesPerGB, &bytes) ? std::numeric_limits<Bytes>::max() : bytes;
}

// Cut to a whole number. A fraction above 1 is as good as 1: no volume has more free than it has.
std::string percentOf(double fraction) {
    return Formatting::number(static_cast<std::int64_t>(std::min(fraction, 1.0) * kPercent));
}

// Writing costs the disk a sync, and most evaluations see what the one before saw.
void remember(Defaults& defaults, std::string_view key, const Defaults::Value& value) {
    if (defaults.value(key) != value) {
        defaults.set(key, value);
    }
}

std::set<std::string> knownSet(const Defaults& defaults, std::string_view key) {
    const auto known = defaults.stringArray(key).value_or(std::vector<std::string>());
    return {known.begin(), known.end()};
}

// What is now and was not known. Nothing when nothing was known: that is no different from a first look.
std::vector<std::string> freshOf(const std::set<std::string>& present, const std::set<std::string>& known) {
    std::vector<std::string> fresh;
    if (!known.empty()) {
        std::ranges::set_difference(present, known, std::back_inserter(fresh));
    }
    return fresh;
}

// Part of an identifier, not shown.
std::string plain(std::size_t count) {
    return std::to_string(count);
}

void post(const Platform& platform, std::string identifier, std::string title, std::string body,
          LibrarySection section) {
    platform.notifications.add({.identifier = std::move(identifier),
                                .title = std::move(title),
                                .body = std::move(body),
                                .userInfo = {{"section", std::string(rawValue(section))}}});
}

} // namespace

void AppLibrary::evaluateNudges() {
    if (phase->kind != Phase::Kind::ready) {
        return;
    }
    nudgeOnThreshold();
    nudgeOnLowDisk();
    nudgeOnNewOrphans();
    nudgeOnNewStartup();
}

void AppLibrary::nudgeOnThreshold() {
    auto& defaults = m_platform.defaults;
    if (!defaults.boolean(DefaultsKeys::kNudgeOnThreshold)) {
        return;
    }
    const Bytes limit = gigabytes(limitAt(defaults, DefaultsKeys::kThresholdGB));
    const Bytes bytes = selectedSweepBytes();
    const bool isPast = bytes >= limit;
    if (isPast && !defaults.boolean(DefaultsKeys::kNudgedThreshold)) {
        post(m_platform, "threshold", Formatting::byteCount(bytes) + " can be reclaimed",
             "That's past the " + Formatting::byteCount(limit) + " you asked to be told about.",
             LibrarySection::overview);
    }
    remember(defaults, DefaultsKeys::kNudgedThreshold, isPast);
}

void AppLibrary::nudgeOnLowDisk() {
    auto& defaults = m_platform.defaults;
    const auto fraction = defaults.boolean(DefaultsKeys::kNudgeOnLowDisk) ? freeDiskFraction(m_platform)
                                                                          : std::optional<double>();
    if (!fraction) {
        return;
    }
    const double limit = static_cast<double>(limitAt(defaults, DefaultsKeys::kLowDiskPercent)) / kPercent;
    const bool isLow = *fraction < limit;
    if (isLow && !defaults.boolean(DefaultsKeys::kNudgedLowDisk)) {
        post(m_platform, "lowdisk", "Disk is " + percentOf(*fraction) + "% free",
             "Quillane can reclaim " + Formatting::byteCount(selectedSweepBytes()) + " right now.",
             LibrarySection::overview);
    }
    remember(defaults, DefaultsKeys::kNudgedLowDisk, isLow);
}

void AppLibrary::nudgeOnNewOrphans() {
    auto& defaults = m_platform.defaults;
    if (!defaults.boolean(DefaultsKeys::kNudgeOnNewOrphans)) {
        return;
    }
    const OrphanGrouping grouping(*orphans);
    std::set<std::string> vendors;
    for (const auto& group : grouping.groups()) {
        vendors.insert(group.vendor());
    }
    const auto fresh = freshOf(vendors, knownSet(defaults, DefaultsKeys::kKnownOrphanVendors));
    if (!fresh.empty()) {
        const Bytes total = sumOfBytes(grouping.groups(), [&](const OrphanGroupView& group) {
            return std::ranges::binary_search(fresh, group.vendor()) ? group.totalBytes() : 0;
        });
        const auto count = static_cast<std::int64_t>(fresh.size());
        post(m_platform, "orphans-" + plain(fresh.size()),
             Formatting::counted(count, "removed app") + " left files behind",
             Formatting::byteCount(total) + " of leftovers from apps you deleted.", LibrarySection::orphans);
    }
    setKnownOrphanVendors(vendors);
}

// An empty list says nothing: it is empty until the items have been looked for.
void AppLibrary::nudgeOnNewStartup() {
    auto& defaults = m_platform.defaults;
    if (!defaults.boolean(DefaultsKeys::kNudgeOnNewStartup) || startupItems->empty()) {
        return;
    }
    std::set<std::string> labels;
    for (const auto& item : *startupItems) {
        labels.insert(item.label);
    }
    const auto fresh = freshOf(labels, knownSet(defaults, DefaultsKeys::kKnownStartupLabels));
    if (!fresh.empty()) {
        std::string body;
        for (std::size_t i = 0; i < std::min(fresh.size(), kMostLabelsTold); ++i) {
            body += (i == 0 ? "" : ", ") + Text::displayName(fresh[i]);
        }
        post(m_platform, "startup-" + plain(fresh.size()), "Something new starts automatically",
             std::move(body), LibrarySection::startup);
    }
    setKnownStartupLabels(labels);
}

void AppLibrary::setKnownOrphanVendors(const std::set<std::string>& vendors) {
    remember(m_platform.defaults, DefaultsKeys::kKnownOrphanVendors,
             std::vector<std::string>(vendors.begin(), vendors.end()));
}

void AppLibrary::setKnownStartupLabels(const std::set<std::string>& labels) {
    remember(m_platform.defaults, DefaultsKeys::kKnownStartupLabels,
             std::vector<std::string>(labels.begin(), labels.end()));
}

void AppLibrary::postWeeklyReminder(Bytes reclaimable) const {
    post(m_platform, "weekly", Formatting::byteCount(reclaimable) + " reclaimable",
         "Open Quillane to review what can go. Nothing is removed until you confirm it.",
         LibrarySection::overview);
}

std::optional<double> AppLibrary::freeDiskFraction(const Platform& platform) {
    const auto space = platform.files.volumeSpace(platform.files.home());
    if (!space || space->size <= 0) {
        return std::nullopt;
    }
    return static_cast<double>(space->free) / static_cast<double>(space->size);
}

} // namespace quillane
