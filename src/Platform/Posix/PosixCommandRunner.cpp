#include "PosixCommandRunner.h"
#include "Descriptor.h"
#include "Environment.h"
#include "PosixError.h"
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

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
    ChildDescriptors(int output, CommandRunner::ErrorOutput errors) {
        ::posix_spawn_file_actions_init(&m_actions);
        keep(::posix_spawn_file_actions_adddup2(&m_actions, output, STDOUT_FILENO));
        keep(::posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0));
        if (errors == CommandRunner::ErrorOutput::joined) {
            keep(::posix_spawn_file_actions_adddup2(&m_actions, STDOUT_FILENO, STDERR_FILENO));
        } else {
            keep(::posix_spawn_file_actions_addopen(&m_actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0));
        }
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

// A group of its own, which can be ended without ending anything else. Blocked and ignored signals survive an exec. A
// program that we start must die of SIGPIPE and answer SIGTERM whatever this process has set for itself.
class ChildAttributes {
  public:
    ChildAttributes() {
        ::posix_spawnattr_init(&m_attributes);
        sigset_t none; // what fills a set is a macro on some systems
        sigemptyset(&none);
        ::posix_spawnattr_setsigmask(&m_attributes, &none);
        sigset_t all;
        sigfillset(&all);
        sigdelset(&all, SIGKILL);
        sigdelset(&all, SIGSTOP);
        ::posix_spawnattr_setsigdefault(&m_attributes, &all);
        ::posix_spawnattr_setpgroup(&m_attributes, 0);
        int flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP;
#ifdef POSIX_SPAWN_CLOEXEC_DEFAULT
        flags |= POSIX_SPAWN_CLOEXEC_DEFAULT;
#endif
        ::posix_spawnattr_setflags(&m_attributes, static_cast<short>(flags));
    }
    ~ChildAttributes() { ::posix_spawnattr_destroy(&m_attributes); }
    ChildAttributes(const ChildAttributes&) = delete;
    ChildAttributes& operator=(const ChildAttributes&) = delete;

    const posix_spawnattr_t* get() const { return &m_attributes; }

  private:
    posix_spawnattr_t m_attributes{};
};

bool holdsNul(const std::string& text) {
    return text.find('\0') != std::string::npos;
}

// The child's process id, or the errno.
Result<pid_t> spawn(const std::string& path, const std::vector<std::string>& arguments, int output,
                    CommandRunner::ErrorOutput errors) {
    std::vector<char*> vector;
    vector.reserve(arguments.size() + 2);
    vector.push_back(
        const_cast<char*>(path.c_str())); // the interface is older than const; nothing is written
    for (const auto& argument : arguments) {
        vector.push_back(const_cast<char*>(argument.c_str()));
    }
    vector.push_back(nullptr);

    const ChildDescriptors descriptors(output, errors);
    if (descriptors.failure() != 0) {
        return PosixError::reading(descriptors.failure());
    }
    const ChildAttributes attributes;
    pid_t child = 0;
    const int failure = ::posix_spawn(&child, path.c_str(), descriptors.get(), attributes.get(),
                                      vector.data(), Environment::ofThisProcess());
    if (failure != 0) {
        return PosixError::reading(failure);
    }
    return child;
}

// A program that has begun, the first of a process group of its own.
class Child {
  public:
    explicit Child(pid_t id)
        : m_id(id) {}

    void waitForExit(const StopToken& stop) const {
        if (stop.stopPossible()) {
            waitUntil([&] { return stop.stopRequested(); });
            if (state() == State::runs) {
                end();
                return;
            }
        }
        reap();
    }

    // Asks it and all that it has started to end, and then leaves them no choice. Until its exit is taken the
    // number of the group can't be another's.
    void end() const {
        signalGroup(SIGTERM);
        const auto latest = std::chrono::steady_clock::now() + kTimeToEnd;
        waitUntil([&] { return std::chrono::steady_clock::now() >= latest; });
        signalGroup(SIGKILL);
        reap();
    }

  private:
    static constexpr auto kTimeToEnd = std::chrono::seconds(1);
    static constexpr auto kShortestPause = std::chrono::microseconds(100);
    static constexpr auto kLongestPause = std::chrono::milliseconds(20);

    // Most programs exit right after their output has ended, so the pauses begin short.
    template <class GivesUp>
    void waitUntil(GivesUp givesUp) const {
        auto pause = std::chrono::microseconds(kShortestPause);
        while (state() == State::runs && !givesUp()) {
            std::this_thread::sleep_for(pause);
            pause = std::min<std::chrono::microseconds>(pause * 2, kLongestPause);
        }
    }

    // `taken` where our own parent had us ignore such exits: the system has taken it already.
    enum class State { runs, exited, taken };

    // Leaves the exit to be taken.
    State state() const {
        siginfo_t info{};
        const int found = ::waitid(P_PID, static_cast<id_t>(m_id), &info, WEXITED | WNOHANG | WNOWAIT);
        if (found != 0) {
            return errno == ECHILD ? State::taken : State::runs;
        }
        // Whether all fields are told where the exit is left is not the same everywhere.
        return info.si_pid == m_id || info.si_signo == SIGCHLD ? State::exited : State::runs;
    }

    // Nobody where the number of the group may be another's by now.
    void signalGroup(int signal) const {
        if (state() != State::taken) {
            ::killpg(m_id, signal);
        }
    }

    void reap() const {
        int status = 0;
        while (::waitpid(m_id, &status, 0) < 0 && errno == EINTR) {
        }
    }

    pid_t m_id;
};

// What a program writes, up to its end, to one byte beyond a bound, or to a request to stop.
class Output {
  public:
    Output(const StopToken& stop, std::size_t mostBytes)
        : m_stop(stop)
        , m_mostBytes(mostBytes) {}

    // A read error ends the output as its end does: what came so far is the answer. False when there may be more
    // than was read.
    bool readToEnd(int descriptor) {
        std::array<char, std::size_t{64} << 10U> buffer; // as much as a pipe holds
        while (m_bytes.size() <= m_mostBytes && waitForBytes(descriptor)) {
            const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
            if (count > 0) {
                m_bytes.append(buffer.data(), static_cast<std::size_t>(count));
            } else if (count == 0 || errno != EINTR) {
                return true;
            }
        }
        return false;
    }

    std::string take() { return std::move(m_bytes); }

  private:
    static constexpr int kMillisecondsBetweenLooks = 20;

    // False when nobody wants them any more. A read that nobody can stop needs no looks at the token.
    bool waitForBytes(int descriptor) const {
        if (!m_stop.stopPossible()) {
            return true;
        }
        pollfd waited{descriptor, POLLIN, 0};
        while (!m_stop.stopRequested()) {
            if (::poll(&waited, 1, kMillisecondsBetweenLooks) > 0) {
                return true;
            }
        }
        return false;
    }

    const StopToken& m_stop;
    std::size_t m_mostBytes;
    std::string m_bytes;
};

} // namespace

std::uint32_t PosixCommandRunner::userID() const {
    return ::getuid();
}

Result<std::string> PosixCommandRunner::outputOf(const Run& run) {
    if (holdsNul(run.path) || std::ranges::any_of(run.arguments, holdsNul)) {
        return PlatformError{ErrorCode::kReadInvalidName,
                             EINVAL}; // the program would see a shorter text than was asked for
    }
    std::array<int, 2> ends{};
    if (const int failure = openPipe(ends); failure != 0) {
        return PosixError::reading(failure);
    }
    const Descriptor reading(ends[0]);
    Descriptor writing(ends[1]);
    const auto started = spawn(run.path, run.arguments, writing.get(), run.errors);
    writing.reset(); // or the output would never end
    if (!started) {
        return started.error();
    }
    const Child child(*started);
    Output output(run.stop, run.mostBytes);
    if (output.readToEnd(reading.get())) {
        child.waitForExit(run.stop);
    } else {
        child.end();
    }
    return output.take();
}

} // namespace quillane
