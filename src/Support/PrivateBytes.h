#pragma once
#include <cstdint>
#include <string>
#include <string_view>

// Any bytes as UTF-8 text, for what holds text alone. A byte that the text can't hold becomes the private character of
// U+10FE00 plus its value: the last of all planes, which hardly a name uses. Where one does, its own bytes are written
// in the same way. Any thread.
namespace quillane::PrivateBytes {

// Whether a code point may stand in the text as it is.
using Holds = bool (*)(std::int32_t character);

// What is not UTF-8, and each character that the text can't hold, byte by byte as private characters.
std::string written(std::string_view bytes, Holds holds);

// The bytes that a text stood for before written(): any bytes come back as they were. A private character that
// written() would not have put there is kept as it stands.
std::string restored(std::string_view text, Holds holds);

} // namespace quillane::PrivateBytes
