#pragma once
#include "Date.h"
#include "Published.h"
#include <optional>
#include <string>

namespace quillane {

class Updater;

// The updater as views observe it. All that it knows belongs to the updater. Main thread only.
class UpdaterController {
  public:
    // The updater outlives it.
    explicit UpdaterController(Updater& updater);
    ~UpdaterController();
    UpdaterController(const UpdaterController&) = delete;
    UpdaterController& operator=(const UpdaterController&) = delete;

    // Also reads what the updater may have changed itself.
    Published<bool> automaticallyChecksForUpdates;
    Published<bool> canCheckForUpdates;
    Published<std::optional<Date>> lastUpdateCheckDate; // nothing before the first check

    // Handed on to the updater, also when it is no change.
    void setAutomaticallyChecksForUpdates(bool isOn);
    void checkForUpdates();
    // Nothing when it is not known.
    std::optional<std::string> installedVersion() const;

  private:
    void read();

    Updater& m_updater;
};

} // namespace quillane
