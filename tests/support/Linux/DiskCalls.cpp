#include "DiskCalls.h"
#include <cerrno>
#include <fcntl.h>
#include <sys/xattr.h>

namespace quillane {

int allocateOnDisk(int fd, std::int64_t bytes) {
    return ::posix_fallocate(fd, 0, bytes);
}

int setAttribute(const std::string& path, const std::string& name, std::string_view value) {
    return ::setxattr(path.c_str(), ("user." + name).c_str(), value.data(), value.size(), 0) == 0 ? 0 : errno;
}

} // namespace quillane
