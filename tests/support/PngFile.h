#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace quillane {

enum class PngColour : char { rgb = 2, rgba = 6 };

// A word about a picture, in Latin-1, such as the program that made it.
struct PngRemark {
    std::string keyword;
    std::string text;
};

// A picture as a PNG file. `samples` holds its rows from the top, a byte for each colour of each pixel. What is not
// packed is larger, and made at once.
std::string pngFile(PngColour colour, int width, int height, std::string_view samples,
                    const std::vector<PngRemark>& texts = {}, bool isPacked = true);

} // namespace quillane
