#pragma once
#include "Previews.h"
#import <CoreGraphics/CoreGraphics.h>
#include <optional>

namespace quillane::DrawnImage {

// The picture as our own, drawn to fill `size`, whose sides are above 0. Nothing where there is no picture or no
// memory. For the adapters alone. Any thread.
std::optional<IconImage> of(CGImageRef picture, PixelSize size);

} // namespace quillane::DrawnImage
