#include "MailEncoding.h"
#include "Base64.h"
#include "Charset.h"
#include <algorithm>
#include <cstddef>
#include <optional>

namespace quillane::MailEncoding {
namespace {

std::optional<unsigned> hexadecimalDigit(char c) {
    if (c >= '0' && c <= '9') {
        return static_cast<unsigned>(c - '0');
    }
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? std::optional(static_cast<unsigned>(lower - 'a') + 10U)
                                        : std::nullopt;
}

// The length of the end of line at the front, blanks before it among it; 0 when something else is there.
std::size_t lengthOfLineEnd(std::string_view text) {
    const auto end = std::min(text.find_first_not_of(" \t"), text.size());
    const auto behind = text.substr(end);
    return behind.starts_with("\r\n") ? end + 2 : behind.starts_with('\n') ? end + 1 : 0;
}

struct EncodedWord {
    std::string text;   // UTF-8
    std::size_t length; // as it is written
};

// At the front of `value`: "=?charset?encoding?text?=".
std::optional<EncodedWord> encodedWord(std::string_view value) {
    constexpr std::size_t kLongest = 1000; // 75 by the rules, which not all mails follow
    if (!value.starts_with("=?")) {
        return std::nullopt;
    }
    const auto whole = value.substr(0, kLongest);
    const auto charsetEnd = whole.find('?', 2);
    const auto encodingEnd =
        charsetEnd == std::string_view::npos ? charsetEnd : whole.find('?', charsetEnd + 1);
    const auto end = encodingEnd == std::string_view::npos ? encodingEnd : whole.find("?=", encodingEnd + 1);
    if (end == std::string_view::npos || encodingEnd != charsetEnd + 2) {
        return std::nullopt;
    }
    const auto charset = whole.substr(2, charsetEnd - 2);
    std::string text(whole.substr(encodingEnd + 1, end - encodingEnd - 1));
    const char encoding = static_cast<char>(whole[charsetEnd + 1] | 0x20);
    if (encoding == 'q') {
        std::ranges::replace(text, '_', ' ');
    } else if (encoding != 'b') {
        return std::nullopt;
    }
    const auto bytes = encoding == 'b' ? Base64::decoded(text) : quotedPrintable(text);
    auto decoded =
        Charset::decoded(bytes, charset.substr(0, charset.find('*'))); // behind "*" stands a language
    return decoded ? std::optional(EncodedWord{std::move(*decoded), end + 2}) : std::nullopt;
}

} // namespace

std::string quotedPrintable(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        const auto plain = text.substr(0, text.find('='));
        bytes += plain;
        text.remove_prefix(plain.size());
        if (text.empty()) {
            break;
        }
        const auto lineEnd = lengthOfLineEnd(text.substr(1));
        const auto high = text.size() > 2 ? hexadecimalDigit(text[1]) : std::nullopt;
        const auto low = high ? hexadecimalDigit(text[2]) : std::nullopt;
        if (lineEnd > 0) {
            text.remove_prefix(1 + lineEnd);
        } else if (low) {
            bytes += static_cast<char>(*high << 4U | *low);
            text.remove_prefix(3);
        } else {
            bytes += '=';
            text.remove_prefix(1);
        }
    }
    return bytes;
}

std::string header(std::string_view value) {
    std::string text;
    bool isBehindWord = false;
    while (!value.empty()) {
        const auto blanks = value.substr(0, std::min(value.find_first_not_of(" \t\r\n"), value.size()));
        const auto word = encodedWord(value.substr(blanks.size()));
        if (word) {
            text += isBehindWord ? "" : blanks;
            text += word->text;
            value.remove_prefix(blanks.size() + word->length);
        } else {
            const auto length = std::min(value.size(), blanks.size() + 1);
            text += value.substr(0, length);
            value.remove_prefix(length);
        }
        isBehindWord = word.has_value();
    }
    return text;
}

} // namespace quillane::MailEncoding
