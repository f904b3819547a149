#include "DisplayName.h"
#include <gtest/gtest.h>

using quillane::Text::displayName;

TEST(DisplayName, AnOrdinaryNameIsKeptAsItIs) {
    EXPECT_EQ(displayName("Tessel Studio 3"), "Tessel Studio 3");
    EXPECT_EQ(displayName("東京 café é"), "東京 café é");
    EXPECT_EQ(displayName(""), "");
}

TEST(DisplayName, AReversalOfTheTextStandsAsItsCodePoint) {
    EXPECT_EQ(displayName("photo\u202Egpj.app"), "photo‹U+202E›gpj.app");
}

TEST(DisplayName, EveryCharacterThatChangesTheDirectionIsVisible) {
    for (const char* c : {"\u061C", "\u200E", "\u200F", "\u202A", "\u202B", "\u202C", "\u202D", "\u202E",
                          "\u2066", "\u2067", "\u2068", "\u2069"}) {
        EXPECT_EQ(displayName(c).substr(0, std::string("‹U+").size()), "‹U+");
    }
}

TEST(DisplayName, ControlCharactersAndLineSeparatorsNeverReachTheScreen) {
    EXPECT_EQ(displayName("a\nb\tc\x7F"), "a‹U+000A›b‹U+0009›c‹U+007F›");
    EXPECT_EQ(displayName(std::string_view("a\0b", 3)), "a‹U+0000›b");
    EXPECT_EQ(displayName("\u0085\u2028\u2029"), "‹U+0085›‹U+2028›‹U+2029›");
}

TEST(DisplayName, BytesThatAreNoTextStandAsTheReplacementCharacter) {
    EXPECT_EQ(displayName("a\xFF"
                          "b"),
              "a\uFFFDb");
    EXPECT_EQ(displayName("cut short \xE2\x80"), "cut short \uFFFD");
    EXPECT_EQ(displayName("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD"); // half of a surrogate pair
}

TEST(DisplayName, JoinersStaySinceEmojiAndScriptsNeedThem) {
    EXPECT_EQ(displayName("👩\u200D💻 می\u200Cخواهم"), "👩\u200D💻 می\u200Cخواهم");
}
