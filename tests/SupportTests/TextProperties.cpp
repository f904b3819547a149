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
        "a",          "A",          "b",      "\uFF21",   "\uFF41", "e",      "E",      "\u00E9", "\u00C9",
        "\u0301",     "\u0323",     "ss",     "SS",       "s",      "\u00DF", "\u1E9E", "\uFB01", "fi",
        "i",          "I",          "\u0130", "0",        "0",      "1",      "1",      "2",      "00",
        "\uFF10",     "\uFF11",     "\u0660", "\u0661",   " ",      "-",      ".",      "\u00AD", "\u200D",
        "\U0001F44D", "\U0001F3FD", "\uAC01", "\u1100",   "\u1161", "\u11A8", "\u03C3", "\u03C2", "\r\n",
        "\xff",       "\xfe",       "\xc3",   "\xe2\x82", "\uFFFD"});
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

// The length of the valid sequence at a place of a text; 0 for a byte that is in none.
std::size_t validLength(const std::string& text, std::size_t at) {
    for (std::size_t length = 1; length <= 4 && at + length <= text.size(); ++length) {
        if (Utf8::isValid(text.substr(at, length))) {
            return length;
        }
    }
    return 0;
}

// The text with a private character, one that no test has, for each byte that is no text.
std::string marked(const std::string& text) {
    constexpr std::uint32_t kPrivate = 0x10FF00;
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const auto length = validLength(text, at);
        if (length == 0) {
            Utf8::append(result, kPrivate + static_cast<unsigned char>(text[at]));
        }
        result += text.substr(at, length);
        at += std::max(length, std::size_t{1});
    }
    return result;
}

// What equality without case means, said without any short way: both sides folded as a whole.
bool equalTheSlowWay(const std::string& a, const std::string& b) {
    UErrorCode status = U_ZERO_ERROR;
    const auto* const nfd = icu::Normalizer2::getNFDInstance(status);
    const auto folded = [&](const std::string& text) {
        const auto unicode = icu::UnicodeString::fromUTF8(marked(text));
        return nfd->normalize(nfd->normalize(unicode, status).foldCase(), status);
    };
    return folded(a) == folded(b);
}

RC_GTEST_PROP(EqualIgnoringCaseProperty, BytesThatAreNoTextCountAsLettersOfTheirOwn, ()) {
    const auto a = *brokenTexts();
    const auto b = *rc::gen::oneOf(brokenTexts(), nearTo(a));
    RC_ASSERT(Text::equalIgnoringCase(a, a));
    RC_ASSERT(Text::equalIgnoringCase(a, b) == equalTheSlowWay(a, b));
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
