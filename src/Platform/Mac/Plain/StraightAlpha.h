#pragma once
#include <cstdint>
#include <vector>

namespace quillane::StraightAlpha {

// The platform draws with colours that are multiplied by their alpha. Divides those of 8-bit RGBA pixels by it, in
// place and rounded to the nearest. What is wholly transparent becomes four zeros; a colour above its alpha, which no
// drawing makes, becomes full. Bytes behind the last whole pixel stay as they are. Any thread.
void divideOut(std::vector<std::uint8_t>& rgba);

} // namespace quillane::StraightAlpha
