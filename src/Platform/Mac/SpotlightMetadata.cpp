#include "SpotlightMetadata.h"
#include "CoreFoundationOwned.h"
#include <CoreServices/CoreServices.h>
#include <string>

namespace quillane {
namespace {

// Nothing for bytes that are no text: the index knows no such path.
CFStringRef textOf(const std::string& path) {
    return CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(path.data()),
                                   static_cast<CFIndex>(path.size()), kCFStringEncodingUTF8, false);
}

} // namespace

std::optional<Date> SpotlightMetadata::lastUsed(const FileURL& url) const {
    const CoreFoundationOwned path(textOf(url.path()));
    const CoreFoundationOwned item(path ? MDItemCreate(kCFAllocatorDefault, path.get()) : nullptr);
    const CoreFoundationOwned date(item ? MDItemCopyAttribute(item.get(), kMDItemLastUsedDate) : nullptr);
    if (!date || CFGetTypeID(date.get()) != CFDateGetTypeID()) {
        return std::nullopt;
    }
    return Date{CFDateGetAbsoluteTime(static_cast<CFDateRef>(date.get()))};
}

} // namespace quillane
