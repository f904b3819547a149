#include "PrivateBus.h"
#include "RelaunchTrial.h"
#include "SessionInstance.h"
#include "TemporaryFolder.h"
#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QProcess>
#include <QTest>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <semaphore>
#include <set>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace quillane {
namespace {

using namespace std::chrono_literals;
using Standing = SessionInstance::Standing;
using Request = SessionInstance::Request;

const auto kName = QStringLiteral("org.quillane.Quillane");
const auto kPath = QStringLiteral("/org/quillane/Quillane");
const auto kInterface = QStringLiteral("org.freedesktop.Application");
// However long it takes.
void waitUntil(const std::function<bool()>& isSo) {
    while (!QTest::qWaitFor(isSo)) {
    }
}

// Nothing here is waited for but what comes, and so it may come as late as it likes.
constexpr SessionInstance::Patience kPatient{.answer = 1min, .end = 1min};
constexpr SessionInstance::Patience kImpatient{.answer = 20ms, .end = 20ms};

SessionBus noBus() {
    return [] { return QDBusConnection(QStringLiteral("never connected")); };
}

QDBusMessage callOf(const char* method, const QVariantList& arguments) {
    auto call = QDBusMessage::createMethodCall(kName, kPath, kInterface, QString::fromLatin1(method));
    call.setArguments(arguments);
    return call;
}

QVariantMap data(const char* key, const QString& token) {
    return {{QString::fromLatin1(key), token}};
}

// Another start that looks for its answer when it likes.
class Asker {
  public:
    explicit Asker(const std::string& name)
        : m_socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
        sockaddr_un own = {};
        own.sun_family = AF_UNIX; // and no more: the system gives an address
        EXPECT_EQ(::bind(m_socket.get(), reinterpret_cast<const sockaddr*>(&own), sizeof(own.sun_family)), 0);
        const std::string text =
            std::string(1, '\0') + "org.quillane.Quillane/" + std::to_string(::getuid()) + "/" + name;
        m_other.sun_family = AF_UNIX;
        std::memcpy(m_other.sun_path, text.data(), text.size());
        m_length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + text.size());
    }
    void ask(const std::string& text) const {
        EXPECT_EQ(::sendto(m_socket.get(), text.data(), text.size(), MSG_NOSIGNAL,
                           reinterpret_cast<const sockaddr*>(&m_other), m_length),
                  static_cast<ssize_t>(text.size()));
    }
    bool isAnswered() const {
        char text[8] = {};
        return ::recv(m_socket.get(), text, sizeof(text), 0) > 0;
    }

  private:
    Descriptor m_socket;
    sockaddr_un m_other = {};
    socklen_t m_length = 0;
};

struct SessionInstanceTest : testing::Test {
    TemporaryFolder folder;
    std::string settings = folder.at("quillane/defaults.plist");
    PrivateBus bus;
    QDBusConnection onlooker = bus.connect();
    std::vector<Request> heard;
    bool livesOn = true; // the program of the first one

    QString owner() const { return onlooker.interface()->serviceOwner(kName).value(); }

    std::unique_ptr<SessionInstance> start(const SessionBus& reached,
                                           SessionInstance::Patience patience = kPatient) const {
        return std::make_unique<SessionInstance>(settings, reached, patience);
    }
    std::unique_ptr<SessionInstance> first(const SessionBus& reached) {
        auto instance = start(reached);
        EXPECT_EQ(instance->stand({}, false), Standing::first);
        follow(*instance);
        return instance;
    }
    void follow(SessionInstance& instance) {
        instance.follow([this](const Request& request) {
            heard.push_back(request);
            return livesOn;
        });
    }
    // Another start, in a process of its own as far as the first one can see, while the first one's loop turns.
    Standing standingOf(SessionInstance& instance, const std::string& token = {}, bool isRelaunched = false) {
        Standing standing = Standing::first;
        std::atomic<bool> hasEnded = false;
        std::thread start([&] {
            standing = instance.stand(token, isRelaunched);
            hasEnded = true;
        });
        waitUntil([&] { return hasEnded.load(); });
        start.join();
        return standing;
    }
    Standing second(const SessionBus& reached, const std::string& token) {
        return standingOf(*start(reached), token);
    }
    std::string nameInFile() const { return InstanceLock(InstanceLock::pathBeside(settings)).readName(); }
    // The type of the answer.
    QDBusMessage::MessageType call(const char* method, const QVariantList& arguments) {
        const QDBusPendingCall call = onlooker.asyncCall(callOf(method, arguments));
        waitUntil([&] { return call.isFinished(); });
        return call.reply().type();
    }
};

TEST_F(SessionInstanceTest, ASecondStartHasTheFirstComeForwardWithItsTokenWhateverBusEachHas) {
    PrivateBus other;
    const std::vector<std::pair<SessionBus, SessionBus>> buses{{bus.reach(), bus.reach()},
                                                               {bus.reach(), other.reach()},
                                                               {bus.reach(), noBus()},
                                                               {noBus(), bus.reach()},
                                                               {noBus(), noBus()}};
    for (const auto& [ofFirst, ofSecond] : buses) {
        heard.clear();
        const auto instance = first(ofFirst);
        EXPECT_EQ(second(ofSecond, "token_TIME42"), Standing::second);
        EXPECT_EQ(second(ofSecond, {}), Standing::second);
        EXPECT_EQ(heard, (std::vector<Request>{{"token_TIME42", {}}, {{}, {}}}));
    }
}

TEST_F(SessionInstanceTest, TheFirstHasTheNameOnTheBusAndTheSecondLeavesItAlone) {
    const auto connection = bus.connect();
    const auto instance = first([connection] { return connection; });
    EXPECT_EQ(owner(), connection.baseService());
    EXPECT_EQ(second(bus.reach(), {}), Standing::second);
    EXPECT_EQ(owner(), connection.baseService());
}

// As a desktop does that starts the program in order to call it.
TEST_F(SessionInstanceTest, WhoWaitsForTheNameFindsTheObjectAtOnce) {
    PrivateBus starting(kName.toStdString());
    const auto connection = starting.connect();
    const QDBusPendingCall call = connection.asyncCall(
        callOf("ActivateAction", {QStringLiteral("show-section"), QVariantList{QStringLiteral("Startup")},
                                  data("activation-token", QStringLiteral("token"))}));
    const auto instance = first(starting.reach());
    waitUntil([&] { return call.isFinished(); });
    EXPECT_EQ(call.reply().type(), QDBusMessage::ReplyMessage) << call.reply().errorMessage().toStdString();
    EXPECT_EQ(heard, (std::vector<Request>{{"token", "Startup"}}));
}

TEST_F(SessionInstanceTest, AProgramOverOtherSettingsIsAFirstOfItsOwnAndTellsNobody) {
    const auto instance = first(bus.reach());
    SessionInstance other(folder.at("other/defaults.plist"), bus.reach(), kPatient);
    EXPECT_EQ(standingOf(other, "token"), Standing::first);
    EXPECT_EQ(call("Activate", {data("activation-token", QStringLiteral("of the bus"))}),
              QDBusMessage::ReplyMessage); // the name is still the first one's
    EXPECT_EQ(heard, (std::vector<Request>{{"of the bus", {}}}));
}

TEST_F(SessionInstanceTest, WhoHasTheLockGetsTheNameOnceWhoeverHasItLetsGo) {
    ASSERT_TRUE(onlooker.interface()->registerService(kName).isValid());
    const auto connection = bus.connect();
    const auto instance = first([connection] { return connection; });
    EXPECT_EQ(owner(), onlooker.baseService());
    ASSERT_TRUE(onlooker.interface()->unregisterService(kName).isValid());
    EXPECT_EQ(owner(), connection.baseService());
}

TEST_F(SessionInstanceTest, EachFirstListensUnderAnotherNameThatStandsInTheFileOfTheLock) {
    std::set<std::string> names;
    for (int start = 0; start < 3; ++start) {
        const auto instance = first(noBus());
        names.insert(nameInFile());
        EXPECT_EQ(second(noBus(), {}), Standing::second);
    }
    EXPECT_EQ(names.size(), 3U);
    EXPECT_FALSE(names.contains(""));
}

TEST_F(SessionInstanceTest, AStrangerThatIsToldInItsPlaceDoesNotKeepTheFirstFromBeingToldOnTheBus) {
    const auto instance = first(bus.reach());
    const auto stranger = InstanceSocket::underFreshName();
    ASSERT_TRUE(InstanceLock(InstanceLock::pathBeside(settings)).writeName(stranger.name()));
    for (int message = 0; message < 1000; ++message) { // it has no room: nobody has to wait for it
        (void)InstanceSocket::tell(stranger.name(), {}, 0ms);
    }
    EXPECT_EQ(second(bus.reach(), "token"), Standing::second);
    EXPECT_EQ(heard, (std::vector<Request>{{"token", {}}}));
    EXPECT_EQ(second(noBus(), "token"), Standing::secondUnheard);
}

// As in a home folder that can't be written to.
TEST_F(SessionInstanceTest, WhereNoLockCanBeHadTheNameOnTheBusTellsWhoIsFirst) {
    folder.file("quillane");
    const auto instance = first(bus.reach());
    EXPECT_EQ(second(bus.reach(), "token"), Standing::second);
    EXPECT_EQ(heard, (std::vector<Request>{{"token", {}}}));
    const auto alone = start(noBus());
    EXPECT_EQ(alone->stand({}, false), Standing::first); // nothing tells
}

TEST_F(SessionInstanceTest, OneThatHasTheNameAndDoesNotAnswerIsInTheWayOnlyWhereThereIsNoLock) {
    const auto silent = bus.connect();
    ASSERT_TRUE(silent.interface()->registerService(kName).isValid());
    EXPECT_EQ(start(bus.reach())->stand({}, false), Standing::first);
    folder.remove("quillane").file("quillane");
    EXPECT_EQ(start(bus.reach())->stand({}, false), Standing::secondUnheard);
}

TEST_F(SessionInstanceTest, AFirstThatDoesNotLookLetsTheSecondEndAndComesForwardOnceItDoes) {
    const auto instance = start(bus.reach());
    ASSERT_EQ(instance->stand({}, false), Standing::first);
    EXPECT_EQ(start(noBus(), kImpatient)->stand("token", false), Standing::secondUnheard);
    follow(*instance);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !heard.empty(); }));
    EXPECT_EQ(heard, (std::vector<Request>{{"token", {}}}));
}

TEST_F(SessionInstanceTest, ABusThatHasStoppedHoldsUpNeitherTheFirstNorTheSecond) {
    const auto ofFirst = bus.reach();
    const auto ofSecond = bus.reach();
    bus.freeze();
    const auto instance = start(ofFirst, kImpatient);
    EXPECT_EQ(instance->stand({}, false), Standing::first);
    follow(*instance);
    EXPECT_EQ(second(ofSecond, "token"), Standing::second);
    EXPECT_EQ(heard, (std::vector<Request>{{"token", {}}}));
    // What comes late is not refused.
    bus.thaw();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !owner().isEmpty(); }));
}

TEST_F(SessionInstanceTest, ABusThatComesLateAndHasTheNameTakenIsToldNothingAnyMore) {
    SessionInstance other(folder.at("other/defaults.plist"), bus.reach(), kPatient);
    ASSERT_EQ(other.stand({}, false), Standing::first);
    follow(other);
    folder.file("quillane"); // no lock: the name tells
    const auto reached = bus.reach();
    bus.freeze();
    {
        const auto instance = start(reached, kImpatient);
        EXPECT_EQ(instance->stand("late", false), Standing::first);
        bus.thaw();
    } // its thread has said its last
    EXPECT_EQ(call("Activate", {QVariantMap()}), QDBusMessage::ReplyMessage);
    EXPECT_EQ(heard, (std::vector<Request>{{{}, {}}}));
}

TEST_F(SessionInstanceTest, ABusThatAnswersLateGivesTheNameToWhoHasWantedItMeanwhile) {
    const auto connection = bus.connect();
    std::counting_semaphore<> answer(0);
    QObject object;
    SessionName name(
        [&, connection] {
            answer.acquire();
            return connection;
        },
        object);
    EXPECT_EQ(name.tell({}, 0ms), SessionName::Standing::absent);
    EXPECT_EQ(name.take(0ms), SessionName::Standing::absent);
    EXPECT_EQ(owner(), QString());
    answer.release(2); // one for each time that the bus is reached
    waitUntil([&] { return owner() == connection.baseService(); });
}

TEST_F(SessionInstanceTest, ARequestThatComesAfterTheEndWasDecidedIsNotAnswered) {
    const auto instance = first(bus.reach());
    livesOn = false;
    EXPECT_EQ(call("Activate", {QVariantMap()}), QDBusMessage::ErrorMessage);
    EXPECT_EQ(call("ActivateAction",
                   {QStringLiteral("show-section"), QVariantList{QStringLiteral("Startup")}, QVariantMap()}),
              QDBusMessage::ErrorMessage);
    const Asker asker(nameInFile());
    asker.ask("activate\n");
    waitUntil([&] { return heard.size() == 3; });
    EXPECT_FALSE(asker.isAnswered());
    livesOn = true;
    asker.ask("activate\n");
    waitUntil([&] { return heard.size() == 4; });
    EXPECT_TRUE(asker.isAnswered());
}

TEST_F(SessionInstanceTest, OneThatWasAboutToEndIsNoFirst) {
    auto ending = std::make_unique<InstanceLock>(InstanceLock::pathBeside(settings));
    ASSERT_EQ(ending->take(), InstanceLock::Holder::self);
    const auto instance = start([&, none = noBus()] {
        ending.reset(); // it has gone when nobody has answered
        return none();
    });
    EXPECT_EQ(instance->stand({}, false), Standing::first);
}

TEST_F(SessionInstanceTest, OneThatHasTheLockAndCanNotBeToldAnythingIsTheFirstAllTheSame) {
    InstanceLock mute(InstanceLock::pathBeside(settings));
    ASSERT_EQ(mute.take(), InstanceLock::Holder::self);
    EXPECT_EQ(start(bus.reach())->stand({}, false), Standing::secondUnheard);
    EXPECT_EQ(start(noBus())->stand({}, false), Standing::secondUnheard);
    EXPECT_EQ(owner(), QString());
}

TEST_F(SessionInstanceTest, OneThatWasRelaunchedAndWaitsInVainHasTheOtherComeForward) {
    const auto old = first(bus.reach());
    const auto instance = start(noBus(), {.answer = 1min, .end = 1ms});
    EXPECT_EQ(standingOf(*instance, "token", true), Standing::second);
    EXPECT_EQ(heard, (std::vector<Request>{{"token", {}}}));
}

TEST_F(SessionInstanceTest, WhereNoLockCanBeHadOneThatWasRelaunchedWaitsUntilTheNameIsFree) {
    folder.file("quillane");
    const auto old = bus.connect();
    ASSERT_TRUE(old.interface()->registerService(kName).isValid());
    const auto connection = bus.connect();
    int looks = 0;
    const auto instance = start([&, connection] {
        if (++looks == 2) { // it was seen before
            old.interface()->unregisterService(kName);
        }
        return connection;
    });
    EXPECT_EQ(instance->stand("token", true), Standing::first);
    EXPECT_EQ(owner(), connection.baseService());
}

TEST_F(SessionInstanceTest, WhereNoLockCanBeHadOneThatWasRelaunchedInVainHasTheOtherComeForward) {
    folder.file("quillane");
    const auto old = first(bus.reach());
    const auto instance = start(bus.reach(), {.answer = 1min, .end = 1ms});
    EXPECT_EQ(standingOf(*instance, "token", true), Standing::second);
    EXPECT_EQ(heard, (std::vector<Request>{{"token", {}}}));
}

TEST_F(SessionInstanceTest, ALockThatCanBeHadOnceNobodyHasAnsweredMakesAFirst) {
    folder.file("quillane");
    const auto silent = bus.connect();
    ASSERT_TRUE(silent.interface()->registerService(kName).isValid());
    const auto connection = bus.connect();
    const auto instance = start([&, connection] {
        if (!std::filesystem::is_directory(folder.at("quillane"))) {
            folder.remove("quillane");
        }
        return connection;
    });
    EXPECT_EQ(instance->stand({}, false), Standing::first);
    EXPECT_NE(nameInFile(), "");
}

TEST_F(SessionInstanceTest, WhatComesBeforeTheWindowStandsWaitsForIt) {
    const auto instance = start(bus.reach());
    ASSERT_EQ(instance->stand({}, false), Standing::first);
    EXPECT_EQ(call("Activate", {data("activation-token", QStringLiteral("a"))}), QDBusMessage::ReplyMessage);
    EXPECT_EQ(call("Activate", {data("activation-token", QStringLiteral("b"))}), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(heard.empty());
    follow(*instance);
    EXPECT_EQ(heard, (std::vector<Request>{{"a", {}}, {"b", {}}}));
}

TEST_F(SessionInstanceTest, HoweverManyComeBeforeTheWindowStandsTheyTakeLittle) {
    const auto instance = start(noBus());
    for (int i = 0; i < 1000; ++i) {
        instance->Activate({});
    }
    follow(*instance);
    EXPECT_LE(heard.size(), 16U);
    EXPECT_FALSE(heard.empty());
}

TEST_F(SessionInstanceTest, EachCallOfTheInterfaceIsAnsweredAndTold) {
    const auto instance = first(bus.reach());
    const auto token = QStringLiteral("token");
    EXPECT_EQ(call("Activate", {data("desktop-startup-id", token)}), QDBusMessage::ReplyMessage);
    EXPECT_EQ(call("Activate", {data("other", token)}), QDBusMessage::ReplyMessage);
    EXPECT_EQ(call("Open", {QStringList{QStringLiteral("file:///a")}, data("activation-token", token)}),
              QDBusMessage::ReplyMessage);
    EXPECT_EQ(call("ActivateAction", {QStringLiteral("show-section"),
                                      QVariantList{QStringLiteral("Duplicates")}, QVariantMap()}),
              QDBusMessage::ReplyMessage);
    EXPECT_EQ(heard, (std::vector<Request>{{"token", {}}, {{}, {}}, {"token", {}}, {{}, "Duplicates"}}));
}

TEST_F(SessionInstanceTest, ACallOfAnotherShapeChangesNothing) {
    const auto instance = first(bus.reach());
    const QVariantMap none;
    const auto section = QStringLiteral("show-section");
    const auto title = QStringLiteral("Startup");
    for (const auto& arguments :
         std::vector<QVariantList>{{QStringLiteral("quit"), QVariantList{title}, none},
                                   {section, QVariantList{}, none},
                                   {section, QVariantList{1}, none},
                                   {section, QVariantList{QStringList{title}}, none},
                                   {section, QVariantList{title, title}, none},
                                   {section, title, none},
                                   {}}) {
        (void)call("ActivateAction", arguments);
    }
    EXPECT_EQ(call("Activate", {QStringLiteral("token")}), QDBusMessage::ErrorMessage);
    EXPECT_EQ(call("follow", {}), QDBusMessage::ErrorMessage);
    EXPECT_EQ(call("deleteLater", {}), QDBusMessage::ErrorMessage);
    EXPECT_TRUE(heard.empty());
}

TEST_F(SessionInstanceTest, AMessageThatIsNoCallChangesNothing) {
    const auto instance = first(noBus());
    InstanceLock lock(InstanceLock::pathBeside(settings));
    ASSERT_EQ(lock.take(), InstanceLock::Holder::other);
    for (const char* text : {"", "activate", "ACTIVATE\ntoken", "quit\n"}) {
        EXPECT_EQ(InstanceSocket::tell(lock.readName(), text, 0ms), InstanceSocket::Answer::awaited) << text;
    }
    EXPECT_EQ(second(noBus(), "token"), Standing::second); // after all of these
    EXPECT_EQ(heard, (std::vector<Request>{{"token", {}}}));
}

TEST_F(SessionInstanceTest, ATokenThatIsNoneLetsTheWindowComeForwardWithoutOne) {
    const auto instance = first(bus.reach());
    const std::string longest(SessionInstance::kLongestToken, 'x');
    const std::vector<std::string> tokens{"a\nb", "\x7f", longest + "x", longest};
    for (const auto& token : tokens) {
        EXPECT_EQ(call("Activate", {data("activation-token", QString::fromStdString(token))}),
                  QDBusMessage::ReplyMessage);
        EXPECT_EQ(second(noBus(), token), Standing::second);
    }
    std::vector<Request> expected(6, Request());
    expected.insert(expected.end(), 2, Request{longest, {}});
    EXPECT_EQ(heard, expected);
}

TEST_F(SessionInstanceTest, AProgramThatRelaunchesItselfIsFollowedByOneThatIsFirstOnceItHasEnded) {
    QProcess program;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(RelaunchTrial::kSettings), QString::fromStdString(settings));
    program.setProcessEnvironment(environment);
    program.setStandardOutputFile(QString::fromStdString(folder.at("told")), QIODevice::Append);
    program.start(QCoreApplication::applicationFilePath());
    const auto told = [&] {
        std::ifstream lines(folder.at("told"));
        return std::string(std::istreambuf_iterator<char>(lines), {});
    };
    const auto areTold = [&](const std::string& lines) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return told() == lines; })) << told();
    };
    areTold("began\nfirst\nbegan again\n");
    program.closeWriteChannel(); // the first one ends
    areTold("began\nfirst\nbegan again\nfirst\n");
    program.waitForFinished();
}

TEST(SessionInstance, TheTokenOfThisStartIsWhatTheDesktopGave) {
    EXPECT_EQ(SessionInstance::tokenOfThisStart(), "");
    ::setenv("DESKTOP_STARTUP_ID", "id_TIME1", 1);
    EXPECT_EQ(SessionInstance::tokenOfThisStart(), "id_TIME1");
    ::setenv("XDG_ACTIVATION_TOKEN", "token", 1);
    EXPECT_EQ(SessionInstance::tokenOfThisStart(), "token");
    ::setenv("XDG_ACTIVATION_TOKEN", "to\nken", 1);
    EXPECT_EQ(SessionInstance::tokenOfThisStart(), "id_TIME1");
    ::unsetenv("XDG_ACTIVATION_TOKEN");
    ::unsetenv("DESKTOP_STARTUP_ID");
}

} // namespace
} // namespace quillane
