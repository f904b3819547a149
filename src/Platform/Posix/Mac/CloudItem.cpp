#include "CloudItem.h"
#include "CoreFoundationOwned.h"

namespace quillane::CloudItem {

bool isAwaitingDownload(const std::string& path) {
    const CoreFoundationOwned url(CFURLCreateFromFileSystemRepresentation(
        kCFAllocatorDefault, reinterpret_cast<const UInt8*>(path.data()), static_cast<CFIndex>(path.size()),
        false));
    CoreFoundationOwned<CFBooleanRef> isInTheCloud;
    if (!url ||
        !CFURLCopyResourcePropertyForKey(url.get(), kCFURLIsUbiquitousItemKey,
                                         static_cast<void*>(isInTheCloud.address()), nullptr) ||
        !isInTheCloud || !CFBooleanGetValue(isInTheCloud.get())) {
        return false;
    }
    // A status that is missing is not the current one either.
    CoreFoundationOwned<CFStringRef> status;
    CFURLCopyResourcePropertyForKey(url.get(), kCFURLUbiquitousItemDownloadingStatusKey,
                                    static_cast<void*>(status.address()), nullptr);
    return !status || !CFEqual(status.get(), kCFURLUbiquitousItemDownloadingStatusCurrent);
}

} // namespace quillane::CloudItem
