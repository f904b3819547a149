#include "RootFolder.h"
#include <cerrno>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>

namespace quillane {

RootFolder::RootFolder(const std::string& hostFolder)
    : m_isRooted(true)
    , m_root(::open(hostFolder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {}

Descriptor RootFolder::open(const std::string& path, int flags) const {
    if (!m_isRooted) {
        return Descriptor(::open(path.c_str(), flags | O_CLOEXEC));
    }
    open_how how = {};
    how.flags = static_cast<std::uint64_t>(static_cast<unsigned>(flags | O_CLOEXEC));
    how.resolve = RESOLVE_IN_ROOT | RESOLVE_NO_MAGICLINKS;
    return Descriptor(static_cast<int>(::syscall(SYS_openat2, m_root.get(), path.c_str(), &how, sizeof how)));
}

Descriptor RootFolder::openParent(const FileURL& url) const {
    return open(url.deletingLastPathComponent().path(), O_RDONLY | O_DIRECTORY);
}

} // namespace quillane
