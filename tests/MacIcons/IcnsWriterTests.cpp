#include "IcnsReader.h"
#include "IcnsWriter.h"
#include "SampleIcon.h"
#include <cstdint>
#include <gtest/gtest.h>
#include <set>
#include <stdexcept>
#include <string>

namespace quillane {
namespace {

using IcnsWriter::Container;
using IcnsWriter::Size;

// A picture whose channels are all unlike: one that changes with each pixel, one of long runs, one of runs that are just
// too short or just long enough, and an opacity.
IconImage pattern(int side) {
    IconImage image{side, side, {}};
    for (int pixel = 0; pixel < side * side; ++pixel) {
        image.rgba.push_back(static_cast<std::uint8_t>(pixel * 7));
        image.rgba.push_back(static_cast<std::uint8_t>(pixel / 200));
        image.rgba.push_back(static_cast<std::uint8_t>(pixel % 5 < 3 ? 9 : pixel));
        image.rgba.push_back(static_cast<std::uint8_t>(255 - pixel % 3));
    }
    return image;
}

IconImage plain(int side) {
    return {
        side, side,
        std::vector<std::uint8_t>(static_cast<std::size_t>(side) * static_cast<std::size_t>(side) * 4, 77)};
}

IconImage readBack(Size size, const IconImage& image) {
    Container container;
    container.addPixels(size, image);
    const auto bytes = container.bytes();
    const auto found = IcnsReader::best(bytes, size.side());
    return found ? found->pixels : IconImage();
}

TEST(IcnsWriter, HasEachSizeThatTheMacAsksForOnce) {
    std::set<std::pair<int, int>> sizes;
    for (const auto size : IcnsWriter::sizes()) {
        sizes.emplace(size.points, size.scale);
    }
    std::set<std::pair<int, int>> wanted;
    for (const int points : {16, 32, 128, 256, 512}) {
        wanted.emplace(points, 1);
        wanted.emplace(points, 2);
    }
    EXPECT_EQ(sizes, wanted);
    EXPECT_EQ(IcnsWriter::sizes().size(), wanted.size());
}

TEST(IcnsWriter, TheSmallestSizesComeBackPixelForPixel) {
    for (const int points : {16, 32}) {
        EXPECT_TRUE(Container::isKeptAsPixels({points, 1}));
        EXPECT_EQ(readBack({points, 1}, pattern(points)), pattern(points));
    }
}

// Runs are of 130 bytes at most, and 256 and 1,024 are no multiples of that.
TEST(IcnsWriter, APictureOfOneColourComesBackWhole) {
    EXPECT_EQ(readBack({16, 1}, plain(16)), plain(16));
    EXPECT_EQ(readBack({32, 1}, plain(32)), plain(32));
}

TEST(IcnsWriter, APictureOfOneColourTakesFarFewerBytesThanItsPixels) {
    Container container;
    container.addPixels({32, 1}, plain(32));
    EXPECT_LT(container.bytes().size(), 1024U + 200U); // the opacity is not packed
}

TEST(IcnsWriter, EachLargerSizeIsFoundWhereAReaderLooksForIt) {
    Container container;
    for (const auto size : IcnsWriter::sizes()) {
        if (!Container::isKeptAsPixels(size)) {
            container.addPng(size, pngOf({}, size.side()));
        }
    }
    const auto bytes = container.bytes();
    for (const int side : {32, 64, 128, 256, 512, 1024}) {
        const auto found = IcnsReader::best(bytes, side);
        ASSERT_TRUE(found) << side;
        EXPECT_EQ(found->encoded, pngOf({}, side)) << side;
    }
}

// What a system takes for a screen is chosen by the type, of which two hold a picture of the same pixels.
TEST(IcnsWriter, ASizeForFineScreensHasATypeOfItsOwn) {
    Container fine;
    fine.addPng({128, 2}, pngOf({}, 256));
    Container coarse;
    coarse.addPng({256, 1}, pngOf({}, 256));
    EXPECT_EQ(fine.bytes().substr(8, 4), "ic13");
    EXPECT_EQ(coarse.bytes().substr(8, 4), "ic08");
}

TEST(IcnsWriter, ThePicturesOfTheWrongKindAreRefused) {
    Container container;
    EXPECT_THROW(container.addPng({16, 1}, pngOf({}, 16)), std::invalid_argument);
    EXPECT_THROW(container.addPixels({128, 1}, plain(128)), std::invalid_argument);
    EXPECT_THROW(container.addPixels({16, 1}, plain(32)), std::invalid_argument);
    EXPECT_THROW(container.addPng({64, 1}, pngOf({}, 64)), std::invalid_argument);
    EXPECT_EQ(container.bytes().size(), 8U);
}

} // namespace
} // namespace quillane
