#pragma once
#include <string>
#include <string_view>

// How the text of a mail is written in the characters that every mail may hold. Hostile input is decoded as far as it
// goes; nothing here fails.
namespace quillane::MailEncoding {

// "=C3=A9" is a byte each, and "=" at the end of a line joins it with the next. What is neither stays.
std::string quotedPrintable(std::string_view text);

// A header's value as UTF-8: "=?utf-8?q?caf=C3=A9?=" is decoded, and the blanks between two such words are none.
std::string header(std::string_view value);

} // namespace quillane::MailEncoding
