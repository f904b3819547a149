#include "FakePanel.h"
#include "PrivateBus.h"
#include "StatusNotifierItem.h"
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quillane {
namespace {

struct Press {
    QPoint place;
    QString token;
    friend bool operator==(const Press&, const Press&) = default;
};

class StatusNotifierItemTest : public testing::Test {
  protected:
    StatusNotifierItemTest() {
        m_panel.items = {m_connection.baseService() + QString::fromLatin1(StatusNotifierItem::kPath)};
    }
    std::string text(const char* name) { return m_panel.property(name).toString().toStdString(); }
    NotifierPixmaps pixmaps(const char* name) { return qdbus_cast<NotifierPixmaps>(m_panel.property(name)); }
    void awaitNews() {
        FakePanel::goAround(m_connection);
        FakePanel::goAround(m_panel.bus());
    }

    PrivateBus m_bus;
    QDBusConnection m_connection = m_bus.connect();
    FakePanel m_panel{m_bus.connect()};
    std::vector<Press> m_presses;
    std::vector<std::pair<int, std::string>> m_choices;
    StatusNotifierItem m_item{
        m_connection,
        {.pressed = [this](QPoint place, const QString& token) { m_presses.push_back({place, token}); },
         .chosen = [this](int id, const QString& token) { m_choices.push_back({id, token.toStdString()}); }}};
};

TEST_F(StatusNotifierItemTest, HasAllThatPanelsAskFor) {
    for (const auto& [name, value] : {std::pair("Category", "ApplicationStatus"),
                                      {"Id", "org.quillane.Quillane"},
                                      {"Title", "Quillane"},
                                      {"Status", "Active"},
                                      {"IconName", ""},
                                      {"IconThemePath", ""},
                                      {"OverlayIconName", ""},
                                      {"AttentionIconName", ""},
                                      {"AttentionMovieName", ""},
                                      {"XAyatanaLabel", ""},
                                      {"XAyatanaLabelGuide", ""}}) {
        const auto told = m_panel.property(name);
        EXPECT_EQ(told.userType(), QMetaType::QString) << name;
        EXPECT_EQ(told.toString().toStdString(), value) << name;
    }
    EXPECT_EQ(m_panel.property("WindowId"), QVariant(0));
    EXPECT_EQ(m_panel.property("ItemIsMenu"), QVariant(false));
    EXPECT_EQ(m_panel.property("Menu").value<QDBusObjectPath>().path(), QStringLiteral("/NO_DBUSMENU"));
    EXPECT_TRUE(pixmaps("OverlayIconPixmap").isEmpty());
    EXPECT_TRUE(pixmaps("AttentionIconPixmap").isEmpty());
}

TEST_F(StatusNotifierItemTest, PicturesAndToolTipHaveTheShapeThatPanelsRead) {
    for (const auto& [name, signature] : {std::pair("IconPixmap", "a(iiay)"),
                                          {"OverlayIconPixmap", "a(iiay)"},
                                          {"AttentionIconPixmap", "a(iiay)"},
                                          {"ToolTip", "(sa(iiay)ss)"}}) {
        EXPECT_EQ(m_panel.property(name).value<QDBusArgument>().currentSignature().toStdString(), signature)
            << name;
    }
}

TEST_F(StatusNotifierItemTest, TheIconComesInTwoSizes) {
    const auto icons = pixmaps("IconPixmap");
    ASSERT_EQ(icons.size(), 2);
    for (const auto& [index, side] : {std::pair(0, 22), {1, 44}}) {
        EXPECT_EQ(icons[index].width, side);
        EXPECT_EQ(icons[index].height, side);
        EXPECT_EQ(icons[index].bytes.size(), 4 * side * side);
    }
}

TEST_F(StatusNotifierItemTest, TheFigureStandsInTitleToolTipAndLabel) {
    m_item.setFigure(QStringLiteral("24.86 GB"));
    EXPECT_EQ(text("Title"), "Quillane, 24.86 GB");
    EXPECT_EQ(text("XAyatanaLabel"), "24.86 GB");
    const auto tip = qdbus_cast<NotifierToolTip>(m_panel.property("ToolTip"));
    EXPECT_EQ(tip.title.toStdString(), "Quillane, 24.86 GB");
    EXPECT_TRUE(tip.text.isEmpty());
    EXPECT_TRUE(tip.iconName.isEmpty());
    EXPECT_TRUE(tip.pixmaps.isEmpty());
    m_item.setFigure({});
    EXPECT_EQ(text("Title"), "Quillane");
}

TEST_F(StatusNotifierItemTest, PanelsAreToldOfEachNewFigureOnce) {
    for (const char* figure : {"1 GB", "1 GB", ""}) {
        m_item.setFigure(QString::fromLatin1(figure));
        awaitNews();
        EXPECT_EQ(m_panel.label.toStdString(), figure);
    }
    const QStringList once = {QStringLiteral("NewTitle"), QStringLiteral("NewToolTip"),
                              QStringLiteral("XAyatanaNewLabel")};
    EXPECT_EQ(m_panel.news, once + once);
}

TEST_F(StatusNotifierItemTest, EachKindOfClickIsOneAndAWheelIsNone) {
    int x = 1;
    for (const char* method : {"Activate", "SecondaryActivate", "ContextMenu"}) {
        m_panel.callItem(method, {x, 2});
        ASSERT_FALSE(m_presses.empty()) << method;
        EXPECT_EQ(m_presses.back(), (Press{QPoint(x, 2), {}})) << method;
        ++x;
    }
    m_panel.callItem("Scroll", {120, QStringLiteral("vertical")});
    EXPECT_EQ(m_presses.size(), 3U);
}

TEST_F(StatusNotifierItemTest, ATokenIsForTheNextClickAlone) {
    const auto give = [this](const QString& token) {
        m_panel.callItem("ProvideXdgActivationToken", {token});
    };
    give(QStringLiteral("first"));
    give(QStringLiteral("second"));
    m_panel.callItem("Activate", {1, 2});
    m_panel.callItem("Activate", {1, 2});
    give(QString(StatusNotifierItem::kLongestToken, QLatin1Char('a')));
    m_panel.callItem("Activate", {1, 2});
    give(QStringLiteral("third"));
    give(QString(StatusNotifierItem::kLongestToken + 1, QLatin1Char('a')));
    m_panel.callItem("Activate", {1, 2});
    std::vector<qsizetype> lengths;
    for (const auto& press : m_presses) {
        lengths.push_back(press.token.size());
    }
    EXPECT_EQ(lengths, (std::vector<qsizetype>{6, 0, StatusNotifierItem::kLongestToken, 0}));
    EXPECT_EQ(m_presses.front().token, QStringLiteral("second"));
}

TEST_F(StatusNotifierItemTest, ATokenThatWasGivenBeforeGoesWithWhatIsChosenFromTheMenu) {
    m_item.setMenu({{.id = 7, .words = "Open"}});
    m_panel.callItem("ProvideXdgActivationToken", {QStringLiteral("token")});
    const auto lines = m_panel.menu();
    ASSERT_EQ(lines.size(), 1);
    for (int i = 0; i < 2; ++i) {
        m_panel.clickMenu(lines.front().id);
    }
    EXPECT_EQ(m_choices, (std::vector<std::pair<int, std::string>>{{7, "token"}, {7, ""}}));
    m_panel.callItem("Activate", {1, 2});
    EXPECT_EQ(m_presses.back().token, QString());
}

TEST_F(StatusNotifierItemTest, TheMenuIsNamedWhileThereIsOne) {
    for (const bool isThere : {true, false}) {
        m_panel.news.clear();
        for (int i = 0; i < 2; ++i) {
            m_item.setMenu(isThere ? StatusNotifierMenu::Entries{{.id = i, .words = "Open"}}
                                   : StatusNotifierMenu::Entries());
        }
        awaitNews();
        EXPECT_EQ(m_panel.property("Menu").value<QDBusObjectPath>().path(),
                  isThere ? QStringLiteral("/MenuBar") : QStringLiteral("/NO_DBUSMENU"));
        EXPECT_EQ(m_panel.news, QStringList{QStringLiteral("NewMenu")}) << "once";
        EXPECT_EQ(m_panel.property("ItemIsMenu"), QVariant(false)) << "a click is one, menu or not";
    }
}

TEST_F(StatusNotifierItemTest, NothingElseOfItIsOnTheBus) {
    const auto text =
        m_panel.call(QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"), {})
            .arguments()
            .value(0)
            .toString();
    EXPECT_TRUE(text.contains(QStringLiteral("\"org.kde.StatusNotifierItem\"")));
    for (const char* word : {"deleteLater", "setFigure", "objectName", "destroyed"}) {
        EXPECT_FALSE(text.contains(QString::fromLatin1(word))) << word;
    }
}

} // namespace
} // namespace quillane
