#include "FileDefaults.h"
#include "ProgramUpdates.h"
#include "UpdateSettings.h"
#include "UpdaterWithoutFeed.h"

namespace quillane {

struct ProgramUpdates::Parts {
    explicit Parts(const std::string& home)
        : settings(FileDefaults::userPath(home, UpdateSettings::kFileName)) {}

    FileDefaults settings;
    // NOLINTNEXTLINE(bugprone-unchecked-optional-access): a build without a version ends here
    UpdaterWithoutFeed updater{VersionNumber::parse(QUILLANE_VERSION).value(), settings};
};

ProgramUpdates::ProgramUpdates(Clock& /*clock*/, TaskRunner& /*tasks*/, const std::string& home)
    : m_parts(std::make_unique<Parts>(home)) {}

ProgramUpdates::~ProgramUpdates() = default;

Updater& ProgramUpdates::updater() {
    return m_parts->updater;
}

void ProgramUpdates::setOpening(const std::function<void(QWidget& window, bool isAskedFor)>& /*opening*/) {
    // No window ever opens.
}

} // namespace quillane
