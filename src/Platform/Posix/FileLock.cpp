#include "FileLock.h"
#include "AtomicFile.h"
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace quillane {
namespace {

constexpr mode_t kMode = 0600;

Descriptor openOrMake(const std::string& path) {
    AtomicFile::makeFoldersAbove(path);
    return Descriptor(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kMode));
}

} // namespace

FileLock::FileLock(const std::string& path)
    : m_file(openOrMake(path)) {
    while (m_file && ::flock(m_file.get(), LOCK_EX) != 0 && errno == EINTR) {
    }
}

} // namespace quillane
