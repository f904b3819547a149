#include "ScreenCapture.h"
#include "PropertyList.h"
#include <algorithm>
#include <array>
#include <cstdint>

namespace quillane::ScreenCapture {
namespace {

constexpr std::string_view kSignature = "\x89PNG\r\n\x1A\n";
constexpr std::size_t kLengthAndType = 8;
constexpr std::size_t kChecksum = 4;
constexpr std::string_view kSoftware("Software\0", 9);
// Of GNOME's shell and tool, and of MATE's.
constexpr std::array<std::string_view, 2> kTools = {"gnome-screenshot", "mate-screenshot"};

std::uint32_t bigEndian(std::string_view bytes) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = (value << 8U) | static_cast<unsigned char>(bytes[i]);
    }
    return value;
}

} // namespace

bool isAttributeTrue(std::string_view value) {
    const auto parsed = PropertyList::parse(value);
    return parsed && PropertyList::asBool(&*parsed).value_or(false);
}

bool isMarkedPng(std::string_view head) {
    if (!head.starts_with(kSignature)) {
        return false;
    }
    auto rest = head.substr(kSignature.size());
    while (rest.size() >= kLengthAndType) {
        const std::size_t length = bigEndian(rest);
        const auto type = rest.substr(4, 4);
        rest.remove_prefix(kLengthAndType);
        if (type == "IDAT" || length > rest.size()) {
            return false;
        }
        const auto data = rest.substr(0, length);
        if (type == "tEXt" && data.starts_with(kSoftware) &&
            std::ranges::find(kTools, data.substr(kSoftware.size())) != kTools.end()) {
            return true;
        }
        rest.remove_prefix(std::min(length + kChecksum, rest.size()));
    }
    return false;
}

} // namespace quillane::ScreenCapture
