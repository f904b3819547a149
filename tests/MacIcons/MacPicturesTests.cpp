// The pictures that the program draws for the bundle, from the drawings of the tree.
#include "IcnsReader.h"
#include "TemporaryFolder.h"
#include <QImage>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace quillane {
namespace {

namespace fs = std::filesystem;

class MacPictures : public ::testing::Test {
  protected:
    // The program's exit status.
    int draw(const std::string& icon = "AppIcon.svg") {
        const std::string symbols = std::string(QUILLANE_SYMBOLS) + "/";
        const std::string command = std::string("'") + QUILLANE_MAC_ICONS + "' '" + symbols + icon + "' '" +
                                    symbols + "sparkles.svg' '" + m_folder.path() + "' 2>/dev/null";
        const int status = std::system(command.c_str());
        return WEXITSTATUS(status);
    }

    std::string content(const char* name) const {
        std::ifstream stream(m_folder.at(name), std::ios::binary);
        std::stringstream bytes;
        bytes << stream.rdbuf();
        return bytes.str();
    }

    // The icon that a reader finds for so many pixels.
    QImage icon(int side) const {
        const auto bytes = content("Quillane.icns");
        const auto found = IcnsReader::best(bytes, side);
        if (!found || found->side != side) {
            return {};
        }
        if (found->form == IcnsReader::Picture::Form::pixels) {
            return QImage(found->pixels.rgba.data(), side, side, QImage::Format_RGBA8888).copy();
        }
        QImage image;
        image.loadFromData(reinterpret_cast<const uchar*>(found->encoded.data()),
                           static_cast<int>(found->encoded.size()));
        return image;
    }

    QImage picture(const char* name) const { return QImage(QString::fromStdString(m_folder.at(name))); }

    const TemporaryFolder m_folder;
};

bool isBlue(QColor colour) {
    return colour.alpha() == 255 && colour.blue() > colour.red() + 60 && colour.blue() > colour.green() + 40;
}

TEST_F(MacPictures, TheIconIsTheDrawingInEverySize) {
    ASSERT_EQ(draw(), 0);
    for (const int side : {16, 32, 64, 128, 256, 512, 1024}) {
        const QImage image = icon(side);
        ASSERT_EQ(image.size(), QSize(side, side)) << side;
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << side << ": its corners are cut";
        EXPECT_TRUE(isBlue(image.pixelColor(side / 5, side * 3 / 10))) << side << ": its ground is blue";
        EXPECT_GT(image.pixelColor(side / 2, side / 2).red(), 200) << side << ": the feather is white";
    }
}

// Pixels that were multiplied with their opacity would draw a dark rim.
TEST_F(MacPictures, TheRimOfTheSmallIconsHasTheColourOfItsGround) {
    ASSERT_EQ(draw(), 0);
    for (const int side : {16, 32}) {
        const QImage image = icon(side);
        int seen = 0;
        for (int at = 0; at < side * side; ++at) {
            const QColor pixel = image.pixelColor(at % side, at / side);
            if (pixel.alpha() > 40 && pixel.alpha() < 200) {
                EXPECT_GT(pixel.blue(), 130) << side << ": " << at;
                ++seen;
            }
        }
        EXPECT_GT(seen, side / 2) << side;
    }
}

// The system takes the opacity and paints it in the colour of its bar.
TEST_F(MacPictures, WhatStandsInTheMenuBarIsBlackOnNothing) {
    ASSERT_EQ(draw(), 0);
    for (const char* name : {"MenuBarIconTemplate.png", "MenuBarIconTemplate@2x.png"}) {
        const QImage image = picture(name).convertToFormat(QImage::Format_ARGB32);
        int drawn = 0;
        for (int at = 0; at < image.width() * image.height(); ++at) {
            const QColor pixel = image.pixelColor(at % image.width(), at / image.width());
            drawn += pixel.alpha() > 127 ? 1 : 0;
            EXPECT_TRUE(pixel.alpha() == 0 || (pixel.red() | pixel.green() | pixel.blue()) == 0) << name;
        }
        EXPECT_GT(drawn, image.width() * image.height() / 20) << name;
    }
}

TEST_F(MacPictures, WhatStandsInTheMenuBarFitsIntoItsEighteenPoints) {
    ASSERT_EQ(draw(), 0);
    const QImage plain = picture("MenuBarIconTemplate.png");
    EXPECT_FALSE(plain.isNull());
    EXPECT_LE(plain.height(), 18);
    EXPECT_EQ(picture("MenuBarIconTemplate@2x.png").size(), plain.size() * 2);
}

TEST_F(MacPictures, TheSameDrawingsGiveTheSameBytes) {
    ASSERT_EQ(draw(), 0);
    const auto first = content("Quillane.icns") + content("MenuBarIconTemplate.png");
    ASSERT_EQ(draw(), 0);
    EXPECT_EQ(content("Quillane.icns") + content("MenuBarIconTemplate.png"), first);
}

TEST_F(MacPictures, WithoutADrawingTheProgramFailsAndLeavesNoIcon) {
    EXPECT_EQ(draw("no such drawing.svg"), 1);
    EXPECT_FALSE(fs::exists(m_folder.at("Quillane.icns")));
}

} // namespace
} // namespace quillane
