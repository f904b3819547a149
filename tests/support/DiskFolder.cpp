#include "DiskFolder.h"
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quillane {
namespace {

void require(bool worked, const std::string& what) {
    if (!worked) {
        std::fprintf(stderr, "disk folder: %s: %s\n", what.c_str(), std::strerror(errno));
        std::abort();
    }
}

void makeParents(const std::string& path) {
    for (auto slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1)) {
        const auto parent = path.substr(0, slash);
        require(::mkdir(parent.c_str(), 0755) == 0 || errno == EEXIST, parent);
    }
}

int create(const std::string& path) {
    makeParents(path);
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    require(fd >= 0, path);
    return fd;
}

} // namespace

DiskFolder::DiskFolder(std::string path)
    : m_path(std::move(path)) {
    makeParents(m_path + "/");
}

std::string DiskFolder::at(std::string_view below) const {
    std::string path = m_path;
    if (!below.starts_with('/')) {
        path += '/';
    }
    return path.append(below);
}

DiskFolder& DiskFolder::folder(std::string_view below) {
    makeParents(at(below) + "/");
    return *this;
}

DiskFolder& DiskFolder::file(std::string_view below, std::string_view content) {
    const int fd = create(at(below));
    while (!content.empty()) {
        const auto written = ::write(fd, content.data(), content.size());
        require(written > 0, at(below));
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    ::close(fd);
    return *this;
}

DiskFolder& DiskFolder::allocated(std::string_view below, std::int64_t bytes) {
    const int fd = create(at(below));
    if (bytes > 0) {
        errno = ::posix_fallocate(fd, 0, bytes);
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

DiskFolder& DiskFolder::link(std::string_view below, std::string_view target) {
    makeParents(at(below));
    require(::symlink(std::string(target).c_str(), at(below).c_str()) == 0, at(below));
    return *this;
}

DiskFolder& DiskFolder::hardLink(std::string_view below, std::string_view existing) {
    makeParents(at(below));
    require(::link(at(existing).c_str(), at(below).c_str()) == 0, at(below));
    return *this;
}

DiskFolder& DiskFolder::fifo(std::string_view below) {
    makeParents(at(below));
    require(::mkfifo(at(below).c_str(), 0644) == 0, at(below));
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

DiskFolder& DiskFolder::executable(std::string_view below) {
    require(::chmod(at(below).c_str(), 0755) == 0, at(below));
    return *this;
}

} // namespace quillane
