#pragma once
#include <array>
#include <cstddef>
#include <string_view>

// Questions about bytes that are answered many at a time, 64 to a block. Any thread.
namespace quillane::ByteFilter {

inline constexpr std::size_t kBlock = 64;
// How far beyond its last byte a block is looked at.
inline constexpr std::size_t kReach = 4;

// Four ASCII characters as they stand in folded text, without a blank.
using Quad = std::array<unsigned char, 4>;

// The first block in which a text may begin that folds, case and accents left out, to these four characters, or the next
// one where a mark of another script lies between them; the number of blocks where there is none. `bytes` must have kReach bytes beyond its blocks. The text is UTF-8.
//
// A letter may be spelt as itself in either case, with accents of its own behind it, or in as many bytes as letters
// or more. Such bytes are all of one kind, so four letters in a row lie in some four bytes in a row that are each
// their letter or of that kind. Marks of other scripts begin with bytes of which their script is full; they show
// behind a letter, accented or not. The letters of other scripts begin with none of those bytes, so most text needs one
// look, in one of three loops: for ASCII, for other scripts, and for text in which characters begin that can be part of
// letters. A closer one is for blocks at which they stop.
std::size_t firstBlock(const unsigned char* bytes, std::size_t blocks, const Quad& quad);

// The same for text of which nobody has found out yet whether it is UTF-8 or Latin-1; the block may lie behind what was
// looked for. Also one in which a character begins and does not go on, which is then no UTF-8. Letters of Latin-1 beside
// ASCII do that wherever one of their kind or a letter of ASCII follows, so what is left has them at its end alone.
std::size_t firstBlockOfUnknown(const unsigned char* bytes, std::size_t blocks, const Quad& quad);

// Utf8::isValid(), several times as fast.
bool isUtf8(std::string_view text);

} // namespace quillane::ByteFilter
