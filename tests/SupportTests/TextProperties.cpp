#include "TextComparison.h"
#include <version>
#ifndef _LIBCPP_VERSION // the system's rapidcheck is built with libstdc++
#include <algorithm>
#include <numeric>
#include <rapidcheck/gtest.h>

namespace quillane {
namespace {

// Short texts of few different letters, so that ties of every kind come up: case, width, accents whole and
// in parts, letters that fold to two, digits of three scripts, marks without width, emoji, invalid bytes.
rc::Gen<std::string> texts() {
    const auto letter = rc::gen::elementOf(std::vector<std::string>{
        "a",      "A",      "b",      "\uFF21", "\uFF41",     "e",          "E",      "\u00E9",
        "\u00C9", "\u0301", "\u0323", "ss",     "SS",         "s",          "\u00DF", "\u1E9E",
        "\uFB01", "fi",     "i",      "I",      "\u0130",     "0",          "0",      "1",
        "1",      "2",      "00",     "\uFF10", "\uFF11",     "\u0660",     "\u0661", " ",
        "-",      ".",      "\u00AD", "\u200D", "\U0001F44D", "\U0001F3FD", "\uAC01", "\u1100",
        "\u1161", "\u11A8", "\u03C3", "\u03C2", "\r\n",       "\xff",       "\xc3",   "\uFFFD"});
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(letter),
                        [](const std::vector<std::string>& letters) {
                            return std::accumulate(letters.begin(), letters.end(), std::string());
                        });
}

// One time in two a neighbour of the text: the same letters in another case or width.
rc::Gen<std::string> neighbours(const std::string& text) {
    return rc::gen::map(rc::gen::container<std::vector<int>>(text.size(), rc::gen::inRange(0, 4)),
                        [text](const std::vector<int>& changes) {
                            std::string result;
                            for (std::size_t i = 0; i < text.size(); ++i) {
                                const bool isDigit = text[i] >= '0' && text[i] <= '9';
                                const bool isLower = text[i] >= 'a' && text[i] <= 'z';
                                if (isDigit && changes[i] == 0) {
                                    result += "0"; // often a leading zero
                                } else if (isLower && changes[i] == 0) {
                                    result += static_cast<char>(text[i] - 'a' + 'A');
                                    continue;
                                } else if (isDigit && changes[i] == 1) {
                                    result += "\xEF\xBC";
                                    result += static_cast<char>(0x90 + (text[i] - '0'));
                                    continue;
                                }
                                result += text[i];
                            }
                            return result;
                        });
}

rc::Gen<std::string> nearTo(const std::string& text) {
    return rc::gen::oneOf(texts(), neighbours(text));
}

RC_GTEST_PROP(LocalizedStandardCompareProperty, TheOtherWayRoundTheAnswerTurns, ()) {
    const auto a = *texts();
    const auto b = *nearTo(a);
    RC_ASSERT((Text::localizedStandardCompare(a, b) < 0) == (Text::localizedStandardCompare(b, a) > 0));
    RC_ASSERT((Text::localizedStandardCompare(a, b) > 0) == (Text::localizedStandardCompare(b, a) < 0));
}

RC_GTEST_PROP(LocalizedStandardCompareProperty, OnlyIdenticalTextsAreEqual, ()) {
    const auto a = *texts();
    const auto b = *nearTo(a);
    RC_ASSERT((Text::localizedStandardCompare(a, b) == 0) == (a == b));
    RC_ASSERT(std::is_eq(Text::localizedStandardCompare(a, a)));
}

RC_GTEST_PROP(LocalizedStandardCompareProperty, ItNeverGoesRoundInACircle, ()) {
    const auto a = *texts();
    const auto b = *nearTo(a);
    const auto c = *nearTo(a);
    std::vector<std::string> three = {a, b, c};
    std::ranges::sort(three);
    do {
        if (Text::localizedStandardCompare(three[0], three[1]) < 0 &&
            Text::localizedStandardCompare(three[1], three[2]) < 0) {
            RC_ASSERT(std::is_lt(Text::localizedStandardCompare(three[0], three[2])));
        }
    } while (std::ranges::next_permutation(three).found);
}

RC_GTEST_PROP(LocalizedStandardOrderProperty, ItIsTheStableSortByComparing, ()) {
    const auto first = *texts();
    const auto names = *rc::gen::container<std::vector<std::string>>(nearTo(first));
    std::vector<std::size_t> expected(names.size());
    std::iota(expected.begin(), expected.end(), std::size_t{0});
    std::ranges::sort(expected, [&](std::size_t a, std::size_t b) {
        const auto result = Text::localizedStandardCompare(names[a], names[b]);
        return result != 0 ? result < 0 : a < b;
    });
    RC_ASSERT(Text::localizedStandardOrder(names) == expected);
}

RC_GTEST_PROP(LocalizedCaseInsensitiveContainsProperty, EveryTextContainsItself, ()) {
    const auto text = *texts();
    RC_ASSERT(Text::localizedCaseInsensitiveContains(text, text) == !text.empty());
}

RC_GTEST_PROP(LocalizedCaseInsensitiveContainsProperty, TextsEqualWithoutCaseContainEachOther, ()) {
    const auto a = *rc::gen::nonEmpty(texts());
    const auto b = *nearTo(a);
    if (Text::equalIgnoringCase(a, b)) {
        RC_ASSERT(Text::localizedCaseInsensitiveContains(a, b));
        RC_ASSERT(Text::localizedCaseInsensitiveContains(b, a));
    }
}

// The short way for ASCII must answer as the long way does, which a letter beyond ASCII in front enforces.
RC_GTEST_PROP(LocalizedCaseInsensitiveContainsProperty, ASCIITakesNoShortCutThatShows, ()) {
    const auto letters = rc::gen::container<std::string>(rc::gen::elementOf(std::string("abAB .1\r\n")));
    const auto haystack = *letters;
    const auto needle = *letters;
    RC_ASSERT(Text::localizedCaseInsensitiveContains(haystack, needle) ==
              Text::localizedCaseInsensitiveContains("\u4E2D" + haystack, needle));
}

} // namespace
} // namespace quillane
#endif
