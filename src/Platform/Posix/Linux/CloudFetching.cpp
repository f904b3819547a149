#include "CloudFetching.h"

namespace quillane::CloudFetching {

// No cloud here has the system fetch for it.
Policy ofCurrentThread() {
    return Policy::asTheProcess;
}

void setForCurrentThread(Policy /*policy*/) {}

} // namespace quillane::CloudFetching
