#pragma once
#include <cstdint>
#include <string>

namespace quillane {

// How a sample application's icon looks: a rounded square in one colour with a white shape on it.
struct SampleIcon {
    enum class Shape { disc, square, star, triangle, ring, dome, letterN };

    std::uint32_t rgb = 0x3457D5;
    Shape shape = Shape::disc;

    friend bool operator==(const SampleIcon&, const SampleIcon&) = default;
    friend auto operator<=>(const SampleIcon&, const SampleIcon&) = default;
};

// The picture as a PNG file, so many pixels square.
std::string pngOf(const SampleIcon& icon, int side);
// The picture as an icon file of the platform; `large` adds 128 pixels to 32.
std::string icnsOf(const SampleIcon& icon, bool large);

} // namespace quillane
