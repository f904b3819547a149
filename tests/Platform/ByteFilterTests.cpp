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

using Find = std::size_t (*)(const unsigned char*, std::size_t, const Quad&);

// Whether something is found where these four letters stand, `spelt` so, at each place around the border of two blocks
// of which the first holds nothing else but this; in UTF-8 no later than at the last of them.
bool isFoundBehind(const std::string& filler, Find find, std::string_view letters, const std::string& spelt) {
    Quad quad{};
    std::ranges::copy(letters, quad.begin());
    for (std::size_t before = kBlock - 12; before <= kBlock; ++before) {
        std::string text;
        while (text.size() + filler.size() <= before) {
            text += filler;
        }
        text.append(before - text.size(), ' ').append(spelt).append(kBlock * 3, ' ');
        const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
        const auto blocks = (text.size() - kReach) / kBlock;
        const auto last = find == firstBlock ? (before + quad.size() - 1) / kBlock : blocks - 1;
        if (find(bytes, blocks, quad) > last) {
            return false;
        }
    }
    return true;
}

// Behind ideographs and behind plain letters.
bool isFoundAnywhere(Find find, std::string_view letters, const std::string& spelt) {
    return isFoundBehind("\u4E2D", find, letters, spelt) && isFoundBehind("#", find, letters, spelt);
}

// Letters of Latin before and behind what a character folds to, four in all, and then something else.
bool isFoundAmongLetters(Find find, const std::u32string& folded, const std::string& character,
                         const std::string& next = "") {
    const std::string ascii(folded.begin(), folded.end());
    const auto others = 4 - std::min<std::size_t>(ascii.size(), 4);
    for (std::size_t before = ascii.empty() ? 1 : 0; before <= others; ++before) {
        const auto ahead = std::string("vwxy").substr(0, before);
        const auto behind = std::string("zkjq").substr(0, others - before);
        if (!isFoundAnywhere(find, ahead + ascii + behind, ahead + character + behind + next)) {
            return false;
        }
    }
    return true;
}

TEST(ByteFilter, EveryCharacterThatFoldsToAsciiOrToNothingIsFoundAmongLetters) {
    int known = 0;
    for (std::uint32_t point = 0x80; point <= 0x10FFFF; ++point) {
        if (point >= 0xD800 && point <= 0xDFFF) {
            continue;
        }
        std::string bytes;
        Utf8::append(bytes, point);
        const auto folded = Text::folded(bytes, {.caseInsensitive = true, .diacriticInsensitive = true});
        EXPECT_GE(bytes.size(), folded.size()) << std::hex << point;
        if (std::ranges::any_of(folded, [](char32_t each) { return each <= ' ' || each >= 0x7F; })) {
            continue;
        }
        ++known;
        EXPECT_TRUE(isFoundAmongLetters(firstBlock, folded, bytes)) << std::hex << point;
        EXPECT_TRUE(isFoundAmongLetters(firstBlock, folded, bytes + "\u05B8")) << std::hex << point;
        EXPECT_TRUE(isFoundAmongLetters(firstBlockOfUnknown, folded, bytes)) << std::hex << point;
        EXPECT_GE(bytes.size(), folded.size()) << std::hex << point;
    }
    EXPECT_GT(known, 2000);
}

TEST(ByteFilter, EveryCharacterOfLatin1ThatFoldsToAsciiIsFoundWhateverFollows) {
    int known = 0;
    for (unsigned byte = 0x80; byte <= 0xFF; ++byte) {
        const std::string character(1, static_cast<char>(byte));
        const auto folded = Text::folded(Utf8::fromLatin1(character),
                                         {.caseInsensitive = true, .diacriticInsensitive = true});
        EXPECT_FALSE(folded.empty()) << byte;
        if (std::ranges::any_of(folded, [](char32_t each) { return each >= 0x7F; })) {
            continue;
        }
        ++known;
        for (const auto* const next : {"", " ", "y", "\xA0", "\xBB", "\xE9"}) {
            EXPECT_TRUE(isFoundAmongLetters(firstBlockOfUnknown, folded, character, next)) << byte << next;
        }
    }
    EXPECT_GT(known, 50);
}

TEST(ByteFilter, LettersOfOtherScriptsPassUnnoticed) {
    for (const std::string words : {"\u043F\u0440\u0438\u0432\u0435\u0442, \u00ABABC\u00BB! ",
                                    "2023\u5E74 \u4F60\u597D\uFF0C\u4E16\u754C\u3002 ",
                                    "\u201Cabc\u201D caf\u00E9 \u2013 d\u00E9j\u00E0 vu "}) {
        std::string text;
        for (int i = 0; i < 20; ++i) {
            text += words;
        }
        const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
        const auto blocks = (text.size() - kReach) / kBlock;
        EXPECT_EQ(firstBlock(bytes, blocks, {'k', 'l', 'm', 'n'}), blocks) << words;
        EXPECT_EQ(firstBlockOfUnknown(bytes, blocks, {'k', 'l', 'm', 'n'}), blocks) << words;
    }
}

TEST(ByteFilter, BlocksMayBeginWithinACharacter) {
    const std::string text = "\xA9klm" + std::string(kBlock * 2, ' '); // behind what begins a letter
    const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
    EXPECT_EQ(firstBlock(bytes, 1, {'e', 'k', 'l', 'm'}), 0U);
    EXPECT_EQ(firstBlock(bytes, 1, {'e', 'k', 'l', 'n'}), 1U);
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
