#include "TextPattern.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

TextPattern::Modifiers modifiersOf(std::string_view letters) {
    return {.folding = {.caseInsensitive = letters.find('c') != letters.npos,
                        .diacriticInsensitive = letters.find('d') != letters.npos},
            .wordwise = letters.find('w') != letters.npos};
}

struct Row {
    const char* pattern;
    const char* letters;
    const char* text;
    bool matches;
};

class TextPatternTable : public testing::TestWithParam<Row> {};

TEST_P(TextPatternTable, FitsOrDoesNot) {
    const auto& [pattern, letters, text, matches] = GetParam();
    EXPECT_EQ(TextPattern(pattern, modifiersOf(letters)).matches(text), matches)
        << pattern << " [" << letters << "] " << text;
}

INSTANTIATE_TEST_SUITE_P(WholeText, TextPatternTable,
                         testing::Values(Row{"report", "", "report", true},
                                         Row{"report", "", "report 2", false},
                                         Row{"report", "", "a report", false},
                                         Row{"report", "", "Report", false}, Row{"", "", "", true},
                                         Row{"", "", "a", false}, Row{"a", "", "", false},
                                         Row{"R\u00E9sum\u00E9", "", "Re\u0301sume\u0301", true}));

INSTANTIATE_TEST_SUITE_P(
    Wildcards, TextPatternTable,
    testing::Values(Row{"*", "", "", true}, Row{"*", "", "anything", true},
                    Row{"*port*", "", "a report 2", true}, Row{"*port*", "", "port", true},
                    Row{"*port*", "", "por t", false}, Row{"re*t", "", "report", true},
                    Row{"re*t", "", "report 2", false}, Row{"*.txt", "", "a.txt.txt", true},
                    Row{"*.txt", "", "a.txt.zip", false}, Row{"a*b*c", "", "aXbXbXc", true},
                    Row{"a*b*c", "", "aXcXb", false}, Row{"**", "", "x", true},
                    Row{"r?port", "", "report", true}, Row{"r?port", "", "rport", false},
                    Row{"???", "", "\u00E9\u00E9\u00E9", true}, Row{"?", "", "e\u0301", true},
                    Row{"?", "", "\U0001F600", true}, Row{"?", "", "", false}, Row{"*a?", "", "aab", true},
                    Row{"*ab", "", "aab", true}, Row{"*\n*", "", "line\nline", true}));

INSTANTIATE_TEST_SUITE_P(Escapes, TextPatternTable,
                         testing::Values(Row{"a\\*b", "", "a*b", true}, Row{"a\\*b", "", "axb", false},
                                         Row{"a\\?b", "", "a?b", true}, Row{"a\\?b", "", "axb", false},
                                         Row{"a\\\\b", "", "a\\b", true},
                                         Row{"say \\\"hi\\\"", "", "say \"hi\"", true},
                                         Row{"\\a", "", "a", true}, Row{"a\\", "", "a\\", true}));

INSTANTIATE_TEST_SUITE_P(
    CaseAndAccents, TextPatternTable,
    testing::Values(Row{"REPORT", "c", "report", true}, Row{"*PORT*", "c", "Airport", true},
                    Row{"*resume*", "d", "my r\u00E9sum\u00E9.txt", true},
                    Row{"*resume*", "c", "my r\u00E9sum\u00E9.txt", false},
                    Row{"*resume*", "d", "My R\u00C9SUM\u00C9.txt", false},
                    Row{"*resume*", "cd", "My R\u00C9SUM\u00C9.txt", true},
                    Row{"*r\u00E9sum\u00E9*", "cd", "RESUME", true},
                    Row{"resume", "d", "r\u00E9sume\u0301", true}, Row{"STRASSE", "c", "Stra\u00DFe", true},
                    Row{"REPORT", "d", "report", false}, Row{"\u00C9T\u00C9", "c", "\u00E9t\u00E9", true}));

INSTANTIATE_TEST_SUITE_P(
    Words, TextPatternTable,
    testing::Values(Row{"Window", "w", "MyWindow", true}, Row{"window", "w", "MyWindow", false},
                    Row{"window", "cw", "MyWindow", true}, Row{"Wind", "w", "MyWindow", false},
                    Row{"dow", "w", "window", false}, Row{"two words", "w", "say two words now", true},
                    Row{"two words", "w", "say two wordsnow", false},
                    Row{"tw* words", "w", "say two words now", true},
                    Row{"report", "w", "the-report.txt", true}, Row{"report", "w", "reports", false},
                    Row{"rep*", "w", "the reports", true},
                    Row{"resume", "cdw", "My R\u00E9sum\u00E9 2", true}, Row{"", "w", "a", false},
                    Row{"", "w", "MyWindow", false}, Row{"a", "w", "", false}, Row{"a*b", "w", "ax b", true},
                    Row{"a*b", "w", "ax bx", false}));

TEST(TextPattern, OnlyARunAloneMatchesEverything) {
    EXPECT_TRUE(TextPattern("*", {}).matchesEverything());
    EXPECT_FALSE(TextPattern("", {}).matchesEverything());
    EXPECT_FALSE(TextPattern("?", {}).matchesEverything());
    EXPECT_FALSE(TextPattern("\\*", {}).matchesEverything());
}

TEST(TextPattern, ContentIsSearchedForWordsUnlessThereAreWildcards) {
    EXPECT_TRUE(TextPattern("invoice", {}).occursIn("an invoice of May"));
    EXPECT_FALSE(TextPattern("voice", {}).occursIn("an invoice of May"));
    EXPECT_TRUE(TextPattern("*voice*", {}).occursIn("an invoice of May"));
    EXPECT_FALSE(TextPattern("voice*", {}).occursIn("an invoice of May"));
}

TEST(TextPattern, ManyRunsOverALongTextEndSoon) {
    std::string pattern;
    for (int i = 0; i < 200; ++i) {
        pattern += "*a";
    }
    const std::string text(20000, 'a');
    EXPECT_FALSE(TextPattern(pattern + "*b", {}).matches(text));
    EXPECT_TRUE(TextPattern(pattern + "*", {}).matches(text));
    std::string words;
    for (int i = 0; i < 20000; ++i) {
        words += "a ";
    }
    EXPECT_FALSE(TextPattern(pattern + "*b", modifiersOf("w")).matches(words));
}

} // namespace
} // namespace quillane
