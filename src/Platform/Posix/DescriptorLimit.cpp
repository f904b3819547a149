#include "DescriptorLimit.h"
#include <algorithm>
#include <sys/resource.h>

namespace quillane::DescriptorLimit {

std::size_t raise(std::size_t wanted) {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) {
        return 0;
    }
    const auto target = std::min(static_cast<rlim_t>(wanted), limit.rlim_max);
    if (limit.rlim_cur < target) {
        const rlimit raised{target, limit.rlim_max};
        if (::setrlimit(RLIMIT_NOFILE, &raised) == 0) {
            return target;
        }
    }
    return limit.rlim_cur;
}

} // namespace quillane::DescriptorLimit
