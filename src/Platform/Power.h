#pragma once

namespace quillane {

// What the machine wants to save.
class Power {
  public:
    virtual ~Power() = default;
    // Whether the user or the system has chosen to save power over speed; being on battery alone is not that. False
    // where nobody can tell. Main thread; never waits.
    virtual bool isLowPowerModeEnabled() const = 0;
};

} // namespace quillane
