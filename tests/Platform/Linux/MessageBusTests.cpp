#include "Descriptor.h"
#include "MessageBus.h"
#include "TemporaryFolder.h"
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>

namespace quillane {
namespace {

using namespace std::chrono_literals;

constexpr auto kAtOnce = 0ms; // nothing that says nothing gets another look
constexpr auto kLong = 60'000ms;

struct Address {
    explicit Address(const std::string& name)
        : length(static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size())) {
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, name.data(), name.size());
    }
    const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&address); }

    sockaddr_un address = {};
    socklen_t length;
};

// A bus that takes connections; it says something only to whom it is told to.
class Bus {
  public:
    static constexpr int kRoomForAll = 16;

    explicit Bus(const std::string& name, int room = kRoomForAll)
        : m_address(name)
        , m_listening(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        EXPECT_EQ(::bind(m_listening.get(), m_address.get(), m_address.length), 0);
        EXPECT_EQ(::listen(m_listening.get(), room), 0);
    }
    // Says this to the next who comes, once he has said his first words, which it returns.
    std::string serve(const std::string& words) const {
        const Descriptor connection(::accept(m_listening.get(), nullptr, nullptr));
        std::array<char, 256> said = {};
        const auto length = ::recv(connection.get(), said.data(), said.size(), 0);
        EXPECT_GT(length, 0);
        EXPECT_EQ(::send(connection.get(), words.data(), words.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(words.size()));
        return {said.data(), static_cast<std::size_t>(length)};
    }
    // One more who waits to be taken.
    Descriptor connect() const {
        Descriptor made(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        if (::connect(made.get(), m_address.get(), m_address.length) != 0) {
            made.reset();
        }
        return made;
    }

  private:
    Address m_address;
    Descriptor m_listening;
};

// A variable of the environment for the length of a test.
class Variable {
  public:
    Variable(const char* name, const std::string& value)
        : m_name(name) {
        if (const char* before = std::getenv(name)) {
            m_before = before;
        }
        EXPECT_EQ(::setenv(name, value.c_str(), 1), 0);
    }
    ~Variable() {
        if (m_before) {
            ::setenv(m_name, m_before->c_str(), 1);
        } else {
            ::unsetenv(m_name);
        }
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    std::string value() const { return std::getenv(m_name); }

  private:
    const char* m_name;
    std::optional<std::string> m_before;
};

struct MessageBusTest : testing::Test {
    TemporaryFolder folder;
    std::string stoppedName = folder.at("stopped");
    std::string stopped = "unix:path=" + stoppedName;

    // What is told of a bus that says this.
    bool hasStoppedThatSays(const std::string& words) const {
        const Bus bus(folder.at("bus"));
        std::thread serving([&] { said = bus.serve(words); });
        const bool result = MessageBus::hasStopped("unix:path=" + folder.at("bus"), kLong);
        serving.join();
        return result;
    }
    mutable std::string said;
};

TEST_F(MessageBusTest, OneThatAnswersIsAtWorkWhateverItSays) {
    EXPECT_FALSE(hasStoppedThatSays("OK 1234deadbeef\r\n"));
}

TEST_F(MessageBusTest, OneThatRefusesIsAtWorkToo) {
    EXPECT_FALSE(hasStoppedThatSays("REJECTED EXTERNAL\r\n"));
}

TEST_F(MessageBusTest, ItIsGreetedAsByEverybodyWhoConnects) {
    (void)hasStoppedThatSays("OK\r\n");
    ASSERT_GE(said.size(), 2U);
    EXPECT_EQ(said.front(), '\0');
    EXPECT_EQ(said.substr(1, 14), "AUTH EXTERNAL ");
    EXPECT_EQ(said.substr(said.size() - 2), "\r\n");
}

TEST_F(MessageBusTest, OneThatTakesAConnectionAndSaysNothingHasStopped) {
    const Bus bus(stoppedName);
    EXPECT_TRUE(MessageBus::hasStopped(stopped, kAtOnce));
    EXPECT_TRUE(MessageBus::hasStopped(stopped, 1ms));
}

TEST_F(MessageBusTest, OneThatHasNoRoomForMoreWhoWaitHasStopped) {
    const Bus bus(stoppedName, 0);
    const auto first = bus.connect();
    ASSERT_TRUE(first);
    ASSERT_FALSE(bus.connect());
    EXPECT_TRUE(MessageBus::hasStopped(stopped, 1ms));
}

TEST_F(MessageBusTest, OneThatIsNotThereHasNotStopped) {
    {
        const Bus gone(folder.at("gone"));
    }
    for (const auto& name : {folder.at("gone"), folder.at("never"), folder.path(), std::string(500, 'x')}) {
        EXPECT_FALSE(MessageBus::hasStopped("unix:path=" + name, kLong)) << name;
    }
    EXPECT_FALSE(MessageBus::hasStopped("", kLong));
}

TEST_F(MessageBusTest, OneThatHangsUpHasNotStopped) {
    EXPECT_FALSE(hasStoppedThatSays(""));
}

TEST_F(MessageBusTest, TheFirstThatCanBeReachedCounts) {
    const Bus bus(stoppedName);
    EXPECT_TRUE(MessageBus::hasStopped("unix:path=/nowhere;" + stopped + ",guid=12;unix:path=/nowhere", 1ms));
}

TEST_F(MessageBusTest, AddressesAreReadAsBusesWriteThem) {
    folder.folder("a folder");
    const Bus escaped(folder.at("a folder/bus"));
    const Bus hidden(std::string(1, '\0') + folder.path());
    const Bus ofRun(folder.at("bus"));
    const Variable run("XDG_RUNTIME_DIR", folder.path());
    for (const auto& address :
         {"unix:path=" + folder.path() + "/a%20folder/bus", "unix:abstract=" + folder.path(),
          "unix:guid=12,path=" + folder.path() + "/a%20folder%2fbus", std::string("unix:runtime=yes")}) {
        EXPECT_TRUE(MessageBus::hasStopped(address, 1ms)) << address;
    }
}

TEST_F(MessageBusTest, AnAddressOfAnotherKindIsLeftToWhoKnowsIt) {
    const Bus bus(stoppedName);
    for (const std::string address : {"tcp:host=localhost,port=1", "autolaunch:", "unix:", "unix:path", "%",
                                      "unix:dir=/tmp", "unixexec:path="}) {
        EXPECT_FALSE(MessageBus::hasStopped(address + ";" + stopped, 1ms)) << address;
    }
}

TEST_F(MessageBusTest, TheUsersBusIsWhereTheEnvironmentSaysAndElseInTheFolderOfTheRun) {
    const Variable run("XDG_RUNTIME_DIR", "/run/user/7");
    {
        const Variable told("DBUS_SESSION_BUS_ADDRESS", stopped);
        EXPECT_EQ(MessageBus::sessionAddress(), stopped);
    }
    const Variable untold("DBUS_SESSION_BUS_ADDRESS", "");
    EXPECT_EQ(MessageBus::sessionAddress(), "unix:path=/run/user/7/bus");
}

TEST_F(MessageBusTest, TheMachinesBusIsWhereTheEnvironmentSaysAndElseInItsPlace) {
    {
        const Variable told("DBUS_SYSTEM_BUS_ADDRESS", stopped);
        EXPECT_EQ(MessageBus::systemAddress(), stopped);
    }
    const Variable untold("DBUS_SYSTEM_BUS_ADDRESS", "");
    EXPECT_EQ(MessageBus::systemAddress(), "unix:path=/run/dbus/system_bus_socket");
}

TEST_F(MessageBusTest, AUsersBusThatHasStoppedIsNoneForThisProcessAndAnyOtherStays) {
    const Variable run("XDG_RUNTIME_DIR", folder.path());
    for (const auto& address :
         {std::string("unix:path=/nowhere"), std::string("tcp:host=localhost"), std::string()}) {
        const Variable told("DBUS_SESSION_BUS_ADDRESS", address);
        MessageBus::leaveStoppedSessionBus();
        EXPECT_EQ(told.value(), address);
    }
    const Bus bus(stoppedName);
    const Variable told("DBUS_SESSION_BUS_ADDRESS", stopped);
    MessageBus::leaveStoppedSessionBus();
    EXPECT_EQ(told.value(), "disabled:");
}

} // namespace
} // namespace quillane
