#pragma once
#include "Workspace.h"
#include <cstddef>
#include <optional>
#include <string_view>

// Reads the plainest form of a picture, in which programs hand their pages on: "P6", width, height and 255, each
// followed by white space, and then three bytes for each pixel. Input is hostile. Any thread.
namespace quillane::PpmReader {

// The largest width and height, in pixels.
inline constexpr int kMostSide = 4096;
// As many bytes as the largest picture may take, its head among them.
inline constexpr std::size_t kMostBytes =
    std::size_t{3} * std::size_t{kMostSide} * std::size_t{kMostSide} + 64;

// Nothing for what is no such picture, is larger, has no pixels or lacks some. What follows the last pixel is not
// looked at.
std::optional<IconImage> parse(std::string_view bytes);

} // namespace quillane::PpmReader
