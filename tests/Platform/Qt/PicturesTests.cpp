#include "Pictures.h"
#include <QBuffer>
#include <gtest/gtest.h>
#include <thread>

namespace quillane {
namespace {

std::string png(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "png");
    return bytes.toStdString();
}

QImage filled(int width, int height, QColor color) {
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

TEST(Pictures, RowsComeFromTopToBottomWithoutPaddingAndAlphaIsNotMultipliedIn) {
    QImage image(1, 2, QImage::Format_ARGB32_Premultiplied);
    image.setPixelColor(0, 0, QColor(255, 0, 0, 255));
    image.setPixelColor(0, 1, QColor(0, 255, 0, 51));
    const auto icon = Pictures::fromImage(image);
    EXPECT_EQ(icon, (IconImage{1, 2, {255, 0, 0, 255, 0, 255, 0, 51}}));
    QImage grey(3, 2, QImage::Format_Grayscale8); // its rows are padded
    grey.fill(7);
    EXPECT_EQ(Pictures::fromImage(grey).rgba.size(), 24U);
}

TEST(Pictures, APngIsDecoded) {
    const auto icon = Pictures::decoded(png(filled(3, 2, QColor(1, 2, 3, 4))), "png");
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->width, 3);
    EXPECT_EQ(icon->height, 2);
    EXPECT_EQ(icon->rgba.size(), 24U);
    EXPECT_EQ((std::vector<std::uint8_t>(icon->rgba.begin(), icon->rgba.begin() + 4)),
              (std::vector<std::uint8_t>{1, 2, 3, 4}));
}

TEST(Pictures, APictureBeyondTheLargestSideIsNotDecoded) {
    EXPECT_TRUE(Pictures::decoded(png(filled(Pictures::kMostSide, 1, Qt::red)), "png"));
    EXPECT_FALSE(Pictures::decoded(png(filled(Pictures::kMostSide + 1, 1, Qt::red)), "png"));
    EXPECT_FALSE(Pictures::decoded(png(filled(1, Pictures::kMostSide + 1, Qt::red)), "png"));
}

TEST(Pictures, DamagedBytesAreNoPicture) {
    const auto whole = png(filled(64, 64, QColor(10, 200, 30)));
    for (const std::size_t length : {std::size_t{0}, std::size_t{7}, std::size_t{20}, std::size_t{40}}) {
        EXPECT_FALSE(Pictures::decoded(std::string_view(whole).substr(0, length), "png")) << length;
    }
    EXPECT_FALSE(Pictures::decoded("not a picture at all, whatever its name", "png"));
    EXPECT_FALSE(Pictures::decoded(whole, "no such form"));
}

TEST(Pictures, APngWithAnyByteBrokenIsNoPicture) {
    const auto whole = png(filled(8, 8, QColor(10, 200, 30)));
    ASSERT_TRUE(Pictures::decoded(whole, "png"));
    for (std::size_t i = 0; i < whole.size(); ++i) {
        auto broken = whole;
        broken[i] = static_cast<char>(broken[i] ^ 0x10);
        EXPECT_FALSE(Pictures::decoded(broken, "png")) << i;
    }
}

class GenericPictures : public testing::TestWithParam<Pictures::Generic> {};

TEST_P(GenericPictures, AreSquareOfTheSideAndClearAtTheCorners) {
    for (const int side : {16, 33, 128, 512}) {
        const auto icon = Pictures::drawn(GetParam(), side);
        EXPECT_EQ(icon.width, side);
        EXPECT_EQ(icon.height, side);
        ASSERT_EQ(icon.rgba.size(), static_cast<std::size_t>(side) * static_cast<std::size_t>(side) * 4);
        EXPECT_EQ(icon.rgba[3], 0);
        const auto middle = (static_cast<std::size_t>(side) / 2 * static_cast<std::size_t>(side) +
                             static_cast<std::size_t>(side) / 2) *
                            4;
        EXPECT_EQ(icon.rgba[middle + 3], 255);
    }
}

TEST_P(GenericPictures, SidesOutOfRangeAreDrawnAtTheNearest) {
    EXPECT_EQ(Pictures::drawn(GetParam(), 0).width, 16);
    EXPECT_EQ(Pictures::drawn(GetParam(), -5).width, 16);
    EXPECT_EQ(Pictures::drawn(GetParam(), 1'000'000).width, Pictures::kMostSide);
}

INSTANTIATE_TEST_SUITE_P(All, GenericPictures,
                         testing::Values(Pictures::Generic::application, Pictures::Generic::document,
                                         Pictures::Generic::folder));

TEST(Pictures, GenericOnesDiffer) {
    const auto application = Pictures::drawn(Pictures::Generic::application, 64);
    const auto document = Pictures::drawn(Pictures::Generic::document, 64);
    const auto folder = Pictures::drawn(Pictures::Generic::folder, 64);
    EXPECT_NE(application, document);
    EXPECT_NE(document, folder);
    EXPECT_NE(folder, application);
}

TEST(Pictures, SeveralThreadsDrawAndDecodeAtOnce) {
    const auto bytes = png(filled(64, 64, Qt::blue));
    std::vector<std::thread> threads;
    std::vector<bool> right(4, false);
    std::vector<std::optional<IconImage>> icons(4);
    for (auto& icon : icons) {
        threads.emplace_back([&] {
            (void)Pictures::drawn(Pictures::Generic::folder, 256);
            icon = Pictures::decoded(bytes, "png");
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    for (const auto& icon : icons) {
        EXPECT_TRUE(icon && icon->width == 64);
    }
}

} // namespace
} // namespace quillane
