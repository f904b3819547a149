#include "DiskFolder.h"
#include "DiskCalls.h"
#include "TreeRemoval.h"
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace quillane {
namespace {

void require(bool worked, const std::string& what) {
    if (!worked) {
        std::perror(what.c_str());
        std::abort();
    }
}

// Makes a folder and what is missing above it. Asks for the whole path first, since most often all but the
// last folder is there.
void makeFolder(const std::string& path) {
    if (path.empty() || ::mkdir(path.c_str(), 0755) == 0 || errno == EEXIST) {
        return;
    }
    require(errno == ENOENT, path);
    makeFolder(path.substr(0, path.rfind('/')));
    require(::mkdir(path.c_str(), 0755) == 0 || errno == EEXIST, path);
}

void makeParent(const std::string& path) {
    makeFolder(path.substr(0, path.rfind('/')));
}

int create(const std::string& path) {
    constexpr int kFlags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC;
    int fd = ::open(path.c_str(), kFlags, 0644);
    if (fd < 0 && errno == ENOENT) {
        makeParent(path);
        fd = ::open(path.c_str(), kFlags, 0644);
    }
    require(fd >= 0, path);
    return fd;
}

void writeAll(int fd, std::string_view content, const std::string& path) {
    while (!content.empty()) {
        const auto written = ::write(fd, content.data(), content.size());
        require(written > 0, path);
        content.remove_prefix(static_cast<std::size_t>(written));
    }
}

} // namespace

DiskFolder::DiskFolder(std::string path)
    : m_path(std::move(path)) {
    makeFolder(m_path);
}

std::string DiskFolder::at(std::string_view below) const {
    std::string path = m_path;
    if (!below.starts_with('/')) {
        path += '/';
    }
    return path.append(below);
}

DiskFolder& DiskFolder::folder(std::string_view below) {
    makeFolder(at(below));
    return *this;
}

DiskFolder& DiskFolder::file(std::string_view below, std::string_view content) {
    const int fd = create(at(below));
    writeAll(fd, content, at(below));
    ::close(fd);
    return *this;
}

DiskFolder& DiskFolder::allocated(std::string_view below, std::int64_t bytes) {
    const int fd = create(at(below));
    if (bytes > 0) {
        errno = allocateOnDisk(fd, bytes);
        require(errno == 0, at(below));
    }
    ::close(fd);
    return *this;
}

DiskFolder& DiskFolder::sparse(std::string_view below, std::int64_t length) {
    const int fd = create(at(below));
    require(::ftruncate(fd, length) == 0, at(below));
    ::close(fd);
    return *this;
}

DiskFolder& DiskFolder::extend(std::string_view below, std::int64_t allocated, std::int64_t length) {
    const int fd = ::open(at(below).c_str(), O_WRONLY | O_CLOEXEC);
    require(fd >= 0, at(below));
    if (allocated > 0) {
        errno = allocateOnDisk(fd, allocated);
        require(errno == 0, at(below));
    }
    struct stat status = {};
    require(::fstat(fd, &status) == 0, at(below));
    require(status.st_size >= length || ::ftruncate(fd, length) == 0, at(below));
    ::close(fd);
    return *this;
}

DiskFolder& DiskFolder::link(std::string_view below, std::string_view target) {
    makeParent(at(below));
    require(::symlink(std::string(target).c_str(), at(below).c_str()) == 0, at(below));
    return *this;
}

DiskFolder& DiskFolder::hardLink(std::string_view below, std::string_view existing) {
    makeParent(at(below));
    require(::link(at(existing).c_str(), at(below).c_str()) == 0, at(below));
    return *this;
}

DiskFolder& DiskFolder::fifo(std::string_view below) {
    makeParent(at(below));
    require(::mkfifo(at(below).c_str(), 0644) == 0, at(below));
    return *this;
}

DiskFolder& DiskFolder::socket(std::string_view below) {
    makeParent(at(below));
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    require(at(below).copy(address.sun_path, sizeof(address.sun_path) - 1) == at(below).size(), at(below));
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    require(::bind(fd, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0, at(below));
    ::close(fd);
    return *this;
}

DiskFolder& DiskFolder::zeroDevice(std::string_view below) {
    makeParent(at(below));
    struct stat zero = {};
    require(::stat("/dev/zero", &zero) == 0, at(below));
    require(::mknod(at(below).c_str(), S_IFCHR | 0644, zero.st_rdev) == 0 || errno == EPERM, at(below));
    return *this;
}

DiskFolder& DiskFolder::modified(std::string_view below, Date date) {
    const double seconds = std::floor(date.secondsSince1970());
    timespec time = {};
    time.tv_sec = static_cast<time_t>(seconds);
    time.tv_nsec = static_cast<long>((date.secondsSince1970() - seconds) * 1e9);
    const timespec times[2] = {time, time};
    require(::utimensat(AT_FDCWD, at(below).c_str(), times, AT_SYMLINK_NOFOLLOW) == 0, at(below));
    return *this;
}

DiskFolder& DiskFolder::attribute(std::string_view below, const std::string& name, std::string_view value) {
    errno = setAttribute(at(below), name, value);
    require(errno == 0 || errno == ENOTSUP, at(below));
    return *this;
}

DiskFolder& DiskFolder::executable(std::string_view below) {
    require(::chmod(at(below).c_str(), 0755) == 0, at(below));
    return *this;
}

DiskFolder& DiskFolder::chain(std::string_view below, int levels, std::string_view content) {
    folder(below);
    int place = ::open(at(below).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    require(place >= 0, at(below));
    for (int level = 0; level < levels; ++level) {
        require(::mkdirat(place, "d", 0755) == 0, at(below));
        const int next = ::openat(place, "d", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        require(next >= 0, at(below));
        ::close(place);
        place = next;
    }
    const int leaf = ::openat(place, "leaf", O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    require(leaf >= 0, at(below));
    writeAll(leaf, content, at(below));
    ::close(leaf);
    ::close(place);
    return *this;
}

DiskFolder& DiskFolder::permissions(std::string_view below, unsigned int mode) {
    require(::chmod(at(below).c_str(), static_cast<mode_t>(mode)) == 0, at(below));
    return *this;
}

DiskFolder& DiskFolder::rename(std::string_view from, std::string_view to) {
    require(::rename(at(from).c_str(), at(to).c_str()) == 0, at(from));
    return *this;
}

DiskFolder& DiskFolder::remove(std::string_view below) {
    if (::unlink(at(below).c_str()) != 0) {
        removeTree(at(below));
    }
    return *this;
}

std::int64_t DiskFolder::allocationOf(std::string_view below) const {
    struct stat status = {};
    require(::lstat(at(below).c_str(), &status) == 0, at(below));
    return std::int64_t{status.st_blocks} * 512;
}

} // namespace quillane
