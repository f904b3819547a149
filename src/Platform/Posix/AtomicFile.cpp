#include "AtomicFile.h"
#include "Descriptor.h"
#include "FileMover.h"
#include "FileRemover.h"
#include "PosixError.h"
#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace quillane::AtomicFile {
namespace {

constexpr mode_t kOwnerOnly = 0600;
constexpr int kNameTries = 100;

// Differs between processes and between calls of one process.
std::string temporaryName(const std::string& name) {
    static std::atomic<unsigned> counter = 0;
    return "." + name + "." + std::to_string(::getpid()) + "." + std::to_string(++counter) + ".tmp";
}

Result<> writeAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto written = ::write(fd, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return PosixError::writing(errno);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    if (::fsync(fd) != 0) {
        return PosixError::writing(errno);
    }
    return success();
}

} // namespace

Result<> write(const std::string& path, std::string_view bytes) {
    const auto slash = path.rfind('/');
    const std::string folderPath = slash == 0 ? "/" : path.substr(0, slash);
    const std::string name = path.substr(slash + 1);
    const Descriptor folder(::open(folderPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder) {
        return PosixError::writing(errno);
    }
    std::string temporary;
    Descriptor file;
    for (int i = 0; i < kNameTries && !file; ++i) {
        temporary = temporaryName(name);
        file = Descriptor(::openat(folder.get(), temporary.c_str(),
                                   O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kOwnerOnly));
        if (!file && errno != EEXIST) {
            return PosixError::writing(errno);
        }
    }
    if (!file) {
        return PosixError::writing(EEXIST);
    }
    auto done = writeAll(file.get(), bytes);
    if (done) {
        done = FileMover::replace(folder.get(), temporary, name);
    }
    if (!done) {
        (void)FileRemover::removeFile(folder.get(), temporary);
        return done;
    }
    ::fsync(folder.get()); // the new name itself survives a power cut
    return success();
}

} // namespace quillane::AtomicFile
