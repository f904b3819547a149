#include "CloudItem.h"

namespace quillane::CloudItem {

// No cloud here tells the system of its files.
bool isAwaitingDownload(const std::string& /*path*/) {
    return false;
}

} // namespace quillane::CloudItem
