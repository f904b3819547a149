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

} // namespace
} // namespace quillane
