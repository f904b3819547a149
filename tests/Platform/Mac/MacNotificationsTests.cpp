#include "FakeNotificationCentre.h"
#include "MacNotifications.h"
#include "StepTaskRunner.h"
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quillane {
namespace {

class MacNotificationsTest : public testing::Test {
  protected:
    StepTaskRunner tasks;
    FakeNotificationScreen screen;
};

TEST_F(MacNotificationsTest, TheCentreIsThereBeforeAnythingIsAskedOfIt) {
    const MacNotifications notifications(tasks,
                                         [this](auto clicked) { return screen.make(std::move(clicked)); });
    EXPECT_TRUE(screen.clicked) << "a click that started the program comes early";
}

TEST_F(MacNotificationsTest, TheQuestionForPermissionIsTheSystems) {
    MacNotifications notifications(tasks, [this](auto clicked) { return screen.make(std::move(clicked)); });
    notifications.requestAuthorization();
    EXPECT_EQ(screen.questions, 1);
}

TEST_F(MacNotificationsTest, TitleAndBodyAreMadeFitToBeRead) {
    MacNotifications notifications(tasks, [this](auto clicked) { return screen.make(std::move(clicked)); });
    notifications.add({"startup-1", "a\u202Eb", std::string(5'000, 'x'), {{"section", "Start\u202Eup"}}});
    ASSERT_EQ(screen.standing.size(), 1U);
    EXPECT_EQ(screen.standing[0].identifier, "startup-1");
    EXPECT_EQ(screen.standing[0].title, "a‹U+202E›b");
    EXPECT_EQ(screen.standing[0].body, std::string(1'999, 'x') + "…");
    EXPECT_EQ(screen.standing[0].userInfo.at("section"), "Start\u202Eup") << "for the program alone";
}

TEST_F(MacNotificationsTest, WithoutACentreEverythingIsSilent) {
    MacNotifications notifications(tasks, [](const auto&) { return nullptr; });
    int clicks = 0;
    notifications.setClickHandler([&](const auto&) { ++clicks; });
    notifications.requestAuthorization();
    notifications.add({"startup-1", "title", "body", {}});
    tasks.runAll();
    EXPECT_EQ(clicks, 0);
}

} // namespace
} // namespace quillane
