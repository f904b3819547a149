#include "ThreadPriority.h"
#include <pthread/qos.h>
#include <sys/resource.h>

namespace quillane {

namespace {

struct Class {
    qos_class_t service;
    int disk; // the class of service may lower it further, and so may the process
};

Class classOf(Priority priority) {
    switch (priority) {
    case Priority::userInitiated:
        return {QOS_CLASS_USER_INITIATED, IOPOL_DEFAULT};
    case Priority::utility:
        return {QOS_CLASS_UTILITY, IOPOL_UTILITY};
    case Priority::background:
        return {QOS_CLASS_BACKGROUND, IOPOL_THROTTLE};
    }
    return {QOS_CLASS_DEFAULT, IOPOL_DEFAULT};
}

} // namespace

void setPriorityOfCurrentThread(Priority priority) {
    const auto [service, disk] = classOf(priority);
    ::pthread_set_qos_class_self_np(service, 0);
    ::setiopolicy_np(IOPOL_TYPE_DISK, IOPOL_SCOPE_THREAD, disk);
}

} // namespace quillane
