#include "InstanceLock.h"
#include "AtomicFile.h"
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <utility>

namespace quillane {
namespace {

using namespace std::chrono_literals;

constexpr mode_t kMode = 0600;
constexpr int kMostFiles = 8; // somebody who replaces the file all the time is left alone
constexpr std::chrono::milliseconds kBetweenLooks = 10ms;

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
        m_name.clear();
        return false;
    }
    m_name = std::to_string(status.st_dev) + "-" + std::to_string(status.st_ino);
    return true;
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
