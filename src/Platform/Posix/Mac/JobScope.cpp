#include "JobScope.h"

// What @autoreleasepool is compiled to. No header of the system tells it to C++.
// NOLINTBEGIN(readability-identifier-naming)
extern "C" void* objc_autoreleasePoolPush(void);
extern "C" void objc_autoreleasePoolPop(void* pool);
// NOLINTEND(readability-identifier-naming)

namespace quillane {

JobScope::JobScope()
    : m_pool(objc_autoreleasePoolPush()) {}

JobScope::~JobScope() {
    objc_autoreleasePoolPop(m_pool);
}

} // namespace quillane
