#include "UpdaterWithoutFeed.h"
#include "Defaults.h"
#include "UpdateSettings.h"

namespace quillane {

bool UpdaterWithoutFeed::automaticallyChecksForUpdates() const {
    return m_settings.boolean(UpdateSettings::kAutomaticallyChecks);
}

void UpdaterWithoutFeed::setAutomaticallyChecksForUpdates(bool isOn) {
    m_settings.set(UpdateSettings::kAutomaticallyChecks, isOn);
}

} // namespace quillane
