#include "PlainText.h"
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace quillane {
namespace {

using namespace std::string_view_literals;

TEST(PlainText, AMarkDecidesTheEncodingAndIsNoText) {
    EXPECT_EQ(PlainText::decoded("\xEF\xBB\xBF"
                                 "a\u00E9"),
              "a\u00E9");
    EXPECT_EQ(PlainText::decoded("\xFF\xFE"
                                 "a\0\xE9\0"sv),
              "a\u00E9");
    EXPECT_EQ(PlainText::decoded("\xFE\xFF\0a\0\xE9"sv), "a\u00E9");
}

TEST(PlainText, WithoutAMarkTheZerosOfOneSideTellUtf16) {
    EXPECT_EQ(PlainText::decoded("h\0i\0"sv), "hi");
    EXPECT_EQ(PlainText::decoded("\0h\0i"sv), "hi");
}

TEST(PlainText, ZerosOfBothSidesOrFewOfThemAreNoText) {
    EXPECT_EQ(PlainText::decoded("ab\0cd\0ef"sv), "");
    EXPECT_EQ(PlainText::decoded("a long text with a single zero\0 inside"sv), "");
    EXPECT_EQ(PlainText::decoded("\0"sv), "");
    EXPECT_EQ(PlainText::decoded(std::string(8'000, 'x') + '\0'), "") << "within what is looked at";
    EXPECT_EQ(PlainText::decoded(std::string(9'000, 'x') + '\0').size(), 9'001U) << "beyond it";
}

TEST(PlainText, ValidBytesAreUtf8AndOthersLatin1) {
    EXPECT_EQ(PlainText::decoded("plain"), "plain");
    EXPECT_EQ(PlainText::decoded("na\u00EFve \U0001F600"), "na\u00EFve \U0001F600");
    EXPECT_EQ(PlainText::decoded("na\xEFve"), "na\u00EFve");
    EXPECT_EQ(PlainText::decoded(""), "");
}

TEST(PlainText, ACharacterThatTheEndCutsDoesNotMakeItLatin1) {
    const std::string whole = "\u00E9t\u00E9 \u20AC\U0001F600";
    for (std::size_t cut = 1; cut <= 3; ++cut) {
        EXPECT_EQ(PlainText::decoded(whole.substr(0, whole.size() - cut)), "\u00E9t\u00E9 \u20AC") << cut;
    }
    EXPECT_EQ(PlainText::decoded("\u00E9\xC3"), "\u00E9");
    EXPECT_EQ(PlainText::decoded("\u20AC\x80"), "\u00E2\u0082\u00AC\u0080") << "nothing is cut here";
}

TEST(PlainText, OfWhatNobodyClaimsToBeTextHoldsNoControlsNearItsBeginning) {
    using PlainText::Claim;
    const std::string text = "one\t\x1B[1mtwo\x1B[0m\r\n\f";
    EXPECT_EQ(PlainText::decoded(text, Claim::none), text);
    EXPECT_EQ(PlainText::decoded("caf\xE9 s", Claim::none), "caf\u00E9 s");
    EXPECT_EQ(PlainText::decoded("\xFF\xFE"
                                 "a",
                                 Claim::none),
              "");
    EXPECT_EQ(PlainText::decoded("", Claim::none), "");
    for (const char control : {'\x01', '\x07', '\x7F', '\0'}) {
        const auto bytes = "text" + std::string(1, control);
        EXPECT_EQ(PlainText::decoded(bytes, Claim::none), "") << static_cast<int>(control);
        EXPECT_EQ(PlainText::decoded(std::string("\xEF\xBB\xBF") + bytes, Claim::none), "");
    }
    const auto late = std::string(10'000, 'x') + "\x01";
    EXPECT_EQ(PlainText::decoded(late, Claim::none), late);
    EXPECT_EQ(PlainText::decoded("text\x01"), "text\x01") << "where a type says so it is text";
}

} // namespace
} // namespace quillane
