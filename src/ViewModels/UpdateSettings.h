#pragma once
#include <string_view>

// The keys of what looking for newer versions keeps, in a file of its own: none of them is a setting of the program's.
namespace quillane::UpdateSettings {

inline constexpr std::string_view kFileName = "updates.plist";

inline constexpr std::string_view kAutomaticallyChecks = "automaticallyChecks"; // boolean
inline constexpr std::string_view kLastCheck = "lastCheck";                     // date
// The newest announcement that was ever read: what is older than that is believed no more.
inline constexpr std::string_view kNewestVersion = "newestVersion"; // string
inline constexpr std::string_view kNewestDate = "newestDate";       // date
// The newest version that was shown, which is not shown again unasked.
inline constexpr std::string_view kShownVersion = "shownVersion"; // string

} // namespace quillane::UpdateSettings
