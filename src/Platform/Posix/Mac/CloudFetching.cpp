#include "CloudFetching.h"
#include <sys/resource.h>

namespace quillane::CloudFetching {

Policy ofCurrentThread() {
    switch (::getiopolicy_np(IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES, IOPOL_SCOPE_THREAD)) {
    case IOPOL_MATERIALIZE_DATALESS_FILES_OFF:
        return Policy::forbidden;
    case IOPOL_MATERIALIZE_DATALESS_FILES_ON:
        return Policy::allowed;
    default:
        return Policy::asTheProcess;
    }
}

void setForCurrentThread(Policy policy) {
    int value = IOPOL_MATERIALIZE_DATALESS_FILES_DEFAULT;
    if (policy != Policy::asTheProcess) {
        value = policy == Policy::allowed ? IOPOL_MATERIALIZE_DATALESS_FILES_ON
                                          : IOPOL_MATERIALIZE_DATALESS_FILES_OFF;
    }
    ::setiopolicy_np(IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES, IOPOL_SCOPE_THREAD, value);
}

} // namespace quillane::CloudFetching
