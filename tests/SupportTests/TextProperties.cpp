#include "Characters.h"
#include "TextComparison.h"
#include "Utf8.h"
#include <version>
#ifndef _LIBCPP_VERSION // the system's rapidcheck is built with libstdc++
#include <algorithm>
#include <numeric>
#include <rapidcheck/gtest.h>
#include <unicode/normalizer2.h>
#include <unicode/unistr.h>

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

// Texts that hold bytes which are no text, alone and cut off, now and then beside the letters.
rc::Gen<std::string> brokenTexts() {
    const auto broken = rc::gen::elementOf(std::vector<std::string>{
        "\x80", "\xbf", "\xc3", "\xe2\x82", "\xed\xa0\x80", "\xf0\x9f\x98", "\xfe", "\xff"});
    return rc::gen::apply([](const std::string& before, const std::string& bytes,
                             const std::string& behind) { return before + bytes + behind; },
                          texts(), broken, texts());
}

// The bytes of a text that belong to no valid sequence, in their order.
std::string invalidBytes(const std::string& text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t length = 4;
        while (length > 0 && (at + length > text.size() || !Utf8::isValid(text.substr(at, length)))) {
            --length;
        }
        if (length == 0) {
            bytes += text[at];
        }
        // The shortest valid one from here is one character.
        std::size_t character = 1;
        while (character < length && !Utf8::isValid(text.substr(at, character))) {
            ++character;
        }
        at += character;
    }
    return bytes;
}

RC_GTEST_PROP(EqualIgnoringCaseProperty, TextsOfOtherInvalidBytesDiffer, ()) {
    const auto a = *brokenTexts();
    const auto b = *rc::gen::oneOf(brokenTexts(), neighbours(a));
    RC_ASSERT(Text::equalIgnoringCase(a, a));
    if (Text::equalIgnoringCase(a, b)) {
        RC_ASSERT(invalidBytes(a) == invalidBytes(b));
    }
}

RC_GTEST_PROP(EqualIgnoringCaseProperty, OneInvalidByteForAnotherIsAnotherText, ()) {
    const auto before = *texts();
    const auto behind = *texts();
    const auto byte = [] { return std::string(1, static_cast<char>(*rc::gen::inRange(0xF8, 0x100))); };
    const auto a = byte();
    const auto b = byte();
    RC_ASSERT(Text::equalIgnoringCase(before + a + behind, before + b + behind) == (a == b));
    RC_ASSERT((Text::lowercased(before + a + behind) == Text::lowercased(before + b + behind)) == (a == b));
    RC_ASSERT(!Text::equalIgnoringCase(before + a + behind, before + "\uFFFD" + behind));
}

// As it was said before there was a short way: both sides folded as a whole, invalid bytes apart.
bool equalTheSlowWay(const std::string& a, const std::string& b) {
    UErrorCode status = U_ZERO_ERROR;
    const auto* const nfd = icu::Normalizer2::getNFDInstance(status);
    const auto folded = [&](const std::string& text) {
        return nfd->normalize(nfd->normalize(icu::UnicodeString::fromUTF8(text), status).foldCase(), status);
    };
    return folded(a) == folded(b) && invalidBytes(a) == invalidBytes(b);
}

RC_GTEST_PROP(CaselessTextProperty, AnswersAsTheSlowWayDoes, ()) {
    const auto name = *rc::gen::oneOf(texts(), brokenTexts());
    Text::CaselessText text(name);
    for (const auto& other : *rc::gen::container<std::vector<std::string>>(nearTo(name))) {
        RC_ASSERT(text.equals(other) == equalTheSlowWay(name, other));
    }
    RC_ASSERT(text.equals(name));
}

// Where one text has many times the length of the other the answer comes from the lengths alone.
RC_GTEST_PROP(CaselessTextProperty, AnswersAsTheSlowWayDoesWhateverTheLengths, ()) {
    const auto letters = rc::gen::elementOf(
        std::vector<std::string>{"k", "K", "\u212A", "\u0390", "\u1F82", "\uFB03", "ffi", "x"});
    const auto repeated = [&] {
        const auto letter = *letters;
        std::string text;
        for (int i = *rc::gen::inRange(0, 40); i > 0; --i) {
            text += letter;
        }
        return text;
    };
    const auto a = repeated();
    const auto b = repeated();
    RC_ASSERT(Text::CaselessText(a).equals(b) == equalTheSlowWay(a, b));
    RC_ASSERT(Text::CaselessText(b).equals(a) == equalTheSlowWay(a, b));
}

} // namespace
} // namespace quillane
#endif
