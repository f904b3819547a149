#pragma once
#include "Power.h"

namespace quillane {

// Low Power Mode of macOS.
class MacPower final : public Power {
  public:
    bool isLowPowerModeEnabled() const override;
};

} // namespace quillane
