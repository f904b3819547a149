#include "DiskCalls.h"
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace quillane {

int allocateOnDisk(int fd, std::int64_t bytes) {
    struct stat status = {};
    if (::fstat(fd, &status) != 0) {
        return errno;
    }
    const auto missing = bytes - static_cast<std::int64_t>(status.st_blocks) * 512;
    fstore_t store = {F_ALLOCATEALL, F_PEOFPOSMODE, 0, missing, 0};
    const bool isAllocated = missing <= 0 || ::fcntl(fd, F_PREALLOCATE, &store) == 0;
    return isAllocated && (status.st_size >= bytes || ::ftruncate(fd, bytes) == 0) ? 0 : errno;
}

int setAttribute(const std::string& path, const std::string& name, std::string_view value) {
    return ::setxattr(path.c_str(), name.c_str(), value.data(), value.size(), 0, 0) == 0 ? 0 : errno;
}

} // namespace quillane
