#include "PpmReader.h"
#include <cstdint>

namespace quillane::PpmReader {
namespace {

constexpr std::string_view kSignature = "P6";
constexpr std::string_view kSpace = " \t\r\n";
constexpr int kBrightest = 255;

// Takes white space and the number behind it off the front; nothing for a number that is too large or missing.
std::optional<int> takeNumber(std::string_view& bytes, int most) {
    const auto begin = bytes.find_first_not_of(kSpace);
    if (begin == 0 || begin == std::string_view::npos) {
        return std::nullopt;
    }
    bytes.remove_prefix(begin);
    int value = 0;
    std::size_t digits = 0;
    for (; digits < bytes.size() && bytes[digits] >= '0' && bytes[digits] <= '9'; ++digits) {
        value = value * 10 + (bytes[digits] - '0');
        if (value > most) {
            return std::nullopt;
        }
    }
    bytes.remove_prefix(digits);
    return digits == 0 ? std::nullopt : std::optional(value);
}

IconImage opaque(int width, int height, std::string_view pixels) {
    IconImage image{width, height, {}};
    image.rgba.reserve(pixels.size() / 3 * 4);
    for (std::size_t i = 0; i < pixels.size(); i += 3) {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            image.rgba.push_back(static_cast<std::uint8_t>(pixels[i + channel]));
        }
        image.rgba.push_back(0xFF);
    }
    return image;
}

} // namespace

std::optional<IconImage> parse(std::string_view bytes) {
    if (!bytes.starts_with(kSignature)) {
        return std::nullopt;
    }
    bytes.remove_prefix(kSignature.size());
    const auto width = takeNumber(bytes, kMostSide);
    const auto height = width ? takeNumber(bytes, kMostSide) : std::nullopt;
    const auto brightest = height ? takeNumber(bytes, kBrightest) : std::nullopt;
    if (!brightest || *brightest != kBrightest || *width == 0 || *height == 0 || bytes.empty() ||
        kSpace.find(bytes.front()) == std::string_view::npos) {
        return std::nullopt;
    }
    bytes.remove_prefix(1);
    const auto length = static_cast<std::size_t>(*width) * static_cast<std::size_t>(*height) * 3;
    if (bytes.size() < length) {
        return std::nullopt;
    }
    return opaque(*width, *height, bytes.substr(0, length));
}

} // namespace quillane::PpmReader
