#pragma once
#include "State/Scenes.h"
#include <QWidget>

namespace quillane {

class AppLibrary;
class NotificationCenter;

// The settings. Every control is bound to its key, so that a change holds from the next time the key is read.
class SettingsView : public QWidget {
    Q_OBJECT
  public:
    // All of them outlive the window.
    SettingsView(AppLibrary& library, NotificationCenter& notifications, Scenes& scenes,
                 QWidget* parent = nullptr);

    void showTab(Scenes::SettingsTab tab);
    Scenes::SettingsTab tab() const { return m_tab; }

  private:
    Scenes::SettingsTab m_tab = Scenes::SettingsTab::general;
};

} // namespace quillane
