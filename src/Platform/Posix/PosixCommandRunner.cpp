#include "PosixCommandRunner.h"
#include "Descriptor.h"
#include "PosixError.h"
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ; // not declared by every system's <unistd.h>

namespace quillane {
namespace {

// Both ends are closed by every exec: a program that another thread starts at this moment must not hold the
// writing end, or the output would not end with the program that it belongs to.
int openPipe(std::array<int, 2>& ends) {
#ifdef POSIX_SPAWN_CLOEXEC_DEFAULT
    if (::pipe(ends.data()) != 0) {
        return errno;
    }
    for (const int end : ends) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC); // the flag closes the gap before this for every spawn of ours
    }
    return 0;
#else
    return ::pipe2(ends.data(), O_CLOEXEC) == 0 ? 0 : errno;
#endif
}

// The standard descriptors of the child. The order matters: the writing end may itself be 0 or 2.
class ChildDescriptors {
  public:
    explicit ChildDescriptors(int output) {
        ::posix_spawn_file_actions_init(&m_actions);
        keep(::posix_spawn_file_actions_adddup2(&m_actions, output, STDOUT_FILENO));
        keep(::posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0));
        keep(::posix_spawn_file_actions_addopen(&m_actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0));
#ifndef POSIX_SPAWN_CLOEXEC_DEFAULT
        keep(::posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1));
#endif
    }
    ~ChildDescriptors() { ::posix_spawn_file_actions_destroy(&m_actions); }
    ChildDescriptors(const ChildDescriptors&) = delete;
    ChildDescriptors& operator=(const ChildDescriptors&) = delete;

    const posix_spawn_file_actions_t* get() const { return &m_actions; }
    // The errno of the first step that could not be noted, or 0.
    int failure() const { return m_failure; }

  private:
    void keep(int result) { m_failure = m_failure == 0 ? result : m_failure; }

    posix_spawn_file_actions_t m_actions{};
    int m_failure = 0;
};

// Blocked and ignored signals survive an exec. A program that we start must die of SIGPIPE and answer SIGTERM
// whatever this process has set for itself.
class ChildSignals {
  public:
    ChildSignals() {
        ::posix_spawnattr_init(&m_attributes);
        sigset_t none;
        ::sigemptyset(&none);
        ::posix_spawnattr_setsigmask(&m_attributes, &none);
        sigset_t all;
        ::sigfillset(&all);
        ::sigdelset(&all, SIGKILL);
        ::sigdelset(&all, SIGSTOP);
        ::posix_spawnattr_setsigdefault(&m_attributes, &all);
        int flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
#ifdef POSIX_SPAWN_CLOEXEC_DEFAULT
        flags |= POSIX_SPAWN_CLOEXEC_DEFAULT;
#endif
        ::posix_spawnattr_setflags(&m_attributes, static_cast<short>(flags));
    }
    ~ChildSignals() { ::posix_spawnattr_destroy(&m_attributes); }
    ChildSignals(const ChildSignals&) = delete;
    ChildSignals& operator=(const ChildSignals&) = delete;

    const posix_spawnattr_t* get() const { return &m_attributes; }

  private:
    posix_spawnattr_t m_attributes{};
};

bool holdsNul(const std::string& text) {
    return text.find('\0') != std::string::npos;
}

// The child's process id, or the errno.
Result<pid_t> spawn(const std::string& path, const std::vector<std::string>& arguments, int output) {
    std::vector<char*> vector;
    vector.reserve(arguments.size() + 2);
    vector.push_back(
        const_cast<char*>(path.c_str())); // the interface is older than const; nothing is written
    for (const auto& argument : arguments) {
        vector.push_back(const_cast<char*>(argument.c_str()));
    }
    vector.push_back(nullptr);

    const ChildDescriptors descriptors(output);
    if (descriptors.failure() != 0) {
        return PosixError::reading(descriptors.failure());
    }
    const ChildSignals signals;
    pid_t child = 0;
    const int failure =
        ::posix_spawn(&child, path.c_str(), descriptors.get(), signals.get(), vector.data(), environ);
    if (failure != 0) {
        return PosixError::reading(failure);
    }
    return child;
}

// A read error ends the output as its end does: what came so far is the answer.
std::string readToEnd(int descriptor) {
    std::string output;
    std::array<char, std::size_t{64} << 10U> buffer; // as much as a pipe holds
    while (true) {
        const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
        if (count > 0) {
            output.append(buffer.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            return output;
        }
    }
}

void waitForExit(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
}

} // namespace

Result<std::string> PosixCommandRunner::run(const std::string& path,
                                            const std::vector<std::string>& arguments) {
    if (holdsNul(path) || std::ranges::any_of(arguments, holdsNul)) {
        return PlatformError{ErrorCode::kReadInvalidName,
                             EINVAL}; // the program would see a shorter text than was asked for
    }
    std::array<int, 2> ends{};
    if (const int failure = openPipe(ends); failure != 0) {
        return PosixError::reading(failure);
    }
    const Descriptor reading(ends[0]);
    Descriptor writing(ends[1]);
    const auto child = spawn(path, arguments, writing.get());
    writing.reset(); // or the output would never end
    if (!child) {
        return child.error();
    }
    std::string output = readToEnd(reading.get());
    waitForExit(*child);
    return output;
}

} // namespace quillane
