#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// What is written in a file of plain text, whatever it is encoded in.
namespace quillane::PlainText {

enum class Encoding { none, utf8, utf16BigEndian, utf16LittleEndian, latin1 };

struct Format {
    Encoding encoding = Encoding::none; // none: no text
    std::size_t mark = 0;               // bytes of the byte order mark that it begins with
};

// Who says that a file is text: its type, or nobody.
enum class Claim { declared, none };

// By the start of a file; 64 KB of it or all are enough. A byte order mark decides, then UTF-16 by the zeros of its
// ASCII characters, then UTF-8 where the bytes are valid but for a last character that is cut, then Latin-1. Bytes
// with other zeros near their beginning are no text. Where nobody claims that it is text, no characters of control may
// stand there either, but for those that a terminal is coloured with.
// Where `isAll` says that `start` is the whole file, no character is cut.
Format formatOf(std::string_view start, Claim claim = Claim::declared, bool isAll = false);

// The same without a look at whether bytes are valid UTF-8: nothing where that must decide between it and Latin-1.
std::optional<Format> markedFormatOf(std::string_view start);

// The start of a file as UTF-8; empty for what is no text. A character that the end of `bytes` cuts is dropped. At
// most twice as long as `bytes`.
std::string decoded(std::string_view bytes, Claim claim = Claim::declared);

// UTF-8 of a part, behind the mark, that is in this encoding and cuts no character.
std::string decoded(std::string_view part, Encoding encoding);

} // namespace quillane::PlainText
