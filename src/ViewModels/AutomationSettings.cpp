#include "AutomationSettings.h"
#include "DefaultsKeys.h"
#include <string>

namespace quillane::AutomationSettings {

void registerDefaults(Defaults& defaults) {
    using namespace DefaultsKeys;
    defaults.registerDefaults({{std::string(kScanFrequencyHours), std::int64_t{24}},
                               {std::string(kThresholdGB), std::int64_t{5}},
                               {std::string(kLowDiskPercent), std::int64_t{10}},
                               {std::string(kWatchUninstalls), true},
                               {std::string(kShowMenuBarExtra), true}});
}

} // namespace quillane::AutomationSettings
