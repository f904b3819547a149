#include "NotificationCenter.h"
#include <gtest/gtest.h>

using namespace quillane;

namespace {

struct Heard {
    std::vector<std::string> objects;
    NotificationCenter::Handler handler() {
        return
            [this](const NotificationCenter::Object& object) { objects.push_back(object.value_or("none")); };
    }
};

} // namespace

TEST(NotificationCenter, AnObserverHearsItsNameAndNoOther) {
    NotificationCenter center;
    Heard heard;
    const auto subscription = center.observe(NotificationName::kShowSection, heard.handler());
    center.post(NotificationName::kShowSection, "Files");
    center.post(NotificationName::kShowOverview);
    EXPECT_EQ(heard.objects, std::vector<std::string>{"Files"});
}

TEST(NotificationCenter, ANotificationMayComeWithoutAnObject) {
    NotificationCenter center;
    Heard heard;
    const auto subscription = center.observe(NotificationName::kShowOverview, heard.handler());
    center.post(NotificationName::kShowOverview);
    EXPECT_EQ(heard.objects, std::vector<std::string>{"none"});
}

TEST(NotificationCenter, LettingTheSubscriptionGoEndsIt) {
    NotificationCenter center;
    Heard heard;
    auto subscription = center.observe("name", heard.handler());
    subscription = {};
    center.post("name");
    EXPECT_TRUE(heard.objects.empty());
}

TEST(NotificationCenter, AHandlerMayLetItsOwnAndLaterSubscriptionsGo) {
    NotificationCenter center;
    Heard heard;
    NotificationCenter::Subscription first;
    NotificationCenter::Subscription second;
    first = center.observe("name", [&](const auto&) {
        heard.objects.emplace_back("first");
        first = {};
        second = {};
    });
    second = center.observe("name", heard.handler());
    center.post("name");
    center.post("name");
    EXPECT_EQ(heard.objects, std::vector<std::string>{"first"});
}

TEST(NotificationCenter, WhoJoinsDuringAPostIsToldFromTheNextOneOn) {
    NotificationCenter center;
    Heard heard;
    std::vector<NotificationCenter::Subscription> joined;
    const auto subscription = center.observe(
        "name", [&](const auto&) { joined.push_back(center.observe("name", heard.handler())); });
    center.post("name", "one");
    EXPECT_TRUE(heard.objects.empty());
    center.post("name", "two");
    EXPECT_EQ(heard.objects, std::vector<std::string>{"two"});
}

TEST(NotificationCenter, ASubscriptionMayOutliveTheCentre) {
    NotificationCenter::Subscription subscription;
    {
        NotificationCenter center;
        subscription = center.observe("name", [](const auto&) {});
    }
    subscription = {};
}
