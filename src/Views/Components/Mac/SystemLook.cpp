#include "Components/SystemLook.h"

namespace quillane::SystemLook {

bool isNative() {
    return true;
}

bool hasMenuBar() {
    return true;
}

bool blendsWindows() {
    return true;
}

} // namespace quillane::SystemLook
