#include "StatusTime.h"

namespace quillane {

Date modifiedOf(const struct stat& status) {
    return Date::fromUnix(status.st_mtim.tv_sec, status.st_mtim.tv_nsec);
}

} // namespace quillane
