#pragma once
#include <string>
#include <string_view>
#include <unicode/unistr.h>

// Between UTF-8 and the text of the Unicode library, for the sources of Support alone. Any thread.
namespace quillane::Text {

bool isAscii(std::string_view text);

constexpr char lowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// As a reader sees it: invalid bytes are U+FFFD. For what is shown, sorted and searched.
icu::UnicodeString readableUnicode(std::string_view text);

// As the bytes tell it: each invalid byte is a unit of its own, U+DC80 to U+DCFF, which no text that is valid
// holds and which no case, accent or composition changes. Different bytes give different units. For what decides
// whether two names are the same.
icu::UnicodeString exactUnicode(std::string_view text);

// The way back from exactUnicode().
std::string bytesOf(const icu::UnicodeString& exact);

} // namespace quillane::Text
