#include "Characters.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

using Places = std::vector<std::size_t>;

TEST(LowerCase, LettersOfEveryScriptTurnLowerAndNothingElseChanges) {
    EXPECT_EQ(Text::lowercased(""), "");
    EXPECT_EQ(Text::lowercased("Com.Example.TOOL-2_x"), "com.example.tool-2_x");
    EXPECT_EQ(Text::lowercased("ÉCOLE ЖУК"), "école жук");
    EXPECT_EQ(Text::lowercased("Straße"), "straße");
}

TEST(LowerCase, EquivalentSpellingsBecomeTheSameBytes) {
    EXPECT_EQ(Text::lowercased("caf\u00E9"), Text::lowercased("CAFE\u0301"));
}

TEST(LowerCase, TheFullMappingIsUsedWithoutALocale) {
    EXPECT_EQ(Text::lowercased("\u0130"), "i\u0307"); // a dotted capital i is an i that keeps its dot
    EXPECT_EQ(Text::lowercased("I"), "i");
}

TEST(LowerCase, ASigmaIsTheSameAtTheEndOfAWord) {
    EXPECT_EQ(Text::lowercased("ΟΔΟΣ"), "οδοσ");
}

TEST(LowerCase, InvalidBytesStayAsTheyAre) {
    for (const std::string bytes :
         {"\xff", "\x80", "\xc3", "\xe2\x82", "\xed\xa0\x80", "\xf8\x88\x80\x80\x80"}) {
        EXPECT_EQ(Text::lowercased("\u00C9" + bytes + "A"), "\u00E9" + bytes + "a");
    }
    EXPECT_EQ(Text::lowercased("\uFFFD"), "\uFFFD");
}

TEST(LettersAndNumbers, SpacesAndPunctuationAreLeftOutAndCaseIsLowered) {
    EXPECT_EQ(Text::lowercasedLettersAndNumbers("Northlight RAW 7.2 (Beta)_x-y"), "northlightraw72betaxy");
    EXPECT_EQ(Text::lowercasedLettersAndNumbers("\u00C9t\u00E9 \u4E00\u00BD"), "\u00E9t\u00E9\u4E00\u00BD");
    EXPECT_EQ(Text::lowercasedLettersAndNumbers("!?. -_\u2026\xff"), "");
}

TEST(LettersAndNumbers, AnAccentGoesWithWhatItStandsOn) {
    EXPECT_EQ(Text::lowercasedLettersAndNumbers("E\u0301"), "\u00E9");
    EXPECT_EQ(Text::lowercasedLettersAndNumbers("a-\u0301b"), "ab");
    EXPECT_EQ(Text::lowercasedLettersAndNumbers("x\u0302"), "x\u0302");
}

TEST(Trimming, TakesTheBlanksOfBothEndsAndNoOthers) {
    EXPECT_EQ(Text::trimmed(" \t a b \u00A0\u3000\n"), "a b");
    EXPECT_EQ(Text::trimmed("a"), "a");
    EXPECT_EQ(Text::trimmed(" \u2003 "), "");
    EXPECT_EQ(Text::trimmed(""), "");
    EXPECT_EQ(Text::trimmed("\xff \xe2"), "\xff \xe2");
}

TEST(FullStops, AreFoundWhereverTheyStand) {
    EXPECT_EQ(Text::fullStops(""), Places{});
    EXPECT_EQ(Text::fullStops("tool"), Places{});
    EXPECT_EQ(Text::fullStops(".a..b."), (Places{0, 2, 3, 5}));
    EXPECT_EQ(Text::fullStops("é.ж"), Places{2});
}

TEST(FullStops, OneThatCarriesAnAccentOrAJoinerIsAnotherCharacter) {
    EXPECT_EQ(Text::fullStops("a.\u0301b.c"), Places{5});
    EXPECT_EQ(Text::fullStops("a.\u200Db"), Places{});
}

TEST(FullStops, OneBeforeInvalidBytesCounts) {
    EXPECT_EQ(Text::fullStops("a.\xff"), Places{1});
}

TEST(CharacterCount, CountsWhatAReaderSees) {
    EXPECT_EQ(Text::characterCount(""), 0U);
    EXPECT_EQ(Text::characterCount("/plain path"), 11U);
    EXPECT_EQ(Text::characterCount("e\u0301\u00E9"), 2U);
    EXPECT_EQ(Text::characterCount("\U0001F44D\U0001F3FD!"), 2U);
    EXPECT_EQ(Text::characterCount("a\r\nb"), 3U);
    EXPECT_EQ(Text::characterCount("a\xff"), 2U);
}

} // namespace
} // namespace quillane
