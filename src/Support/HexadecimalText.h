#pragma once
#include <cstddef>
#include <span>
#include <string>

namespace quillane {

// Two lower-case digits for each byte, with nothing between them.
inline std::string hexadecimalText(std::span<const std::byte> bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const auto byte : bytes) {
        text += kDigits[std::to_integer<unsigned>(byte) >> 4U];
        text += kDigits[std::to_integer<unsigned>(byte) & 0xFU];
    }
    return text;
}

} // namespace quillane
