#include "AtomicFile.h"
#include "Descriptor.h"
#include "DiskSync.h"
#include "FileMover.h"
#include "FileRemover.h"
#include "PosixError.h"
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quillane::AtomicFile {
namespace {

constexpr mode_t kOwnerOnly = 0600;
constexpr mode_t kFolderMode = 0700;
constexpr int kNameTries = 100;
constexpr int kMostLinks = 40; // as the Linux kernel has it

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
    if (!DiskSync::write(fd)) {
        return PosixError::writing(errno);
    }
    return success();
}

// The path at which a chain of links ends, be anything there or not.
Result<std::string> endOfLinks(std::string path) {
    std::array<char, PATH_MAX> target{};
    for (int links = 0; links <= kMostLinks; ++links) {
        const auto length = ::readlink(path.c_str(), target.data(), target.size());
        if (length < 0) {
            return path;
        }
        const std::string text(target.data(), static_cast<std::size_t>(length));
        path.resize(text.starts_with('/') ? 0 : path.rfind('/') + 1);
        path += text;
    }
    return PosixError::writing(ELOOP);
}

// Nothing, or a file of bytes.
Result<> checkReplaceable(int folder, const std::string& name) {
    struct stat status = {};
    if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return errno == ENOENT ? success() : PosixError::writing(errno);
    }
    return S_ISREG(status.st_mode) ? success() : PosixError::writing(EEXIST);
}

struct Temporary {
    std::string name;
    Descriptor file;
};

Result<Temporary> makeTemporary(int folder, const std::string& name) {
    for (int i = 0; i < kNameTries; ++i) {
        auto temporary = temporaryName(name);
        Descriptor file(::openat(folder, temporary.c_str(),
                                 O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kOwnerOnly));
        if (file) {
            return Temporary{std::move(temporary), std::move(file)};
        }
        if (errno != EEXIST) {
            return PosixError::writing(errno);
        }
    }
    return PosixError::writing(EEXIST);
}

Result<> writeIn(int folder, const std::string& name, std::string_view bytes) {
    if (auto replaceable = checkReplaceable(folder, name); !replaceable) {
        return replaceable;
    }
    const auto temporary = makeTemporary(folder, name);
    if (!temporary) {
        return temporary.error();
    }
    auto done = writeAll(temporary->file.get(), bytes);
    if (done) {
        done = FileMover::replace(folder, temporary->name, name);
    }
    if (!done) {
        (void)FileRemover::removeFile(folder, temporary->name);
        return done;
    }
    (void)DiskSync::write(folder); // the new name itself survives a power cut
    return success();
}

} // namespace

Result<> write(const std::string& path, std::string_view bytes) {
    const auto end = endOfLinks(path);
    if (!end) {
        return end.error();
    }
    const auto slash = end->rfind('/');
    const std::string folderPath = slash == 0 ? "/" : end->substr(0, slash);
    const Descriptor folder(::open(folderPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder) {
        return PosixError::writing(errno);
    }
    return writeIn(folder.get(), end->substr(slash + 1), bytes);
}

Result<> writeByte(const std::string& path, std::size_t offset, char byte) {
    const Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (!file || ::fstat(file.get(), &status) != 0) {
        return PosixError::writing(errno);
    }
    const auto place = static_cast<off_t>(offset);
    if (!S_ISREG(status.st_mode) || place >= status.st_size) {
        return PosixError::writing(EINVAL);
    }
    if (::pwrite(file.get(), &byte, 1, place) != 1 || !DiskSync::write(file.get())) {
        return PosixError::writing(errno);
    }
    return success();
}

void makeFoldersAbove(const std::string& path) {
    for (auto slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1)) {
        ::mkdir(path.substr(0, slash).c_str(), kFolderMode);
    }
}

} // namespace quillane::AtomicFile
