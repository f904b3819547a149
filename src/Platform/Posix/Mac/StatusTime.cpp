#include "StatusTime.h"

namespace quillane {

Date modifiedOf(const struct stat& status) {
    return Date::fromUnix(status.st_mtimespec.tv_sec, status.st_mtimespec.tv_nsec);
}

Date changedOf(const struct stat& status) {
    return Date::fromUnix(status.st_ctimespec.tv_sec, status.st_ctimespec.tv_nsec);
}

} // namespace quillane
