#include "SystemIndex.h"
#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>
#include <algorithm>
#include <cstdlib>
#include <set>
#include <unicode/ustring.h>
#include <utility>

namespace quillane::SystemIndex {
namespace {

// What every reference leads to.
struct Object {
    enum class Kind { text, date, truth, location, item };
    Kind kind = Kind::text;
    std::string text{}; // or the path
    double date = 0;
    bool truth = false;
};

std::set<const Object*>& living() {
    static std::set<const Object*> objects;
    return objects;
}

const Object* make(Object object) {
    return *living().insert(new Object(std::move(object))).first;
}
// One that is used when it has gone, or was never there, is a fault of the source under trial.
const Object& at(const void* reference) {
    const auto* object = static_cast<const Object*>(reference);
    if (!living().contains(object)) {
        std::abort();
    }
    return *object;
}
const Item* itemAt(const std::string& path) {
    const auto found = items().find(path);
    return found == items().end() ? nullptr : &found->second;
}

template <class Reference>
Reference as(const Object* object) {
    return reinterpret_cast<Reference>(const_cast<Object*>(object));
}

// Never released.
CFStringRef constant(const char* text) {
    return as<CFStringRef>(new Object{.text = text});
}

bool isText(const std::string& bytes) {
    UErrorCode error = U_ZERO_ERROR;
    int32_t length = 0;
    u_strFromUTF8(nullptr, 0, &length, bytes.data(), static_cast<int32_t>(bytes.size()), &error);
    return error != U_INVALID_CHAR_FOUND;
}

} // namespace

std::map<std::string, Item>& items() {
    static std::map<std::string, Item> known;
    return known;
}

int held() {
    return static_cast<int>(living().size());
}

} // namespace quillane::SystemIndex

using namespace quillane::SystemIndex;
using Kind = Object::Kind;

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFStringRef kCFURLIsUbiquitousItemKey = constant("is ubiquitous");
const CFStringRef kCFURLUbiquitousItemDownloadingStatusKey = constant("status");
const CFStringRef kCFURLUbiquitousItemDownloadingStatusCurrent = constant("current");
const CFStringRef kMDItemLastUsedDate = constant("last used");

void CFRelease(CFTypeRef value) {
    (void)at(value);
    living().erase(static_cast<const Object*>(value));
    delete static_cast<const Object*>(value);
}

// Constants do not live among the others.
Boolean CFEqual(CFTypeRef one, CFTypeRef other) {
    return static_cast<Boolean>(static_cast<const Object*>(one)->text ==
                                static_cast<const Object*>(other)->text);
}

CFTypeID CFGetTypeID(CFTypeRef value) {
    return static_cast<CFTypeID>(at(value).kind);
}

CFTypeID CFDateGetTypeID() {
    return static_cast<CFTypeID>(Kind::date);
}

double CFDateGetAbsoluteTime(CFDateRef date) {
    if (at(date).kind != Kind::date) {
        std::abort();
    }
    return at(date).date;
}

Boolean CFBooleanGetValue(CFBooleanRef value) {
    return static_cast<Boolean>(at(value).truth);
}

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex length,
                                    CFStringEncoding encoding, Boolean) {
    const std::string text(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
    return encoding == kCFStringEncodingUTF8 && isText(text) ? as<CFStringRef>(make({.text = text}))
                                                             : nullptr;
}

CFURLRef CFURLCreateFromFileSystemRepresentation(CFAllocatorRef, const UInt8* bytes, CFIndex length,
                                                 Boolean) {
    const std::string path(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
    return path.empty() ? nullptr : as<CFURLRef>(make({.kind = Kind::location, .text = path}));
}

Boolean CFURLCopyResourcePropertyForKey(CFURLRef url, CFStringRef key, void* value, CFErrorRef*) {
    const auto* item = itemAt(at(url).text);
    if (item == nullptr) {
        return 0;
    }
    const Object* copy = nullptr;
    if (key == kCFURLIsUbiquitousItemKey && item->isInTheCloud) {
        copy = make({.kind = Kind::truth, .truth = *item->isInTheCloud});
    } else if (key == kCFURLUbiquitousItemDownloadingStatusKey && item->downloadingStatus) {
        copy = make({.text = *item->downloadingStatus});
    }
    *static_cast<const void**>(value) = copy;
    return 1;
}

MDItemRef MDItemCreate(CFAllocatorRef, CFStringRef path) {
    const auto& text = at(path).text;
    return itemAt(text) == nullptr ? nullptr : as<MDItemRef>(make({.kind = Kind::item, .text = text}));
}

CFTypeRef MDItemCopyAttribute(MDItemRef item, CFStringRef name) {
    const auto& lastUsed = itemAt(at(item).text)->lastUsed;
    if (name != kMDItemLastUsedDate) {
        return nullptr;
    }
    if (const auto* seconds = std::get_if<Seconds>(&lastUsed)) {
        return make({.kind = Kind::date, .date = seconds->since2001});
    }
    const auto* text = std::get_if<Text>(&lastUsed);
    return text == nullptr ? nullptr : make({.text = text->value});
}
