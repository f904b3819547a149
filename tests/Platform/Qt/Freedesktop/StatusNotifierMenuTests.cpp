#include "FakePanel.h"
#include "MenuEars.h"
#include "NotifierMenu.h"
#include "PrivateBus.h"
#include "StatusNotifierMenu.h"
#include <QDBusArgument>
#include <QDBusReply>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace quillane {
namespace {

using Entries = StatusNotifierMenu::Entries;

const Entries kEntries = {{.id = 20, .words = "Open"},
                          {.id = 30, .words = "Review", .isEnabled = false},
                          {},
                          {.id = 60, .words = "Quit_now"}};

class StatusNotifierMenuTest : public testing::Test {
  protected:
    StatusNotifierMenuTest() {
        m_menu.setEntries(kEntries);
        FakePanel::goAround(m_connection); // what is told of the first entries is told before anybody listens
    }

    QDBusMessage call(const QString& interface, const QString& method, const QVariantList& arguments) {
        auto message = QDBusMessage::createMethodCall(
            m_connection.baseService(), QString::fromLatin1(StatusNotifierMenu::kPath), interface, method);
        message.setArguments(arguments);
        const QDBusPendingCall pending = m_panel.asyncCall(message);
        EXPECT_TRUE(QTest::qWaitFor([&] { return pending.isFinished(); }, FakePanel::kPatience));
        return pending.reply();
    }
    QDBusMessage call(const char* method, const QVariantList& arguments) {
        return call(QStringLiteral("com.canonical.dbusmenu"), QString::fromLatin1(method), arguments);
    }
    bool isRefused(const char* method, const QVariantList& arguments) {
        const auto answer = call(method, arguments);
        return answer.type() == QDBusMessage::ErrorMessage &&
               answer.errorName() == QLatin1String("org.freedesktop.DBus.Error.InvalidArgs");
    }
    NotifierMenuLayout layout(int parent = 0, int depth = -1, const QStringList& names = {}) {
        const auto answer = call("GetLayout", {parent, depth, names});
        EXPECT_EQ(answer.signature(), QStringLiteral("u(ia{sv}av)"));
        return qdbus_cast<NotifierMenuLayout>(answer.arguments().value(1));
    }
    uint revision() { return call("GetLayout", {0, 0, QStringList()}).arguments().value(0).toUInt(); }
    int numberOf(qsizetype line) { return layout().children.at(line).id; }
    static QVariantList event(int id, const char* kind) {
        return {id, QString::fromLatin1(kind), QVariant::fromValue(QDBusVariant(QString())),
                QVariant::fromValue(1U)};
    }
    void awaitNews() {
        FakePanel::goAround(m_connection);
        FakePanel::goAround(m_panel);
    }

    PrivateBus m_bus;
    QDBusConnection m_connection = m_bus.connect();
    QDBusConnection m_panel = m_bus.connect();
    std::vector<int> m_chosen;
    StatusNotifierMenu m_menu{m_connection, [this](int id) { m_chosen.push_back(id); }};
};

TEST_F(StatusNotifierMenuTest, HasThePropertiesThatPanelsAskFor) {
    const auto property = [this](const char* name) {
        return call(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                    {QStringLiteral("com.canonical.dbusmenu"), QString::fromLatin1(name)})
            .arguments()
            .value(0)
            .value<QDBusVariant>()
            .variant();
    };
    EXPECT_EQ(property("Version"), QVariant(3U));
    EXPECT_EQ(property("Status"), QVariant(QStringLiteral("normal")));
    EXPECT_EQ(property("TextDirection"), QVariant(QStringLiteral("ltr")));
    EXPECT_EQ(property("IconThemePath"), QVariant(QStringList()));
}

TEST_F(StatusNotifierMenuTest, TheLinesStandInTheirOrderWithWhatPanelsDraw) {
    const auto menu = layout();
    EXPECT_EQ(menu.id, 0);
    EXPECT_EQ(menu.properties,
              (QVariantMap{{QStringLiteral("children-display"), QStringLiteral("submenu")}}));
    ASSERT_EQ(menu.children.size(), 4);
    const auto line = [](const char* label, bool isEnabled) {
        return QVariantMap{{QStringLiteral("label"), QString::fromLatin1(label)},
                           {QStringLiteral("enabled"), isEnabled}};
    };
    EXPECT_EQ(menu.children[0].properties, line("Open", true));
    EXPECT_EQ(menu.children[1].properties, line("Review", false));
    EXPECT_EQ(menu.children[2].properties,
              (QVariantMap{{QStringLiteral("type"), QStringLiteral("separator")}}));
    EXPECT_EQ(menu.children[3].properties, line("Quit__now", true)) << "one underscore would mark a key";
}

TEST_F(StatusNotifierMenuTest, AsDeepAsAPanelAsksAndNoDeeper) {
    EXPECT_EQ(layout(0, 0).children.size(), 0);
    for (const int depth : {1, 2, std::numeric_limits<int>::max(), -1, std::numeric_limits<int>::min()}) {
        EXPECT_EQ(layout(0, depth).children.size(), 4) << depth;
    }
    const auto line = layout(numberOf(1));
    EXPECT_EQ(line.properties.value(QStringLiteral("label")), QVariant(QStringLiteral("Review")));
    EXPECT_TRUE(line.children.isEmpty());
}

TEST_F(StatusNotifierMenuTest, OnlyThePropertiesThatAPanelNamesAreToldAndUnknownOnesAreNone) {
    const QStringList names = {QStringLiteral("label"), QStringLiteral("colour of the moon")};
    const auto menu = layout(0, -1, names);
    EXPECT_TRUE(menu.properties.isEmpty());
    EXPECT_EQ(menu.children.at(0).properties,
              (QVariantMap{{QStringLiteral("label"), QStringLiteral("Open")}}));
    EXPECT_TRUE(menu.children.at(2).properties.isEmpty());
}

TEST_F(StatusNotifierMenuTest, SeveralLinesAreToldAtOnceAndEachOnceOnly) {
    const auto lines = [this](const QList<int>& ids) {
        const auto answer = call("GetGroupProperties", {QVariant::fromValue(ids), QStringList()});
        EXPECT_EQ(answer.signature(), QStringLiteral("a(ia{sv})"));
        return qdbus_cast<NotifierMenuLines>(answer.arguments().value(0));
    };
    EXPECT_EQ(lines({}).size(), 5) << "all, with the menu itself";
    const int second = numberOf(1);
    const auto told = lines({second, 999, second, -1});
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told.front().id, second);
    EXPECT_EQ(told.front().properties.value(QStringLiteral("enabled")), QVariant(false));
}

TEST_F(StatusNotifierMenuTest, OnePropertyOfOneLineIsToldAndWhatThereIsNotIsRefused) {
    const auto answer = call("GetProperty", {numberOf(0), QStringLiteral("label")});
    EXPECT_EQ(answer.arguments().value(0).value<QDBusVariant>().variant(), QVariant(QStringLiteral("Open")));
    EXPECT_TRUE(isRefused("GetProperty", {numberOf(0), QStringLiteral("colour of the moon")}));
    EXPECT_TRUE(isRefused("GetProperty", {999, QStringLiteral("label")}));
}

TEST_F(StatusNotifierMenuTest, ALineThatThereIsNotIsRefusedWhereverItIsNamed) {
    const int last = numberOf(3);
    for (const int id : {-1, last + 1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_TRUE(isRefused("GetLayout", {id, -1, QStringList()})) << id;
        EXPECT_TRUE(isRefused("GetProperty", {id, QStringLiteral("label")})) << id;
        EXPECT_TRUE(isRefused("AboutToShow", {id})) << id;
        EXPECT_TRUE(isRefused("Event", event(id, "clicked"))) << id;
    }
    EXPECT_TRUE(m_chosen.empty());
}

TEST_F(StatusNotifierMenuTest, AClickOnALineIsAChoiceAndNothingElseThatHappensToIt) {
    for (const char* kind : {"opened", "closed", "hovered", "", "CLICKED"}) {
        EXPECT_FALSE(isRefused("Event", event(numberOf(0), kind))) << kind;
    }
    EXPECT_FALSE(isRefused("Event", event(0, "clicked"))) << "the menu itself";
    EXPECT_FALSE(isRefused("Event", event(numberOf(1), "clicked"))) << "it can't be chosen";
    EXPECT_FALSE(isRefused("Event", event(numberOf(2), "clicked"))) << "a rule";
    EXPECT_TRUE(m_chosen.empty());
    EXPECT_FALSE(isRefused("Event", event(numberOf(3), "clicked")));
    EXPECT_EQ(m_chosen, std::vector{60});
}

TEST_F(StatusNotifierMenuTest, SeveralEventsAreTakenAtOnceAndUnknownLinesTold) {
    const auto clicked = [](int id) {
        return NotifierMenuEvent{.id = id, .kind = QStringLiteral("clicked"), .data = QDBusVariant(0)};
    };
    const NotifierMenuEvents events = {clicked(999), clicked(numberOf(0)), clicked(-7)};
    const auto answer = call("EventGroup", {QVariant::fromValue(events)});
    EXPECT_EQ(qdbus_cast<QList<int>>(answer.arguments().value(0)), (QList<int>{999, -7}));
    EXPECT_EQ(m_chosen, std::vector{20});
}

TEST_F(StatusNotifierMenuTest, IsUpToDateWheneverAPanelIsAboutToShowIt) {
    EXPECT_EQ(call("AboutToShow", {0}).arguments(), QVariantList{false});
    const auto answer = call("AboutToShowGroup", {QVariant::fromValue(QList<int>{0, 999, numberOf(0), -1})});
    EXPECT_TRUE(qdbus_cast<QList<int>>(answer.arguments().value(0)).isEmpty());
    EXPECT_EQ(qdbus_cast<QList<int>>(answer.arguments().value(1)), (QList<int>{999, -1}));
}

TEST_F(StatusNotifierMenuTest, ALineThatMayBeChosenNowKeepsItsNumberAndPanelsAreTold) {
    const MenuEars ears(m_panel);
    awaitNews();
    const int number = numberOf(1);
    const uint before = revision();
    auto entries = kEntries;
    entries[1].isEnabled = true;
    for (int i = 0; i < 2; ++i) {
        m_menu.setEntries(entries);
    }
    awaitNews();
    ASSERT_EQ(ears.changes.size(), 1) << "once";
    EXPECT_EQ(ears.changes.front().id, number);
    EXPECT_EQ(ears.changes.front().properties, (QVariantMap{{QStringLiteral("enabled"), true}}));
    EXPECT_EQ(ears.signatures, std::vector<std::string>{"a(ia{sv})a(ias)"});
    EXPECT_TRUE(ears.revisions.isEmpty());
    EXPECT_EQ(revision(), before);
    EXPECT_EQ(numberOf(1), number);
}

TEST_F(StatusNotifierMenuTest, AnotherMenuHasOtherNumbersSoThatALateClickMeansNothingElse) {
    const MenuEars ears(m_panel);
    awaitNews();
    const int number = numberOf(0);
    const uint before = revision();
    for (int i = 0; i < 2; ++i) {
        m_menu.setEntries({{.id = 60, .words = "Quit"}});
    }
    awaitNews();
    EXPECT_EQ(ears.revisions, QList<uint>{before + 1}) << "once";
    EXPECT_EQ(revision(), before + 1);
    EXPECT_TRUE(ears.changes.isEmpty());
    EXPECT_TRUE(isRefused("Event", event(number, "clicked")));
    EXPECT_TRUE(m_chosen.empty());
}

TEST_F(StatusNotifierMenuTest, NothingElseOfItIsOnTheBus) {
    const auto text =
        call(QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"), {})
            .arguments()
            .value(0)
            .toString();
    EXPECT_TRUE(text.contains(QStringLiteral("\"com.canonical.dbusmenu\"")));
    for (const char* word : {"deleteLater", "setEntries", "objectName", "destroyed"}) {
        EXPECT_FALSE(text.contains(QString::fromLatin1(word))) << word;
    }
}

} // namespace
} // namespace quillane
