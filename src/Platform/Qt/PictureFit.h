#pragma once
#include "Previews.h"
#include <QSize>
#include <algorithm>
#include <cmath>

namespace quillane {

// How a picture keeps its proportions beside a wanted size.
enum class Fit {
    within, // no side is longer than wanted
    around  // both sides are at least as long as wanted, and none longer than twice that
};

// The largest side of anything that is asked for, in pixels.
inline constexpr int kMostPreviewSide = 4096;

inline PixelSize sensible(PixelSize wanted) {
    return {std::clamp(wanted.width, 1, kMostPreviewSide), std::clamp(wanted.height, 1, kMostPreviewSide)};
}

// The size in which to show a picture, never more than `most` times what it has. `picture` is not empty.
inline QSize fitted(QSize picture, PixelSize wanted, Fit fit, double most = 1) {
    const double across = static_cast<double>(wanted.width) / picture.width();
    const double down = static_cast<double>(wanted.height) / picture.height();
    double scale = std::min(across, down);
    if (fit == Fit::around) {
        scale = std::min(std::max(across, down), 2 * scale);
    }
    scale = std::min(scale, most);
    return {std::max(1, static_cast<int>(std::lround(picture.width() * scale))),
            std::max(1, static_cast<int>(std::lround(picture.height() * scale)))};
}

} // namespace quillane
