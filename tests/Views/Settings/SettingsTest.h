#pragma once
#include "AppLibrary.h"
#include "AutomationSettings.h"
#include "Components/Label.h"
#include "Components/Picker.h"
#include "Components/PushButton.h"
#include "Components/Stepper.h"
#include "Components/Switch.h"
#include "DefaultsKeys.h"
#include "NotificationCenter.h"
#include "SamplePlatform.h"
#include "Settings/SettingsPage.h"
#include "Settings/SettingsTabs.h"
#include "Settings/SettingsView.h"
#include "State/Scenes.h"
#include "UpdaterController.h"
#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace quillane {

// The other windows, as requests for them.
class RecordingScenes final : public Scenes {
  public:
    RecordingScenes(Updater& updater, std::vector<std::string>& events)
        : m_updater(updater)
        , m_events(events) {}

    void showWindow(const std::string&) override { m_events.emplace_back("window"); }
    void showSettings(SettingsTab) override { m_events.emplace_back("settings"); }
    UpdaterController& updater() override { return m_updater; }

  private:
    UpdaterController m_updater;
    std::vector<std::string>& m_events;
};

// The settings over defaults that the test changes as another hand would.
class SettingsTest : public testing::Test {
  protected:
    using Tab = Scenes::SettingsTab;

    SettingsTest() { AutomationSettings::registerDefaults(defaults()); }

    MemoryDefaults& defaults() { return sample.defaults; }

    // Not shown yet.
    SettingsView& make(Tab tab) {
        scenes = std::make_unique<RecordingScenes>(sample.updater, events);
        settings = std::make_unique<SettingsView>(library, notifications, *scenes);
        settings->showTab(tab);
        return *settings;
    }
    SettingsView& open(Tab tab) {
        make(tab);
        settings->show();
        settings->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(settings.get()));
        turn();
        return *settings;
    }
    // Lets the window draw what has changed.
    void turn() {
        for (int i = 0; i < 3; ++i) {
            sample.runner.settle();
            QCoreApplication::sendPostedEvents();
            QCoreApplication::processEvents();
        }
    }
    // Into what has the focus.
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    // The controls of both tabs by their name; the test fails when there is none, and goes on with another.
    template <class Control>
    Control& named(const QString& name) const {
        for (auto* const control : settings->findChildren<Control*>()) {
            if (control->accessibleName() == name) {
                return *control;
            }
        }
        ADD_FAILURE() << "nothing is named " << qPrintable(name);
        return *settings->findChild<Control*>();
    }
    Switch& switchOf(const QString& name) const { return named<Switch>(name); }
    Stepper& stepper(const QString& name) const { return named<Stepper>(name); }
    PushButton& button(const QString& name) const { return named<PushButton>(name); }
    Stepper& threshold() const { return stepper("Reclaimable space passes a threshold"); }
    Stepper& lowDisk() const { return stepper("Free disk space gets low"); }
    Picker& frequency() const { return named<Picker>("Frequency"); }
    // All that the tab in front says, from the top, as a person reads it.
    QStringList wordsOnTab() const {
        QStringList words;
        for (const auto* const label : settings->page(settings->tab())->findChildren<QLabel*>()) {
            if (!label->isHidden()) {
                words << label->text();
            }
        }
        return words;
    }

    SamplePlatform sample{SampleMac()};
    AppLibrary library{sample.platform};
    NotificationCenter notifications;
    std::vector<std::string> events; // what the settings asked the other windows for
    std::unique_ptr<RecordingScenes> scenes;
    std::unique_ptr<SettingsView> settings;
};

} // namespace quillane
