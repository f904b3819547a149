#include "ThreadPriority.h"
#include <pthread/qos.h>

namespace quillane {

namespace {

qos_class_t classOf(Priority priority) {
    switch (priority) {
    case Priority::userInitiated:
        return QOS_CLASS_USER_INITIATED;
    case Priority::utility:
        return QOS_CLASS_UTILITY;
    case Priority::background:
        return QOS_CLASS_BACKGROUND;
    }
    return QOS_CLASS_DEFAULT;
}

} // namespace

// The classes lower disk priority too.
void setPriorityOfCurrentThread(Priority priority) {
    ::pthread_set_qos_class_self_np(classOf(priority), 0);
}

} // namespace quillane
