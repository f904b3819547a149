#pragma once
#include <string>
#include <string_view>

// What is written in a file of plain text, whatever it is encoded in.
namespace quillane::PlainText {

// The start of a file as UTF-8; empty for what is no text. A byte order mark decides, then UTF-16 by the zeros of
// its ASCII characters, then UTF-8 where the bytes are valid, then Latin-1. A character that the end of `bytes`
// cuts is dropped. Bytes with other zeros near their beginning are no text. At most twice as long as `bytes`.
std::string decoded(std::string_view bytes);

} // namespace quillane::PlainText
