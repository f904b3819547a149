#include "ProgramUpdates.h"
#include "AbsentPorts.h"
#include "SparkleUpdater.h"

namespace quillane {

// Sparkle keeps its own settings; a bundle that does not carry it has nobody to ask and nothing to keep.
struct ProgramUpdates::Parts {
    explicit Parts(TaskRunner& tasks)
        : sparkle(makeSparkleUpdater(tasks)) {}

    std::unique_ptr<Updater> sparkle;
    AbsentUpdater absent;
};

ProgramUpdates::ProgramUpdates(Clock& /*clock*/, TaskRunner& tasks, const std::string& /*home*/)
    : m_parts(std::make_unique<Parts>(tasks)) {}

ProgramUpdates::~ProgramUpdates() = default;

Updater& ProgramUpdates::updater() {
    return m_parts->sparkle ? *m_parts->sparkle : m_parts->absent;
}

void ProgramUpdates::setOpening(const std::function<void(QWidget& window, bool isAskedFor)>& /*opening*/) {
    // The system knows of its windows, and nothing ends while the program stands in the dock.
}

} // namespace quillane
