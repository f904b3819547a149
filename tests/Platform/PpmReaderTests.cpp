#include "PpmReader.h"
#include <gtest/gtest.h>
#include <string>

namespace quillane {
namespace {

const std::string kTwoPixels = std::string("P6\n2 1\n255\n") + "\x01\x02\x03\xFF\xFE\xFD";

TEST(PpmReader, APictureHasItsPixelsAndIsOpaque) {
    const auto picture = PpmReader::parse(kTwoPixels);
    ASSERT_TRUE(picture);
    EXPECT_EQ(*picture, (IconImage{2, 1, {1, 2, 3, 255, 255, 254, 253, 255}}));
}

TEST(PpmReader, AnyWhiteSpaceParts) {
    EXPECT_EQ(PpmReader::parse(std::string("P6 2\t1\r\n255 ") + kTwoPixels.substr(kTwoPixels.size() - 6)),
              PpmReader::parse(kTwoPixels));
}

TEST(PpmReader, WhatFollowsTheLastPixelIsNotLookedAt) {
    EXPECT_EQ(PpmReader::parse(kTwoPixels + "more"), PpmReader::parse(kTwoPixels));
}

TEST(PpmReader, APictureThatLacksAByteIsNone) {
    for (std::size_t length = 0; length < kTwoPixels.size(); ++length) {
        EXPECT_FALSE(PpmReader::parse(std::string_view(kTwoPixels).substr(0, length))) << length;
    }
}

TEST(PpmReader, WhatIsNoSuchPictureIsNone) {
    for (const char* head : {"", "P5\n1 1\n255\nabc", "P6\n1 1\n65535\nabcabc", "P6\n1 1\n254\nabc",
                             "P6\n0 1\n255\nabc", "P6\n1 0\n255\nabc", "P6\n-1 1\n255\nabc",
                             "P6\n1x1\n255\nabc", "P61 1\n255\nabc", "P6\n1 1\n255abc", "P6\n1\n255\nabc"}) {
        EXPECT_FALSE(PpmReader::parse(head)) << head;
    }
}

TEST(PpmReader, ASideBeyondTheLargestIsNotLaidOut) {
    const auto side = std::to_string(PpmReader::kMostSide + 1);
    const std::string pixels(static_cast<std::size_t>(PpmReader::kMostSide + 1) * 3, 'x');
    EXPECT_FALSE(PpmReader::parse("P6\n" + side + " 1\n255\n" + pixels));
    EXPECT_FALSE(PpmReader::parse("P6\n1 " + side + "\n255\n" + pixels));
    EXPECT_FALSE(PpmReader::parse("P6\n99999999999999999999 1\n255\n" + pixels));
    EXPECT_TRUE(PpmReader::parse("P6\n" + std::to_string(PpmReader::kMostSide) + " 1\n255\n" + pixels));
}

} // namespace
} // namespace quillane
