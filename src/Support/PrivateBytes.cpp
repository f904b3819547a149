#include "PrivateBytes.h"
#include <array>
#include <unicode/utf8.h>

namespace quillane::PrivateBytes {
namespace {

constexpr UChar32 kFirst = 0x10FE00;

bool isPrivate(UChar32 c) {
    return c >= kFirst && c <= kFirst + 0xFF;
}

void appendCodePoint(std::string& out, UChar32 c) {
    std::array<char, U8_MAX_LENGTH> bytes{};
    int32_t length = 0;
    U8_APPEND_UNSAFE(bytes.data(), length, c);
    out.append(bytes.data(), static_cast<std::size_t>(length));
}

std::string_view between(std::string_view text, int32_t begin, int32_t end) {
    return text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
}

// The bytes that the run of private characters at `i` stands for; `i` is behind it then. Empty where there is none.
std::string bytesOfRun(std::string_view text, int32_t& i) {
    std::string bytes;
    const auto length = static_cast<int32_t>(text.size());
    for (int32_t next = i; next < length; i = next) {
        UChar32 c = 0;
        U8_NEXT(text.data(), next, length, c);
        if (!isPrivate(c)) {
            break;
        }
        bytes += static_cast<char>(c - kFirst);
    }
    return bytes;
}

} // namespace

std::string written(std::string_view bytes, Holds holds) {
    std::string out;
    out.reserve(bytes.size());
    const auto length = static_cast<int32_t>(bytes.size());
    for (int32_t i = 0; i < length;) {
        const int32_t begin = i;
        UChar32 c = 0;
        U8_NEXT(bytes.data(), i, length, c);
        const auto read = between(bytes, begin, i);
        if (c >= 0 && holds(c) && !isPrivate(c)) {
            out += read;
            continue;
        }
        for (const char byte : read) {
            appendCodePoint(out, kFirst + static_cast<unsigned char>(byte));
        }
    }
    return out;
}

std::string restored(std::string_view text, Holds holds) {
    std::string out;
    out.reserve(text.size());
    const auto length = static_cast<int32_t>(text.size());
    for (int32_t i = 0; i < length;) {
        const int32_t begin = i;
        const auto bytes = bytesOfRun(text, i);
        if (bytes.empty()) {
            U8_FWD_1(text.data(), i, length);
        }
        const auto read = between(text, begin, i);
        // What would be written in another way was never written so: it stands for itself.
        if (bytes.empty() || written(bytes, holds) != read) {
            out += read;
        } else {
            out += bytes;
        }
    }
    return out;
}

} // namespace quillane::PrivateBytes
