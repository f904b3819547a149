#include "ThumbnailSize.h"
#include <algorithm>
#include <cmath>

namespace quillane::ThumbnailSize {

PixelSize sensible(PixelSize wanted) {
    return {std::clamp(wanted.width, 1, kMostSide), std::clamp(wanted.height, 1, kMostSide)};
}

PixelSize kept(PixelSize picture, PixelSize asked) {
    const double scale =
        std::min({1.0, 2.0 * asked.width / picture.width, 2.0 * asked.height / picture.height});
    const auto side = [scale](int whole) {
        return std::max(1, static_cast<int>(std::lround(whole * scale)));
    };
    return {side(picture.width), side(picture.height)};
}

} // namespace quillane::ThumbnailSize
