#pragma once
#include "Settings/SettingsPage.h"
#include <string_view>

namespace quillane {

class AppLibrary;
class Defaults;
class SettingsGroup;
class SettingsRow;
class Stepper;
class SwitchRow;

// The tab "Automation": what happens, and is told, without being asked for.
class AutomationSettingsView : public SettingsPage {
    Q_OBJECT
  public:
    // It outlives this.
    explicit AutomationSettingsView(AppLibrary& library, QWidget* parent = nullptr);

    // Whether anything is on that notifies.
    bool anyNotification() const;

  private:
    SettingsGroup* makeWatching();
    SettingsGroup* makeScanning();
    SettingsGroup* makeTelling();
    SettingsGroup* makeReminder();
    SwitchRow* makeSwitch(const QString& words, std::string_view key);
    // A row with a figure that can be changed while its switch is on.
    SettingsRow* makeFigure(const QString& words, std::string_view key, Stepper* stepper,
                            std::string_view figureKey);
    void react();
    void noticeNotifications();

    AppLibrary& m_library;
    Defaults& m_defaults;
    bool m_notifies;
};

} // namespace quillane
