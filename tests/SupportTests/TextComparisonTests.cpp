#include "TextComparison.h"
#include <algorithm>
#include <numeric>
#include <random>
#include <thread>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace quillane {
namespace {

using Pair = std::pair<std::string, std::string>;

void expectAscending(const std::vector<std::string>& texts) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
        for (std::size_t j = 0; j < texts.size(); ++j) {
            EXPECT_EQ(Text::localizedStandardCompare(texts[i], texts[j]), i <=> j)
                << '"' << texts[i] << "\", \"" << texts[j] << '"';
        }
    }
}

TEST(LocalizedStandardCompare, EveryPairIsInTheFindersOrder) {
    const std::vector<std::vector<std::string>> ascending = {
        {"App 2", "App 10"},
        {"App 2", "App 02"},
        {"App 2", "App 002"},
        {"1.9", "1.10"},
        {"v1.0.9", "v1.0.10"},
        {"app", "App"},
        {"aPP", "App"},
        {"app", "Apq"},
        {"apo", "APP"},
        {"a", "B"},
        {"", "a"},
        {"Ecole", "\u00C9cole"},
        {"\u00C9cole", "Ecolf"},
        {"resume", "r\u00E9sum\u00E9"},
        {"e\u0301", "\u00E9"},
        {"Strasse", "Stra\u00DFe"},
        {"STRASSE", "Stra\u00DFe"},
        {"\u0152uvre", "Of"},
        {"o", "\u00F8", "p"},
        {"\u00E4", "z"},
        {"\u00F1", "o"},
        {"App", "\uFF21pp"},
        {"App", "App "},
        {"App 2", "App_2", "App-2", "App.2", "App2"},
        {"co-op", "coop"},
        {"1Password", "2Do", "10Password"},
        {"iTerm", "Itsycal"},
        {"Image", "iTunes"},
        {"Xcode", "Xcode 15", "Xcode-beta"},
        {"\U0001F600", "a"},
        {"a", "\u4E2D\u6587"},
        {"a", "\u042F"},
    };
    for (const auto& texts : ascending) {
        expectAscending(texts);
    }
    for (const char* before : {" a", "_a", "-a", ".a", "(a)", "#a", "1a"}) {
        expectAscending({before, "a"});
    }
    for (const char* before : {"a b", "a_b", "a-b", "a'b"}) {
        expectAscending({before, "ab"});
    }
    for (const char* before : {"~x", "$x", "@x", "[x]"}) {
        expectAscending({before, "x"});
    }
}

TEST(LocalizedStandardCompare, NumbersOfOneValueAreOrderedByTheirLengthBeforeCase) {
    expectAscending({"app 2", "App 2", "app 02", "App 02", "app 002"});
    expectAscending({"1.02", "01.2"}); // the first difference decides
    expectAscending({"a1b02", "a01b2"});
}

// By ASCII's digits alone these would go round in a circle.
TEST(LocalizedStandardCompare, DigitsOfEveryWidthKeepTheOrderStraight) {
    expectAscending({"\uFF11x", "1X", "01x"});
    expectAscending({"1x", "\uFF11X", "01x"});
    expectAscending({"\uFF11 2", "1 02"});
}

TEST(LocalizedStandardCompare, OnlyIdenticalTextsAreEqual) {
    EXPECT_EQ(Text::localizedStandardCompare("caf\u00E9", "caf\u00E9"), std::strong_ordering::equal);
    for (const auto& [a, b] : std::vector<Pair>{{"caf\u00E9", "cafe\u0301"},
                                                {"a", "a\u00AD"},
                                                {"ab", std::string("a\0b", 3)},
                                                {"\xff", "\xfe"},
                                                {"\xff", "\uFFFD"}}) {
        EXPECT_NE(Text::localizedStandardCompare(a, b), std::strong_ordering::equal) << a << ' ' << b;
    }
}

TEST(LocalizedStandardCompare, LongNumbersGoByTheirValue) {
    expectAscending({"2", "18446744073709551616", "18446744073709551617"});
    expectAscending({std::string(300, '1') + "a", std::string(300, '1') + "b"});
}

TEST(LocalizedStandardCompare, InvalidBytesCountAsTheReplacementCharacter) {
    const std::string invalid[] = {"a\xff"
                                   "b",
                                   "a\xc3", "\xed\xa0\x80", "\xf8\x88\x80\x80\x80", "\x80"};
    for (const auto& text : invalid) {
        EXPECT_EQ(Text::localizedStandardCompare(text, ""), std::strong_ordering::greater);
    }
    EXPECT_EQ(Text::localizedStandardCompare("a\xff"
                                             "b",
                                             "a\uFFFDc"),
              std::strong_ordering::less);
    EXPECT_EQ(Text::localizedStandardCompare("a\xff"
                                             "c",
                                             "a\uFFFDb"),
              std::strong_ordering::greater);
}

std::vector<std::size_t> orderByComparing(const std::vector<std::string>& names) {
    std::vector<std::size_t> order(names.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, [&](std::size_t a, std::size_t b) {
        const auto result = Text::localizedStandardCompare(names[a], names[b]);
        return result != 0 ? result < 0 : a < b;
    });
    return order;
}

TEST(LocalizedStandardOrder, ItIsThatOfTheComparison) {
    const std::vector<std::string> names = {
        "App 10",   "App", "app",         "",        "App 02", "\u00C9cole",   "App 2",   "Ecole", "\xff",
        "\uFF21pp", "App", "Stra\u00DFe", "STRASSE", "App 2",  "\u4E2D\u6587", "e\u0301", "\u00E9"};
    EXPECT_EQ(Text::localizedStandardOrder(names), orderByComparing(names));
}

TEST(LocalizedStandardOrder, EqualNamesKeepTheirPlaces) {
    const std::vector<std::string> names = {"b", "a", "b", "a", "b"};
    EXPECT_EQ(Text::localizedStandardOrder(names), (std::vector<std::size_t>{1, 3, 0, 2, 4}));
}

TEST(LocalizedStandardOrder, NothingHasNoOrder) {
    EXPECT_THAT(Text::localizedStandardOrder({}), testing::IsEmpty());
    EXPECT_THAT(Text::localizedStandardOrder({""}), testing::ElementsAre(0U));
}

TEST(LocalizedStandardOrder, LongNamesNeedMoreRoomAndGetIt) {
    const std::string stem(5'000, 'q');
    EXPECT_THAT(Text::localizedStandardOrder({stem + "10", stem + "9", stem, "q"}),
                testing::ElementsAre(3U, 2U, 1U, 0U));
}

TEST(LocalizedCaseInsensitiveContains, EveryPairAnswersAsThePlatformDoes) {
    struct Row {
        std::string haystack;
        std::string needle;
        bool contains;
    };
    const std::vector<Row> rows = {
        {"Stra\u00DFe", "STRASSE", true},
        {"\u00DF", "ss", true},
        {"STRASSE", "stra\u00DFe", true},
        {"Ma\u00DF", "ss", true},
        {"Ma\u00DF", "ass", true},
        {"Ma\u00DF", "s", false},
        {"Ma\u00DF", "as", false},
        {"Gro\u00DFartig", "ossa", true},
        {"Gro\u00DFartig", "os", false},
        {"\uFB01le", "FI", true},
        {"\uFB01le", "fil", true},
        {"\uFB01le", "f", false},
        {"\uFB01le", "ile", false},
        {"file", "\uFB01", true},
        {"\U0001F44D\U0001F3FD", "\U0001F44D", false},
        {"\u00C9cole", "ecole", false},
        {"\u00C9cole", "\u00E9cole", true},
        {"\u00C9cole", "\u00C9", true},
        {"E\u0301cole", "\u00E9cole", true},
        {"cafe\u0301", "cafe", false},
        {"cafe\u0301", "e", false},
        {"cafe\u0301", "caf\u00E9", true},
        {"\u03A3\u0391\u03A3", "\u03C3\u03B1\u03C2", true},
        {"\u03A3\u0391\u03A3", "\u03C2", true},
        {"a\u00A0b", "a b", false},
        {"\U0001F468\u200D\U0001F469\u200D\U0001F467", "\U0001F468", true},
        {"abc", "", false},
        {"", "", false},
        {"", "a", false},
        {"\u0130stanbul", "istanbul", false},
        {"ISTANBUL", "\u0131", false},
        {"Istanbul", "i", true},
        {"K", "\u212A", true},
        {"\uFF21pp", "app", false},
        {"com.apple.Safari", "SAFARI", true},
        {"com.apple.Safari", "safari ", false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Text::localizedCaseInsensitiveContains(row.haystack, row.needle), row.contains)
            << '"' << row.haystack << "\" / \"" << row.needle << '"';
    }
}

TEST(LocalizedCaseInsensitiveContains, ALetterBeyondASCIIIsFoundWhereItsPlainSpellingStands) {
    EXPECT_TRUE(Text::localizedCaseInsensitiveContains("STRASSE", "\u00DF"));
    EXPECT_TRUE(Text::localizedCaseInsensitiveContains("a Kelvin", "\u212A"));
    EXPECT_FALSE(Text::localizedCaseInsensitiveContains("cafe", "\u00E9"));
}

TEST(LocalizedCaseInsensitiveContains, AMatchBeginsAtAWholeCharacter) {
    EXPECT_FALSE(Text::localizedCaseInsensitiveContains("e\u0301", "\u0301"));
    EXPECT_FALSE(Text::localizedCaseInsensitiveContains("\u00E9", "\u0301"));
    EXPECT_TRUE(Text::localizedCaseInsensitiveContains("\u0301", "\u0301"));
    EXPECT_FALSE(Text::localizedCaseInsensitiveContains("\U0001F468\u200D\U0001F469", "\U0001F469"));
    EXPECT_FALSE(Text::localizedCaseInsensitiveContains("a\r\nb", "\nb"));
    EXPECT_TRUE(Text::localizedCaseInsensitiveContains("a\nb", "\nB"));
}

TEST(LocalizedCaseInsensitiveContains, AMatchEndsBeforeNothingThatBelongsToItsCharacter) {
    const std::string heart = "\u2764";
    EXPECT_FALSE(
        Text::localizedCaseInsensitiveContains(heart + "\uFE0F", heart)); // told to be shown as emoji
    EXPECT_TRUE(Text::localizedCaseInsensitiveContains(heart + "\uFE0F", heart + "\uFE0F"));
    EXPECT_FALSE(Text::localizedCaseInsensitiveContains("\u0915\u0941", "\u0915")); // a vowel sign follows
    EXPECT_FALSE(Text::localizedCaseInsensitiveContains("x\u0301y", "x"));
}

TEST(LocalizedCaseInsensitiveContains, ALaterMatchCountsWhenTheFirstIsNoWholeOne) {
    EXPECT_TRUE(Text::localizedCaseInsensitiveContains("e\u0301 e", "e"));
    EXPECT_TRUE(Text::localizedCaseInsensitiveContains("\u00DF SS", "s"));
    EXPECT_TRUE(Text::localizedCaseInsensitiveContains("xe\u0301xe", "XE"));
}

TEST(LocalizedCaseInsensitiveContains, ASyllableIsOneLetterHoweverItIsWritten) {
    const std::string composed = "\uAC01";          // gag
    const std::string parts = "\u1100\u1161\u11A8"; // the same in parts
    const std::string open = "\uAC00";              // ga
    EXPECT_TRUE(Text::localizedCaseInsensitiveContains(parts, composed));
    EXPECT_TRUE(Text::localizedCaseInsensitiveContains(composed, parts));
    EXPECT_FALSE(Text::localizedCaseInsensitiveContains(composed, open));
    EXPECT_FALSE(Text::localizedCaseInsensitiveContains(parts, open));
}

TEST(LocalizedCaseInsensitiveContains, InvalidBytesAreSurvived) {
    EXPECT_TRUE(Text::localizedCaseInsensitiveContains("a\xff"
                                                       "b",
                                                       "A\uFFFD"));
    EXPECT_TRUE(Text::localizedCaseInsensitiveContains("a\xff"
                                                       "b",
                                                       "B"));
    EXPECT_FALSE(Text::localizedCaseInsensitiveContains("ab", "\xff"));
    EXPECT_TRUE(Text::localizedCaseInsensitiveContains(std::string("a\0B", 3), std::string("\0b", 2)));
}

TEST(EqualIgnoringCase, EveryPairFoldsAlike) {
    const std::vector<Pair> equal = {
        {"app", "App"},
        {"", ""},
        {"Stra\u00DFe", "STRASSE"},
        {"Stra\u00DFe", "Strasse"},
        {"\u00E9", "e\u0301"},
        {"\u00C9", "e\u0301"},
        {"\uFB01", "fi"},
        {"\u1E9E", "\u00DF"},
        {"\u1E9E", "ss"},
        {"\u017F", "s"},
        {"\u00B5", "\u03BC"},
        {"K", "\u212A"},
        {"com.apple.Safari", "COM.APPLE.SAFARI"},
    };
    for (const auto& [a, b] : equal) {
        EXPECT_TRUE(Text::equalIgnoringCase(a, b)) << a << ' ' << b;
        EXPECT_TRUE(Text::equalIgnoringCase(b, a)) << b << ' ' << a;
    }
}

TEST(EqualIgnoringCase, EverythingElseDiffers) {
    const std::vector<Pair> different = {
        {"\u00C9cole", "Ecole"},
        {"\u0130", "i"},
        {"\uFF21", "a"},
        {"App", "App "},
        {"a\u00ADb", "ab"},
        {"[", "{"},
        {"@", "`"},
        {"app", "apps"},
        {"", "a"},
        {"\xff", "a"},
    };
    for (const auto& [a, b] : different) {
        EXPECT_FALSE(Text::equalIgnoringCase(a, b)) << a << ' ' << b;
        EXPECT_FALSE(Text::equalIgnoringCase(b, a)) << b << ' ' << a;
    }
}

TEST(EqualIgnoringCase, AnInvalidByteEqualsOnlyItself) {
    EXPECT_TRUE(Text::equalIgnoringCase("A\xff", "a\xff"));
    EXPECT_TRUE(Text::equalIgnoringCase("\u00C9\xc3", "e\u0301\xc3"));
    const std::vector<Pair> different = {
        {"A\xff", "a\xfe"},         // another byte
        {"A\xff", "a\uFFFD"},       // what it is shown as
        {"\xff\xfe", "\xfe\xff"},   // the order counts
        {"\xc3", "\xc3\xc3"},       // and the number
        {"\xe2\x82", "\xe2"},       // a sequence that was cut off, shown as one sign too
        {"\xed\xa0\x80", "\uFFFD"}, // half a pair
        {"\xc3x", "\u00C3x"},       // the letter of that number
        {"\xed\xbf\xbf", "\xff"},   // what the byte is turned into
    };
    for (const auto& [a, b] : different) {
        EXPECT_FALSE(Text::equalIgnoringCase(a, b)) << a << ' ' << b;
        EXPECT_FALSE(Text::equalIgnoringCase(b, a)) << b << ' ' << a;
    }
}

// The factor by which equal texts may differ in length stands on this.
TEST(CaselessText, EveryLetterFoldsToOneToFourCodePoints) {
    UErrorCode status = U_ZERO_ERROR;
    const auto* const nfd = icu::Normalizer2::getNFDInstance(status);
    for (UChar32 point = 0; point <= 0x10FFFF; ++point) {
        if (u_isdefined(point) == 0) {
            continue; // folds to itself, and so does every byte that is no text
        }
        const auto folded =
            nfd->normalize(nfd->normalize(icu::UnicodeString(point), status).foldCase(), status);
        ASSERT_TRUE(U_SUCCESS(status));
        ASSERT_GE(folded.countChar32(), 1) << point;
        ASSERT_LE(folded.countChar32(), 4) << point;
    }
}

TEST(CaselessText, ALengthThatNoEqualTextHasIsNotLookedAt) {
    // The longest and the shortest there are: Kelvin signs have three bytes and fold to a letter of one.
    std::string kelvins;
    for (int i = 0; i < 100; ++i) {
        kelvins += "\u212A";
    }
    Text::CaselessText text(kelvins);
    EXPECT_TRUE(text.equals(std::string(100, 'k')));
    EXPECT_TRUE(text.equals(std::string(100, 'K')));
    EXPECT_FALSE(text.equals(std::string(99, 'k')));
    EXPECT_FALSE(text.equals(""));
    EXPECT_FALSE(text.equals("k"));
    EXPECT_FALSE(Text::CaselessText("").equals(kelvins));
}

TEST(TextComparison, ManyThreadsMayAskAtOnce) {
    std::vector<std::string> names;
    for (int i = 0; i < 60; ++i) {
        names.push_back((i % 2 == 0 ? "\u00C9cole " : "e\u0301cole ") + std::to_string(i % 7));
    }
    std::vector<std::vector<std::size_t>> orders(4);
    std::vector<std::size_t> found(4);
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < orders.size(); ++t) {
        threads.emplace_back([&, t] {
            orders[t] = orderByComparing(names);
            found[t] = static_cast<std::size_t>(std::ranges::count_if(names, [](const std::string& name) {
                return Text::localizedCaseInsensitiveContains(name, "\u00E9COLE 3") &&
                       !Text::equalIgnoringCase(name, "\u00E9COLE");
            }));
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(orders, testing::Each(Text::localizedStandardOrder(names)));
    EXPECT_THAT(found, testing::Each(9U));
}

} // namespace
} // namespace quillane
