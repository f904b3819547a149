#include "Components/SymbolView.h"
#include "Settings/AutomationSettingsView.h"
#include "SettingsTest.h"
#include <QAbstractItemView>
#include <QAccessible>
#include <QLabel>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <limits>
#include <string_view>

using namespace quillane;
using namespace DefaultsKeys;

namespace {

class Automation : public SettingsTest {
  protected:
    void openAutomation() { open(Tab::automation); }
    void flip(const QString& name) {
        QTest::mouseClick(&switchOf(name), Qt::LeftButton);
        turn();
    }
    int requests() const { return sample.notifications.authorizationRequests; }
};

struct BoundSwitch {
    const char* words;
    std::string_view key;
    bool isOnAtFirst = false;
    Scenes::SettingsTab tab = Scenes::SettingsTab::automation;
};

constexpr BoundSwitch kSwitches[] = {
    {"Show in menu bar", kShowMenuBarExtra, true, Scenes::SettingsTab::general},
    {"Notice when I remove an app", kWatchUninstalls, true},
    {"Rescan on a schedule", kScheduledScans},
    {"Reclaimable space passes a threshold", kNudgeOnThreshold},
    {"Free disk space gets low", kNudgeOnLowDisk},
    {"An app I removed left files behind", kNudgeOnNewOrphans},
    {"Something new starts automatically", kNudgeOnNewStartup},
    {"Weekly summary", kWeeklyReminder},
};

class EachSwitch : public SettingsTest, public testing::WithParamInterface<BoundSwitch> {
  protected:
    EachSwitch() { open(GetParam().tab); }
    Switch& control() { return switchOf(GetParam().words); }
    bool stored() { return defaults().boolean(GetParam().key); }
};

struct BoundFigure {
    const char* words;
    std::string_view key;
    std::string_view switchKey;
    int least, most, atFirst;
    const char* shownAtLeast;
    const char* shownAtMost;
};

constexpr BoundFigure kFigures[] = {
    {"Reclaimable space passes a threshold", kThresholdGB, kNudgeOnThreshold, 1, 100, 5, "1 GB", "100 GB"},
    {"Free disk space gets low", kLowDiskPercent, kNudgeOnLowDisk, 2, 30, 10, "Below 2%", "Below 30%"},
};

class EachFigure : public SettingsTest, public testing::WithParamInterface<BoundFigure> {
  protected:
    EachFigure() {
        defaults().set(GetParam().switchKey, true);
        open(Tab::automation);
    }
    Stepper& control() { return stepper(GetParam().words); }
    std::int64_t stored() { return defaults().integer(GetParam().key); }
    void store(std::int64_t figure) { defaults().set(GetParam().key, figure); }
};

// A value that no key has. Dates and texts are such for all that has a control.
struct Misfit {
    const char* name;
    Defaults::Value value;
};

class DamagedSettings : public SettingsTest, public testing::WithParamInterface<Misfit> {
  protected:
    DamagedSettings() {
        for (const auto key : kAllKeys) {
            defaults().set(key, GetParam().value);
        }
        defaults().subscribe([this](const std::string& key) { written.push_back(key); });
    }
    static constexpr std::array kAllKeys = {
        kProtectedPaths,   kLastOperation,      kRecentUninstalls,   kHasSeenOnboarding, kShowMenuBarExtra,
        kScheduledScans,   kScanFrequencyHours, kLastScan,           kWeeklyReminder,    kLastReminder,
        kNudgeOnThreshold, kThresholdGB,        kNudgedThreshold,    kNudgeOnLowDisk,    kLowDiskPercent,
        kNudgedLowDisk,    kNudgeOnNewOrphans,  kKnownOrphanVendors, kNudgeOnNewStartup, kKnownStartupLabels,
        kWatchUninstalls};
    std::vector<std::string> written;
};

} // namespace

// Words

TEST_F(Automation, SaysAllThatItSaysToTheLetter) {
    openAutomation();
    EXPECT_EQ(
        wordsOnTab(),
        QStringList(
            {"Automations scan, measure and notify. <b>None of them remove anything.</b> Every notification "
             "opens the review sheet, and the button at the bottom of it is still yours to press.",
             "Watching", "Notice when I remove an app",
             "Watches the Applications folders. When an app disappears, the Overview shows what it left "
             "behind so you can review it. Observe-only.",
             "Scanning", "Rescan on a schedule", "Frequency",
             "Keeps the Overview and the menu bar figure current without you opening the app.",
             "Tell me when…", "Reclaimable space passes a threshold", "Free disk space gets low",
             "An app I removed left files behind", "Something new starts automatically",
             "Each of these fires once when it becomes true and stays quiet until it clears and returns.",
             "Reminder", "Weekly summary",
             "Once a week, the current reclaimable figure - only if it's over 500 MB."}));
}

TEST_F(Automation, BeginsWithARaisedHandInTheTintColour) {
    openAutomation();
    const auto* const hand = settings->page(Tab::automation)->findChild<SymbolView*>();
    EXPECT_EQ(hand->symbol(), "hand.raised.fill");
    EXPECT_EQ(hand->tint(), Tint::Link);
}

TEST_F(Automation, TheBoldOfTheFirstLineIsMarkupAndNoWordOfIt) {
    openAutomation();
    auto* const line = settings->page(Tab::automation)->findChildren<QLabel*>().front();
    EXPECT_EQ(line->textFormat(), Qt::RichText);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(line)->text(QAccessible::Name),
              "Automations scan, measure and notify. None of them remove anything. Every notification opens "
              "the review sheet, and the button at the bottom of it is still yours to press.");
}

// Every switch and its key

INSTANTIATE_TEST_SUITE_P(Settings, EachSwitch, testing::ValuesIn(kSwitches),
                         [](const auto& row) { return std::to_string(row.index); });

TEST_P(EachSwitch, ShowsWhatIsRegisteredWhereNothingIsStored) {
    EXPECT_EQ(control().isChecked(), GetParam().isOnAtFirst);
    EXPECT_FALSE(defaults().isStored(GetParam().key)) << "showing is not storing";
}

TEST_P(EachSwitch, StoresWhatTheUserDoesUnderItsKey) {
    for (const bool on : {!GetParam().isOnAtFirst, GetParam().isOnAtFirst}) {
        QTest::mouseClick(&control(), Qt::LeftButton);
        EXPECT_EQ(stored(), on);
        EXPECT_EQ(defaults().value(GetParam().key), Defaults::Value(on)) << "as a boolean";
    }
}

TEST_P(EachSwitch, TurnsByItsWordsToo) {
    auto* const row = control().parentWidget();
    QTest::mouseClick(row, Qt::LeftButton, {}, {40, row->height() / 2});
    EXPECT_EQ(stored(), !GetParam().isOnAtFirst);
    QTest::mousePress(row, Qt::LeftButton, {}, {40, row->height() / 2});
    QTest::mouseRelease(row, Qt::LeftButton, {}, {40, row->height() + 40});
    EXPECT_EQ(stored(), !GetParam().isOnAtFirst) << "a press that was taken elsewhere is none";
}

TEST_P(EachSwitch, TurnsByTheActionOfAssistiveTools) {
    auto* const met = QAccessible::queryAccessibleInterface(&control());
    EXPECT_EQ(met->role(), QAccessible::CheckBox);
    EXPECT_EQ(met->text(QAccessible::Name), GetParam().words);
    met->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(stored(), !GetParam().isOnAtFirst);
    EXPECT_EQ(met->state().checked, !GetParam().isOnAtFirst);
}

TEST_P(EachSwitch, TurnsBySpace) {
    control().setFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_EQ(stored(), !GetParam().isOnAtFirst);
}

TEST_P(EachSwitch, ShowsAtOnceWhatAnotherHandStoresAndNoOtherDoes) {
    const auto others = [this] {
        int on = 0;
        for (const auto* const other : settings->findChildren<Switch*>()) {
            on += other != &control() && other->isChecked() ? 1 : 0;
        }
        return on;
    };
    const int before = others();
    defaults().set(GetParam().key, !GetParam().isOnAtFirst);
    EXPECT_EQ(control().isChecked(), !GetParam().isOnAtFirst);
    EXPECT_EQ(others(), before);
    defaults().clear(GetParam().key);
    EXPECT_EQ(control().isChecked(), GetParam().isOnAtFirst);
    EXPECT_FALSE(defaults().isStored(GetParam().key)) << "it was not stored again";
}

// Every figure and its key

INSTANTIATE_TEST_SUITE_P(Settings, EachFigure, testing::ValuesIn(kFigures),
                         [](const auto& row) { return std::to_string(row.index); });

TEST_P(EachFigure, ShowsWhatIsRegisteredWhereNothingIsStored) {
    EXPECT_EQ(control().value(), GetParam().atFirst);
    EXPECT_FALSE(defaults().isStored(GetParam().key));
}

TEST_P(EachFigure, StepsByOneAndStoresEachStep) {
    control().stepUp();
    EXPECT_EQ(stored(), GetParam().atFirst + 1);
    control().stepDown();
    control().stepDown();
    EXPECT_EQ(stored(), GetParam().atFirst - 1);
    EXPECT_EQ(defaults().value(GetParam().key), Defaults::Value(std::int64_t{GetParam().atFirst - 1}));
}

TEST_P(EachFigure, StopsAtItsEnds) {
    store(GetParam().most - 1);
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(&control(), Qt::Key_Up);
    }
    EXPECT_EQ(stored(), GetParam().most);
    EXPECT_EQ(control().text(), GetParam().shownAtMost);
    store(GetParam().least + 1);
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(&control(), Qt::Key_Down);
    }
    EXPECT_EQ(stored(), GetParam().least);
    EXPECT_EQ(control().text(), GetParam().shownAtLeast);
}

TEST_P(EachFigure, AFigureBeyondTheEndsIsShownAtTheEndAndStaysUntilTheUserSteps) {
    for (const std::int64_t beyond : {std::int64_t{GetParam().most} + 400, std::int64_t{1} << 40,
                                      std::numeric_limits<std::int64_t>::max()}) {
        store(beyond);
        EXPECT_EQ(control().value(), GetParam().most);
        EXPECT_EQ(stored(), beyond);
    }
    control().stepUp();
    EXPECT_EQ(stored(), std::numeric_limits<std::int64_t>::max()) << "there is no step further";
    control().stepDown();
    EXPECT_EQ(stored(), GetParam().most - 1);
    store(-7);
    EXPECT_EQ(control().value(), GetParam().least);
    EXPECT_EQ(stored(), -7);
}

TEST_P(EachFigure, AFigureBeyondTheEndsThatWasThereFirstIsNotWrittenEither) {
    store(5'000);
    open(Tab::automation);
    EXPECT_EQ(control().value(), GetParam().most);
    EXPECT_EQ(stored(), 5'000);
}

TEST_P(EachFigure, WhatIsTypedCountsOnceItIsDone) {
    control().setFocus(Qt::TabFocusReason);
    control().selectAll();
    QTest::keyClicks(&control(), "12");
    EXPECT_EQ(stored(), GetParam().atFirst) << "1 would have been stored on the way";
    QTest::keyClick(&control(), Qt::Key_Return);
    EXPECT_EQ(stored(), 12);
    control().selectAll();
    QTest::keyClicks(&control(), "13");
    press(Qt::Key_Tab);
    EXPECT_EQ(stored(), 13);
    EXPECT_TRUE(settings->isVisible());
}

TEST_P(EachFigure, WhatIsTypedIsStoredWhenTheWindowCloses) {
    control().setFocus(Qt::TabFocusReason);
    control().selectAll();
    QTest::keyClicks(&control(), "12");
    press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(settings->isVisible());
    EXPECT_EQ(stored(), 12);
}

TEST_P(EachFigure, EscapeTakesBackWhatIsTypedAndOnlyThenClosesTheWindow) {
    control().setFocus(Qt::TabFocusReason);
    const QString before = control().text();
    control().selectAll();
    QTest::keyClicks(&control(), "7");
    QTest::keyClick(&control(), Qt::Key_Escape);
    EXPECT_TRUE(settings->isVisible());
    EXPECT_EQ(control().text(), before);
    QTest::keyClick(&control(), Qt::Key_Escape);
    EXPECT_FALSE(settings->isVisible());
    EXPECT_EQ(stored(), GetParam().atFirst);
}

TEST_P(EachFigure, AssistiveToolsReadAndSetIt) {
    auto* const met = QAccessible::queryAccessibleInterface(&control());
    EXPECT_EQ(met->role(), QAccessible::SpinBox);
    EXPECT_EQ(met->text(QAccessible::Name), GetParam().words);
    EXPECT_EQ(met->valueInterface()->minimumValue().toInt(), GetParam().least);
    EXPECT_EQ(met->valueInterface()->maximumValue().toInt(), GetParam().most);
    met->valueInterface()->setCurrentValue(7);
    EXPECT_EQ(stored(), 7);
}

TEST_P(EachFigure, CanBeChangedOnlyWhileItsSwitchIsOn) {
    EXPECT_TRUE(control().isEnabled());
    const QString shown = control().text();
    QTest::mouseClick(&switchOf(GetParam().words), Qt::LeftButton);
    EXPECT_FALSE(control().isEnabled());
    EXPECT_EQ(control().text(), shown);
    defaults().set(GetParam().switchKey, true);
    EXPECT_TRUE(control().isEnabled());
}

TEST_P(EachFigure, TheWheelScrollsThePageAndNotTheFigure) {
    control().setFocus();
    const QPointF middle = control().rect().center();
    QWheelEvent wheel(middle, control().mapToGlobal(middle), {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&control(), &wheel);
    EXPECT_EQ(stored(), GetParam().atFirst);
    EXPECT_FALSE(wheel.isAccepted());
}

// The frequency

// What stands there counts as it is read everywhere, and shows as that.
TEST_P(DamagedSettings, ShowAsTheyCountAndStayUntilTheUserChangesThem) {
    for (const auto tab : {Tab::general, Tab::automation}) {
        open(tab);
        for (const auto& bound : kSwitches) {
            if (bound.tab == tab) {
                EXPECT_EQ(switchOf(bound.words).isChecked(), defaults().boolean(bound.key)) << bound.words;
            }
        }
    }
    for (const auto& bound : kFigures) {
        const auto counts = std::clamp<std::int64_t>(defaults().integer(bound.key), bound.least, bound.most);
        EXPECT_EQ(stepper(bound.words).value(), counts) << bound.words;
    }
    settings->close();
    EXPECT_EQ(written, std::vector<std::string>());
    open(Tab::automation);
    QTest::mouseClick(&switchOf("Weekly summary"), Qt::LeftButton);
    EXPECT_EQ(written, std::vector{std::string(kWeeklyReminder)});
}

INSTANTIATE_TEST_SUITE_P(EachMisfit, DamagedSettings,
                         testing::Values(Misfit{"Text", std::string("nothing")},
                                         Misfit{"YesAsText", std::string("YES")},
                                         Misfit{"Number", std::int64_t{-1}},
                                         Misfit{"Huge", std::numeric_limits<std::int64_t>::max()},
                                         Misfit{"NoNumber", std::numeric_limits<double>::quiet_NaN()},
                                         Misfit{"Truth", true}, Misfit{"ADate", Date{1e12}},
                                         Misfit{"Bytes", Defaults::Data{0xFF, 0x00}},
                                         Misfit{"List", std::vector<std::string>{"a"}}),
                         [](const auto& info) { return info.param.name; });

TEST_F(Automation, TheFrequencyOffersThreeAndStoresItsHours) {
    defaults().set(kScheduledScans, true);
    openAutomation();
    QStringList offered;
    for (int i = 0; i < frequency().count(); ++i) {
        offered << frequency().itemText(i);
    }
    EXPECT_EQ(offered, QStringList({"Every 6 hours", "Daily", "Weekly"}));
    EXPECT_EQ(frequency().currentText(), "Daily");
    EXPECT_FALSE(defaults().isStored(kScanFrequencyHours));
    const std::vector<std::pair<int, std::int64_t>> hours = {{0, 6}, {2, 168}, {1, 24}};
    for (const auto& [index, stored] : hours) {
        frequency().setFocus();
        frequency().showPopup();
        frequency().view()->setCurrentIndex(frequency().model()->index(index, 0));
        QTest::keyClick(frequency().view(), Qt::Key_Return);
        EXPECT_EQ(defaults().value(kScanFrequencyHours), Defaults::Value(stored));
    }
}

TEST_F(Automation, AFrequencyThatAnotherHandStoresShowsAtOnce) {
    openAutomation();
    defaults().set(kScanFrequencyHours, std::int64_t{168});
    EXPECT_EQ(frequency().currentText(), "Weekly");
    defaults().clear(kScanFrequencyHours);
    EXPECT_EQ(frequency().currentText(), "Daily");
    EXPECT_FALSE(defaults().isStored(kScanFrequencyHours));
}

TEST_F(Automation, AFrequencyThatIsNoneOfTheThreeSelectsNoneAndStays) {
    defaults().set(kScheduledScans, true);
    for (const std::int64_t hours : {0, 1, 12, 48, -24}) {
        defaults().set(kScanFrequencyHours, hours);
        openAutomation();
        EXPECT_EQ(frequency().currentIndex(), -1);
        EXPECT_EQ(frequency().currentText(), "");
        EXPECT_EQ(defaults().integer(kScanFrequencyHours), hours);
        EXPECT_GE(frequency().width(), 26) << "it can still be hit";
    }
    frequency().setFocus();
    press(Qt::Key_Down);
    EXPECT_EQ(defaults().integer(kScanFrequencyHours), 6) << "and the user chooses another";
    defaults().set(kScanFrequencyHours, std::int64_t{12});
    EXPECT_EQ(frequency().currentIndex(), -1) << "also while the window is open";
    EXPECT_EQ(defaults().integer(kScanFrequencyHours), 12);
}

TEST_F(Automation, TurningTheScheduleOffLeavesTheFrequencyShowingItsValueGreyedOut) {
    defaults().set(kScheduledScans, true);
    defaults().set(kScanFrequencyHours, std::int64_t{168});
    openAutomation();
    EXPECT_TRUE(frequency().isEnabled());
    const QImage live = frequency().grab().toImage();
    flip("Rescan on a schedule");
    EXPECT_FALSE(frequency().isEnabled());
    EXPECT_EQ(frequency().currentText(), "Weekly");
    EXPECT_EQ(defaults().integer(kScanFrequencyHours), 168);
    EXPECT_NE(frequency().grab().toImage(), live);
}

TEST_F(Automation, TheWheelScrollsThePageAndNotTheFrequency) {
    defaults().set(kScheduledScans, true);
    openAutomation();
    const QPointF middle = frequency().rect().center();
    QWheelEvent wheel(middle, frequency().mapToGlobal(middle), {}, {0, 120}, {}, {}, Qt::NoScrollPhase,
                      false);
    QCoreApplication::sendEvent(&frequency(), &wheel);
    EXPECT_EQ(frequency().currentText(), "Daily");
    EXPECT_FALSE(wheel.isAccepted());
}

// What reacts

TEST_F(Automation, NoticingRemovalsStartsAndStopsTheWatchAtOnce) {
    openAutomation();
    library.syncUninstallWatcher();
    EXPECT_FALSE(sample.directories.watched().empty());
    flip("Notice when I remove an app");
    EXPECT_TRUE(sample.directories.watched().empty());
    flip("Notice when I remove an app");
    EXPECT_FALSE(sample.directories.watched().empty());
    defaults().set(kWatchUninstalls, false);
    EXPECT_TRUE(sample.directories.watched().empty()) << "whoever turned it off";
}

TEST_F(Automation, NothingIsAskedForUntilTheFirstThingIsOnThatNotifies) {
    openAutomation();
    EXPECT_EQ(requests(), 0);
    for (const char* silent : {"Notice when I remove an app", "Rescan on a schedule"}) {
        flip(silent);
        flip(silent);
    }
    EXPECT_EQ(requests(), 0);
    flip("Weekly summary");
    EXPECT_EQ(requests(), 1);
    flip("Free disk space gets low");
    EXPECT_EQ(requests(), 1) << "it was on already";
    flip("Weekly summary");
    flip("Free disk space gets low");
    EXPECT_EQ(requests(), 1) << "nothing happens when the last one goes off";
    flip("Free disk space gets low");
    EXPECT_EQ(requests(), 2);
}

TEST_F(Automation, EachOfTheFiveThatNotifyAsks) {
    const auto* const view =
        qobject_cast<AutomationSettingsView*>(open(Tab::automation).page(Tab::automation));
    int expected = 0;
    for (const auto key :
         {kNudgeOnThreshold, kNudgeOnLowDisk, kNudgeOnNewOrphans, kNudgeOnNewStartup, kWeeklyReminder}) {
        EXPECT_FALSE(view->anyNotification());
        defaults().set(key, true);
        EXPECT_TRUE(view->anyNotification());
        EXPECT_EQ(requests(), ++expected) << key;
        defaults().set(key, false);
    }
}

TEST_F(Automation, WhatWasOnBeforeTheWindowOpenedAsksForNothing) {
    defaults().set(kWeeklyReminder, true);
    openAutomation();
    EXPECT_EQ(requests(), 0);
    flip("Something new starts automatically");
    EXPECT_EQ(requests(), 0);
}

TEST_F(Automation, AWindowThatIsClosedHearsNothingMore) {
    openAutomation();
    settings.reset();
    for (const auto& bound : kSwitches) {
        defaults().set(bound.key, true);
    }
    EXPECT_EQ(requests(), 0);
}
