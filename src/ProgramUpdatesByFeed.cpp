#include "Base64.h"
#include "FeedUpdater.h"
#include "FileDefaults.h"
#include "HttpsFeed.h"
#include "ProgramUpdates.h"
#include "UpdateSettings.h"
#include "Updates/UpdateWindows.h"
#include <utility>

namespace quillane {

struct ProgramUpdates::Parts {
    Parts(Clock& clock, TaskRunner& tasks, const std::string& home)
        : settings(FileDefaults::userPath(home, UpdateSettings::kFileName))
        // NOLINTNEXTLINE(bugprone-unchecked-optional-access): a build without a version ends here
        , updater(VersionNumber::parse(QUILLANE_VERSION).value(), Base64::decoded(QUILLANE_UPDATE_KEY),
                  {source, windows, settings, clock, tasks}) {}

    FileDefaults settings;
    HttpsFeed source{QUILLANE_UPDATE_FEED};
    UpdateWindows windows; // opens none before there is something to tell
    FeedUpdater updater;
};

ProgramUpdates::ProgramUpdates(Clock& clock, TaskRunner& tasks, const std::string& home)
    : m_parts(std::make_unique<Parts>(clock, tasks, home)) {}

ProgramUpdates::~ProgramUpdates() = default;

Updater& ProgramUpdates::updater() {
    return m_parts->updater;
}

void ProgramUpdates::setOpening(const std::function<void(QWidget& window, bool isAskedFor)>& opening) {
    m_parts->windows.setOpening(opening);
}

} // namespace quillane
