#include "Base64.h"
#include "Charset.h"
#include "Utf8.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

TEST(Charset, IsKnownByTheNamesThatDocumentsUse) {
    EXPECT_EQ(Charset::decoded("caf\xE9", "ISO-8859-1"), "caf\u00E9");
    EXPECT_EQ(Charset::decoded("\x80", "windows-1252"), "\u20AC");
    EXPECT_EQ(Charset::decoded("\xD0\xC9\xD7\xCF", "KOI8-R"), "\u043F\u0438\u0432\u043E");
    EXPECT_EQ(Charset::decoded("\x93\x8C\x8B\x9E", "Shift_JIS"), "\u6771\u4EAC");
    EXPECT_EQ(Charset::decoded("caf\u00E9", "utf-8"), "caf\u00E9");
    EXPECT_EQ(Charset::decoded("", "utf-8"), "");
}

TEST(Charset, ADecoderBeginsAnewWithEachPiece) {
    Charset::Decoder japanese("shift_jis");
    EXPECT_NE(japanese.decoded("\x93"), std::nullopt); // half a character
    EXPECT_EQ(japanese.decoded("\x8C\x8B\x9E"), Charset::decoded("\x8C\x8B\x9E", "shift_jis"));
    Charset::Decoder shifted("iso-2022-jp");
    EXPECT_NE(shifted.decoded("\x1B$BEl"), std::nullopt);
    EXPECT_EQ(shifted.decoded("abc"), "abc");
    auto moved = std::move(japanese);
    EXPECT_EQ(moved.decoded("\x93\x8C\x8B\x9E"), "\u6771\u4EAC");
    EXPECT_EQ(Charset::Decoder("nosuch").decoded("a"), std::nullopt);
}

TEST(Charset, OfANameThatIsNoneIsNothing) {
    for (const char* name : {"", "nosuch", "../../etc/passwd", "utf-8,version=1", "utf 8"}) {
        EXPECT_EQ(Charset::decoded("a", name), std::nullopt) << name;
    }
    EXPECT_EQ(Charset::decoded("a", std::string(Charset::kLongestName + 1, 'a')), std::nullopt);
    EXPECT_EQ(Charset::decoded("a", std::string_view("utf-8\0", 6)), std::nullopt);
}

TEST(Charset, GivesValidTextForAnyBytes) {
    std::string bytes;
    for (int i = 0; i < 10'000; ++i) {
        bytes += static_cast<char>(i * 7919 / 13);
    }
    for (const char* name :
         {"utf-8", "utf-16", "shift_jis", "gb18030", "iso-2022-jp", "euc-kr", "utf-7", "big5"}) {
        const auto text = Charset::decoded(bytes, name);
        ASSERT_TRUE(text) << name;
        EXPECT_TRUE(Utf8::isValid(*text)) << name;
        EXPECT_LE(text->size(), bytes.size() * 3) << name;
    }
}

TEST(Base64, PassesOverWhatIsNoDigit) {
    EXPECT_EQ(Base64::decoded("aW52\r\nb2lj ZQ=="), "invoice");
    EXPECT_EQ(Base64::decoded("aW5"), "in");
    EXPECT_EQ(Base64::decoded(""), "");
}

} // namespace
} // namespace quillane
