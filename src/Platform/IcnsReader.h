#pragma once
#include "Workspace.h"
#include <optional>
#include <string_view>

// Reads Apple's icon container, which holds one picture in many sizes and several encodings. Input is hostile:
// every length is checked, a damaged entry is passed over for the next best, and no picture is larger than
// kMostSide. Any thread.
namespace quillane::IcnsReader {

// The largest picture a container may hold, in pixels.
inline constexpr int kMostSide = 1024;

struct Picture {
    enum class Form {
        png,      // `encoded`
        jpeg2000, // `encoded`
        pixels    // `pixels`
    };
    Form form = Form::pixels;
    int side = 0;             // width and height in pixels, as the container or the PNG header tells
    std::string_view encoded; // points into the input; what lies behind its first bytes is not checked
    IconImage pixels;
};

// The picture best suited to be drawn `side` pixels wide: the smallest that is no smaller, otherwise the
// largest. Of one size PNG goes before pixels. JPEG 2000, which few readers of images know, is given only
// where there is nothing else. Nothing when the bytes are no container or hold no usable picture.
// Linear in the size of the container.
std::optional<Picture> best(std::string_view bytes, int side);

} // namespace quillane::IcnsReader
