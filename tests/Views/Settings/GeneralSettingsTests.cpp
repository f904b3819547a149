#include "Components/DateWords.h"
#include "Settings/GeneralSettings.h"
#include "SettingsTest.h"
#include <chrono>

using namespace quillane;
using namespace DefaultsKeys;

namespace {

using namespace std::chrono_literals;

class General : public SettingsTest {
  protected:
    void openGeneral() { open(Tab::general); }
    void press(PushButton& button) {
        QTest::mouseClick(&button, Qt::LeftButton);
        turn();
    }
    // As the updater does when it has learned something.
    void tellOfChange() {
        sample.updater.tellOfChange();
        turn();
    }
    void checkedAgo(Duration age) {
        sample.updater.lastCheck =
            sample.clock.now().addingSeconds(-std::chrono::duration<double>(age).count());
    }
    QString footnote() const { return wordsOnTab().at(4); }
};

const QString kClosing = "An update is only installed after you click Install in the update window.";

} // namespace

TEST_F(General, SaysAllThatItSaysToTheLetter) {
    openGeneral();
    EXPECT_EQ(wordsOnTab(),
              QStringList(
                  {"Show in menu bar",
                   "The reclaimable figure beside a sparkles icon, with a popover to review it. Automations "
                   "run only while Quillane is open, so the menu bar item is what keeps them alive after you "
                   "close the window.",
                   "Check for updates automatically", "Updates",
                   "Version 1.0. Not checked yet. An update is only installed after you click Install in the "
                   "update window.",
                   "Full Disk Access", "Introduction"}));
    QStringList buttons;
    for (const auto* const button : settings->page(Tab::general)->findChildren<PushButton*>()) {
        buttons << button->label();
    }
    EXPECT_EQ(buttons, QStringList({"Check Now", "Open System Settings…", "Show Welcome Again"}));
}

// The update footnote

TEST_F(General, WithNoCheckMadeYetItSaysSo) {
    openGeneral();
    EXPECT_EQ(footnote(), "Version 1.0. Not checked yet. " + kClosing);
}

TEST_F(General, TheLastCheckIsToldInNamedWords) {
    checkedAgo(26h);
    openGeneral();
    EXPECT_EQ(footnote(), "Version 1.0. Last checked yesterday. " + kClosing);
}

TEST_F(General, ACheckThatWasMadeMeanwhileIsTold) {
    openGeneral();
    checkedAgo(0s);
    tellOfChange();
    EXPECT_EQ(footnote(), "Version 1.0. Last checked now. " + kClosing);
}

TEST_F(General, TheWordsForTheLastCheckKeepUpWithTheTimeThatPasses) {
    checkedAgo(1min);
    openGeneral();
    EXPECT_EQ(footnote(), "Version 1.0. Last checked 1 minute ago. " + kClosing);
    sample.clock.advance(60s);
    EXPECT_EQ(footnote(), "Version 1.0. Last checked 2 minutes ago. " + kClosing);
    settings->showTab(Tab::automation);
    EXPECT_EQ(sample.clock.sleepers(), 0U) << "out of sight it costs nothing";
    sample.clock.advance(60s);
    settings->showTab(Tab::general);
    EXPECT_EQ(footnote(), "Version 1.0. Last checked 3 minutes ago. " + kClosing);
}

TEST_F(General, AnotherTimeZoneShowsAtOnce) {
    checkedAgo(26h);
    openGeneral();
    sample.clock.setNow(sample.clock.now().addingSeconds(24.0 * 3600));
    tellDateWordsMayDiffer();
    turn();
    EXPECT_EQ(footnote(), "Version 1.0. Last checked 2 days ago. " + kClosing);
}

TEST_F(General, AVersionThatIsNotKnownIsAQuestionMark) {
    sample.updater.version = std::nullopt;
    openGeneral();
    EXPECT_EQ(footnote(), "Version ?. Not checked yet. " + kClosing);
}

TEST_F(General, AssistiveToolsHearTheFootnoteWithItsGroup) {
    openGeneral();
    const auto* const group = switchOf("Check for updates automatically").parentWidget()->parentWidget();
    EXPECT_EQ(group->accessibleDescription(), footnote());
}

// Updates

TEST_F(General, TheUpdatesSwitchShowsAndSetsWhetherTheUpdaterLooksByItself) {
    sample.updater.isAutomatic = true;
    openGeneral();
    auto& control = switchOf("Check for updates automatically");
    EXPECT_TRUE(control.isChecked());
    EXPECT_EQ(sample.updater.timesSet, 0) << "showing is not setting";
    QTest::mouseClick(&control, Qt::LeftButton);
    EXPECT_FALSE(sample.updater.isAutomatic);
    EXPECT_EQ(sample.updater.timesSet, 1);
    turn();
    EXPECT_FALSE(control.isChecked());
    EXPECT_EQ(sample.updater.timesSet, 1);
}

TEST_F(General, WhatTheUpdaterChangesItselfShows) {
    openGeneral();
    EXPECT_FALSE(switchOf("Check for updates automatically").isChecked());
    sample.updater.isAutomatic = true;
    tellOfChange();
    EXPECT_TRUE(switchOf("Check for updates automatically").isChecked());
    EXPECT_EQ(sample.updater.timesSet, 0);
}

TEST_F(General, CheckNowAsksTheUpdater) {
    openGeneral();
    press(button("Check Now"));
    EXPECT_EQ(sample.updater.checks, 1);
}

TEST_F(General, CheckNowCanBePressedOnlyWhileACheckCanStart) {
    sample.updater.canCheck = false;
    openGeneral();
    EXPECT_FALSE(button("Check Now").isEnabled());
    press(button("Check Now"));
    EXPECT_EQ(sample.updater.checks, 0);
    for (const bool can : {true, false}) {
        sample.updater.canCheck = can;
        tellOfChange();
        EXPECT_EQ(button("Check Now").isEnabled(), can);
    }
}

// Ways to other places

TEST_F(General, OpenSystemSettingsOpensThePlaceWhereAccessIsGranted) {
    openGeneral();
    press(button("Open System Settings…"));
    EXPECT_EQ(sample.workspace.settingsOpened(), 1);
}

TEST_F(General, ShowWelcomeAgainBringsTheMainWindowForwardAndThenAsksItForTheWelcome) {
    openGeneral();
    const auto asked = notifications.observe(NotificationName::kShowOnboarding,
                                             [this](const auto&) { events.emplace_back("welcome"); });
    press(button("Show Welcome Again"));
    EXPECT_EQ(events, (std::vector<std::string>{"window", "welcome"}));
}

// The menu bar

TEST_F(General, TurningTheMenuBarItemOffStoresThatAndNothingElseHappens) {
    openGeneral();
    auto& control = switchOf("Show in menu bar");
    EXPECT_TRUE(control.isChecked()) << "which is what nobody has stored";
    EXPECT_FALSE(defaults().isStored(kShowMenuBarExtra));
    QTest::mouseClick(&control, Qt::LeftButton);
    EXPECT_TRUE(defaults().isStored(kShowMenuBarExtra));
    EXPECT_FALSE(defaults().boolean(kShowMenuBarExtra));
    EXPECT_TRUE(events.empty());
}
