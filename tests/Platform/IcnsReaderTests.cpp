#include "BigEndian.h"
#include "IcnsReader.h"
#include "SampleIcon.h"
#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillane {
namespace {

using namespace std::string_literals;
using Form = IcnsReader::Picture::Form;

std::string entry(std::string_view type, std::string_view content) {
    std::string bytes(type);
    appendBigEndian32(bytes, static_cast<std::uint32_t>(content.size() + 8));
    return bytes.append(content);
}

std::string container(const std::string& entries) {
    return entry("icns", entries);
}

// As much of a PNG as is looked at, of so many pixels.
std::string pngHead(std::uint32_t width, std::uint32_t height) {
    std::string png = "\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR"s;
    appendBigEndian32(png, width);
    appendBigEndian32(png, height);
    return png + "more";
}

std::string pngHead(std::uint32_t side) {
    return pngHead(side, side);
}

std::string jpeg2000() {
    return "\0\0\0\x0CjP  \r\n\x87\nmore"s;
}

// One colour in every one of so many pixels, in the container's run-length form.
std::string runs(std::uint8_t value, std::size_t count) {
    std::string bytes;
    while (count > 0) {
        const auto length = std::min<std::size_t>(count, 130);
        if (length < 3) {
            bytes += static_cast<char>(length - 1);
            bytes.append(length, static_cast<char>(value));
        } else {
            bytes += static_cast<char>(length + 125);
            bytes += static_cast<char>(value);
        }
        count -= length;
    }
    return bytes;
}

std::string rgbRuns(int side) {
    const auto pixels = static_cast<std::size_t>(side * side);
    return runs(10, pixels) + runs(20, pixels) + runs(30, pixels);
}

std::string argbRuns(int side) {
    return "ARGB" + runs(40, static_cast<std::size_t>(side * side)) + rgbRuns(side);
}

IconImage plain(int side, std::uint8_t alpha) {
    IconImage image{side, side, {}};
    for (int i = 0; i < side * side; ++i) {
        image.rgba.insert(image.rgba.end(), {10, 20, 30, alpha});
    }
    return image;
}

// The side of what is chosen; 0 for nothing.
int chosenSide(const std::string& bytes, int side) {
    const auto picture = IcnsReader::best(bytes, side);
    return picture ? picture->side : 0;
}

TEST(IcnsReader, TheSmallestPictureThatIsLargeEnoughIsChosenElseTheLargest) {
    const auto bytes = container(entry("ic09", pngHead(512)) + entry("ic07", pngHead(128)) +
                                 entry("icp4", pngHead(16)) + entry("ic08", pngHead(256)));
    EXPECT_EQ(chosenSide(bytes, 1), 16);
    EXPECT_EQ(chosenSide(bytes, 16), 16);
    EXPECT_EQ(chosenSide(bytes, 17), 128);
    EXPECT_EQ(chosenSide(bytes, 128), 128);
    EXPECT_EQ(chosenSide(bytes, 200), 256);
    EXPECT_EQ(chosenSide(bytes, 512), 512);
    EXPECT_EQ(chosenSide(bytes, 513), 512);
    EXPECT_EQ(chosenSide(bytes, 0), 16);
    EXPECT_EQ(chosenSide(bytes, -5), 16);
}

TEST(IcnsReader, EachTypeHasItsSide) {
    const std::vector<std::pair<const char*, int>> types = {
        {"icp4", 16},   {"icp5", 32}, {"icp6", 64}, {"ic07", 128}, {"ic08", 256}, {"ic09", 512},
        {"ic10", 1024}, {"ic11", 32}, {"ic12", 64}, {"ic13", 256}, {"ic14", 512}, {"ic04", 16},
        {"ic05", 32},   {"icsb", 18}, {"icsB", 36}, {"sb24", 24},  {"SB24", 48}};
    for (const auto& [type, side] : types) {
        EXPECT_EQ(chosenSide(container(entry(type, jpeg2000())), 1), side) << type;
    }
}

TEST(IcnsReader, ThePngIsGivenAsItLiesInTheInput) {
    const auto bytes =
        container(entry("TOC ", "12345678") + entry("ic07", pngHead(128)) + entry("name", "x"));
    const auto picture = IcnsReader::best(bytes, 64);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->form, Form::png);
    EXPECT_EQ(picture->encoded, pngHead(128));
    EXPECT_EQ(picture->encoded.data(), bytes.data() + 8 + 16 + 8);
    EXPECT_TRUE(picture->pixels.isEmpty());
}

TEST(IcnsReader, ARealContainerGivesARealPng) {
    const auto bytes = icnsOf(SampleIcon{}, true);
    const auto picture = IcnsReader::best(bytes, 128);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->encoded, pngOf(SampleIcon{}, 128));
}

TEST(IcnsReader, ThePngTellsItsSideAndNotTheTypeOfItsEntry) {
    EXPECT_EQ(chosenSide(container(entry("ic10", pngHead(64))), 1024), 64);
}

TEST(IcnsReader, APngThatIsNoIconIsPassedOver) {
    for (const auto& png : {pngHead(0), pngHead(1025), pngHead(0xFFFFFFFF), pngHead(64, 32),
                            pngHead(64).substr(0, 23), pngHead(64).substr(0, 8)}) {
        EXPECT_EQ(chosenSide(container(entry("ic07", png)), 64), 0);
        EXPECT_EQ(chosenSide(container(entry("ic07", png) + entry("icp4", pngHead(16))), 64), 16);
    }
    EXPECT_EQ(chosenSide(container(entry("ic10", pngHead(1024))), 64), 1024);
}

TEST(IcnsReader, Jpeg2000IsGivenOnlyWhereThereIsNothingElse) {
    const auto alone = container(entry("ic08", jpeg2000()) + entry("ic09", "\xFF\x4F\xFF\x51more"));
    EXPECT_EQ(IcnsReader::best(alone, 256)->form, Form::jpeg2000);
    EXPECT_EQ(IcnsReader::best(alone, 256)->encoded, jpeg2000());
    EXPECT_EQ(IcnsReader::best(alone, 512)->form, Form::jpeg2000);
    const auto withPng = container(entry("ic08", jpeg2000()) + entry("icp4", pngHead(16)));
    EXPECT_EQ(IcnsReader::best(withPng, 256)->form, Form::png);
    const auto withPixels = container(entry("ic08", jpeg2000()) + entry("is32", rgbRuns(16)));
    EXPECT_EQ(IcnsReader::best(withPixels, 256)->form, Form::pixels);
}

TEST(IcnsReader, OfOneSideThePngIsChosen) {
    const auto bytes =
        container(entry("is32", rgbRuns(16)) + entry("ic04", argbRuns(16)) + entry("icp4", pngHead(16)));
    EXPECT_EQ(IcnsReader::best(bytes, 16)->form, Form::png);
}

TEST(IcnsReader, RunsOfFourChannelsBecomePixels) {
    for (const auto& [type, side] : {std::pair{"ic04", 16}, std::pair{"ic05", 32}, std::pair{"icsb", 18}}) {
        const auto bytes = container(entry(type, argbRuns(side)));
        const auto picture = IcnsReader::best(bytes, 16);
        ASSERT_TRUE(picture) << type;
        EXPECT_EQ(picture->form, Form::pixels);
        EXPECT_EQ(picture->side, side);
        EXPECT_EQ(picture->pixels, plain(side, 40)) << type;
    }
}

TEST(IcnsReader, RunsOfThreeChannelsBecomePixelsWithTheirMask) {
    struct Row {
        const char* type;
        const char* mask;
        int side;
        std::string prefix;
    };
    for (const Row& row :
         {Row{"is32", "s8mk", 16, ""}, Row{"il32", "l8mk", 32, ""}, Row{"ih32", "h8mk", 48, ""},
          Row{"it32", "t8mk", 128, "\0\0\0\0"s}, Row{"it32", "t8mk", 128, ""}}) {
        const auto pixels = static_cast<std::size_t>(row.side * row.side);
        const auto colours = entry(row.type, row.prefix + rgbRuns(row.side));
        const auto mask = entry(row.mask, std::string(pixels, '\x50'));
        EXPECT_EQ(IcnsReader::best(container(colours + mask), 16)->pixels, plain(row.side, 0x50)) << row.type;
        EXPECT_EQ(IcnsReader::best(container(mask + colours), 16)->pixels, plain(row.side, 0x50)) << row.type;
        // Without a mask, or with half a one, all is opaque.
        EXPECT_EQ(IcnsReader::best(container(colours), 16)->pixels, plain(row.side, 255)) << row.type;
        const auto half = entry(row.mask, std::string(pixels / 2, '\x50'));
        EXPECT_EQ(IcnsReader::best(container(colours + half), 16)->pixels, plain(row.side, 255)) << row.type;
    }
}

TEST(IcnsReader, LiteralsAndRunsAlternateAndEachPixelKeepsItsPlace) {
    // Red: 3 as they are, a run of 3, a run of 130, and a literal of 120. Green and blue: runs.
    std::string red = "\x02\x01\x02\x03"s + "\x80\x04" + "\xFF\x05"s + "\x77"s;
    for (int i = 0; i < 120; ++i) {
        red += static_cast<char>(i);
    }
    const auto bytes = container(entry("is32", red + runs(20, 256) + runs(30, 256)));
    const auto picture = IcnsReader::best(bytes, 16);
    ASSERT_TRUE(picture);
    const auto redAt = [&picture](std::size_t pixel) { return picture->pixels.rgba.at(pixel * 4); };
    EXPECT_EQ(redAt(0), 1);
    EXPECT_EQ(redAt(2), 3);
    EXPECT_EQ(redAt(3), 4);
    EXPECT_EQ(redAt(5), 4);
    EXPECT_EQ(redAt(6), 5);
    EXPECT_EQ(redAt(135), 5);
    EXPECT_EQ(redAt(136), 0);
    EXPECT_EQ(redAt(255), 119);
    EXPECT_EQ(picture->pixels.rgba.at(255 * 4 + 1), 20);
    EXPECT_EQ(picture->pixels.rgba.at(255 * 4 + 2), 30);
}

TEST(IcnsReader, DamagedPixelsArePassedOverForTheNextBest) {
    const auto whole = rgbRuns(16);
    for (const auto& damaged :
         {""s, whole.substr(0, whole.size() - 1), whole.substr(0, 1), "\x7F"s, runs(1, 767),
          runs(1, 766) + "\x80\x01"s, "ARGB"s, argbRuns(16).substr(0, 19)}) {
        EXPECT_EQ(chosenSide(container(entry("is32", damaged)), 16), 0);
        EXPECT_EQ(chosenSide(container(entry("is32", damaged) + entry("il32", rgbRuns(32))), 16), 32);
    }
}

TEST(IcnsReader, WhatIsNoContainerGivesNothing) {
    for (const auto& bytes :
         {""s, "icns"s, "icns\0\0\0"s, "icns\0\0\0\x08"s, "icnt"s + container("").substr(4), pngHead(16),
          container(""), container("ic07"), container("ic07\0\0\0"s)}) {
        EXPECT_EQ(chosenSide(bytes, 16), 0);
    }
}

TEST(IcnsReader, AnEntryWithAWrongLengthEndsTheContainer) {
    const auto good = entry("icp4", pngHead(16));
    for (const std::uint32_t length : {0U, 7U, 200U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        std::string bad = "ic07";
        appendBigEndian32(bad, length);
        bad += pngHead(128);
        EXPECT_EQ(chosenSide(container(good + bad), 128), 16) << length;
        EXPECT_EQ(chosenSide(container(bad + good), 128), 0) << length;
    }
}

TEST(IcnsReader, TheContainersOwnLengthCountsAsFarAsThereIsInput) {
    auto bytes = container(entry("icp4", pngHead(16)));
    const auto inside = bytes;
    bytes += entry("ic07", pngHead(128)); // behind the end that the container tells
    EXPECT_EQ(chosenSide(bytes, 128), 16);
    bytes.replace(4, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(chosenSide(bytes, 128), 128);
    bytes = inside;
    bytes.replace(4, 4, "\0\0\0\x03"s);
    EXPECT_EQ(chosenSide(bytes, 128), 0);
}

TEST(IcnsReader, OfAnEntryThatComesTwiceTheFirstCounts) {
    const auto bytes = container(entry("ic07", pngHead(128)) + entry("ic07", pngHead(64)));
    EXPECT_EQ(chosenSide(bytes, 1), 128);
}

// A copy of exactly this length, so that a read beyond the end is seen.
void use(const std::string& bytes) {
    const std::vector<char> exact(bytes.begin(), bytes.end());
    for (const int side : {16, 48, 1024}) {
        const auto picture = IcnsReader::best({exact.data(), exact.size()}, side);
        if (!picture) {
            continue;
        }
        EXPECT_GT(picture->side, 0);
        EXPECT_LE(picture->side, IcnsReader::kMostSide);
        EXPECT_EQ(picture->encoded.empty(), picture->form == Form::pixels);
        EXPECT_EQ(picture->pixels.rgba.size(), static_cast<std::size_t>(picture->pixels.width) *
                                                   static_cast<std::size_t>(picture->pixels.height) * 4);
    }
}

std::string everyForm() {
    return container(entry("TOC ", "") + entry("is32", rgbRuns(16)) + entry("s8mk", std::string(256, 'm')) +
                     entry("ic05", argbRuns(32)) + entry("ih32", rgbRuns(48)) + entry("ic07", pngHead(128)) +
                     entry("ic08", jpeg2000()));
}

TEST(IcnsReader, EveryPrefixIsReadOrRefused) {
    const auto whole = everyForm();
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        use(whole.substr(0, length));
    }
}

TEST(IcnsReader, RandomDamageDoesNoHarm) {
    std::mt19937 random(20010101); // the same every time
    const auto below = [&random](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    for (int round = 0; round < 1000; ++round) {
        auto bytes = everyForm();
        for (auto changes = 1 + below(6); changes > 0; --changes) {
            bytes[below(bytes.size())] = static_cast<char>(below(256));
        }
        use(bytes);
    }
}

} // namespace
} // namespace quillane
