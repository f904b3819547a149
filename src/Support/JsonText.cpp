#include "JsonText.h"
#include "ShortestDecimal.h"
#include <cmath>
#include <unicode/utf8.h>

namespace quillane::JsonText {
namespace {

constexpr double kFirstWithExponent = 1e16;
constexpr double kLastWithoutExponent = 1e-4;
constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD

void appendEscaped(std::string& out, unsigned char c) {
    static constexpr std::string_view kHex = "0123456789abcdef";
    switch (c) {
    case '"':
        out += "\\\"";
        break;
    case '\\':
        out += "\\\\";
        break;
    case '/':
        out += "\\/";
        break;
    case '\b':
        out += "\\b";
        break;
    case '\f':
        out += "\\f";
        break;
    case '\n':
        out += "\\n";
        break;
    case '\r':
        out += "\\r";
        break;
    case '\t':
        out += "\\t";
        break;
    default:
        if (c < 0x20) {
            out += "\\u00";
            out += kHex[c >> 4];
            out += kHex[c & 15];
        } else {
            out += static_cast<char>(c);
        }
    }
}

} // namespace

std::string string(std::string_view text) {
    std::string out = "\"";
    const auto length = static_cast<int32_t>(text.size());
    for (int32_t i = 0; i < length;) {
        const int32_t begin = i;
        UChar32 c = 0;
        U8_NEXT(text.data(), i, length, c);
        if (c < 0) {
            out += kReplacement;
        } else if (c < 0x80) {
            appendEscaped(out, static_cast<unsigned char>(c));
        } else {
            out += text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(i - begin));
        }
    }
    return out + '"';
}

std::optional<std::string> number(double value) {
    if (!std::isfinite(value)) {
        return std::nullopt;
    }
    const double size = std::fabs(value);
    const bool plain = size == 0 || (size >= kLastWithoutExponent && size < kFirstWithExponent);
    const ShortestDecimal decimal(value);
    return plain ? decimal.fixed() : decimal.scientific();
}

} // namespace quillane::JsonText
