#pragma once
#include "Power.h"

namespace quillane {

// A machine that saves power when the test says so.
class FakePower final : public Power {
  public:
    bool isLowPower = false;
    bool isLowPowerModeEnabled() const override { return isLowPower; }
};

} // namespace quillane
