#include "Components/Look.h"
#include "SettingsTest.h"
#include "WindowPicture.h"

using namespace quillane;
using namespace DefaultsKeys;

namespace {

// Both tabs as a person meets them, kept as pictures under the build folder for whoever wants to look.
class SettingsPictures : public SettingsTest {
  protected:
    SettingsPictures() {
        sample.updater.isAutomatic = true;
        sample.updater.lastCheck = sample.clock.now().addingSeconds(-26.0 * 3600);
        for (const auto key : {kScheduledScans, kNudgeOnThreshold, kNudgeOnNewOrphans}) {
            defaults().set(key, true);
        }
        defaults().set(kThresholdGB, std::int64_t{10});
    }
    void TearDown() override {
        Look::setDark(false);
        Look::setHighContrast(false);
        Look::setTextScale(1);
    }

    QImage keep(const QString& name) {
        turn();
        const QImage picture = pictureOf(*settings);
        EXPECT_TRUE(keepPicture(picture, name));
        return picture;
    }
    void keepAll(Tab tab, const QString& name) {
        open(tab);
        const QImage light = keep(name);
        Look::setDark(true);
        const QImage dark = keep(name + "-dark");
        EXPECT_GT(qGray(light.pixel(10, 400)), 200);
        EXPECT_LT(qGray(dark.pixel(10, 400)), 80);
        Look::setHighContrast(true);
        keep(name + "-contrast-dark");
        Look::setDark(false);
        EXPECT_NE(keep(name + "-contrast"), light);
        Look::setHighContrast(false);
        EXPECT_EQ(keep(name), light) << "nothing stays of what was";
        Look::setTextScale(2);
        keep(name + "-large-text");
    }
};

} // namespace

TEST_F(SettingsPictures, GeneralInBothModesAndInLargeText) {
    keepAll(Tab::general, "settings-general");
}

TEST_F(SettingsPictures, AutomationInBothModesAndInLargeText) {
    keepAll(Tab::automation, "settings-automation");
}

TEST_F(SettingsPictures, TheKeyboardIsShownWhereItIs) {
    open(Tab::automation);
    press(Qt::Key_Tab);
    const QImage onSwitch = keep("settings-focus-switch");
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_NE(keep("settings-focus-tab"), onSwitch);
    stepper("Reclaimable space passes a threshold").setFocus(Qt::TabFocusReason);
    keep("settings-focus-stepper");
    frequency().setFocus(Qt::TabFocusReason);
    keep("settings-focus-picker");
    frequency().showPopup();
    turn();
    EXPECT_TRUE(keepPicture(pictureOf(*QApplication::activePopupWidget()), "settings-frequencies"));
    frequency().hidePopup();
}
