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
