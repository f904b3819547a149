#pragma once
#include <array>
#include <cstddef>
#include <string_view>

// Questions about bytes that are answered many at a time, 64 to a block. Any thread.
namespace quillane::ByteFilter {

inline constexpr std::size_t kBlock = 64;
// How far beyond its last byte a block is looked at.
inline constexpr std::size_t kReach = 3;

// Four ASCII characters as they stand in folded text, without a blank.
using Quad = std::array<unsigned char, 4>;

// The first block in which a text may begin that folds, case and accents left out, to these four characters; the
// number of blocks where there is none. A block that is passed over holds none, but for one kind: an accented letter,
// not an unaccented one, that carries a mark of another script as well. `bytes` must have kReach bytes beyond its
// blocks. The text is UTF-8.
//
// A letter may be spelt as itself in either case, with accents of its own behind it, or in as many bytes as letters
// or more. Such bytes are all of one kind, so four letters in a row lie in some four bytes in a row that are each
// their letter or of that kind. Marks of other scripts begin with bytes of which their script is full; they show
// behind a letter.
std::size_t firstBlock(const unsigned char* bytes, std::size_t blocks, const Quad& quad);

// Whether a byte is of the kind that stands for letters with accents, or begins a mark that shows behind a letter.
constexpr bool standsForLetters(unsigned char byte) {
    return (byte >= 0x80 && byte <= 0xCD) || byte == 0xE1 || byte == 0xE2;
}
constexpr bool beginsRareMark(unsigned char byte) {
    return (byte >= 0xD2 && byte <= 0xDF) || byte == 0xE0 || byte == 0xE3 || byte >= 0xEA;
}

// Utf8::isValid(), several times as fast.
bool isUtf8(std::string_view text);

} // namespace quillane::ByteFilter
