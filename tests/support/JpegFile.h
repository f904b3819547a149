#pragma once
#include <string>
#include <string_view>

namespace quillane {

// A picture as a baseline JPEG file. `rgb` holds its rows from the top. `coarseness` is 1 for nearly everything, 30
// for a small file. Every symbol has a code of the same length, so files are somewhat larger than they could be.
std::string jpegFile(int width, int height, std::string_view rgb, int coarseness);

} // namespace quillane
