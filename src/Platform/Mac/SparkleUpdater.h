#pragma once
#include "TaskRunner.h"
#include "Updater.h"
#include <memory>

namespace quillane {

// Sparkle, which has windows and settings of its own, from the bundle's frameworks. Null where the bundle does not
// carry it, or does not say where to ask and by which key to believe the answer. Starts it. Main thread only; `tasks`
// must outlive what is made.
std::unique_ptr<Updater> makeSparkleUpdater(TaskRunner& tasks);

} // namespace quillane
