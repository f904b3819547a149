#pragma once
#include "Settings/SettingsPage.h"

namespace quillane {

class AppLibrary;
class LivingDate;
class NotificationCenter;
class PushButton;
class Scenes;
class SettingsGroup;
class Switch;

// The tab "General": the menu bar item, updates, and ways to other places.
class GeneralSettings : public SettingsPage {
    Q_OBJECT
  public:
    // All of them outlive it.
    GeneralSettings(AppLibrary& library, NotificationCenter& notifications, Scenes& scenes,
                    QWidget* parent = nullptr);

    // Which version this is and when it was last looked for another, in the words of now.
    QString updateFootnote() const;

  private:
    SettingsGroup* makeMenuBar();
    SettingsGroup* makeUpdates();
    SettingsGroup* makeWays();
    void renderUpdates();
    void showWelcome();

    AppLibrary& m_library;
    NotificationCenter& m_notifications;
    Scenes& m_scenes;
    Switch* m_automatic = nullptr;
    PushButton* m_checkNow = nullptr;
    SettingsGroup* m_updates = nullptr;
    LivingDate* m_lastCheck = nullptr;
};

} // namespace quillane
