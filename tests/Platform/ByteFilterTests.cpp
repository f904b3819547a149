#include "ByteFilter.h"
#include "TextFolding.h"
#include "Utf8.h"
#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace quillane::ByteFilter {
namespace {

TEST(ByteFilter, EveryCharacterThatFoldsToAsciiOrToNothingIsOfAKindThatTheFilterKnows) {
    int known = 0;
    for (std::uint32_t point = 0x80; point <= 0x10FFFF; ++point) {
        if (point >= 0xD800 && point <= 0xDFFF) {
            continue;
        }
        std::string bytes;
        Utf8::append(bytes, point);
        const auto folded = Text::folded(bytes, {.caseInsensitive = true, .diacriticInsensitive = true});
        const bool hasAscii = std::ranges::any_of(folded, [](char32_t each) { return each < 0x80; });
        if (!folded.empty() && !hasAscii) {
            continue;
        }
        ++known;
        const auto first = static_cast<unsigned char>(bytes[0]);
        EXPECT_TRUE(standsForLetters(first) || beginsRareMark(first)) << std::hex << point;
        EXPECT_GE(bytes.size(), folded.size()) << std::hex << point;
    }
    EXPECT_GT(known, 2000);
}

TEST(ByteFilter, EveryByteThatContinuesACharacterStandsForLetters) {
    for (unsigned byte = 0x80; byte < 0xC0; ++byte) {
        EXPECT_TRUE(standsForLetters(static_cast<unsigned char>(byte)));
    }
}

TEST(ByteFilter, LettersOfOtherScriptsPassUnnoticed) {
    std::string text;
    for (int i = 0; i < 20; ++i) {
        text += "\u043F\u0440\u0438\u0432\u0435\u0442 \u4F60\u597D\u4E16\u754C ";
    }
    const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
    const auto blocks = (text.size() - kReach) / kBlock;
    EXPECT_EQ(firstBlock(bytes, blocks, {'a', 'b', 'c', 'd'}), blocks);
}

TEST(ByteFilter, TheFirstBlockOfSeveralIsTold) {
    std::string text(kBlock * 4 + kReach, ' ');
    text.replace(kBlock * 2 - 1, 4, "aBcD"); // begins in the second block and ends in the third
    const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
    EXPECT_EQ(firstBlock(bytes, 4, {'a', 'b', 'c', 'd'}), 1U);
    EXPECT_EQ(firstBlock(bytes, 1, {'a', 'b', 'c', 'd'}), 1U);
    EXPECT_EQ(firstBlock(bytes, 4, {'a', 'b', 'c', 'e'}), 4U);
}

TEST(ByteFilter, ValidTextIsToldFromInvalidWhereverTheFaultLies) {
    const std::vector<std::string> pieces = {"plain ascii words that fill a block and more of it",
                                             "\u00E9",
                                             "\u4E2D",
                                             "\U0001F600",
                                             "\x80",
                                             "\xC3",
                                             "\xE4\xB8",
                                             "\xF0\x9F\x98",
                                             "\xC0\x80",
                                             "\xE0\x80\x80",
                                             "\xED\xA0\x80",
                                             "\xF4\x90\x80\x80",
                                             "\xFF",
                                             "\xF0\x80\x80\x80",
                                             "\xED\x9F\xBF",
                                             "\xEF\xBF\xBF",
                                             "\xF4\x8F\xBF\xBF"};
    std::mt19937 random(11);
    int valid = 0;
    for (int round = 0; round < 5000; ++round) {
        std::string text(random() % 200, 'x');
        for (std::size_t i = random() % 3; i > 0; --i) {
            text += pieces[random() % pieces.size()] + std::string(random() % 90, 'y');
        }
        valid += Utf8::isValid(text) ? 1 : 0;
        ASSERT_EQ(isUtf8(text), Utf8::isValid(text)) << text;
    }
    EXPECT_GT(valid, 500);
    EXPECT_LT(valid, 4500);
}

} // namespace
} // namespace quillane::ByteFilter
