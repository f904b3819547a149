// The pictures of the sample Mac must be such that others can read them.
#include "JpegFile.h"
#include "SamplePicture.h"
#include <QImage>
#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>

namespace quillane {
namespace {

QImage read(const std::string& bytes, const char* format) {
    return QImage::fromData(QByteArray::fromStdString(bytes), format).convertToFormat(QImage::Format_RGB888);
}

// By how much the samples of what was read differ at most from what was drawn.
int largestDifference(const QImage& image, const SamplePicture& picture) {
    int largest = 0;
    for (int row = 0; row < picture.height; ++row) {
        for (int i = 0; i < 3 * picture.width; ++i) {
            const auto drawn = static_cast<unsigned char>(
                picture.rgb.at(static_cast<std::size_t>(row) * static_cast<std::size_t>(picture.width) * 3 +
                               static_cast<std::size_t>(i)));
            largest = std::max(largest, std::abs(int{image.constScanLine(row)[i]} - int{drawn}));
        }
    }
    return largest;
}

// Neither side is a whole number of blocks.
constexpr int kWidth = 101;
constexpr int kHeight = 75;

TEST(SamplePicture, APngIsReadAsItWasDrawn) {
    const auto picture = SamplePicture::screen(1, kWidth, kHeight);
    const auto image = read(pngOf(picture, {{"Software", "gnome-screenshot"}}), "PNG");
    ASSERT_EQ(image.size(), QSize(kWidth, kHeight));
    EXPECT_EQ(largestDifference(image, picture), 0);
    EXPECT_EQ(image.text(QStringLiteral("Software")), QStringLiteral("gnome-screenshot"));
}

TEST(SamplePicture, AFineJpegIsReadNearlyAsItWasDrawn) {
    for (const auto& picture :
         {SamplePicture::landscape(2, kWidth, kHeight), SamplePicture::paper(2, kWidth, kHeight),
          SamplePicture::screen(2, kWidth, kHeight), SamplePicture::lamp(kWidth, kHeight)}) {
        const auto image = read(jpegOf(picture, 1), "JPEG");
        ASSERT_EQ(image.size(), QSize(kWidth, kHeight));
        EXPECT_LT(largestDifference(image, picture), 12);
    }
}

TEST(SamplePicture, ACoarseJpegIsSmallerAndStillAPicture) {
    const auto picture = SamplePicture::landscape(2, kWidth, kHeight);
    const auto coarse = jpegOf(picture, 20);
    EXPECT_LT(coarse.size(), jpegOf(picture, 1).size() / 2);
    EXPECT_LT(largestDifference(read(coarse, "JPEG"), picture), 80);
}

// The hardest content for the coder: every block at both ends of the scale.
TEST(SamplePicture, AJpegOfExtremesIsReadToItsEnd) {
    SamplePicture picture{64, 64, {}};
    for (int i = 0; i < 64 * 64; ++i) {
        const char value = (i * 7919) % 3 == 0 ? '\xFF' : '\0';
        picture.rgb += std::string{value, static_cast<char>(~value), value};
    }
    const auto image = read(jpegOf(picture, 1), "JPEG");
    ASSERT_EQ(image.size(), QSize(64, 64));
    EXPECT_LT(largestDifference(image, picture), 40);
}

TEST(SamplePicture, TheSameNumberDrawsTheSamePicture) {
    EXPECT_EQ(SamplePicture::landscape(5, 30, 20).rgb, SamplePicture::landscape(5, 30, 20).rgb);
    EXPECT_NE(SamplePicture::landscape(5, 30, 20).rgb, SamplePicture::landscape(6, 30, 20).rgb);
}

} // namespace
} // namespace quillane
