#include "MacInstance.h"
#include "StandIns.h"
#include <csignal>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace quillane {
namespace {

const std::string kIdentifier = "org.example.OfTheBundle";
constexpr unsigned long kAllWindowsIgnoringOthers = 1 | 2;

// Lives until it is ended, or with the test.
class Process {
  public:
    Process()
        : m_number(::fork()) {
        while (m_number == 0) {
            ::pause();
        }
    }
    ~Process() { end(); }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    int number() const { return m_number; }
    void end() {
        if (!std::exchange(m_hasEnded, true)) {
            ::kill(m_number, SIGKILL);
            ::waitpid(m_number, nullptr, 0);
        }
    }

  private:
    int m_number;
    bool m_hasEnded = false;
};

class MacInstanceTest : public testing::Test {
  protected:
    MacInstanceTest() {
        StandIn::begin();
        StandIn::setBundle({.identifier = kIdentifier});
    }
};

TEST_F(MacInstanceTest, WhoeverRunsAloneGoesOn) {
    StandIn::setRunning(kIdentifier, {::getpid(), -1});
    EXPECT_FALSE(MacInstance::bringOtherForward(false));
    EXPECT_FALSE(MacInstance::bringOtherForward(true));
    EXPECT_TRUE(StandIn::activations().empty());
}

TEST_F(MacInstanceTest, AnotherOneOfTheBundlesIdentifierComesForward) {
    const Process other;
    StandIn::setRunning(kIdentifier, {::getpid(), other.number()});
    EXPECT_TRUE(MacInstance::bringOtherForward(false));
    EXPECT_EQ(StandIn::activations(),
              (std::vector<StandIn::Activation>{{other.number(), kAllWindowsIgnoringOthers}}));
}

TEST_F(MacInstanceTest, TheOtherOneIsOpenedAsTheFinderDoesAndThatIsWaitedFor) {
    const Process other;
    StandIn::setRunning(kIdentifier, {::getpid(), other.number()});
    EXPECT_TRUE(MacInstance::bringOtherForward(false));
    EXPECT_EQ(StandIn::openedBundles(), std::vector<std::string>{"file:///Applications/Other%20%C3%A9.app"});
    EXPECT_EQ(StandIn::toldOpenings(), 1);
}

TEST_F(MacInstanceTest, ABareExecutableIsActivatedAlone) {
    const Process other;
    StandIn::setRunning(kIdentifier, {::getpid(), other.number()});
    StandIn::setRunningBundle("");
    EXPECT_TRUE(MacInstance::bringOtherForward(false));
    EXPECT_EQ(StandIn::activations().size(), 1U);
    EXPECT_TRUE(StandIn::openedBundles().empty());
}

TEST_F(MacInstanceTest, OfTwoThatStartAtOnceTheOneThatWasLaunchedEarlierGoesOn) {
    const Process other;
    StandIn::setRunning(kIdentifier, {::getpid(), other.number()});
    StandIn::setLaunch(::getpid(), 100);
    StandIn::setLaunch(other.number(), 100.5);
    EXPECT_FALSE(MacInstance::bringOtherForward(false));
    EXPECT_TRUE(StandIn::activations().empty());
    StandIn::setLaunch(::getpid(), 101);
    EXPECT_TRUE(MacInstance::bringOtherForward(false));
    StandIn::setLaunch(::getpid(), 100);
    StandIn::setLaunch(other.number(), 1e12); // the clock was put back
    EXPECT_TRUE(MacInstance::bringOtherForward(false));
}

TEST_F(MacInstanceTest, ABareExecutableLooksForTheProgramsOwnIdentifier) {
    StandIn::setBundle({.path = "/usr/local/bin", .identifier = ""});
    const Process other;
    StandIn::setRunning("org.quillane.Quillane", {other.number()});
    EXPECT_TRUE(MacInstance::bringOtherForward(false));
    EXPECT_EQ(StandIn::activations().size(), 1U);
}

TEST_F(MacInstanceTest, WhoHasEndedIsNotAskedEvenIfTheSystemStillTellsOfIt) {
    Process other;
    other.end();
    StandIn::setRunning(kIdentifier, {other.number()});
    EXPECT_FALSE(MacInstance::bringOtherForward(false));
    EXPECT_FALSE(MacInstance::bringOtherForward(true));
    EXPECT_TRUE(StandIn::activations().empty());
}

} // namespace
} // namespace quillane
