#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Text by the characters that a reader sees. All take UTF-8; invalid bytes count as U+FFFD
// where nothing else is said. Any thread.
namespace quillane::Text {

// True when the text has exactly `count` characters and each is an upper case letter or a number.
bool isUppercaseOrNumbers(std::string_view text, std::size_t count);

// How many characters the text has.
std::size_t characterCount(std::string_view text);

// Where the full stops stand that are characters of their own: one that carries an accent is another character.
std::vector<std::size_t> fullStops(std::string_view text);

// The text in lower case by the full mapping without a locale, composed, so that equal bytes mean equal texts.
// Invalid bytes stay as they are, so that they equal only themselves.
std::string lowercased(std::string_view text);

// The letters and numbers of the text in lower case, composed: spaces, punctuation and all else left out.
// A letter or number keeps the accents that it carries.
std::string lowercasedLettersAndNumbers(std::string_view text);

// The text without the blanks at its ends, which are all that Unicode counts as such, line ends too.
std::string_view trimmed(std::string_view text);

// The text with every invalid sequence replaced by U+FFFD.
std::string repairedUtf8(std::string_view bytes);

} // namespace quillane::Text
