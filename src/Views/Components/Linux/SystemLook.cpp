#include "SystemLook.h"

namespace quillane::SystemLook {

bool isNative() {
    return false;
}

bool hasMenuBar() {
    return false;
}

} // namespace quillane::SystemLook
