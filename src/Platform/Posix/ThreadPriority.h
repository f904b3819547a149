#pragma once
#include "TaskRunner.h"

namespace quillane {

// Gives the calling thread the system's class of service for `priority`, for the rest of its life: CPU and
// disk. Never raises a thread above what the process has; what the system refuses stays as it is.
void setPriorityOfCurrentThread(Priority priority);

} // namespace quillane
