#include "UnicodeText.h"
#include "Utf8.h"
#include <algorithm>
#include <cstdint>
#include <limits>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace quillane::Text {
namespace {

constexpr char16_t kInvalidByte = 0xDC00; // and the byte, which is 0x80 at least

icu::StringPiece piece(std::string_view text) {
    // Lengths are 32 bits wide in the library, and a text may grow fourfold in it.
    return {text.substr(0, std::numeric_limits<std::int32_t>::max() / 4)};
}

} // namespace

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

icu::UnicodeString readableUnicode(std::string_view text) {
    return icu::UnicodeString::fromUTF8(piece(text));
}

icu::UnicodeString exactUnicode(std::string_view text) {
    if (Utf8::isValid(text)) {
        return readableUnicode(text);
    }
    const auto bytes = piece(text);
    const auto* const data = bytes.data();
    icu::UnicodeString unicode;
    for (std::int32_t at = 0; at < bytes.length();) {
        const auto begin = at;
        UChar32 point = 0;
        U8_NEXT(data, at, bytes.length(), point);
        if (point >= 0) {
            unicode.append(point);
            continue;
        }
        for (auto i = begin; i < at; ++i) {
            unicode.append(static_cast<char16_t>(kInvalidByte + static_cast<unsigned char>(data[i])));
        }
    }
    return unicode;
}

std::string bytesOf(const icu::UnicodeString& exact) {
    std::string bytes;
    for (std::int32_t at = 0; at < exact.length(); at = exact.moveIndex32(at, 1)) {
        const auto point = static_cast<std::uint32_t>(exact.char32At(at));
        if (point > kInvalidByte && point <= kInvalidByte + 0xFFU) {
            bytes += static_cast<char>(point - kInvalidByte);
        } else {
            Utf8::append(bytes, point);
        }
    }
    return bytes;
}

} // namespace quillane::Text
