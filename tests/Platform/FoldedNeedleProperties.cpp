#include "FoldedNeedle.h"
#include "TextFolding.h"
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
bool occursInPortions(const FoldedNeedle& needle, std::string_view text, std::size_t length) {
    std::string window;
    for (std::size_t begin = 0; begin < text.size(); begin += length) {
        const bool isFirst = begin == 0;
        const bool isLast = begin + length >= text.size();
        window += text.substr(begin, length);
        const auto portion =
            isFirst ? (isLast ? Portion::whole : Portion::first) : (isLast ? Portion::last : Portion::middle);
        if (needle.occursIn(window, portion)) {
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

} // namespace
} // namespace quillane
