#include "CloudItem.h"
#include <CoreFoundation/CoreFoundation.h>

namespace quillane::CloudItem {
namespace {

// Releases what a function with "Copy" or "Create" in its name gave.
template <class Reference>
class Owned {
  public:
    explicit Owned(Reference value = nullptr)
        : m_value(value) {}
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() {
        if (m_value != nullptr) {
            CFRelease(m_value);
        }
    }
    Reference get() const { return m_value; }
    Reference* address() { return &m_value; }

  private:
    Reference m_value;
};

} // namespace

bool isAwaitingDownload(const std::string& path) {
    const Owned<CFURLRef> url(CFURLCreateFromFileSystemRepresentation(
        kCFAllocatorDefault, reinterpret_cast<const UInt8*>(path.data()), static_cast<CFIndex>(path.size()),
        false));
    Owned<CFBooleanRef> isInTheCloud;
    if (url.get() == nullptr ||
        !CFURLCopyResourcePropertyForKey(url.get(), kCFURLIsUbiquitousItemKey, isInTheCloud.address(),
                                         nullptr) ||
        isInTheCloud.get() == nullptr || !CFBooleanGetValue(isInTheCloud.get())) {
        return false;
    }
    // A status that is missing is not the current one either.
    Owned<CFStringRef> status;
    CFURLCopyResourcePropertyForKey(url.get(), kCFURLUbiquitousItemDownloadingStatusKey, status.address(),
                                    nullptr);
    return status.get() == nullptr || !CFEqual(status.get(), kCFURLUbiquitousItemDownloadingStatusCurrent);
}

} // namespace quillane::CloudItem
