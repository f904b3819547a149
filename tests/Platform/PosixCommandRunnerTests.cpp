#include "PosixCommandRunner.h"
#include "TemporaryFolder.h"
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace quillane {
namespace {

const std::string kShell = "/bin/sh"; // as a program that can be told what to do

std::string outputOf(const std::string& script, const std::vector<std::string>& arguments = {}) {
    std::vector<std::string> all = {"-c", script, "sh"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return PosixCommandRunner().run(kShell, all).valueOr("could not be started");
}

int errorCodeOf(const std::string& path, const std::vector<std::string>& arguments = {}) {
    const auto output = PosixCommandRunner().run(path, arguments);
    return output.ok() ? 0 : output.error().code;
}

// Under ThreadSanitizer those that run don't count: it keeps a program of its own that tells it names.
bool hasNoChild() {
#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
    siginfo_t exited{};
    return ::waitid(P_ALL, 0, &exited, WEXITED | WNOHANG | WNOWAIT) != 0 || exited.si_pid == 0;
#endif
#endif
    errno = 0;
    return ::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD;
}

// The number that the next descriptor of this process would get.
int lowestFreeDescriptor() {
    const int number = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ::close(number);
    return number;
}

TEST(PosixCommandRunner, AnOutputFarLargerThanAPipeIsReadWhole) {
    const auto output = outputOf("head -c 20000000 /dev/zero; printf end");
    EXPECT_EQ(output.size(), 20000003U);
    EXPECT_TRUE(output.ends_with("end"));
}

TEST(PosixCommandRunner, BothOutputsComeInTheOrderInWhichTheyAreWritten) {
    const auto output =
        PosixCommandRunner().run(kShell, {"-c", "echo a; echo b >&2; echo c; echo d >&2"}, {},
                                 CommandRunner::kUnbounded, CommandRunner::ErrorOutput::joined);
    EXPECT_EQ(output.ok() ? *output : "could not be started", "a\nb\nc\nd\n");
}

TEST(PosixCommandRunner, TheUserIsTheOneAsWhomProgramsRun) {
    EXPECT_EQ(PosixCommandRunner().run("/usr/bin/id", {"-u"}).valueOr("could not be started"),
              std::to_string(PosixCommandRunner().userID()) + "\n");
}

TEST(PosixCommandRunner, AProgramThatClosesItsOutputAndLivesOnIsWaitedFor) {
    TemporaryFolder folder;
    EXPECT_EQ(
        outputOf("printf said; exec 1>&-; head -c 30000000 /dev/zero | wc -c > \"$1\"", {folder.at("done")}),
        "said");
    EXPECT_TRUE(hasNoChild());
    EXPECT_TRUE(std::filesystem::exists(folder.at("done")));
}

TEST(PosixCommandRunner, AProgramThatEndsBySignalGivesWhatItWroteBefore) {
    EXPECT_EQ(outputOf("printf before; kill -KILL $$"), "before");
    EXPECT_TRUE(hasNoChild());
}

TEST(PosixCommandRunner, AFileThatIsNotExecutableIsAFailure) {
    TemporaryFolder folder;
    folder.file("plain", "#!/bin/sh\necho ran\n");
    EXPECT_EQ(errorCodeOf(folder.at("plain")), ErrorCode::kReadNoPermission);
    EXPECT_TRUE(hasNoChild());
}

TEST(PosixCommandRunner, AFolderIsAFailure) {
    TemporaryFolder folder;
    EXPECT_EQ(errorCodeOf(folder.path()), ErrorCode::kReadNoPermission);
}

TEST(PosixCommandRunner, AScriptWithoutAnInterpreterLineIsNotHandedToAShell) {
    TemporaryFolder folder;
    folder.file("script", "echo ran\n");
    ::chmod(folder.at("script").c_str(), 0755);
    EXPECT_EQ(errorCodeOf(folder.at("script")), ErrorCode::kReadUnknown);
}

TEST(PosixCommandRunner, ABareNameIsNotSearchedFor) {
    EXPECT_EQ(errorCodeOf("echo", {"x"}), ErrorCode::kReadNoSuchFile);
}

TEST(PosixCommandRunner, ANulInThePathOrAnArgumentIsAFailureAndCutsNothingOff) {
    const std::string hidden("x\0y", 3);
    EXPECT_EQ(errorCodeOf("/bin/echo", {hidden}), ErrorCode::kReadInvalidName);
    EXPECT_EQ(errorCodeOf(std::string("/bin/echo\0/x", 12)), ErrorCode::kReadInvalidName);
}

TEST(PosixCommandRunner, AnArgumentThatIsTooLongIsAFailure) {
    EXPECT_EQ(errorCodeOf("/bin/echo", {std::string(8 * 1024 * 1024, 'x')}), ErrorCode::kReadUnknown);
}

TEST(PosixCommandRunner, TheChildHoldsNoDescriptorOfOurs) {
    const int inheritable = ::open("/dev/null", O_RDONLY); // some library's, without close-on-exec
    const int high = ::fcntl(inheritable, F_DUPFD, 60);
    EXPECT_EQ(outputOf("exec ls /dev/fd"), "0\n1\n2\n3\n"); // 3 is the listing itself
    ::close(high);
    ::close(inheritable);
}

TEST(PosixCommandRunner, NoDescriptorIsLeftOpenHere) {
    PosixCommandRunner runner;
    const int before = lowestFreeDescriptor();
    for (int i = 0; i < 20; ++i) {
        EXPECT_TRUE(runner.run("/usr/bin/true", {}).ok());
        EXPECT_FALSE(runner.run("/no such program", {}).ok());
    }
    EXPECT_EQ(lowestFreeDescriptor(), before);
}

TEST(PosixCommandRunner, ABlockedSignalIsNotBlockedInTheChild) {
    sigset_t term;
    sigset_t previous;
    sigemptyset(&term); // macros on some systems
    sigaddset(&term, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &term, &previous);
    EXPECT_EQ(outputOf("kill -TERM $$; echo lived"), "");
    ::pthread_sigmask(SIG_SETMASK, &previous, nullptr);
}

TEST(PosixCommandRunner, AnIgnoredSignalIsNotIgnoredInTheChild) {
    const auto previous = ::signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(outputOf("kill -PIPE $$; echo lived"), "");
    ::signal(SIGPIPE, previous);
}

std::atomic<int> signalsSeen = 0;

TEST(PosixCommandRunner, SignalsDuringTheReadAndTheWaitCutNothingOff) {
    struct sigaction counting{};
    struct sigaction previous{};
    counting.sa_handler = [](int) { ++signalsSeen; }; // without SA_RESTART: calls return EINTR
    ::sigaction(SIGUSR1, &counting, &previous);
    TemporaryFolder folder;
    folder.fifo("during read").fifo("during wait");

    std::string output;
    std::thread reader([&] {
        output = outputOf("printf a; read x < \"$1\"; printf b; exec 1>&-; read x < \"$2\"; : > \"$3\"",
                          {folder.at("during read"), folder.at("during wait"), folder.at("done")});
    });
    for (const auto* const name : {"during read", "during wait"}) {
        std::ofstream line(folder.at(name)); // opens when the program is there
        for (int i = 0; i < 20; ++i) {
            const int before = signalsSeen;
            ::pthread_kill(reader.native_handle(), SIGUSR1);
            while (signalsSeen == before) {
                std::this_thread::yield();
            }
        }
        line << "go\n";
    }
    reader.join();
    EXPECT_EQ(output, "ab");
    EXPECT_TRUE(std::filesystem::exists(folder.at("done")));
    EXPECT_TRUE(hasNoChild());
    ::sigaction(SIGUSR1, &previous, nullptr);
}

// Programs that live for ever unless they are ended. A script tells that it has begun by opening the FIFO $1; what
// it reads from the FIFO $2 never comes.
class PosixCommandRunnerStopTest : public testing::Test {
  protected:
    TemporaryFolder m_folder;
    int m_before = 0;

    void SetUp() override {
        m_folder.fifo("begun").fifo("never").fifo("held");
        m_before = lowestFreeDescriptor();
    }
    void TearDown() override {
        EXPECT_TRUE(hasNoChild());
        EXPECT_EQ(lowestFreeDescriptor(), m_before);
    }

    // Of a run that is asked to stop as soon as the script has begun.
    int failureOfStopped(const std::string& script) {
        const StopSource source;
        std::thread stopper([&] {
            const std::ifstream begun(m_folder.at("begun"));
            source.requestStop();
        });
        const auto output = PosixCommandRunner().run(
            kShell, {"-c", script, "sh", m_folder.at("begun"), m_folder.at("never"), m_folder.at("held")},
            source.token());
        stopper.join();
        return output ? 0 : output.error().code;
    }
};

TEST_F(PosixCommandRunnerStopTest, AProgramThatWritesNothingMoreIsEnded) {
    EXPECT_EQ(failureOfStopped(R"(printf said; : > "$1"; exec cat "$2")"), ErrorCode::kUserCancelled);
}

TEST_F(PosixCommandRunnerStopTest, AProgramThatNeverStopsWritingIsEnded) {
    EXPECT_EQ(failureOfStopped(R"(: > "$1"; while :; do echo line; done)"), ErrorCode::kUserCancelled);
}

TEST_F(PosixCommandRunnerStopTest, AProgramThatHasClosedItsOutputIsEnded) {
    EXPECT_EQ(failureOfStopped(R"(exec 1>&-; : > "$1"; read line < "$2")"), ErrorCode::kUserCancelled);
}

TEST_F(PosixCommandRunnerStopTest, AProgramThatIgnoresTheRequestIsEndedAllTheSame) {
    EXPECT_EQ(failureOfStopped(R"(trap '' TERM; : > "$1"; exec cat "$2")"), ErrorCode::kUserCancelled);
}

TEST_F(PosixCommandRunnerStopTest, AProgramMayTidyUpBeforeItEnds) {
    EXPECT_EQ(failureOfStopped(R"(trap ': > "$2.tidied"; exit' TERM; : > "$1"; cat "$2" & wait)"),
              ErrorCode::kUserCancelled);
    EXPECT_TRUE(std::filesystem::exists(m_folder.at("never.tidied")));
}

TEST_F(PosixCommandRunnerStopTest, WhatTheProgramStartedIsEndedToo) {
    const int reading = ::open(m_folder.at("held").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_EQ(failureOfStopped(R"((trap '' TERM; exec 4>"$3"; : > "$1"; exec cat "$2") & exec cat "$2")"),
              ErrorCode::kUserCancelled);
    ::fcntl(reading, F_SETFL, 0);
    char byte = 0;
    EXPECT_EQ(::read(reading, &byte, 1), 0); // returns when nobody holds the writing end any more
    ::close(reading);
}

// Where exits are ignored the system takes them, and the number of the group may be another's at any time.
TEST_F(PosixCommandRunnerStopTest, NoSignalGoesToAGroupWhoseLeaderHasBeenTaken) {
    const auto previous = ::signal(SIGCHLD, SIG_IGN);
    const int reading = ::open(m_folder.at("held").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_EQ(failureOfStopped(R"((exec 4>"$3"; while kill -0 $$; do :; done; : > "$1"
                                   read line < "$2"; : > "$2.lived") & exit)"),
              ErrorCode::kUserCancelled);
    const int go = ::open(m_folder.at("never").c_str(), O_RDWR | O_CLOEXEC);
    EXPECT_EQ(::write(go, "go\n", 3), 3);
    ::fcntl(reading, F_SETFL, 0);
    char byte = 0;
    EXPECT_EQ(::read(reading, &byte, 1), 0); // when the rest of the group has ended
    EXPECT_TRUE(std::filesystem::exists(m_folder.at("never.lived")));
    ::close(go);
    ::close(reading);
    ::signal(SIGCHLD, previous);
}

TEST_F(PosixCommandRunnerStopTest, AnOutputBeyondItsBoundEndsTheProgram) {
    const auto output = PosixCommandRunner().run(kShell, {"-c", "while :; do echo line; done"}, {}, 100'000);
    EXPECT_EQ(output ? 0 : output.error().code, ErrorCode::kReadTooLarge);
}

TEST_F(PosixCommandRunnerStopTest, AProgramThatOnlyEverWaitsEndsWhenItHasWrittenTooMuch) {
    const auto output = PosixCommandRunner().run(
        kShell, {"-c", "printf 'too much'; exec cat \"$1\"", "sh", m_folder.at("never")}, {}, 7);
    EXPECT_EQ(output ? 0 : output.error().code, ErrorCode::kReadTooLarge);
}

TEST(PosixCommandRunnerDeathTest, AProcessWithoutStandardDescriptorsCanRunPrograms) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto runClosed = [](const std::vector<int>& closed) {
        for (const int number : closed) {
            ::close(number);
        }
        const std::vector<std::string> arguments = {"-c", "cat; echo out; echo error >&2"};
        PosixCommandRunner runner;
        const auto output = runner.run(kShell, arguments);
        const auto joined =
            runner.run(kShell, arguments, {}, CommandRunner::kUnbounded, CommandRunner::ErrorOutput::joined);
        const bool isRight = output.ok() && *output == "out\n" && joined.ok() && *joined == "out\nerror\n";
        std::_Exit(isRight ? 0 : 1);
    };
    EXPECT_EXIT(runClosed({0, 1, 2}), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(runClosed({1}), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(runClosed({0, 2}), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace quillane
