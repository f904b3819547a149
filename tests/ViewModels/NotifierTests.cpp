#include "Notifier.h"
#include "RecordingNotifications.h"
#include "StepTaskRunner.h"
#include <gtest/gtest.h>
#include <memory>

using namespace quillane;

namespace {

// What the notifier does, in its order.
class NotifierTest : public testing::Test {
  protected:
    using Log = std::vector<std::string>;

    void add(std::map<std::string, std::string> userInfo) {
        m_desktop.add({"weekly", "Title", "Body", std::move(userInfo)});
    }
    Log click(const std::string& token = {}) {
        m_desktop.click("weekly", token);
        m_runner.settle();
        return std::exchange(m_log, {});
    }

    StepTaskRunner m_runner;
    RecordingNotifications m_desktop{m_runner};
    NotificationCenter m_center;
    Log m_log;
    NotificationCenter::Subscription m_subscription =
        m_center.observe(NotificationName::kShowSection, [this](const NotificationCenter::Object& section) {
            m_log.push_back("show " + section.value_or("nothing"));
        });
    std::unique_ptr<Notifier> m_notifier = std::make_unique<Notifier>(
        m_desktop, m_center, [this](const std::string& token) { m_log.push_back("activate " + token); });
};

} // namespace

TEST_F(NotifierTest, AClickBringsTheProgramForwardAndThenShowsTheSectionOfTheNotification) {
    add({{"section", "Startup"}});
    EXPECT_EQ(click("token"), (Log{"activate token", "show Startup"}));
}

TEST_F(NotifierTest, AClickOnANotificationWithoutASectionPostsTheStringOverview) {
    add({});
    EXPECT_EQ(click(), (Log{"activate ", "show overview"}));
    add({{"Section", "Startup"}});
    EXPECT_EQ(click(), (Log{"activate ", "show overview"}));
}

TEST_F(NotifierTest, ASectionIsHandedOnWhateverItSays) {
    for (const char* section : {"Overview", "Orphaned Files", "", "nonsense"}) {
        add({{"section", section}});
        EXPECT_EQ(click(), (Log{"activate ", std::string("show ") + section}));
    }
}

TEST_F(NotifierTest, EachClickIsAnswered) {
    add({{"section", "Startup"}});
    m_desktop.click("weekly");
    m_desktop.click("weekly");
    m_runner.settle();
    EXPECT_EQ(m_log, (Log{"activate ", "show Startup", "activate ", "show Startup"}));
}

TEST_F(NotifierTest, AClickThatCameBeforeTheNotifierIsAnsweredByIt) {
    m_notifier.reset();
    add({{"section", "Startup"}});
    EXPECT_EQ(click(), Log());
    m_notifier = std::make_unique<Notifier>(m_desktop, m_center,
                                            [this](const std::string&) { m_log.emplace_back("activate"); });
    m_runner.settle();
    EXPECT_EQ(m_log, (Log{"activate", "show Startup"}));
}

TEST_F(NotifierTest, AskingForPermissionIsLeftToWhoeverTurnsSomethingOn) {
    EXPECT_EQ(m_desktop.authorizationRequests, 0);
    add({{"section", "Startup"}});
    click();
    EXPECT_EQ(m_desktop.authorizationRequests, 0);
}
