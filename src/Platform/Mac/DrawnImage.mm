#include "DrawnImage.h"
#include "StraightAlpha.h"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <type_traits>

namespace quillane::DrawnImage {
namespace {

struct Releasing {
    void operator()(CGColorSpaceRef space) const { CGColorSpaceRelease(space); }
    void operator()(CGContextRef context) const { CGContextRelease(context); }
};
template <class Reference>
using Owned = std::unique_ptr<std::remove_pointer_t<Reference>, Releasing>;

constexpr std::size_t kBits = 8; // of each component
constexpr std::size_t kPixel = 4;
// Bytes in the order red, green, blue, alpha. The platform draws with colours multiplied by alpha alone.
constexpr auto kLayout =
    static_cast<CGBitmapInfo>(static_cast<std::uint32_t>(kCGImageAlphaPremultipliedLast) |
                              static_cast<std::uint32_t>(kCGBitmapByteOrder32Big));

} // namespace

std::optional<IconImage> of(CGImageRef picture, PixelSize size) {
    if (picture == nullptr) {
        return std::nullopt;
    }
    const auto width = static_cast<std::size_t>(size.width);
    const auto height = static_cast<std::size_t>(size.height);
    IconImage image{size.width, size.height, std::vector<std::uint8_t>(width * height * kPixel)};
    const Owned<CGColorSpaceRef> space(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
    const Owned<CGContextRef> context(
        CGBitmapContextCreate(image.rgba.data(), width, height, kBits, width * kPixel, space.get(), kLayout));
    if (!context) {
        return std::nullopt;
    }
    CGContextSetInterpolationQuality(context.get(), kCGInterpolationHigh);
    const CGRect whole = {{0, 0}, {static_cast<CGFloat>(size.width), static_cast<CGFloat>(size.height)}};
    CGContextDrawImage(context.get(), whole, picture);
    StraightAlpha::divideOut(image.rgba);
    return image;
}

} // namespace quillane::DrawnImage
