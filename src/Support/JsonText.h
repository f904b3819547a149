#pragma once
#include <optional>
#include <string>
#include <string_view>

// Values as the platform's JSON encoder writes them with its default settings.
namespace quillane::JsonText {

// With its quotes. A slash is escaped, as the platform does; bytes that are not UTF-8 become U+FFFD.
std::string string(std::string_view text);

// The shortest text that reads back as the same number; whole numbers have no ".0", and from 1e16 on and
// below 1e-4 there is an exponent. Nothing for what is no finite number.
std::optional<std::string> number(double value);

} // namespace quillane::JsonText
