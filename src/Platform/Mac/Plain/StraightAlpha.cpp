#include "StraightAlpha.h"
#include <algorithm>
#include <cstddef>

namespace quillane::StraightAlpha {
namespace {

constexpr unsigned kFull = 255;
constexpr std::size_t kAlpha = 3;
constexpr std::size_t kPixel = 4;

std::uint8_t divided(std::uint8_t color, unsigned alpha) {
    return static_cast<std::uint8_t>(std::min((color * kFull + alpha / 2) / alpha, kFull));
}

} // namespace

void divideOut(std::vector<std::uint8_t>& rgba) {
    for (std::size_t at = 0; at + kPixel <= rgba.size(); at += kPixel) {
        const unsigned alpha = rgba[at + kAlpha];
        for (std::size_t i = at; i < at + kAlpha; ++i) {
            rgba[i] = alpha == 0 ? std::uint8_t{0} : divided(rgba[i], alpha);
        }
    }
}

} // namespace quillane::StraightAlpha
