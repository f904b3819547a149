#include "TemporaryFolder.h"
#include "FileDescriptor.h"
#include <array>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace quillane {
namespace {

constexpr uid_t kNobody = 65534;
constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

void require(bool done, std::string_view step) {
    if (!done) {
        fmt::print(stderr, "TemporaryFolder: {}: {}\n", step,
                   std::strerror(errno)); // NOLINT(concurrency-mt-unsafe)
        std::abort();
    }
}

// Where TMPDIR says; otherwise in memory where the system has such a place, since a disk can take a millisecond
// for each of the thousands of small files that the tests make.
std::string place() {
    static constexpr const char* kMemory = "/dev/shm";
    if (const char* chosen = std::getenv("TMPDIR")) { // NOLINT(concurrency-mt-unsafe)
        return chosen;
    }
    return ::access(kMemory, W_OK | X_OK) == 0 ? kMemory : "/tmp";
}

// The names in an open folder, without "." and "..".
std::vector<std::string> namesIn(int folder) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, decltype(&::closedir)> stream(::fdopendir(::dup(folder)), &::closedir);
    while (const dirent* entry =
               stream ? ::readdir(stream.get()) : nullptr) { // NOLINT(concurrency-mt-unsafe)
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            names.emplace_back(name);
        }
    }
    return names;
}

// Removes the tree below an open folder with one descriptor, so that depth is no matter.
void removeBelow(FileDescriptor folder) {
    std::vector<std::vector<std::string>> levels; // the names that are left in each folder on the way
    levels.push_back(namesIn(folder.get()));
    while (true) {
        auto& left = levels.back();
        if (left.empty()) {
            levels.pop_back();
            if (levels.empty()) {
                return;
            }
            folder = FileDescriptor(::openat(folder.get(), "..", kFolderFlags));
            ::unlinkat(folder.get(), levels.back().back().c_str(), AT_REMOVEDIR);
            levels.back().pop_back();
        } else if (::unlinkat(folder.get(), left.back().c_str(), 0) == 0) {
            left.pop_back();
        } else {
            struct stat status = {};
            if (::fstatat(folder.get(), left.back().c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
                S_ISDIR(status.st_mode)) {
                ::fchmodat(folder.get(), left.back().c_str(), S_IRWXU, 0);
            }
            FileDescriptor child(::openat(folder.get(), left.back().c_str(), kFolderFlags));
            if (child) {
                folder = std::move(child);
                levels.push_back(namesIn(folder.get()));
            } else {
                left.pop_back();
            }
        }
    }
}

void writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = ::write(file, bytes.data(), bytes.size());
        require(count >= 0, "write");
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

} // namespace

TemporaryFolder::TemporaryFolder() {
    std::string path = place() + "/quillane-test-XXXXXX";
    require(::mkdtemp(path.data()) != nullptr, path);
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr), &std::free);
    require(resolved != nullptr, path);
    m_path = resolved.get();
    require(::chmod(m_path.c_str(), 0755) == 0, m_path); // for OrdinaryUser
}

TemporaryFolder::~TemporaryFolder() {
    ::chmod(m_path.c_str(), S_IRWXU);
    FileDescriptor folder(::open(m_path.c_str(), kFolderFlags));
    if (folder) {
        removeBelow(std::move(folder));
    }
    ::rmdir(m_path.c_str());
}

FileURL TemporaryFolder::url(std::string_view path) const {
    return path.empty() ? FileURL(m_path) : FileURL(m_path + '/' + std::string(path));
}

void TemporaryFolder::makeParent(const std::string& path) const {
    for (auto slash = path.find('/', m_path.size() + 1); slash != std::string::npos;
         slash = path.find('/', slash + 1)) {
        const std::string parent = path.substr(0, slash);
        require(::mkdir(parent.c_str(), 0755) == 0 || errno == EEXIST, parent);
    }
}

FileURL TemporaryFolder::folder(std::string_view path) const {
    auto made = url(path);
    makeParent(made.path());
    require(::mkdir(made.path().c_str(), 0755) == 0 || errno == EEXIST, made.path());
    return made;
}

FileURL TemporaryFolder::file(std::string_view path, std::string_view bytes) const {
    auto made = url(path);
    makeParent(made.path());
    const FileDescriptor file(::open(made.path().c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
    require(static_cast<bool>(file), made.path());
    writeAll(file.get(), bytes);
    return made;
}

FileURL TemporaryFolder::sparse(std::string_view path, Bytes length) const {
    auto made = file(path);
    require(::truncate(made.path().c_str(), length) == 0, made.path());
    return made;
}

FileURL TemporaryFolder::link(std::string_view path, std::string_view text) const {
    auto made = url(path);
    makeParent(made.path());
    require(::symlink(std::string(text).c_str(), made.path().c_str()) == 0, made.path());
    return made;
}

FileURL TemporaryFolder::hardLink(std::string_view path, std::string_view existing) const {
    auto made = url(path);
    makeParent(made.path());
    require(::link(url(existing).path().c_str(), made.path().c_str()) == 0, made.path());
    return made;
}

FileURL TemporaryFolder::fifo(std::string_view path) const {
    auto made = url(path);
    makeParent(made.path());
    require(::mkfifo(made.path().c_str(), 0644) == 0, made.path());
    return made;
}

void TemporaryFolder::chain(std::string_view path, int levels, std::string_view bytes) const {
    FileDescriptor place(::open(folder(path).path().c_str(), kFolderFlags));
    for (int level = 0; level < levels; ++level) {
        require(::mkdirat(place.get(), "d", 0755) == 0, "chain");
        place = FileDescriptor(::openat(place.get(), "d", kFolderFlags));
        require(static_cast<bool>(place), "chain");
    }
    const FileDescriptor leaf(::openat(place.get(), "leaf", O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
    require(static_cast<bool>(leaf), "chain");
    writeAll(leaf.get(), bytes);
}

void TemporaryFolder::permissions(std::string_view path, mode_t mode) const {
    require(::chmod(url(path).path().c_str(), mode) == 0, path);
}

void TemporaryFolder::modified(std::string_view path, Date date) const {
    const double seconds = std::floor(date.secondsSince1970());
    timespec time = {};
    time.tv_sec = static_cast<time_t>(seconds);
    time.tv_nsec = static_cast<long>((date.secondsSince1970() - seconds) * 1e9);
    const std::array<timespec, 2> times = {time, time};
    require(::utimensat(AT_FDCWD, url(path).path().c_str(), times.data(), AT_SYMLINK_NOFOLLOW) == 0, path);
}

void TemporaryFolder::rename(std::string_view from, std::string_view to) const {
    require(::rename(url(from).path().c_str(), url(to).path().c_str()) == 0, from);
}

void TemporaryFolder::remove(std::string_view path) const {
    const auto gone = url(path);
    if (::unlink(gone.path().c_str()) == 0) {
        return;
    }
    FileDescriptor folder(::open(gone.path().c_str(), kFolderFlags));
    require(static_cast<bool>(folder), path);
    removeBelow(std::move(folder));
    require(::rmdir(gone.path().c_str()) == 0, path);
}

Bytes TemporaryFolder::allocated(std::string_view path) const {
    struct stat status = {};
    require(::lstat(url(path).path().c_str(), &status) == 0, path);
    return Bytes{status.st_blocks} * 512;
}

OrdinaryUser::OrdinaryUser()
    : m_wasRoot(::geteuid() == 0) {
    require(!m_wasRoot || ::seteuid(kNobody) == 0, "seteuid");
}

OrdinaryUser::~OrdinaryUser() {
    require(!m_wasRoot || ::seteuid(0) == 0, "seteuid");
}

} // namespace quillane
