#include "ExtendedAttribute.h"
#include <cerrno>
#include <sys/xattr.h>

namespace quillane::ExtendedAttribute {

ssize_t read(int item, const std::string& name, void* value, std::size_t size) {
    if (size == 0) {
        errno = ERANGE; // the system would tell the length alone
        return -1;
    }
    return ::fgetxattr(item, ("user." + name).c_str(), value, size);
}

} // namespace quillane::ExtendedAttribute
