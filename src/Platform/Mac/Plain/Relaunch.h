#pragma once
#include "CommandRunner.h"
#include "TaskRunner.h"
#include <functional>
#include <string>

namespace quillane::Relaunch {

// Has "/usr/bin/open" start a second instance of the application in the folder `bundle`, even though this one still
// lives, and then calls `end` on the main thread, whatever came of it. The new one knows by Workspace::kRelaunched that
// it follows upon this one. Returns at once; main thread. `tasks` and `commands` outlive the jobs.
void begin(TaskRunner& tasks, CommandRunner& commands, const std::string& bundle, std::function<void()> end);

} // namespace quillane::Relaunch
