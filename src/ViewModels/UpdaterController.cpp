#include "UpdaterController.h"
#include "Updater.h"

namespace quillane {

UpdaterController::UpdaterController(Updater& updater)
    : automaticallyChecksForUpdates(updater.automaticallyChecksForUpdates())
    , canCheckForUpdates(updater.canCheckForUpdates())
    , lastUpdateCheckDate(updater.lastUpdateCheckDate())
    , m_updater(updater) {
    m_updater.setChangeHandler([this] { read(); });
}

UpdaterController::~UpdaterController() {
    m_updater.setChangeHandler({});
}

void UpdaterController::setAutomaticallyChecksForUpdates(bool isOn) {
    automaticallyChecksForUpdates = isOn;
    m_updater.setAutomaticallyChecksForUpdates(isOn);
}

void UpdaterController::checkForUpdates() {
    m_updater.checkForUpdates();
}

std::optional<std::string> UpdaterController::installedVersion() const {
    return m_updater.installedVersion();
}

void UpdaterController::read() {
    automaticallyChecksForUpdates = m_updater.automaticallyChecksForUpdates();
    canCheckForUpdates = m_updater.canCheckForUpdates();
    lastUpdateCheckDate = m_updater.lastUpdateCheckDate();
}

} // namespace quillane
