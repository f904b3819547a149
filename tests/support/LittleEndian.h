#pragma once
#include <cstddef>
#include <cstdint>
#include <string>

namespace quillane {

// Appends the lowest `width` bytes of a number, lowest first.
inline void appendLittleEndian(std::string& bytes, std::uint64_t value, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) {
        bytes += static_cast<char>((value >> (8 * i)) & 0xFFU);
    }
}

inline void appendLittleEndian16(std::string& bytes, std::uint64_t value) {
    appendLittleEndian(bytes, value, 2);
}

inline void appendLittleEndian32(std::string& bytes, std::uint64_t value) {
    appendLittleEndian(bytes, value, 4);
}

} // namespace quillane
