#pragma once
#include "Date.h"
#include <functional>
#include <optional>
#include <string>

namespace quillane {

// What looks for newer versions of this program, with windows and settings of its own. It installs nothing unasked.
// Main thread only; nothing waits, and failures are told in its own windows or not at all.
class Updater {
  public:
    virtual ~Updater() = default;
    virtual bool automaticallyChecksForUpdates() const = 0;
    // Kept across launches.
    virtual void setAutomaticallyChecksForUpdates(bool isOn) = 0;
    // Whether a check can start now: false where this build has no place to ask, and while one runs.
    virtual bool canCheckForUpdates() const = 0;
    // Of the last check that came to its end; nothing before the first one.
    virtual std::optional<Date> lastUpdateCheckDate() const = 0;
    // Starts a check that the user asked for, whose outcome is shown to them.
    virtual void checkForUpdates() = 0;
    // The version of this program, as "1.2"; nothing when it is not known.
    virtual std::optional<std::string> installedVersion() const = 0;
    // Called on the main thread, at a later turn, when any of the answers has changed; an empty function for nobody.
    virtual void setChangeHandler(std::function<void()> changed) = 0;
};

} // namespace quillane
