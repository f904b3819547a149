#include "ThreadPriority.h"
#include "KernelCalls.h"
#include <algorithm>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace quillane {

namespace {

constexpr int kUtilityNice = 5;
constexpr int kBackgroundNice = 19;

// On Linux the nice value belongs to the thread.
void setNice(id_t thread, int nice) {
    ::setpriority(PRIO_PROCESS, thread, std::max(nice, ::getpriority(PRIO_PROCESS, thread)));
}

// The thread's disk requests are served when nobody else has any.
void setIdleDiskClass(id_t thread) {
    ::syscall(SYS_ioprio_set, KernelCalls::kOneThread, static_cast<int>(thread),
              KernelCalls::kIdleDiskClass << KernelCalls::kDiskClassShift);
}

} // namespace

void setPriorityOfCurrentThread(Priority priority) {
    const auto thread = static_cast<id_t>(::syscall(SYS_gettid));
    switch (priority) {
    case Priority::userInitiated:
        return;
    case Priority::utility:
        setNice(thread, kUtilityNice);
        return;
    case Priority::background:
        setNice(thread, kBackgroundNice);
        setIdleDiskClass(thread);
        return;
    }
}

} // namespace quillane
