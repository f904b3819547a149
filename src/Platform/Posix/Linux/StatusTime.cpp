#include "StatusTime.h"

namespace quillane {

Date modifiedOf(const struct stat& status) {
    return Date::fromUnix(status.st_mtim.tv_sec, status.st_mtim.tv_nsec);
}

Date changedOf(const struct stat& status) {
    return Date::fromUnix(status.st_ctim.tv_sec, status.st_ctim.tv_nsec);
}

} // namespace quillane
