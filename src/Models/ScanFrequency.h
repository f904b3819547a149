#pragma once
#include <array>
#include <cstdint>
#include <string_view>

namespace quillane {

// How often a scan may be asked for on a schedule. Its value is the period in whole hours, as the settings keep it.
enum class ScanFrequency : std::int64_t { everySixHours = 6, daily = 24, weekly = 168 };

// In the order in which they are offered.
inline constexpr std::array kAllScanFrequencies = {ScanFrequency::everySixHours, ScanFrequency::daily,
                                                   ScanFrequency::weekly};

constexpr std::int64_t rawValue(ScanFrequency frequency) {
    return static_cast<std::int64_t>(frequency);
}
// The words in the settings, such as "Every 6 hours".
std::string_view label(ScanFrequency frequency);

} // namespace quillane
