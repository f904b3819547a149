#pragma once
#include "Previews.h"

// How large pictures of files are asked for and taken, by the words of the Previews port.
namespace quillane::ThumbnailSize {

// The largest side of anything that is asked for, in pixels.
inline constexpr int kMostSide = 4096;

// What is asked for: no side below 1 or above kMostSide.
PixelSize sensible(PixelSize wanted);

// The size in which a picture that has come is kept: its own, or, where a side is longer than twice what was asked
// for, the largest of its proportions within that. `picture` is not empty; `asked` is sensible.
PixelSize kept(PixelSize picture, PixelSize asked);

} // namespace quillane::ThumbnailSize
