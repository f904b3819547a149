#include "FoldedNeedle.h"
#include "TextFolding.h"
#include "Utf8.h"
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace quillane {
namespace {

using Portion = FoldedNeedle::Portion;

std::u32string folded(std::string_view text) {
    return Text::folded(text, {.caseInsensitive = true, .diacriticInsensitive = true});
}

// The plain way: fold everything and look.
bool occurs(const std::string& needle, std::string_view text) {
    return folded(text).find(folded(needle)) != std::u32string::npos;
}

// As a file is searched: in portions of some length, each behind what is kept of the one before it.
using Occurs = bool (FoldedNeedle::*)(std::string_view, Portion) const;
bool occursInPortions(const FoldedNeedle& needle, std::string_view text, std::size_t length,
                      Occurs occurs = &FoldedNeedle::occursIn) {
    std::string window;
    for (std::size_t begin = 0; begin < text.size(); begin += length) {
        const bool isFirst = begin == 0;
        const bool isLast = begin + length >= text.size();
        window += text.substr(begin, length);
        const auto portion =
            isFirst ? (isLast ? Portion::whole : Portion::first) : (isLast ? Portion::last : Portion::middle);
        if ((needle.*occurs)(window, portion)) {
            return true;
        }
        window.erase(0, window.size() - std::min(window.size(), needle.overlap()));
    }
    return false;
}

const std::vector<std::string>& words() {
    static const std::vector<std::string> all = {"quittung",
                                                 "Quittu\u0308ng",
                                                 "QU\u00CFTTUNG",
                                                 "qui",
                                                 "ttung",
                                                 "na",
                                                 "del",
                                                 "nadel",
                                                 "N\u00E4del",
                                                 " ",
                                                 ". ",
                                                 "\n",
                                                 "\u043F\u0440\u0438\u0432\u0435\u0442",
                                                 "\u041F\u0420",
                                                 "\u4E2D\u6587\uFF0C",
                                                 "\u3002",
                                                 "stra\u00DFe",
                                                 "STRASSE",
                                                 "\u00DF\u00DF",
                                                 "o\uFB03ce",
                                                 " \uFB03ce",
                                                 "ffic",
                                                 "\u201Cqui\u201D",
                                                 "\u00E9",
                                                 "\u00E9\u05B8",
                                                 "u\u0301\u05B8",
                                                 "\u1E6D\u093C",
                                                 "\u0439",
                                                 "office",
                                                 "\uFB01",
                                                 "\u1EBFt",
                                                 "e\u0302\u0301t",
                                                 "\uD55C\uAE00",
                                                 "q\u05B8uit",
                                                 "\U0001F600",
                                                 "\u0130",
                                                 "x\u0301\u0302\u0303",
                                                 "\u212A",
                                                 "a",
                                                 "e",
                                                 "tt",
                                                 "ss",
                                                 "ff",
                                                 "2023",
                                                 "_"};
    return all;
}

std::string randomText(std::mt19937& random, std::size_t pieces) {
    std::string text;
    for (std::size_t i = 0; i < pieces; ++i) {
        text += words()[random() % words().size()];
    }
    return text;
}

TEST(FoldedNeedleProperties, FindsWhatFoldingEverythingFindsAndNothingElse) {
    std::mt19937 random(3);
    int found = 0;
    for (int round = 0; round < 4000; ++round) {
        const auto needle = randomText(random, 1 + random() % 3);
        if (folded(needle).empty()) {
            continue;
        }
        const auto text = randomText(random, random() % 60);
        const bool expected = occurs(needle, text);
        found += expected ? 1 : 0;
        const FoldedNeedle made(folded(needle));
        ASSERT_EQ(made.occursIn(text), expected) << needle << " in " << text;
        ASSERT_EQ(occursInPortions(made, text, 1 + random() % 300), expected) << needle << " in " << text;
    }
    EXPECT_GT(found, 400);
}

// Both in UTF-8 and in Latin-1, and what is the one may look like the other.
std::string randomBytes(std::mt19937& random, std::size_t pieces) {
    static const std::vector<std::string> latin1 = {"qu\xEF", "ttung",    "N\xC4", "DEL",     "na",
                                                    "\xDF",   "stra\xDF", "e",     "qui\xCF", "\xAB",
                                                    "\xA0",   "\xE9",     " "};
    std::string text;
    for (std::size_t i = 0; i < pieces; ++i) {
        text += random() % 3 == 0 ? latin1[random() % latin1.size()] : words()[random() % words().size()];
    }
    return text;
}

TEST(FoldedNeedleProperties, TextOfUnknownEncodingIsPassedOverOnlyWhereTheNeedleOccursInNeither) {
    std::mt19937 random(5);
    int found = 0;
    int passedOver = 0;
    for (int round = 0; round < 6000; ++round) {
        const auto written = randomBytes(random, 1 + random() % 3);
        const auto needle = Utf8::isValid(written) ? written : Utf8::fromLatin1(written);
        if (folded(needle).empty()) {
            continue;
        }
        const auto text =
            random() % 2 == 0 ? randomText(random, random() % 40) : randomBytes(random, random() % 40);
        const FoldedNeedle made(folded(needle));
        const bool expected = occurs(needle, text) || occurs(needle, Utf8::fromLatin1(text));
        const bool may = made.mayOccurInUnknown(text);
        found += expected ? 1 : 0;
        passedOver += may ? 0 : 1;
        ASSERT_TRUE(may || !expected) << needle << " in " << text;
        ASSERT_TRUE(!expected ||
                    occursInPortions(made, text, 1 + random() % 300, &FoldedNeedle::mayOccurInUnknown))
            << needle << " in " << text;
    }
    EXPECT_GT(found, 400);
    EXPECT_GT(passedOver, 400);
}

TEST(FoldedNeedleProperties, ANeedleIsFoundAtEveryPlaceAroundTheBorderOfAPortion) {
    for (const std::string written :
         {"Qui\u0301ttung nade\u0301l", "\u041F\u0440\u0438\u0432\u0435\u0442", "stra\u00DFe"}) {
        for (const std::string filler : {"x", "\u00E9", "\u4E2D", "e\u0301"}) {
            const FoldedNeedle needle(folded(written));
            std::string text;
            for (int i = 0; i < 400; ++i) {
                text += filler;
            }
            for (std::size_t before = 0; before < 400; ++before) {
                const auto whole =
                    text.substr(0, before * filler.size()) + written + text.substr(before * filler.size());
                ASSERT_TRUE(occursInPortions(needle, whole, 256))
                    << written << " behind " << before << filler;
                ASSERT_TRUE(needle.occursIn(whole));
            }
        }
    }
}

TEST(FoldedNeedleProperties, WhatFollowsAPortionMayChangeItsLastCharacter) {
    const FoldedNeedle needle(folded("\uD558")); // and the text has the syllable with one consonant more
    const std::string text = "ab\u1112\u1161\u11ABcd";
    for (std::size_t length = 1; length <= text.size(); ++length) {
        EXPECT_FALSE(occursInPortions(needle, text, length)) << length;
    }
    EXPECT_TRUE(occursInPortions(needle, "ab\u1112\u1161cd", 8));
}

TEST(FoldedNeedleProperties, OnlyANeedleWithFourAsciiCharactersInARowIsLookedForInBytes) {
    for (const auto* const with : {"four",
                                   "\u4E2D"
                                   "2023",
                                   "a b four"}) {
        EXPECT_TRUE(FoldedNeedle(folded(with)).hasFilter()) << with;
    }
    for (const auto* const without : {"abc", "ab cd", "\u043F\u0440\u0438\u0432\u0435\u0442",
                                      "abc\u4E2D"
                                      "def"}) {
        EXPECT_FALSE(FoldedNeedle(folded(without)).hasFilter()) << without;
    }
}

TEST(FoldedNeedleProperties, ALongNeedleIsFoundThoughEachOfItsLettersBearsTwoMarks) {
    for (const std::string letter : {"\u0E01", "\u05D0", "e"}) { // Thai, Hebrew, Latin
        const std::string marks = letter == "e"        ? "\u0301\u0323"
                                  : letter == "\u05D0" ? "\u05B8\u05BC"
                                                       : "\u0E34\u0E4C";
        std::string plain = "abcd";
        std::string marked = "abcd";
        for (int i = 0; i < 60; ++i) {
            plain += letter;
            marked += letter + marks;
        }
        ASSERT_TRUE(occurs(plain, marked));
        const FoldedNeedle needle(folded(plain));
        const std::string around(1000, '#');
        for (std::size_t shift = 0; shift < ByteFilter::kBlock; ++shift) {
            const auto text = around + std::string(shift, '#') + marked + around;
            EXPECT_TRUE(needle.occursIn(text)) << letter << shift;
            EXPECT_TRUE(needle.mayOccurInUnknown(text)) << letter << shift;
        }
    }
}

// Runs of text of one kind, each of any length up to fifty blocks, so that every way of passing over a block follows
// every other.
std::string randomRuns(std::mt19937& random) {
    static const std::vector<std::string> kinds = {
        "plain words of nothing. ",
        "d\u00E9j\u00E0 vu, caf\u00E9 ",
        "\u043F\u0440\u0438\u0432\u0435\u0442, (\u043C\u0438\u0440) ",
        "\u4E2D\u6587\uFF0C2023\u5E74\u3002",
        "\u05E9\u05B8\u05DC\u05D5\u05DD ",
        "\u00AB\u0434\u0430\u00BB \u2013 ",
        "\U0001F600 "};
    std::string text;
    for (std::size_t runs = random() % 4; runs > 0; --runs) {
        const auto& kind = kinds[random() % kinds.size()];
        const auto length = random() % (50 * ByteFilter::kBlock);
        for (const auto end = text.size() + length; text.size() < end;) {
            text += kind;
        }
        text.append(random() % 8, ' ');
    }
    return text;
}

struct Spelling {
    std::string needle;
    std::string text;
};

TEST(FoldedNeedleProperties, ANeedleIsFoundBehindAndBeforeLongRunsOfEveryKind) {
    const std::vector<Spelling> spellings = {
        {"quit", "quit"},       {"quit", "QU\u00CFT"},  {"kile", "\u1E31ile"},
        {"quit", "q\u05B8uit"}, {"quit", "qui\u0301t"}, {"quit", "quit\u05B8"},
        {"sses", "\u00DFes"},   {"fixe", "\uFB01xe"},   {"quit", "qu\u00EF\u093Ct"},
        {"nkel", "n\u212Ael"}};
    std::mt19937 random(17);
    for (int round = 0; round < 4000; ++round) {
        const auto& [needle, spelt] = spellings[random() % spellings.size()];
        ASSERT_TRUE(occurs(needle, spelt)) << spelt;
        const auto text = randomRuns(random) + spelt + randomRuns(random);
        const FoldedNeedle made(folded(needle));
        ASSERT_TRUE(made.occursIn(text)) << spelt << " in " << text;
        ASSERT_TRUE(made.mayOccurInUnknown(text)) << spelt << " in " << text;
    }
}

TEST(FoldedNeedleProperties, ANeedleIsFoundAtEveryPlaceOfABlockWhateverTheBlocksBeforeItHold) {
    const std::string plain(150, '#');
    const std::vector<std::string> kinds = {
        "#", "caf\u00E9 # ", "\u00E9" + plain, "\u0434" + plain, "\u043C\u0438\u0440 ", "\u4E2D"};
    const std::vector<Spelling> spellings = {
        {"quit", "quit"},       {"ekil", "\u00E9kil"},  {"kile", "kil\u00E9"},
        {"kile", "\u1E31ile"},  {"quit", "q\u05B8uit"}, {"quit", "qui\u05B8t"},
        {"quit", "q\u093Cuit"}, {"nkel", "n\u212Ael"},  {"quit", "q\u0361uit"}};
    for (const auto& [needle, spelt] : spellings) {
        ASSERT_TRUE(occurs(needle, spelt)) << spelt;
        const FoldedNeedle made(folded(needle));
        for (const auto& kind : kinds) {
            std::string before;
            while (before.size() < 12 * ByteFilter::kBlock) {
                before += kind;
            }
            for (std::size_t shift = 0; shift < 3 * ByteFilter::kBlock; ++shift) {
                const auto text = before + std::string(shift, '#') + spelt + plain;
                EXPECT_TRUE(made.occursIn(text)) << spelt << " behind " << kind << shift;
                EXPECT_TRUE(made.mayOccurInUnknown(text)) << spelt << " behind " << kind << shift;
            }
        }
    }
}

TEST(FoldedNeedleProperties, WhatOnlyLooksLikeTheNeedleHidesNoneBehindIt) {
    const FoldedNeedle needle(folded("quittung nadel"));
    for (const std::string decoy : {"\u00E9it", "quit", "quittung nade"}) {
        for (std::size_t gap = 0; gap < 20 * ByteFilter::kBlock; gap += 7) {
            const auto text =
                "####" + decoy + std::string(gap, '#') + "Quittung Nadel" + std::string(200, '#');
            EXPECT_TRUE(needle.occursIn(text)) << decoy << gap;
            EXPECT_TRUE(needle.mayOccurInUnknown(text)) << decoy << gap;
        }
    }
}

TEST(FoldedNeedleProperties, ANeedleInLatin1IsNotPassedOverBehindLongRunsOfEveryKind) {
    std::mt19937 random(19);
    for (const auto& [written, spelt] : std::vector<Spelling>{{"quit", "qu\xEFt"},
                                                              {"quit", "QU\xCFT"},
                                                              {"quit", "q\xFCit"},
                                                              {"qui2", "qu\xCE"
                                                                       "2"}}) {
        const FoldedNeedle needle(folded(written));
        for (int round = 0; round < 700; ++round) {
            const auto text = randomRuns(random) + spelt + randomRuns(random);
            ASSERT_TRUE(needle.mayOccurInUnknown(text)) << text;
        }
    }
}

TEST(FoldedNeedleProperties, RunsWithoutTheNeedleAreToldFromThoseWithIt) {
    std::mt19937 random(23);
    const FoldedNeedle needle(folded("quit"));
    for (int round = 0; round < 300; ++round) {
        const auto text = randomRuns(random) + "qu\u00EF T" + randomRuns(random);
        ASSERT_FALSE(needle.occursIn(text)) << text;
        ASSERT_FALSE(needle.mayOccurInUnknown(text)) << text;
    }
}

TEST(FoldedNeedleProperties, TheRestOfALongNeedleIsLookedForOnBothSidesOfItsRarestLetters) {
    const std::string needle =
        std::string(40, 'e') + "quiz" + std::string(40, 'a'); // in which those stand in the middle
    const FoldedNeedle made(folded(needle));
    const std::string filler(300, '#');
    for (std::size_t shift = 0; shift < ByteFilter::kBlock; ++shift) {
        const auto before = filler + std::string(shift, '#');
        EXPECT_TRUE(made.occursIn(before + needle + filler)) << shift;
        EXPECT_FALSE(made.occursIn(before + needle.substr(1) + filler)) << shift;
        EXPECT_FALSE(made.occursIn(before + needle.substr(0, needle.size() - 1) + filler)) << shift;
        // Four letters of its own stand nearby, and only the second ones belong to it.
        EXPECT_TRUE(made.occursIn(before + "quiz" + std::string(150, '#') + needle)) << shift;
    }
}

} // namespace
} // namespace quillane
