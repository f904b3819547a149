#include "IcnsReader.h"
#include <cstddef>
#include <cstdint>
#include <string_view>

using namespace quillane;

namespace {

bool isSound(const IcnsReader::Picture& picture, std::string_view input) {
    if (picture.side < 1 || picture.side > IcnsReader::kMostSide) {
        return false;
    }
    if (picture.form != IcnsReader::Picture::Form::pixels) {
        return picture.encoded.data() >= input.data() &&
               picture.encoded.data() + picture.encoded.size() <= input.data() + input.size();
    }
    const auto side = static_cast<std::size_t>(picture.side);
    return picture.pixels.width == picture.side && picture.pixels.height == picture.side &&
           picture.pixels.rgba.size() == side * side * 4;
}

} // namespace

// The first byte chooses the size that is asked for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view input(reinterpret_cast<const char*>(bytes) + 1, size - 1);
    const auto picture = IcnsReader::best(input, bytes[0] * 4);
    if (picture && !isSound(*picture, input)) {
        __builtin_trap();
    }
    return 0;
}
