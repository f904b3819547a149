#pragma once
#include <string>

namespace quillane {

class UpdaterController;

// The windows of the program, as each of them may ask for the others. Main thread only.
class Scenes {
  public:
    enum class SettingsTab { general, automation };

    Scenes() = default;
    Scenes(const Scenes&) = delete;
    Scenes& operator=(const Scenes&) = delete;

    // Opens the main window, or brings the one that is open to the front, out of the dock too. With what the desktop
    // gave for it along with a click or a start; empty for nothing.
    virtual void showWindow(const std::string& activationToken) = 0;
    // Opens the settings with this tab in front, or brings them to the front.
    virtual void showSettings(SettingsTab tab) = 0;
    virtual UpdaterController& updater() = 0;

  protected:
    ~Scenes() = default;
};

} // namespace quillane
