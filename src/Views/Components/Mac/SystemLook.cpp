#include "SystemLook.h"

namespace quillane::SystemLook {

bool isNative() {
    return true;
}

bool hasMenuBar() {
    return true;
}

} // namespace quillane::SystemLook
