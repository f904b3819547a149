#pragma once
#include <string_view>

// The keys of everything that survives a restart. They are settled as they stand: two have no prefix.
namespace quillane::DefaultsKeys {

inline constexpr std::string_view kProtectedPaths = "protectedPaths"; // array of strings, sorted
inline constexpr std::string_view kLastOperation = "lastOperation";   // data: JSON of UndoableOperation
inline constexpr std::string_view kRecentUninstalls =
    "recentUninstalls"; // data: JSON array of RecentUninstall
inline constexpr std::string_view kHasSeenOnboarding = "hasSeenOnboarding";      // boolean
inline constexpr std::string_view kShowMenuBarExtra = "showMenuBarExtra";        // boolean, registered true
inline constexpr std::string_view kScheduledScans = "automation.scheduledScans"; // boolean
inline constexpr std::string_view kScanFrequencyHours =
    "automation.scanFrequencyHours";                                                 // integer, registered 24
inline constexpr std::string_view kLastScan = "automation.lastScan";                 // date
inline constexpr std::string_view kWeeklyReminder = "weeklyReminder";                // boolean
inline constexpr std::string_view kLastReminder = "lastReminder";                    // date
inline constexpr std::string_view kNudgeOnThreshold = "automation.nudgeOnThreshold"; // boolean
inline constexpr std::string_view kThresholdGB = "automation.thresholdGB";           // integer, registered 5
inline constexpr std::string_view kNudgedThreshold = "nudged.threshold";             // boolean
inline constexpr std::string_view kNudgeOnLowDisk = "automation.nudgeOnLowDisk";     // boolean
inline constexpr std::string_view kLowDiskPercent = "automation.lowDiskPercent";     // integer, registered 10
inline constexpr std::string_view kNudgedLowDisk = "nudged.lowDisk";                 // boolean
inline constexpr std::string_view kNudgeOnNewOrphans = "automation.nudgeOnNewOrphans";   // boolean
inline constexpr std::string_view kKnownOrphanVendors = "automation.knownOrphanVendors"; // sorted strings
inline constexpr std::string_view kNudgeOnNewStartup = "automation.nudgeOnNewStartup";   // boolean
inline constexpr std::string_view kKnownStartupLabels = "automation.knownStartupLabels"; // sorted strings
inline constexpr std::string_view kWatchUninstalls = "automation.watchUninstalls"; // boolean, registered true

} // namespace quillane::DefaultsKeys
