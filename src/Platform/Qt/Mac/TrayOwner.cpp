#include "TrayOwner.h"

namespace quillane {

class TrayOwner::Watch {};

TrayOwner::TrayOwner(std::function<void()> /*changed*/) {}

TrayOwner::~TrayOwner() = default;

bool TrayOwner::isThere() const {
    return false;
}

} // namespace quillane
