#include "InstanceLock.h"
#include "AtomicFile.h"
#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace quillane {
namespace {

using namespace std::chrono_literals;

constexpr mode_t kMode = 0600;
constexpr int kMostFiles = 8; // somebody who replaces the file all the time is left alone
constexpr std::chrono::milliseconds kBetweenLooks = 10ms;

bool isName(const std::string& text) {
    return text.size() == InstanceLock::kLengthOfName &&
           text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

// A file of bytes, and of this user.
bool isOwnFile(int file) {
    struct stat status = {};
    return file >= 0 && ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_uid == ::geteuid();
}

// 0, or the error.
int lock(int file) {
    while (::flock(file, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

} // namespace

InstanceLock::InstanceLock(std::string path)
    : m_path(std::move(path)) {}

std::string InstanceLock::pathBeside(const std::string& settings) {
    return settings + ".instance";
}

bool InstanceLock::open() {
    AtomicFile::makeFoldersAbove(m_path);
    m_file =
        Descriptor(::open(m_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, kMode));
    struct stat status = {};
    if (!m_file || ::fstat(m_file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        m_file.reset();
        return false;
    }
    return true;
}

// Over what stands there, which takes no room on a disk that is full.
bool InstanceLock::writeName(const std::string& name) {
    const Descriptor reached(
        m_isHeld ? -1 : ::open(m_path.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    const int file = m_isHeld ? m_file.get() : reached.get();
    return isName(name) && isOwnFile(file) && ::fchmod(file, kMode) == 0 &&
           ::pwrite(file, name.data(), name.size(), 0) == static_cast<ssize_t>(name.size());
}

std::string InstanceLock::readName() const {
    const Descriptor file(::open(m_path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    std::string name(kLengthOfName, '\0');
    const auto length = file && isOwnFile(file.get()) ? ::pread(file.get(), name.data(), name.size(), 0) : -1;
    name.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    return isName(name) ? name : std::string();
}

bool InstanceLock::isInPlace() const {
    struct stat held = {};
    struct stat there = {};
    return ::fstat(m_file.get(), &held) == 0 && ::lstat(m_path.c_str(), &there) == 0 &&
           held.st_dev == there.st_dev && held.st_ino == there.st_ino;
}

InstanceLock::Holder InstanceLock::take() {
    if (m_isHeld) {
        return Holder::self;
    }
    for (int file = 0; file < kMostFiles; ++file) {
        if (!open()) {
            return Holder::unknown;
        }
        const int error = lock(m_file.get());
        if (error != 0) {
            m_file.reset();
            return error == EWOULDBLOCK ? Holder::other : Holder::unknown;
        }
        // Replaced since it was opened: the lock is worth nothing.
        if (isInPlace()) {
            m_isHeld = true;
            return Holder::self;
        }
    }
    m_file.reset();
    return Holder::unknown;
}

InstanceLock::Holder InstanceLock::takeWithin(std::chrono::milliseconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    auto holder = take();
    while (holder == Holder::other && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(kBetweenLooks); // there is no lock that is waited for with an end
        holder = take();
    }
    return holder;
}

} // namespace quillane
