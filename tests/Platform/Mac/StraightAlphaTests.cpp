#include "StraightAlpha.h"
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

namespace quillane {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes divided(Bytes rgba) {
    StraightAlpha::divideOut(rgba);
    return rgba;
}

// As the platform multiplies.
unsigned multiplied(unsigned color, unsigned alpha) {
    return (color * alpha + 127) / 255;
}

TEST(StraightAlpha, WhatIsOpaqueStaysAsItIs) {
    EXPECT_EQ(divided({1, 128, 254, 255, 0, 77, 255, 255}), (Bytes{1, 128, 254, 255, 0, 77, 255, 255}));
}

TEST(StraightAlpha, WhatIsWhollyTransparentHasNoColor) {
    EXPECT_EQ(divided({0, 0, 0, 0, 9, 8, 7, 0}), (Bytes{0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(StraightAlpha, ColorsAreRoundedToTheNearest) {
    EXPECT_EQ(divided({64, 1, 127, 128}), (Bytes{128, 2, 253, 128}));
    EXPECT_EQ(divided({1, 2, 3, 3}), (Bytes{85, 170, 255, 3}));
    EXPECT_EQ(divided({100, 50, 0, 200}), (Bytes{128, 64, 0, 200}));
}

TEST(StraightAlpha, MultipliedAgainEachColorIsWhatItWas) {
    for (unsigned alpha = 1; alpha <= 255; ++alpha) {
        for (unsigned color = 0; color <= alpha; ++color) {
            const auto pixel =
                divided({static_cast<std::uint8_t>(color), 0, 0, static_cast<std::uint8_t>(alpha)});
            ASSERT_EQ(multiplied(pixel[0], alpha), color) << alpha;
            ASSERT_EQ(pixel[3], alpha);
        }
    }
}

TEST(StraightAlpha, AColorAboveItsAlphaIsFull) {
    EXPECT_EQ(divided({255, 4, 3, 3}), (Bytes{255, 255, 255, 3}));
}

TEST(StraightAlpha, BytesBehindTheLastWholePixelStayAsTheyAre) {
    EXPECT_EQ(divided({64, 64, 64, 128, 1, 2, 0}), (Bytes{128, 128, 128, 128, 1, 2, 0}));
    EXPECT_EQ(divided({}), Bytes());
}

} // namespace
} // namespace quillane
