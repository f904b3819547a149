#include "RtfText.h"
#include "TextSink.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

std::string textOf(std::string_view rtf) {
    TextSink sink(100'000);
    RtfText::add(rtf, sink);
    return sink.take();
}

TEST(RtfText, IsWhatAReaderSees) {
    struct Row {
        const char* rtf; // behind the signature
        const char* text;
    };
    const Row rows[] = {
        {"{\\fonttbl{\\f0 Times;}}{\\colortbl;\\red0;}{\\stylesheet{\\s0 Normal;}}text", "text"},
        {"in{\\b voice} of\r\n May", "invoice of May"},
        {"one\\par two\\tab three\\line\nfour\\cell five\\row", "one two three four five"},
        {"{\\*\\generator Some {nested} program;}text", "text"},
        {"{\\pict\\wmetafile8 0123456789abcdef}text", "text"},
        {"{\\pict\\bin5 }}{{\\}after", "after"},
        {"{\\field{\\*\\fldinst HYPERLINK \"x\"}{\\fldrslt link}}", "link"},
        {"\\ansicpg1252 caf\\'e9 \\'80", "caf\u00E9 \u20AC"},
        {"\\ansicpg1251 \\'ef\\'e8\\'e2\\'ee", "\u043F\u0438\u0432\u043E"},
        {"\\ansicpg932 \\'93\\'8c\\'8b\\'9e", "\u6771\u4EAC"},
        {"\\mac caf\\'8e", "caf\u00E9"},
        {"\\ansicpg1251 \\'ef \\ansicpg1252 \\'e9 \\mac \\'8e", "\u043F \u00E9 \u00E9"},
        {"\\ansicpg99999 caf\\'e9", "caf\u00E9"},
        {"\\u8364? and \\u-10179?\\u-8704?", "\u20AC and \U0001F600"},
        {"{\\uc0\\u8364}{\\uc2\\u8364 ab}c\\u8364\\'80d", "\u20AC\u20ACc\u20ACd"},
        {"\\u8212\\emdash x", "\u2014x"},
        {"a\\~b \\_ c\\-d \\{\\}\\\\", "a b - cd {}\\"},
        {"a\\emdash b\\ldblquote c\\rdblquote", "a\u2014b\u201Cc\u201D"},
        {"\\'zz\\'e", "zze"},
        {"a\\", "a"},
        {"a}} no", "a"},
        {"\\bin99999999999 a\\bin-1 b\\bin9 c", "ab"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(textOf(std::string("{\\rtf1\\ansi ") + row.rtf), row.text) << row.rtf;
    }
}

TEST(RtfText, OfWhatIsNoneIsEmpty) {
    EXPECT_EQ(textOf("plain words"), "");
    EXPECT_EQ(textOf(""), "");
}

TEST(RtfText, EndsWhereGroupsLieTooDeep) {
    EXPECT_EQ(textOf("{\\rtf1 above" + std::string(100'000, '{') + "below"), "above");
}

} // namespace
} // namespace quillane
