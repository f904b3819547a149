// What every desktop's notifications do, and what those over a server do besides. Where the environment names a real
// server, QUILLANE_NOTIFICATION_SERVER, it takes the place of the test's own.
#include "NotificationDesk.h"
#include <gtest/gtest.h>
#include <memory>

namespace quillane {
namespace {

using Clicks = std::vector<UserNotifications::Click>;
using UserInfo = std::map<std::string, std::string>;

UserNotification notification(const std::string& identifier, const std::string& title,
                              UserInfo userInfo = {}) {
    return {identifier, title, "Nothing is removed.", std::move(userInfo)};
}

// A test's clicks on what its desk shows.
template <class Desk>
class OverDesk {
  public:
    explicit OverDesk(std::unique_ptr<Desk> desk)
        : desk(std::move(desk)) {}

    void add(const UserNotification& notification) { desk->notifications().add(notification); }
    // Adds it and waits until it shows, with these before it.
    void show(const UserNotification& notification, NotificationDesk::Shown before = {}) {
        add(notification);
        before.emplace_back(notification.title, notification.body);
        EXPECT_TRUE(desk->shows(before));
    }
    void hear() {
        desk->notifications().setClickHandler([this](const auto& click) { heard.push_back(click.userInfo); });
        desk->settle();
    }
    void click(const std::string& title) {
        desk->click(title);
        desk->settle();
    }

    std::unique_ptr<Desk> desk;
    std::vector<UserInfo> heard; // the user info of each click
};

struct Adapter {
    const char* name;
    std::unique_ptr<NotificationDesk> (*make)();
};

class UserNotificationsContract : public testing::TestWithParam<Adapter>,
                                  protected OverDesk<NotificationDesk> {
  protected:
    UserNotificationsContract()
        : OverDesk(GetParam().make()) {}
};

TEST_P(UserNotificationsContract, ANotificationShowsItsWordsAsPlainText) {
    add({"startup-1", "R&D <b>1</b>", "com.<i>a</i>, \"b\" & c &amp; d", {}});
    EXPECT_TRUE(desk->shows({{"R&D <b>1</b>", "com.<i>a</i>, \"b\" & c &amp; d"}}));
}

TEST_P(UserNotificationsContract, AClickTellsTheUserInfoOfItsNotification) {
    hear();
    show(notification("weekly", "Weekly", {{"section", "Overview"}, {"more", "1"}}));
    click("Weekly");
    EXPECT_EQ(heard, (std::vector<UserInfo>{{{"section", "Overview"}, {"more", "1"}}}));
}

TEST_P(UserNotificationsContract, ClicksAreToldApartByWhatWasClicked) {
    hear();
    show(notification("a", "A", {{"section", "Overview"}}));
    show(notification("b", "B", {{"section", "Startup"}}), {{"A", "Nothing is removed."}});
    click("A");
    click("B");
    EXPECT_EQ(heard, (std::vector<UserInfo>{{{"section", "Overview"}}, {{"section", "Startup"}}}));
}

TEST_P(UserNotificationsContract, ALaterOneOfTheSameIdentifierTakesThePlace) {
    hear();
    show(notification("a", "A", {{"section", "Overview"}}));
    show(notification("b", "B"), {{"A", "Nothing is removed."}});
    add(notification("a", "A again", {{"section", "Startup"}}));
    EXPECT_TRUE(desk->shows({{"A again", "Nothing is removed."}, {"B", "Nothing is removed."}}));
    click("A again");
    EXPECT_EQ(heard, (std::vector<UserInfo>{{{"section", "Startup"}}}));
}

TEST_P(UserNotificationsContract, OfSeveralAddedInOneGoTheLastOneStands) {
    hear();
    for (const char* title : {"one", "two", "three"}) {
        add(notification("a", title, {{"section", title}}));
    }
    EXPECT_TRUE(desk->shows({{"three", "Nothing is removed."}}));
    click("three");
    EXPECT_EQ(heard, (std::vector<UserInfo>{{{"section", "three"}}}));
}

TEST_P(UserNotificationsContract, WhatWasClickedWhileThereWasNobodyIsToldToTheFirst) {
    show(notification("a", "A", {{"section", "Startup"}}));
    click("A");
    EXPECT_TRUE(heard.empty());
    hear();
    EXPECT_EQ(heard, (std::vector<UserInfo>{{{"section", "Startup"}}}));
    std::vector<UserInfo> second;
    desk->notifications().setClickHandler([&](const auto& click) { second.push_back(click.userInfo); });
    desk->settle();
    EXPECT_TRUE(second.empty());
}

TEST_P(UserNotificationsContract, OnlyTheHandlerThatWasSetLastIsTold) {
    hear();
    desk->notifications().setClickHandler({});
    show(notification("a", "A"));
    click("A");
    EXPECT_TRUE(heard.empty());
}

TEST_P(UserNotificationsContract, NobodyIsToldWithinACall) {
    show(notification("a", "A"));
    click("A");
    desk->notifications().setClickHandler([this](const auto& click) { heard.push_back(click.userInfo); });
    EXPECT_TRUE(heard.empty());
    desk->tasks().turn();
    EXPECT_EQ(heard.size(), 1U);
}

TEST_P(UserNotificationsContract, AskingForPermissionChangesNothingThatShows) {
    show(notification("a", "A"));
    desk->notifications().requestAuthorization();
    EXPECT_TRUE(desk->shows({{"A", "Nothing is removed."}}));
}

INSTANTIATE_TEST_SUITE_P(
    Adapters, UserNotificationsContract,
    testing::Values(
        Adapter{"Desktop", [] { return std::unique_ptr<NotificationDesk>(serverDesk()); }},
        Adapter{"Mac", [] { return std::unique_ptr<NotificationDesk>(std::make_unique<CentreDesk>()); }},
        Adapter{"Recorder",
                [] { return std::unique_ptr<NotificationDesk>(std::make_unique<RecorderDesk>()); }}),
    [](const auto& adapter) { return adapter.param.name; });

class NotificationServerContract : public testing::Test, protected OverDesk<ServerDesk> {
  protected:
    NotificationServerContract()
        : OverDesk(serverDesk()) {}
};

TEST_F(NotificationServerContract, AfterARestartWhatIsAddedShowsAndIsClickedAsBefore) {
    hear();
    show(notification("a", "A", {{"section", "Overview"}}));
    desk->restart();
    show(notification("b", "B", {{"section", "Startup"}}));
    click("B"); // which may have the number that A had
    show(notification("a", "A again", {{"section", "Developer"}}), {{"B", "Nothing is removed."}});
    click("A again");
    EXPECT_EQ(heard, (std::vector<UserInfo>{{{"section", "Startup"}}, {{"section", "Developer"}}}));
}

TEST_F(NotificationServerContract, AtTheEndNothingIsLeftOnTheScreen) {
    show(notification("a", "A"));
    show(notification("b", "B"), {{"A", "Nothing is removed."}});
    desk->adapter.withdrawAll();
    EXPECT_TRUE(desk->showsNothing());
}

} // namespace
} // namespace quillane
