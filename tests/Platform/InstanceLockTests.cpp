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

TEST_F(InstanceLockTest, OneFileHasOneNameByWhateverPathAndAnotherFileHasAnother) {
    folder.folder("quillane").link("elsewhere", "quillane");
    InstanceLock lock(path);
    InstanceLock sameFile(InstanceLock::pathBeside(folder.at("elsewhere/defaults.plist")));
    InstanceLock other(InstanceLock::pathBeside(folder.at("other/defaults.plist")));
    EXPECT_EQ(lock.name(), "");
    EXPECT_EQ(lock.take(), Holder::self);
    EXPECT_EQ(sameFile.take(), Holder::other);
    EXPECT_EQ(other.take(), Holder::self);
    EXPECT_EQ(lock.name(), sameFile.name());
    EXPECT_NE(lock.name(), other.name());
    EXPECT_FALSE(lock.name().empty());
}

TEST_F(InstanceLockTest, ALockOfAFileThatWasTakenAwayIsNotTakenForTheFilesOwn) {
    InstanceLock first(path);
    ASSERT_EQ(first.take(), Holder::self);
    folder.remove("quillane/defaults.plist.instance");
    InstanceLock second(path);
    EXPECT_EQ(second.take(), Holder::self); // the file is a new one; the name on the bus is left to tell
    EXPECT_NE(first.name(), second.name());
}

TEST_F(InstanceLockTest, WhereNoFileCanBeMadeItCannotBeTold) {
    folder.file("quillane");
    InstanceLock below(path); // a file in the place of the folder
    EXPECT_EQ(below.take(), Holder::unknown);
    EXPECT_EQ(below.name(), "");
    folder.fifo("pipe/defaults.plist.instance").folder("folder/defaults.plist.instance");
    folder.file("there").folder("link").link("link/defaults.plist.instance", folder.at("there"));
    for (const char* place : {"pipe", "folder", "link"}) {
        InstanceLock lock(folder.at(std::string(place) + "/defaults.plist.instance"));
        EXPECT_EQ(lock.take(), Holder::unknown) << place;
    }
}

} // namespace
} // namespace quillane
