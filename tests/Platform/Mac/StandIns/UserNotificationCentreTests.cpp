#include "StandIns.h"
#include "UserNotificationCentre.h"
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quillane {
namespace {

using UserInfo = NotificationClicks::UserInfo;

class UserNotificationCentreTest : public testing::Test {
  protected:
    UserNotificationCentreTest() { StandIn::begin(); }

    std::unique_ptr<NotificationCentre> made() {
        return makeNotificationCentre([this](const UserInfo& userInfo) { clicks.push_back(userInfo); });
    }

    std::vector<UserInfo> clicks;
};

TEST_F(UserNotificationCentreTest, ABinaryWithoutABundleHasNone) {
    StandIn::setBundle({.path = "/usr/local/bin", .identifier = ""});
    EXPECT_EQ(made(), nullptr);
    StandIn::setBundle({.path = "/usr/local/bin"});
    EXPECT_EQ(made(), nullptr) << "an identifier alone is no bundle";
    StandIn::setBundle({.identifier = ""});
    EXPECT_EQ(made(), nullptr);
    EXPECT_FALSE(StandIn::hasDelegate());
}

TEST_F(UserNotificationCentreTest, ListensFromItsMakingOn) {
    const auto centre = made();
    ASSERT_NE(centre, nullptr);
    EXPECT_TRUE(StandIn::hasDelegate());
    EXPECT_EQ(StandIn::askedPermissions(), 0U) << "nothing is asked unasked";
}

TEST_F(UserNotificationCentreTest, AsksForBannersAndSound) {
    made()->requestAuthorization();
    EXPECT_EQ(StandIn::askedPermissions(), 4U | 2U);
}

TEST_F(UserNotificationCentreTest, DeliversAtOnceWithSoundUnderItsIdentifier) {
    made()->add({"startup-1", "Quillane – é", "A \"body\"", {{"section", "Startup"}}});
    const auto requests = StandIn::requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].identifier, "startup-1");
    EXPECT_EQ(requests[0].title, "Quillane – é");
    EXPECT_EQ(requests[0].body, "A \"body\"");
    EXPECT_TRUE(requests[0].hasSound);
    EXPECT_FALSE(requests[0].hasTrigger);
}

TEST_F(UserNotificationCentreTest, AClickTellsTheUserInfoAsItWasAndThatItIsDoneOnce) {
    const UserInfo userInfo = {{"section", "Startup"}, {"path", "/Users/alex/\xFF\x65\xCC\x81"}, {"", ""}};
    const auto centre = made();
    centre->add({"startup-1", "title", "body", userInfo});
    EXPECT_EQ(StandIn::act(0, StandIn::Deed::click), 1);
    EXPECT_EQ(clicks, std::vector({userInfo}));
}

TEST_F(UserNotificationCentreTest, ThatItWasDismissedIsNoClickAndDoneTheSame) {
    const auto centre = made();
    centre->add({"startup-1", "title", "body", {}});
    EXPECT_EQ(StandIn::act(0, StandIn::Deed::dismiss), 1);
    EXPECT_TRUE(clicks.empty());
}

TEST_F(UserNotificationCentreTest, OfForeignUserInfoTheTextsAreTold) {
    const auto centre = made();
    EXPECT_EQ(StandIn::clickOnForeign(), 1);
    EXPECT_EQ(clicks, (std::vector<UserInfo>{{{"section", "Overview"}}}));
}

TEST_F(UserNotificationCentreTest, ShowsWithBannerListAndSoundWhileTheProgramIsInFront) {
    const auto centre = made();
    EXPECT_EQ(StandIn::presentation(), std::pair(16UL | 8UL | 2UL, 1));
}

} // namespace
} // namespace quillane
