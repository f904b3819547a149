#include "JsonText.h"
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <utility>
#include <vector>

namespace quillane {
namespace {

TEST(JsonText, NumbersReadAsThePlatformWritesThem) {
    for (const auto& [value, text] :
         std::vector<std::pair<double, const char*>>{{0, "0"},
                                                     {-0.0, "-0"},
                                                     {1, "1"},
                                                     {700000000, "700000000"},
                                                     {700000000.5, "700000000.5"},
                                                     {0.1, "0.1"},
                                                     {-978307200, "-978307200"},
                                                     {1e16, "1e+16"},
                                                     {1e-5, "1e-05"},
                                                     {738000000.123456789, "738000000.1234568"}}) {
        EXPECT_EQ(JsonText::number(value), text);
    }
}

TEST(JsonText, WhatIsNoFiniteNumberHasNoText) {
    EXPECT_FALSE(JsonText::number(std::nan("")));
    EXPECT_FALSE(JsonText::number(std::numeric_limits<double>::infinity()));
    EXPECT_FALSE(JsonText::number(-std::numeric_limits<double>::infinity()));
}

TEST(JsonText, StringsEscapeWhatThePlatformEscapes) {
    EXPECT_EQ(JsonText::string("a/b\"\\\b\f\n\r\t"), R"("a\/b\"\\\b\f\n\r\t")");
    EXPECT_EQ(JsonText::string(std::string_view("\x1f\0", 2)), "\"\\u001f\\u0000\"");
    EXPECT_EQ(JsonText::string("é\x7f 中"), "\"é\x7f 中\"");
}

TEST(JsonText, BytesThatAreNotTextBecomeReplacementCharacters) {
    EXPECT_EQ(JsonText::string("a\xff"), "\"a\xEF\xBF\xBD\"");
}

} // namespace
} // namespace quillane
