#pragma once
#include "Bytes.h"
#include <cstddef>
#include <optional>
#include <string_view>

// What the beginning of a file tells about the picture in it, before any decoder sees it. Names of files are not
// asked: anybody may give them. Input is hostile. Any thread.
namespace quillane::PictureHead {

// As much of the beginning as is worth looking at.
inline constexpr std::size_t kMostBytes = std::size_t{1} << 20U;

// "png", "jpeg", "gif", "bmp", "ppm", "webp", "tiff", "ico", "heif", "avif", "jxl", "svg" or "pdf"; empty for
// everything else.
std::string_view formOf(std::string_view head);

// How much a decoder must keep of a JPEG as a whole, however small it is to be shown: all coefficients where they
// come in several scans, 0 where the picture comes row by row. Nothing when the head does not tell how large the
// picture is.
std::optional<Bytes> bytesKeptOfJpeg(std::string_view head);

// Whether an SVG, whole, says in plain letters all that it says, and asks for no file, no dashes and no entities.
// Everything else could be written so that a search for words does not find it.
bool isHarmlessSvg(std::string_view document);

} // namespace quillane::PictureHead
