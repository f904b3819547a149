#include "JobScope.h"

namespace quillane {

// No call here leaves anything for later.
JobScope::JobScope()
    : m_pool(nullptr) {}

JobScope::~JobScope() = default;

} // namespace quillane
