#include "FoldTable.h"
#include "TextFolding.h"
#include "Utf8.h"
#include <gtest/gtest.h>
#include <random>

namespace quillane::Text {
namespace {

constexpr Folding kNeitherCounts{.caseInsensitive = true, .diacriticInsensitive = true};

std::string utf8(char32_t point) {
    std::string bytes;
    Utf8::append(bytes, point);
    return bytes;
}

std::u32string byTable(std::string_view text) {
    std::u32string points;
    FoldTable::shared().append(text, points);
    return points;
}

TEST(FoldTable, EveryCodePointFoldsAsTheWholeTextDoes) {
    // Planes of which something folds; of the others, ideographs and nothing assigned, every thousandth.
    const auto step = [](char32_t point) -> char32_t {
        const bool folds =
            point < 0x1FFFF || (point >= 0x2F000 && point < 0x30000) || (point >= 0xE0000 && point < 0xE0200);
        return folds ? 1U : 1000U;
    };
    for (char32_t point = 0; point <= 0x10FFFF; point += step(point)) {
        const bool isSurrogate = point >= 0xD800 && point <= 0xDFFF;
        if (!isSurrogate && byTable(utf8(point)) != folded(utf8(point), kNeitherCounts)) {
            ADD_FAILURE() << "U+" << std::hex << static_cast<std::uint32_t>(point);
        }
    }
}

TEST(FoldTable, TextOfAllKindsFoldsAsTheWholeTextDoes) {
    const std::vector<std::string> pieces = {"The QUICK ",
                                             "stra\u00DFe ",
                                             "Caf\u00E9 ",
                                             "e\u0301\u0323",
                                             "\uFB03ce",
                                             "\u0418\u0306\u0439",
                                             "\u4E2D\u6587\u3002",
                                             "\uD55C\u1112\u1161\u11AB\uD558",
                                             "\u11AB",
                                             "\u1161",
                                             "\u09C7\u09BE",
                                             "\u09C7\u09D7",
                                             "\u0BC6\u0BBE",
                                             "\u0CC6\u0CC2\u0CD5",
                                             "\u05D0\u05B8",
                                             "\u0627\u0650",
                                             "\u0E01\u0E31",
                                             "\U0001F600",
                                             "\U00010400",
                                             "\U0001D15E",
                                             "\u212B\u2126",
                                             "\xFF",
                                             "\xC3",
                                             "\xE4\xB8",
                                             "\x80"};
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (int i = 0; i < 12; ++i) {
            text += pieces[random() % pieces.size()];
        }
        ASSERT_EQ(byTable(text), folded(text, kNeitherCounts)) << text;
    }
}

TEST(FoldTable, ATextMayComeInParts) {
    std::u32string points;
    FoldTable::shared().append("\u1112", points);
    FoldTable::shared().append("\u1161", points);
    FoldTable::shared().append("\u11AB a\u0301B", points);
    EXPECT_EQ(points, U"\uD55C ab");
}

} // namespace
} // namespace quillane::Text
