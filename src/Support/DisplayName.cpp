#include "DisplayName.h"
#include <cstdint>
#include <fmt/format.h>
#include <iterator>
#include <unicode/utf8.h>

namespace quillane::Text {

namespace {

constexpr bool isControl(UChar32 c) {
    return c < 0x20 || (c >= 0x7F && c <= 0x9F);
}

constexpr bool breaksLine(UChar32 c) {
    return c == 0x2028 || c == 0x2029;
}

// The marks, embeddings, overrides and isolates of the bidirectional algorithm.
constexpr bool changesDirection(UChar32 c) {
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069);
}

} // namespace

std::string displayName(std::string_view name) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(name.data());
    const auto length = static_cast<std::int64_t>(name.size());
    std::string shown;
    shown.reserve(name.size());
    for (std::int64_t next = 0; next < length;) {
        const auto begin = next;
        UChar32 c = 0;
        U8_NEXT(bytes, next, length, c);
        if (c < 0) {
            shown += "\uFFFD";
        } else if (isControl(c) || breaksLine(c) || changesDirection(c)) {
            fmt::format_to(std::back_inserter(shown), "‹U+{:04X}›", static_cast<std::uint32_t>(c));
        } else {
            shown += name.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(next - begin));
        }
    }
    return shown;
}

} // namespace quillane::Text
