#pragma once
#include "StopToken.h"
#include <cstddef>

namespace quillane {

class OpenFile;
class TextSink;

// The archive that an office document is.
namespace OfficeArchive {

// What is read at most, so that no document costs more than a moment, whatever it claims.
struct Limits {
    std::size_t file = std::size_t{64} << 20U;     // bytes; a larger one has no text
    std::size_t member = std::size_t{16} << 20U;   // unpacked bytes of one part; what follows is left out
    std::size_t words = std::size_t{64} << 20U;    // of all parts with words
    std::size_t sheets = std::size_t{16} << 20U;   // of all sheets, so that they leave the words their share
    std::size_t directory = std::size_t{4} << 20U; // read before the first member is known
    int members = 4096;                            // looked at
};

// Adds the text of all parts that have words. A part that is damaged gives what stands before the damage; what is
// encrypted, packed in a manner that no office writes, or no archive at all gives nothing. False when the file itself
// could not be read to the end of what was asked of it.
bool add(OpenFile& file, const Limits& limits, const StopToken& stop, TextSink& sink);

} // namespace OfficeArchive
} // namespace quillane
