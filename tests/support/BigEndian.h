#pragma once
#include <cstddef>
#include <cstdint>
#include <string>

namespace quillane {

// Appends the lowest `width` bytes of a number, highest first.
inline void appendBigEndian(std::string& bytes, std::uint64_t value, std::size_t width) {
    for (std::size_t i = width; i > 0; --i) {
        bytes += static_cast<char>((value >> (8 * (i - 1))) & 0xFFU);
    }
}

inline void appendBigEndian32(std::string& bytes, std::uint32_t value) {
    appendBigEndian(bytes, value, 4);
}

} // namespace quillane
