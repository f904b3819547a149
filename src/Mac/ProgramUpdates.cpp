#include "ProgramUpdates.h"
#include "SparkleUpdater.h"
#include "UpdaterWithoutFeed.h"
#include "UserDefaults.h"

namespace quillane {

// By Sparkle, which keeps its own settings and is told by the bundle where to ask. A bundle that does not carry it has
// nobody to ask; what the person wants of automatic checks is kept with the program's settings then.
struct ProgramUpdates::Parts {
    Parts(TaskRunner& tasks, const FileURL& home)
        : sparkle(makeSparkleUpdater(tasks))
        , settings(UserDefaults::lockPath(home)) {}

    std::unique_ptr<Updater> sparkle;
    UserDefaults settings;
    // NOLINTNEXTLINE(bugprone-unchecked-optional-access): a build without a version ends here
    UpdaterWithoutFeed without{VersionNumber::parse(QUILLANE_VERSION).value(), settings};
};

ProgramUpdates::ProgramUpdates(Clock& /*clock*/, TaskRunner& tasks, const std::string& home)
    : m_parts(std::make_unique<Parts>(tasks, FileURL(home))) {}

ProgramUpdates::~ProgramUpdates() = default;

Updater& ProgramUpdates::updater() {
    return m_parts->sparkle ? *m_parts->sparkle : m_parts->without;
}

void ProgramUpdates::setOpening(const std::function<void(QWidget& window, bool isAskedFor)>& /*opening*/) {
    // The system knows of its windows, and nothing ends while the program stands in the dock.
}

} // namespace quillane
