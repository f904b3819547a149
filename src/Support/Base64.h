#pragma once
#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Base64, header only, for the parsers of hostile input that hold it.
namespace quillane::Base64 {

// 0 to 63, or nothing for what is no digit.
inline std::optional<std::uint32_t> digit(char c) {
    if (c >= 'A' && c <= 'Z') {
        return static_cast<std::uint32_t>(c - 'A');
    }
    if (c >= 'a' && c <= 'z') {
        return static_cast<std::uint32_t>(c - 'a') + 26U;
    }
    if (c >= '0' && c <= '9') {
        return static_cast<std::uint32_t>(c - '0') + 52U;
    }
    return c == '+' ? std::optional(62U) : c == '/' ? std::optional(63U) : std::nullopt;
}

// As forgiving as the platform: what is no digit is passed over. Four make a group of three bytes, in which "="
// stands for six bits of zero wherever it is; one right before the end of a group, with what follows its last
// digit, takes a byte from it. What is left over gives the bytes that it fills.
inline std::string decoded(std::string_view text) {
    constexpr unsigned kGroup = 4;
    std::string bytes;
    bytes.reserve(text.size() / kGroup * 3);
    std::uint32_t bits = 0;
    unsigned count = 0;
    unsigned padding = 0; // the "=" since the last digit
    const auto endGroup = [&] {
        const unsigned whole = count * 6 / 8;
        bits <<= 6U * (kGroup - count);
        for (unsigned i = 0; i + std::min(padding, 2U) < whole; ++i) {
            bytes += static_cast<char>(bits >> (16U - 8U * i) & 0xFFU);
        }
        bits = 0;
        count = 0;
    };
    for (const char c : text) {
        const auto value = c == '=' ? std::optional(0U) : digit(c);
        if (!value) {
            continue;
        }
        padding = c == '=' ? padding + 1 : 0;
        bits = bits << 6U | *value;
        if (++count == kGroup) {
            endGroup();
        }
    }
    endGroup();
    return bytes;
}

} // namespace quillane::Base64
