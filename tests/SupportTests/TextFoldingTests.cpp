#include "TextFolding.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

constexpr Text::Folding kExact;
constexpr Text::Folding kCase{.caseInsensitive = true};
constexpr Text::Folding kAccents{.diacriticInsensitive = true};
constexpr Text::Folding kBoth{.caseInsensitive = true, .diacriticInsensitive = true};

struct Pair {
    const char* a;
    const char* b;
    bool exact;
    bool ignoringCase;
    bool ignoringAccents;
    bool ignoringBoth;
};

class FoldingPairs : public testing::TestWithParam<Pair> {};

TEST_P(FoldingPairs, AreEqualWhereWhatDiffersDoesNotCount) {
    const auto& [a, b, exact, ignoringCase, ignoringAccents, ignoringBoth] = GetParam();
    EXPECT_EQ(Text::folded(a, kExact) == Text::folded(b, kExact), exact);
    EXPECT_EQ(Text::folded(a, kCase) == Text::folded(b, kCase), ignoringCase);
    EXPECT_EQ(Text::folded(a, kAccents) == Text::folded(b, kAccents), ignoringAccents);
    EXPECT_EQ(Text::folded(a, kBoth) == Text::folded(b, kBoth), ignoringBoth);
}

INSTANTIATE_TEST_SUITE_P(
    Table, FoldingPairs,
    testing::Values(Pair{"abc", "abc", true, true, true, true}, Pair{"abc", "ABC", false, true, false, true},
                    Pair{"resume", "r\u00E9sum\u00E9", false, false, true, true},
                    Pair{"resume", "R\u00C9SUM\u00C9", false, false, false, true},
                    Pair{"\u00E9", "e\u0301", true, true, true, true},
                    Pair{"\u00C9", "e\u0301", false, true, false, true},
                    Pair{"Stra\u00DFe", "STRASSE", false, true, false, true},
                    Pair{"\u00F8", "o", false, false, false, false},
                    Pair{"\u0414\u041E\u041A", "\u0434\u043E\u043A", false, true, false, true},
                    Pair{"\uFF21", "A", false, false, false, false},
                    Pair{"\xFF", "\xFF", true, true, true, true},
                    Pair{"\xFF", "\xFE", false, false, false, false},
                    Pair{"\xFF", "\uFFFD", false, false, false, false}, Pair{"", "", true, true, true, true},
                    Pair{"a", "", false, false, false, false}));

TEST(TextFolding, ACharacterOutsideTheBasicPlaneIsOneCodePoint) {
    EXPECT_EQ(Text::folded("\U0001F600", kBoth).size(), 1U);
}

TEST(TextFolding, AnInvalidByteIsOneCodePointAndNoPartOfAWord) {
    EXPECT_EQ(Text::folded("\xE2\x82", kBoth), (std::u32string{0xDCE2, 0xDC82}));
    EXPECT_FALSE(Text::foldedWords("a\xFFz", kBoth).begins[1]);
}

// The words of a text, each between bars.
std::string marked(std::string_view text, Text::Folding folding) {
    const auto words = Text::foldedWords(text, folding);
    EXPECT_EQ(words.begins.size(), words.text.size() + 1);
    EXPECT_EQ(words.ends.size(), words.text.size() + 1);
    std::string result;
    for (std::size_t i = 0; i <= words.text.size(); ++i) {
        result += words.ends[i] ? "]" : "";
        result += words.begins[i] ? "[" : "";
        if (i < words.text.size()) {
            result += words.text[i] < 0x80 ? static_cast<char>(words.text[i]) : '?';
        }
    }
    return result;
}

TEST(TextFolding, WordsAreRunsOfLettersAndDigits) {
    EXPECT_EQ(marked("two words, 2nd.", kExact), "[two] [words], [2nd].");
    EXPECT_EQ(marked("", kExact), "");
    EXPECT_EQ(marked(" - ", kExact), " - ");
}

TEST(TextFolding, AWordBeginsWhereLowerCaseTurnsUpper) {
    EXPECT_EQ(marked("MyWindow", kExact), "[My][Window]");
    EXPECT_EQ(marked("MyWindow", kCase), "[my][window]");
    EXPECT_EQ(marked("NSWindow", kExact), "[NSWindow]");
}

TEST(TextFolding, AccentsOfTheirOwnBelongToTheirWord) {
    EXPECT_EQ(marked("re\u0301sume\u0301 x", kAccents), "[resume] [x]");
    EXPECT_EQ(marked("re\u0301sume\u0301 x", kExact), "[r?sum?] [x]");
}

} // namespace
} // namespace quillane
