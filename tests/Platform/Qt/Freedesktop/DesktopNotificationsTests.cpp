#include "DesktopNotifications.h"
#include "FakeNotificationServer.h"
#include "PrivateBus.h"
#include "StepTaskRunner.h"
#include <QTest>
#include <gtest/gtest.h>
#include <limits>
#include <utility>

namespace quillane {
namespace {

using Clicks = std::vector<UserNotifications::Click>;
using UserInfo = std::map<std::string, std::string>;

UserNotification notification(const std::string& identifier, const std::string& title,
                              const std::string& body = "body") {
    return {identifier, title, body, {{"section", title + "'s"}}};
}

class DesktopNotificationsTest : public testing::Test {
  protected:
    static constexpr auto kShort = std::chrono::milliseconds(50);

    // Runs the program until then.
    template <class Condition>
    bool until(Condition condition) {
        return QTest::qWaitFor(
            [&] {
                m_tasks.runAll();
                return condition();
            },
            kLongWait);
    }
    // What the server has said so far has arrived, and the program has done what comes of it.
    void awaitArrival(FakeNotificationServer& server) {
        quillane::awaitArrival(server, m_connection);
        m_tasks.runAll();
    }
    void awaitArrival() { awaitArrival(*m_server); }
    // What the program has said so far has arrived at the bus.
    void awaitDeparture() { awaitDeparture(m_connection); }
    static void awaitDeparture(const QDBusConnection& connection) {
        connection.call(QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
    }
    // Adds it and waits until the server has it and the program knows.
    void show(const UserNotification& notification) {
        const auto before = m_server->posts.size();
        m_notifications.add(notification);
        EXPECT_TRUE(until([&] { return m_server->posts.size() > before; }));
        awaitArrival();
    }
    void click(uint number) {
        m_server->click(number);
        awaitArrival();
    }
    // The clicks since this was asked last.
    Clicks clicks() { return std::exchange(m_clicks, {}); }
    void restartServer(uint first) {
        m_server.reset();
        m_server = std::make_unique<FakeNotificationServer>(m_bus.connect(), first);
        awaitArrival();
    }

    PrivateBus m_bus;
    StepTaskRunner m_tasks;
    std::unique_ptr<FakeNotificationServer> m_server =
        std::make_unique<FakeNotificationServer>(m_bus.connect());
    QDBusConnection m_connection = m_bus.connect();
    int m_reached = 0;
    DesktopNotifications m_notifications{m_tasks,
                                         [this] {
                                             ++m_reached;
                                             return m_connection;
                                         },
                                         {.answer = std::chrono::seconds(5), .end = kShort}};
    Clicks m_clicks;

  private:
    void SetUp() override {
        m_notifications.setClickHandler([this](const auto& click) { m_clicks.push_back(click); });
        m_tasks.runAll();
    }
};

// Posting

TEST_F(DesktopNotificationsTest, TheServerGetsTheProgramTheWordsAndTheHints) {
    show(notification("weekly", "12 GB reclaimable", "Open Quillane."));
    const auto& post = m_server->posts.at(0);
    EXPECT_EQ(post.program, QStringLiteral("Quillane"));
    EXPECT_EQ(post.replaced, 0U);
    EXPECT_EQ(post.icon, QStringLiteral("org.quillane.Quillane"));
    EXPECT_EQ(post.title, QStringLiteral("12 GB reclaimable"));
    EXPECT_EQ(post.body, QStringLiteral("Open Quillane."));
    EXPECT_EQ(post.actions, QStringList({QStringLiteral("default"), QStringLiteral("Open Quillane")}));
    EXPECT_EQ(post.timeout, -1);
    EXPECT_EQ(post.hints.size(), 3);
    EXPECT_EQ(post.hints[QStringLiteral("urgency")].userType(), QMetaType::UChar);
    EXPECT_EQ(post.hints[QStringLiteral("urgency")].toInt(), 1);
    EXPECT_EQ(post.hints[QStringLiteral("desktop-entry")], QStringLiteral("org.quillane.Quillane"));
    EXPECT_EQ(post.hints[QStringLiteral("sound-name")], QStringLiteral("message-new-instant"));
}

TEST_F(DesktopNotificationsTest, NobodyReachesForTheBusBeforeTheFirstNotificationAndOnlyAJobDoes) {
    m_notifications.requestAuthorization();
    m_tasks.runAll();
    EXPECT_EQ(m_tasks.history(), std::vector<Priority>());
    m_notifications.add(notification("a", "A"));
    m_notifications.add(notification("b", "B"));
    EXPECT_EQ(m_reached, 0);
    EXPECT_EQ(m_tasks.history(), std::vector{Priority::utility});
    EXPECT_TRUE(until([&] { return m_server->posts.size() == 2; }));
    EXPECT_EQ(m_reached, 1);
}

TEST_F(DesktopNotificationsTest, OneOfTheSameIdentifierTakesTheNumberOfTheFirst) {
    show(notification("a", "A"));
    show(notification("b", "B"));
    show(notification("a", "A again"));
    EXPECT_EQ(m_server->posts.at(2).replaced, m_server->posts.at(0).number);
    EXPECT_EQ(m_server->standing.size(), 2U);
}

TEST_F(DesktopNotificationsTest, WhileOneIsOnItsWayTheLastOfThoseThatComeFollowsItWithItsNumber) {
    m_server->answersPosts = false;
    for (const char* title : {"first", "second", "third"}) {
        m_notifications.add(notification("a", title));
        ASSERT_TRUE(until([&] { return m_server->posts.size() == 1; }));
    }
    m_server->answer(0, 9);
    ASSERT_TRUE(until([&] { return m_server->posts.size() == 2; }));
    EXPECT_EQ(m_server->posts.at(0).title, QStringLiteral("first"));
    EXPECT_EQ(m_server->posts.at(1).title, QStringLiteral("third"));
    EXPECT_EQ(m_server->posts.at(1).replaced, 9U);
}

TEST_F(DesktopNotificationsTest, AnotherIdentifierDoesNotWaitForOneThatIsOnItsWay) {
    m_server->answersPosts = false;
    m_notifications.add(notification("a", "A"));
    m_notifications.add(notification("b", "B"));
    EXPECT_TRUE(until([&] { return m_server->posts.size() == 2; }));
}

TEST_F(DesktopNotificationsTest, ABodyIsEscapedForAServerWithMarkupAndATitleNever) {
    show(notification("a", "R&D <b>", "com.<b>evil</b>.R&D, \"x\""));
    EXPECT_EQ(m_server->posts.at(0).title, QStringLiteral("R&D <b>"));
    EXPECT_EQ(m_server->posts.at(0).body,
              QStringLiteral("com.&lt;b&gt;evil&lt;/b&gt;.R&amp;D, &quot;x&quot;"));
}

TEST_F(DesktopNotificationsTest, ABodyIsNotEscapedForAServerWithoutMarkup) {
    m_server->abilities = {QStringLiteral("body"), QStringLiteral("body-markup-not")};
    show(notification("a", "A", "1 < 2 & <b>"));
    EXPECT_EQ(m_server->posts.at(0).body, QStringLiteral("1 < 2 & <b>"));
}

TEST_F(DesktopNotificationsTest, AServerIsAskedOnceWhatItCanDoAndTheNextOneAnew) {
    show(notification("a", "A", "<"));
    show(notification("b", "B", "<"));
    EXPECT_EQ(m_server->questions, 1);
    restartServer(1);
    m_server->abilities = {};
    show(notification("a", "A", "<"));
    EXPECT_EQ(m_server->questions, 1);
    EXPECT_EQ(m_server->posts.at(0).body, QStringLiteral("<"));
}

TEST_F(DesktopNotificationsTest, AServerThatDoesNotTellWhatItCanDoGetsPlainTextAndIsAskedAgain) {
    DesktopNotifications notifications(m_tasks, m_bus.reach(), {.answer = kShort, .end = kShort});
    m_server->answersQuestions = false;
    notifications.add(notification("a", "A", "<"));
    ASSERT_TRUE(until([&] { return m_server->posts.size() == 1; }));
    EXPECT_EQ(m_server->posts.at(0).body, QStringLiteral("<"));
    m_server->answersQuestions = true;
    notifications.add(notification("b", "B", "<"));
    ASSERT_TRUE(until([&] { return m_server->posts.size() == 2; }));
    EXPECT_EQ(m_server->posts.at(1).body, QStringLiteral("&lt;"));
}

TEST_F(DesktopNotificationsTest, WhatWouldDeceiveTheEyeOrTheBusIsMadeVisible) {
    show(notification("a", std::string("a\0b", 3),
                      "one\ntwo \xFF \xE2\x80\xAE"
                      "fdp.exe"));
    EXPECT_EQ(m_server->posts.at(0).title, QStringLiteral("a‹U+0000›b"));
    EXPECT_EQ(m_server->posts.at(0).body, QStringLiteral("one‹U+000A›two \uFFFD ‹U+202E›fdp.exe"));
}

TEST_F(DesktopNotificationsTest, ATextOfAnyLengthIsCutAtAWholeCharacter) {
    constexpr auto kLongest = DesktopNotifications::kLongestText;
    const std::string letters(static_cast<std::size_t>(kLongest), 'x');
    std::string faces; // each is a pair, and one lies across the place of the cut
    for (qsizetype i = 0; i < kLongest; ++i) {
        faces += "\xF0\x9F\x98\x80";
    }
    show(notification("a", letters, letters + "x"));
    show(notification("b", faces));
    EXPECT_EQ(m_server->posts.at(0).title.size(), kLongest);
    EXPECT_FALSE(m_server->posts.at(0).title.endsWith(QChar(0x2026)));
    EXPECT_EQ(m_server->posts.at(0).body.size(), kLongest);
    EXPECT_TRUE(m_server->posts.at(0).body.endsWith(QStringLiteral("x…")));
    EXPECT_EQ(m_server->posts.at(1).title.size(), kLongest - 1);
    EXPECT_TRUE(m_server->posts.at(1).title.endsWith(QStringLiteral("\U0001F600…")));
}

TEST_F(DesktopNotificationsTest, OfMoreIdentifiersThanAreKeptTheOldestIsWithdrawn) {
    for (std::size_t i = 0; i < DesktopNotifications::kMostStanding; ++i) {
        m_notifications.add(notification("n" + std::to_string(i), "N"));
    }
    ASSERT_TRUE(until([&] { return m_server->posts.size() == DesktopNotifications::kMostStanding; }));
    awaitArrival();
    show(notification("one more", "M"));
    ASSERT_TRUE(until([&] { return m_server->withdrawn.size() == 1; }));
    EXPECT_EQ(m_server->withdrawn.front(), m_server->posts.front().number);
}

TEST_F(DesktopNotificationsTest, WhileAllAreOnTheirWayOneMoreIsDropped) {
    m_server->answersPosts = false;
    for (std::size_t i = 0; i < DesktopNotifications::kMostStanding; ++i) {
        m_notifications.add(notification("n" + std::to_string(i), "N"));
    }
    ASSERT_TRUE(until([&] { return m_server->posts.size() == DesktopNotifications::kMostStanding; }));
    m_notifications.add(notification("one more", "M"));
    awaitDeparture();
    awaitArrival();
    EXPECT_EQ(m_server->posts.size(), DesktopNotifications::kMostStanding);
    m_server->answer(0, 1);
    awaitArrival();
    m_notifications.add(notification("one more", "M"));
    EXPECT_TRUE(until([&] { return m_server->posts.size() > DesktopNotifications::kMostStanding; }));
}

// Clicks

TEST_F(DesktopNotificationsTest, TheTokenThatComesBeforeAClickGoesWithThatClickAlone) {
    show(notification("a", "A"));
    show(notification("b", "B"));
    emit m_server->ActivationToken(1, QStringLiteral("token-of-a"));
    emit m_server->ActivationToken(77, QStringLiteral("of another program"));
    click(2);
    click(1);
    click(1);
    EXPECT_EQ(clicks(), (Clicks{{{{"section", "B's"}}, ""},
                                {{{"section", "A's"}}, "token-of-a"},
                                {{{"section", "A's"}}, ""}}));
}

TEST_F(DesktopNotificationsTest, ATokenOfSenselessLengthIsNone) {
    show(notification("a", "A"));
    emit m_server->ActivationToken(1, QString(DesktopNotifications::kLongestToken, QLatin1Char('x')));
    click(1);
    EXPECT_EQ(clicks().at(0).activationToken.size(), 4'096U);
    emit m_server->ActivationToken(1, QString(DesktopNotifications::kLongestToken + 1, QLatin1Char('x')));
    click(1);
    EXPECT_EQ(clicks().at(0).activationToken, "");
}

TEST_F(DesktopNotificationsTest, ATokenDoesNotOutliveTheNotificationThatItWasGivenFor) {
    show(notification("a", "A"));
    emit m_server->ActivationToken(1, QStringLiteral("old"));
    show(notification("a", "A again"));
    click(1);
    EXPECT_EQ(clicks().at(0).activationToken, "");
}

TEST_F(DesktopNotificationsTest, OnlyTheActionThatAClickStandsForIsAClick) {
    show(notification("a", "A"));
    emit m_server->ActionInvoked(1, QStringLiteral("settings"));
    awaitArrival();
    EXPECT_EQ(clicks(), Clicks());
}

TEST_F(DesktopNotificationsTest, ClicksOnTheNotificationsOfOtherProgramsAreNobodysHere) {
    show(notification("a", "A"));
    for (const uint number : {0U, 2U, 77U, std::numeric_limits<uint>::max()}) {
        click(number);
    }
    EXPECT_EQ(clicks(), Clicks());
}

TEST_F(DesktopNotificationsTest, WhatAnotherProgramSaysInTheServersWordsIsNotHeard) {
    show(notification("a", "A"));
    auto stranger = m_bus.connect();
    auto signal = QDBusMessage::createSignal(QString::fromLatin1(FakeNotificationServer::kPath),
                                             QString::fromLatin1(FakeNotificationServer::kName),
                                             QStringLiteral("ActionInvoked"));
    signal << 1U << QStringLiteral("default");
    ASSERT_TRUE(stranger.send(signal));
    awaitDeparture(stranger);
    awaitArrival();
    EXPECT_EQ(clicks(), Clicks());
}

TEST_F(DesktopNotificationsTest, WhatIsClosedIsForgottenAndTheNextOneIsNew) {
    show(notification("a", "A"));
    m_server->end(1);
    click(1);
    EXPECT_EQ(clicks(), Clicks());
    show(notification("a", "A again"));
    EXPECT_EQ(m_server->posts.at(1).replaced, 0U);
}

TEST_F(DesktopNotificationsTest, AClickIsToldThoughTheNotificationClosesRightBehindIt) {
    show(notification("a", "A"));
    m_server->click(1);
    m_server->end(1);
    awaitArrival();
    EXPECT_EQ(clicks(), (Clicks{{{{"section", "A's"}}, ""}}));
}

TEST_F(DesktopNotificationsTest, AFloodOfSignalsIsOneClickForEachNotification) {
    show(notification("a", "A"));
    show(notification("b", "B"));
    for (int i = 0; i < 500; ++i) {
        m_server->click(1);
        m_server->click(2);
        m_server->click(99);
        emit m_server->ActivationToken(1, QStringLiteral("flood"));
    }
    quillane::awaitArrival(*m_server, m_connection);
    EXPECT_EQ(clicks(), Clicks()) << "at a later turn";
    m_tasks.runAll();
    EXPECT_EQ(clicks().size(), 2U);
}

TEST_F(DesktopNotificationsTest, UntilTheServerAnswersAClickIsOnWhatStoodBefore) {
    show(notification("a", "old"));
    m_server->answersPosts = false;
    m_notifications.add(notification("a", "new"));
    ASSERT_TRUE(until([&] { return m_server->posts.size() == 2; }));
    click(1);
    EXPECT_EQ(clicks(), (Clicks{{{{"section", "old's"}}, ""}}));
    m_server->answer(0, 1);
    m_server->click(1); // right behind
    awaitArrival();
    EXPECT_EQ(clicks(), (Clicks{{{{"section", "new's"}}, ""}}));
}

// Servers

TEST_F(DesktopNotificationsTest, ANumberOfAServerThatIsGoneMeansNothing) {
    show(notification("a", "A"));
    restartServer(1);
    click(1); // another program's
    EXPECT_EQ(clicks(), Clicks());
    show(notification("a", "A again"));
    EXPECT_EQ(m_server->posts.at(0).replaced, 0U);
    click(m_server->numberOf(QStringLiteral("A again")));
    EXPECT_EQ(clicks().size(), 1U);
}

TEST_F(DesktopNotificationsTest, WhatComesWhileAServerDiesBeforeItsAnswerGoesToTheNextOne) {
    m_server->answersPosts = false;
    m_notifications.add(notification("a", "lost"));
    ASSERT_TRUE(until([&] { return m_server->posts.size() == 1; }));
    m_notifications.add(notification("a", "next"));
    m_server->refuse(0); // as the bus does for one that is gone
    m_server.reset();
    m_server = std::make_unique<FakeNotificationServer>(m_bus.connect());
    ASSERT_TRUE(until([&] { return m_server->posts.size() == 1; }));
    awaitArrival();
    click(1);
    EXPECT_EQ(clicks(), (Clicks{{{{"section", "next's"}}, ""}}));
}

TEST_F(DesktopNotificationsTest, TheAnswerOfAServerThatHasGivenItsNameAwayMeansNothing) {
    m_server->answersPosts = false;
    m_notifications.add(notification("a", "A"));
    ASSERT_TRUE(until([&] { return m_server->posts.size() == 1; }));
    const auto old = std::move(m_server);
    old->giveNameAway();
    m_server = std::make_unique<FakeNotificationServer>(m_bus.connect(), 5);
    awaitArrival();
    old->answer(0, 5);
    old->click(5);
    awaitArrival(*old);
    EXPECT_EQ(clicks(), Clicks());
    show(notification("a", "A again"));
    EXPECT_EQ(m_server->posts.at(0).replaced, 0U);
}

TEST_F(DesktopNotificationsTest, ANotificationThatStartsItsServerIsKnownByTheNumberThatItGets) {
    m_server.reset();
    PrivateBus bus(
        "org.freedesktop.Notifications"); // starts a server, which is one of ours once it has the name
    m_connection = bus.connect();
    m_notifications.add(notification("a", "A"));
    m_tasks.runAll();
    awaitDeparture();
    m_server = std::make_unique<FakeNotificationServer>(bus.connect());
    ASSERT_TRUE(until([&] { return m_server->posts.size() == 1; }));
    awaitArrival();
    click(1);
    EXPECT_EQ(clicks().size(), 1U);
    m_server.reset();
    m_connection = m_bus.connect();
}

TEST_F(DesktopNotificationsTest, OneNumberForTwoNotificationsIsTheLastOnes) {
    m_server->lie = 7;
    show(notification("a", "A"));
    show(notification("b", "B"));
    click(7);
    EXPECT_EQ(clicks(), (Clicks{{{{"section", "B's"}}, ""}}));
    m_server->lie.reset();
    show(notification("a", "A again"));
    EXPECT_EQ(m_server->posts.at(2).replaced, 0U);
}

TEST_F(DesktopNotificationsTest, NumbersMayBeHugeAndZeroIsNone) {
    m_server->lie = std::numeric_limits<uint>::max();
    show(notification("a", "A"));
    click(std::numeric_limits<uint>::max());
    EXPECT_EQ(clicks().size(), 1U);
    m_server->lie = 0;
    show(notification("b", "B"));
    show(notification("c", "C"));
    click(0);
    EXPECT_EQ(clicks(), Clicks());
}

TEST_F(DesktopNotificationsTest, OfTwoAnswersToOneNotificationTheFirstCounts) {
    m_server->answersPosts = false;
    m_notifications.add(notification("a", "A"));
    ASSERT_TRUE(until([&] { return m_server->posts.size() == 1; }));
    m_server->answer(0, 3);
    m_server->answer(0, 4);
    awaitArrival();
    click(4);
    EXPECT_EQ(clicks(), Clicks());
    click(3);
    EXPECT_EQ(clicks().size(), 1U);
}

TEST_F(DesktopNotificationsTest, AnAnswerThatIsNoNumberIsNone) {
    m_server->answersPosts = false;
    for (const auto& answer : {QVariant(QStringLiteral("7")), QVariant(7), QVariant(7.0), QVariant(true)}) {
        m_server->unanswered.clear();
        m_notifications.add(notification("a", "A"));
        ASSERT_TRUE(until([&] { return m_server->unanswered.size() == 1; }));
        m_server->answerWith(0, answer);
        awaitArrival();
        click(7);
        click(1);
        EXPECT_EQ(clicks(), Clicks()) << answer.typeName();
    }
}

TEST_F(DesktopNotificationsTest, AnAnswerThatComesTooLateIsNoneAndWhatWaitedHasGoneAhead) {
    DesktopNotifications notifications(m_tasks, [this] { return m_connection; },
                                       {.answer = kShort, .end = kShort});
    Clicks told;
    notifications.setClickHandler([&](const auto& click) { told.push_back(click); });
    m_server->answersPosts = false;
    notifications.add(notification("a", "first"));
    ASSERT_TRUE(until([&] { return m_server->posts.size() == 1; }));
    notifications.add(notification("a", "second"));
    ASSERT_TRUE(until([&] { return m_server->posts.size() == 2; }));
    EXPECT_EQ(m_server->posts.at(1).replaced, 0U);
    m_server->answer(0, 8);
    m_server->click(8);
    awaitArrival();
    EXPECT_EQ(told, Clicks());
}

TEST_F(DesktopNotificationsTest, ARefusedNotificationLeavesTheOneThatStands) {
    show(notification("a", "old"));
    m_server->answersPosts = false;
    m_notifications.add(notification("a", "new"));
    ASSERT_TRUE(until([&] { return m_server->posts.size() == 2; }));
    m_server->refuse(0);
    awaitArrival();
    click(1);
    EXPECT_EQ(clicks(), (Clicks{{{{"section", "old's"}}, ""}}));
}

TEST_F(DesktopNotificationsTest, WithoutAServerNothingShowsAndALaterServerShowsWhatComesThen) {
    m_server.reset();
    m_notifications.add(notification("a", "A"));
    m_tasks.runAll();
    awaitDeparture();
    QCoreApplication::processEvents();
    m_server = std::make_unique<FakeNotificationServer>(m_bus.connect());
    awaitArrival();
    show(notification("b", "B"));
    EXPECT_EQ(m_server->posts.size(), 1U);
}

TEST_F(DesktopNotificationsTest, WithoutABusNothingShowsAndItIsReachedForAgain) {
    const auto connection = std::exchange(m_connection, QDBusConnection(QStringLiteral("none")));
    m_notifications.add(notification("a", "A"));
    m_tasks.runAll();
    EXPECT_EQ(m_reached, 1);
    m_connection = connection;
    show(notification("b", "B"));
    EXPECT_EQ(m_server->posts.size(), 1U);
}

TEST_F(DesktopNotificationsTest, ABusThatDiesTakesTheNotificationsAndNothingElse) {
    show(notification("a", "A"));
    m_bus.die();
    m_notifications.add(notification("a", "A again"));
    m_notifications.add(notification("b", "B"));
    EXPECT_TRUE(until([&] { return !m_connection.isConnected(); }));
    m_notifications.add(notification("c", "C"));
    m_tasks.runAll();
    m_notifications.withdrawAll();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_server->posts.size(), 1U);
}

TEST_F(DesktopNotificationsTest, NothingWaitsForABusThatAnswersNothing) {
    EXPECT_TRUE(m_bus.holdsNobodyUp([&] {
        m_notifications.add(notification("a", "A"));
        m_tasks.runAll();
        m_notifications.add(notification("b", "B"));
        m_tasks.runAll();
    }));
    EXPECT_TRUE(until([&] { return m_server->posts.size() == 2; }));
}

// The end

TEST_F(DesktopNotificationsTest, AtTheEndWhatStandsIsWithdrawnAndWhatWasClosedIsNot) {
    show(notification("a", "A"));
    show(notification("b", "B"));
    show(notification("c", "C"));
    m_server->end(2);
    awaitArrival();
    m_notifications
        .withdrawAll(); // does not wait for longer than its patience: the server lives on this thread
    EXPECT_TRUE(until([&] { return m_server->withdrawn.size() == 2; }));
    EXPECT_EQ(m_server->withdrawn, (std::vector{1U, 3U}));
    m_notifications.withdrawAll();
    awaitDeparture();
    awaitArrival();
    EXPECT_EQ(m_server->withdrawn.size(), 2U);
}

TEST_F(DesktopNotificationsTest, WhatIsWithdrawnIsWithdrawnFromWhoGaveTheNumber) {
    show(notification("a", "A"));
    m_server->giveNameAway();
    FakeNotificationServer next(m_bus.connect());
    m_notifications.withdrawAll(); // nobody has heard yet that the name has another owner
    EXPECT_TRUE(until([&] { return m_server->withdrawn.size() + next.withdrawn.size() == 1; }));
    EXPECT_EQ(m_server->withdrawn, std::vector{1U});
}

TEST_F(DesktopNotificationsTest, TheEndMayComeBeforeTheBusIsReachedAndBeforeAnAnswer) {
    DesktopNotifications early(m_tasks, m_bus.reach());
    early.add(notification("early", "A"));
    early.withdrawAll();
    m_tasks.runAll();
    awaitArrival();
    EXPECT_TRUE(m_server->posts.empty());
    m_server->answersPosts = false;
    {
        DesktopNotifications late(m_tasks, m_bus.reach());
        late.add(notification("a", "A"));
        ASSERT_TRUE(until([&] { return m_server->posts.size() == 1; }));
    }
    m_server->answer(0, 1);
    m_server->click(1);
    awaitArrival();
    EXPECT_EQ(clicks(), Clicks());
}

} // namespace
} // namespace quillane
