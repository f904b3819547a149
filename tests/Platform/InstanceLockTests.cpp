#include "InstanceLock.h"
#include "TemporaryFolder.h"
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace quillane {
namespace {

using namespace std::chrono_literals;
using Holder = InstanceLock::Holder;

struct InstanceLockTest : testing::Test {
    TemporaryFolder folder;
    std::string path = InstanceLock::pathBeside(folder.at("quillane/defaults.plist"));
};

// Another start of the program, which holds the lock until it is killed.
class OtherStart {
  public:
    explicit OtherStart(const std::string& path) {
        int told[2];
        EXPECT_EQ(::pipe(told), 0);
        m_process = ::fork();
        if (m_process == 0) {
            InstanceLock lock(path);
            const char holder = lock.take() == Holder::self ? 'y' : 'n';
            (void)!::write(told[1], &holder, 1);
            for (;;) {
                ::pause();
            }
        }
        char holder = 0;
        EXPECT_EQ(::read(told[0], &holder, 1), 1);
        EXPECT_EQ(holder, 'y');
        ::close(told[0]);
        ::close(told[1]);
    }
    ~OtherStart() { die(); }
    OtherStart(const OtherStart&) = delete;
    OtherStart& operator=(const OtherStart&) = delete;
    void die() {
        if (m_process > 0) {
            ::kill(m_process, SIGKILL);
            ::waitpid(std::exchange(m_process, 0), nullptr, 0);
        }
    }

  private:
    pid_t m_process = 0;
};

TEST_F(InstanceLockTest, TheFirstHasItAndKeepsItHoweverOftenItAsks) {
    InstanceLock lock(path);
    EXPECT_EQ(lock.take(), Holder::self);
    EXPECT_EQ(lock.take(), Holder::self);
}

TEST_F(InstanceLockTest, AnotherProcessFindsThatItIsHeldUntilThatProcessIsKilled) {
    OtherStart other(path);
    InstanceLock lock(path);
    EXPECT_EQ(lock.take(), Holder::other);
    EXPECT_EQ(lock.take(), Holder::other);
    other.die();
    EXPECT_EQ(lock.take(), Holder::self);
}

TEST_F(InstanceLockTest, WhoWaitsHasItOnceTheOtherHasEnded) {
    OtherStart other(path);
    InstanceLock lock(path);
    EXPECT_EQ(lock.takeWithin(1ms), Holder::other);
    std::thread end([&] { other.die(); });
    EXPECT_EQ(lock.takeWithin(1min), Holder::self);
    end.join();
}

TEST_F(InstanceLockTest, AProgramThatIsStartedDoesNotInheritIt) {
    InstanceLock lock(path);
    ASSERT_EQ(lock.take(), Holder::self);
    struct stat held = {};
    ASSERT_EQ(::stat(path.c_str(), &held), 0);
    int found = 0;
    for (int file = 0; file < 256; ++file) {
        struct stat open = {};
        if (::fstat(file, &open) == 0 && open.st_dev == held.st_dev && open.st_ino == held.st_ino) {
            EXPECT_NE(::fcntl(file, F_GETFD) & FD_CLOEXEC, 0);
            ++found;
        }
    }
    EXPECT_EQ(found, 1);
}

TEST_F(InstanceLockTest, TheOthersReadTheNameThatTheHolderHasWrittenByWhateverPath) {
    folder.folder("quillane").link("elsewhere", "quillane");
    InstanceLock lock(path);
    InstanceLock sameFile(InstanceLock::pathBeside(folder.at("elsewhere/defaults.plist")));
    InstanceLock other(InstanceLock::pathBeside(folder.at("other/defaults.plist")));
    EXPECT_EQ(sameFile.readName(), "");
    EXPECT_EQ(lock.take(), Holder::self);
    EXPECT_EQ(sameFile.take(), Holder::other);
    EXPECT_EQ(other.take(), Holder::self);
    EXPECT_EQ(sameFile.readName(), "");
    for (const auto& name : {std::string(32, 'a'), std::string("0123456789abcdef0123456789abcdef")}) {
        EXPECT_TRUE(lock.writeName(name));
        EXPECT_EQ(sameFile.readName(), name);
        EXPECT_EQ(other.readName(), "");
    }
}

TEST_F(InstanceLockTest, TheFileIsNobodyElsesToRead) {
    folder.file("quillane/defaults.plist.instance", "older and longer than any name would ever be");
    ASSERT_EQ(::chmod(path.c_str(), 0666), 0);
    InstanceLock lock(path);
    ASSERT_EQ(lock.take(), Holder::self);
    ASSERT_TRUE(lock.writeName(std::string(32, 'a')));
    struct stat status = {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
    EXPECT_EQ(lock.readName(), std::string(32, 'a'));
}

TEST_F(InstanceLockTest, WhatIsNoNameIsNeitherReadNorWritten) {
    InstanceLock lock(path);
    ASSERT_EQ(lock.take(), Holder::self);
    for (const auto& text : {std::string(), std::string(31, 'a'), std::string(32, 'A'), std::string(32, 'g'),
                             std::string(32, '\0'), std::string(31, 'a') + "\n"}) {
        EXPECT_FALSE(lock.writeName(text)) << text;
        folder.file("quillane/defaults.plist.instance", text);
        EXPECT_EQ(lock.readName(), "") << text;
    }
    EXPECT_FALSE(lock.writeName(std::string(33, 'a')));
}

TEST_F(InstanceLockTest, ALockOfAFileThatWasTakenAwayIsNotTakenForTheFilesOwn) {
    InstanceLock first(path);
    ASSERT_EQ(first.take(), Holder::self);
    folder.remove("quillane/defaults.plist.instance");
    InstanceLock second(path);
    EXPECT_EQ(second.take(), Holder::self); // the file is a new one; the name on the bus is left to tell
}

TEST_F(InstanceLockTest, WhereNoFileCanBeMadeItCannotBeTold) {
    folder.file("quillane");
    InstanceLock below(path); // a file in the place of the folder
    EXPECT_EQ(below.take(), Holder::unknown);
    EXPECT_EQ(below.readName(), "");
    EXPECT_FALSE(below.writeName(std::string(32, 'a')));
    folder.fifo("pipe/defaults.plist.instance").folder("folder/defaults.plist.instance");
    folder.file("there", std::string(32, 'a'))
        .folder("link")
        .link("link/defaults.plist.instance", folder.at("there"));
    for (const char* place : {"pipe", "folder", "link"}) {
        InstanceLock lock(folder.at(std::string(place) + "/defaults.plist.instance"));
        EXPECT_EQ(lock.take(), Holder::unknown) << place;
        EXPECT_EQ(lock.readName(), "") << place;
    }
}

} // namespace
} // namespace quillane
