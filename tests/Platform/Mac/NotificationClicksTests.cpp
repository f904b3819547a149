#include "NotificationClicks.h"
#include "StepTaskRunner.h"
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace quillane {
namespace {

using UserInfo = NotificationClicks::UserInfo;

UserInfo section(const std::string& title) {
    return {{"section", title}};
}

class NotificationClicksTest : public testing::Test {
  protected:
    void hear() {
        clicks->setHandler([this](const auto& click) {
            heard.push_back(click.userInfo);
            tokens += click.activationToken;
        });
    }

    StepTaskRunner tasks;
    std::unique_ptr<NotificationClicks> clicks = std::make_unique<NotificationClicks>(tasks);
    std::function<void(UserInfo)> enter = clicks->entrance();
    std::vector<UserInfo> heard;
    std::string tokens;
};

TEST_F(NotificationClicksTest, AClickIsToldWithItsUserInfoAndNoToken) {
    hear();
    enter({{"section", "Overview"}, {"more", "1"}});
    tasks.settle();
    EXPECT_EQ(heard, (std::vector<UserInfo>{{{"section", "Overview"}, {"more", "1"}}}));
    EXPECT_EQ(tokens, "");
}

TEST_F(NotificationClicksTest, NobodyIsToldWithinTheSystemsCall) {
    hear();
    tasks.settle();
    enter(section("Overview"));
    EXPECT_TRUE(heard.empty());
    tasks.turn();
    EXPECT_EQ(heard.size(), 1U);
}

TEST_F(NotificationClicksTest, WhatCameBeforeThereWasAnybodyIsToldToTheFirstInOrder) {
    enter(section("Startup"));
    enter(section("Overview"));
    tasks.settle();
    hear();
    EXPECT_TRUE(heard.empty()) << "within the call";
    tasks.settle();
    EXPECT_EQ(heard, (std::vector<UserInfo>{section("Startup"), section("Overview")}));
}

TEST_F(NotificationClicksTest, TheFirstIsToldAndNoLaterOne) {
    enter(section("Startup"));
    tasks.settle();
    hear();
    tasks.settle();
    hear();
    tasks.settle();
    EXPECT_EQ(heard.size(), 1U);
}

TEST_F(NotificationClicksTest, AnEmptyFunctionIsNobody) {
    hear();
    clicks->setHandler({});
    enter(section("Startup"));
    tasks.settle();
    EXPECT_TRUE(heard.empty());
    hear();
    tasks.settle();
    EXPECT_EQ(heard.size(), 1U);
}

TEST_F(NotificationClicksTest, AHandlerMaySetAnotherAndGoesOnItself) {
    std::vector<UserInfo> later;
    const std::string words(200, 'x'); // which it has in memory of its own
    clicks->setHandler([this, &later, words](const auto& first) {
        clicks->setHandler([&](const auto& second) { later.push_back(second.userInfo); });
        heard.push_back(first.userInfo);
        tokens = words;
    });
    enter(section("Startup"));
    enter(section("Overview"));
    tasks.settle();
    EXPECT_EQ(heard, (std::vector<UserInfo>{section("Startup")}));
    EXPECT_EQ(tokens, words);
    EXPECT_EQ(later, (std::vector<UserInfo>{section("Overview")}));
}

TEST_F(NotificationClicksTest, WhatWaitsHasABound) {
    for (std::size_t i = 0; i < NotificationClicks::kMostWaiting + 10; ++i) {
        enter(section("Overview"));
    }
    tasks.settle();
    hear();
    tasks.settle();
    EXPECT_EQ(heard.size(), NotificationClicks::kMostWaiting);
}

TEST_F(NotificationClicksTest, AClickAfterTheEndIsToldToNobody) {
    hear();
    enter(section("Overview"));
    clicks.reset();
    enter(section("Startup"));
    tasks.settle();
    EXPECT_TRUE(heard.empty());
}

} // namespace
} // namespace quillane
