#include "AppLibrary.h"

namespace quillane {

AppLibrary::AppLibrary(const Platform& platform)
    : m_platform(platform)
    , m_tasks(platform.tasks) {}

} // namespace quillane
