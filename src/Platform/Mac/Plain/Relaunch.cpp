#include "Relaunch.h"
#include "Workspace.h"
#include <utility>

namespace quillane::Relaunch {

void begin(TaskRunner& tasks, CommandRunner& commands, const std::string& bundle, std::function<void()> end) {
    tasks.run(Priority::userInitiated, [&tasks, &commands, bundle, end = std::move(end)] {
        (void)commands.run("/usr/bin/open", {"-n", bundle, "--args", Workspace::kRelaunched});
        tasks.post(end);
    });
}

} // namespace quillane::Relaunch
