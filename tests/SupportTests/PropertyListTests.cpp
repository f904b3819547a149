#include "BinaryListBuilder.h"
#include "PropertyList.h"
#include <bit>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace quillane {
namespace {

using namespace std::string_literals;
using namespace PropertyList;
using testing::ElementsAre;
using testing::Optional;

constexpr auto kMostInt = std::numeric_limits<std::int64_t>::max();
constexpr auto kLeastInt = std::numeric_limits<std::int64_t>::min();
constexpr auto kNothing = std::nullopt;

std::string plist(const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n" +
           content + "\n</plist>\n";
}

// What the bytes hold, which must be readable.
Value parsed(const std::string& bytes) {
    auto result = parse(bytes);
    EXPECT_TRUE(result.ok()) << bytes;
    return result.ok() ? std::move(result).value() : Value(Opaque{});
}

Value text(const char* words) {
    return Value(std::string(words));
}

Value integer(std::int64_t number) {
    return Value(number);
}

Value dictionary(std::vector<Entry> entries) {
    return Value(Dictionary(std::move(entries)));
}

void expectRefused(const std::string& bytes) {
    const auto result = parse(bytes);
    ASSERT_FALSE(result.ok()) << bytes;
    EXPECT_EQ(result.error(), (PlatformError{3840, kNothing})) << bytes;
}

// A list with each kind of value in all three forms, as far as they have it.
std::string everyKindInXml() {
    return plist("<dict><key>Label</key><string>com.example.tool</string><key>Keep</key><true/>"
                 "<key>Off</key><false/><key>Every</key><integer>60</integer><key>Ratio</key>"
                 "<real>0.5</real><key>When</key><date>2001-01-01T00:01:00Z</date><key>Raw</key>"
                 "<data>CgsM</data><key>Arguments</key><array><string>/bin/sh</string><string>-c</string>"
                 "</array><key>Empty</key><dict/></dict>");
}

std::string everyKindInBinary() {
    BinaryListBuilder list;
    const auto keys = {"Label", "Keep", "Off", "Every", "Ratio", "When", "Raw", "Arguments", "Empty"};
    list.objects.push_back(
        list.dictionary({1, 2, 3, 4, 5, 6, 7, 8, 9}, {10, 11, 12, 13, 14, 15, 16, 17, 20}));
    for (const auto* key : keys) {
        list.objects.push_back(BinaryListBuilder::text(key));
    }
    list.objects.push_back(BinaryListBuilder::text("com.example.tool"));
    list.objects.emplace_back("\x09");
    list.objects.emplace_back("\x08");
    list.objects.emplace_back("\x10\x3C");
    list.objects.push_back("\x23" + BinaryListBuilder::number(std::bit_cast<std::uint64_t>(0.5), 8));
    list.objects.push_back("\x33" + BinaryListBuilder::number(std::bit_cast<std::uint64_t>(60.0), 8));
    list.objects.emplace_back("\x43\x0A\x0B\x0C");
    list.objects.push_back(list.array({18, 19}));
    list.objects.push_back(BinaryListBuilder::text("/bin/sh"));
    list.objects.push_back(BinaryListBuilder::text("-c"));
    list.objects.push_back(list.dictionary({}, {}));
    return list.bytes();
}

std::string everyKindInText() {
    return "// a comment\n{ Label = com.example.tool; \"with blank\" = \"x \\U00e9\\n\\351\"; /* more */\n"
           "  Raw = <0a 0b0c>; Arguments = ( /bin/sh, '-c', ); Nested = { a = { b = (); }; }; }";
}

TEST(PropertyList, AnXmlListGivesEachKindOfValue) {
    EXPECT_EQ(parsed(everyKindInXml()), dictionary({{"Label", text("com.example.tool")},
                                                    {"Keep", Value(true)},
                                                    {"Off", Value(false)},
                                                    {"Every", integer(60)},
                                                    {"Ratio", Value(0.5)},
                                                    {"When", Value(Date{60})},
                                                    {"Raw", Value(Data{"\x0A\x0B\x0C"})},
                                                    {"Arguments", Value(Array{text("/bin/sh"), text("-c")})},
                                                    {"Empty", dictionary({})}}));
}

TEST(PropertyList, ABinaryListGivesTheSameValuesAsTheXmlOne) {
    EXPECT_EQ(parsed(everyKindInBinary()), parsed(everyKindInXml()));
}

TEST(PropertyList, ATextListGivesTextsDataArraysAndDictionaries) {
    EXPECT_EQ(parsed(everyKindInText()),
              dictionary({{"Label", text("com.example.tool")},
                          {"with blank", text("x é\nØ")},
                          {"Raw", Value(Data{"\x0A\x0B\x0C"})},
                          {"Arguments", Value(Array{text("/bin/sh"), text("-c")})},
                          {"Nested", dictionary({{"a", dictionary({{"b", Value(Array{})}})}})}}));
}

// What the platform accepts, and as what.
TEST(PropertyList, TheTableOfWhatIsAccepted) {
    struct Row {
        const char* what;
        std::string bytes;
        Value expected;
    };
    const auto big = [](std::uint64_t number) { return Value(BigNumber{number}); };
    const std::vector<Row> rows = {
        {"old form, scalars stay texts", "{ a = 1; b = \"x y\"; c = (1,2); d = <0a0b>; }",
         dictionary({{"a", text("1")},
                     {"b", text("x y")},
                     {"c", Value(Array{text("1"), text("2")})},
                     {"d", Value(Data{"\x0A\x0B"})}})},
        {"a text as root", "hello", text("hello")},
        {"a quoted text as root", "\"hello\"", text("hello")},
        {"data as root", "<0a0b>", Value(Data{"\x0A\x0B"})},
        {"no braces", "a = 1; b = 2;", dictionary({{"a", text("1")}, {"b", text("2")}})},
        {"no braces, key alone", "a; \"b c\";", dictionary({{"a", text("a")}, {"b c", text("b c")}})},
        {"no braces, nested", "a = { b = (1); }; c = d;",
         dictionary({{"a", dictionary({{"b", Value(Array{text("1")})}})}, {"c", text("d")}})},
        {"blanks only", "   ", dictionary({})},
        {"blanks and comments only", " \n// nothing\n/* here */ ", dictionary({})},
        {"no <plist>", "<dict/>", dictionary({})},
        {"no <plist>, a scalar", "<true/>", Value(true)},
        {"byte order mark", "\xEF\xBB\xBF<plist><true/></plist>", Value(true)},
        {"byte order mark in the old form", "\xEF\xBB\xBF{ a = 1; }", dictionary({{"a", text("1")}})},
        {"leading blanks", " \r\n\t<plist><true/></plist>", Value(true)},
        {"text behind", "<plist><true/></plist> behind", Value(true)},
        {"broken markup behind", "<plist><true/></plist> <oops & </x>", Value(true)},
        {"a second list behind", "<plist><true/></plist><plist><false/></plist>", Value(true)},
        {"an array at the top", "<plist><array/></plist>", Value(Array{})},
        {"hexadecimal", plist("<integer>0x10</integer>"), integer(16)},
        {"hexadecimal, negative", plist("<integer>-0XfF</integer>"), integer(-255)},
        {"plus", plist("<integer>+7</integer>"), integer(7)},
        {"zeros in front", plist("<integer>0000000000000000000000000000012</integer>"), integer(12)},
        {"largest Int", plist("<integer>9223372036854775807</integer>"), integer(kMostInt)},
        {"least Int", plist("<integer>-9223372036854775808</integer>"), integer(kLeastInt)},
        {"one above", plist("<integer>9223372036854775808</integer>"), big(9223372036854775808U)},
        {"largest of all", plist("<integer>18446744073709551615</integer>"), big(18446744073709551615U)},
        {"duplicate key in XML",
         plist(
             "<dict><key>a</key><string>1</string><key>b</key><true/><key>a</key><string>2</string></dict>"),
         dictionary({{"a", text("2")}, {"b", Value(true)}})},
        {"duplicate key in the old form", "{ a = 1; a = 2; }", dictionary({{"a", text("2")}})},
        {"empty texts", plist("<array><string/><string></string><data/></array>"),
         Value(Array{text(""), text(""), Value(Data{})})},
        {"empty key", plist("<dict><key/><true/></dict>"), dictionary({{"", Value(true)}})},
        {"blanks in texts and keys", plist("<dict><key> a </key><string>  \r\n\t </string></dict>"),
         dictionary({{" a ", text("  \r\n\t ")}})},
        {"references", plist("<string>&lt;&gt;&amp;&quot;&apos;&#65;&#x1F600;&amp;lt;</string>"),
         text("<>&\"'A\xF0\x9F\x98\x80&lt;")},
        {"marked section", plist("<string>a<![CDATA[<b>&amp;]]>c</string>"), text("a<b>&amp;c")},
        {"comments", plist("<!-- a --><dict><!-- b --><key>a<!-- c -->b</key><!-- d --><true/></dict>"),
         dictionary({{"ab", Value(true)}})},
        {"the end tag in a comment", plist("<!-- </plist> --><true/>"), Value(true)},
        {"attributes", "<plist version='1.0' a=\"b\"><true c='d'/></plist>", Value(true)},
        {"reals", plist("<array><real>1.5</real><real>-2e3</real><real>.5</real><real>7</real></array>"),
         Value(Array{Value(1.5), Value(-2000.0), Value(0.5), Value(7.0)})},
        {"infinite", plist("<array><real>inf</real><real>-Infinity</real></array>"),
         Value(Array{Value(std::numeric_limits<double>::infinity()),
                     Value(-std::numeric_limits<double>::infinity())})},
        {"dates",
         plist("<array><date>2001-01-01T00:00:00Z</date><date>2024-02-29T23:59:59Z</date>"
               "<date>1970-01-01T00:00:00Z</date><date>0001-01-01T00:00:00Z</date></array>"),
         Value(Array{Value(Date{0}), Value(Date{730943999}), Value(Date{-978307200}),
                     Value(Date{-63113904000})})},
        {"data in groups, each with its padding", plist("<data>YQ==YWI=YWJj</data>"), Value(Data{"aababc"})},
        {"data with = at the front", plist("<data>=YWJ</data>"), Value(Data{"\x01\x85\x89"})},
        {"data with = inside a group", plist("<data>Y=Fi</data>"), Value(Data{"\x60\x01\x62"})},
        {"data with = inside and behind", plist("<data>Y=Q=</data>"), Value(Data{"\x60\x04"})},
        {"data with = before the last digit", plist("<data>YQ=B</data>"), Value(Data{"a\0\x01"s})},
        {"data of = alone", plist("<data>====</data>"), Value(Data{"\0"s})},
        {"data with = over two groups", plist("<data>YQ=YWJj=</data>"), Value(Data{"a\0\x18\x58\x98"s})},
        {"data with too many =", plist("<data>YQ===</data>"), Value(Data{"a"})},
        {"data whose last group is cut off", plist("<data>YWJjZA</data>"), Value(Data{"abcd"})},
        {"data whose padding is cut off", plist("<data>YWJjZA=</data>"), Value(Data{"abcd"})},
        {"data with blanks inside the padding", plist("<data>YQ=\n=</data>"), Value(Data{"a"})},
        {"data with blanks and padding", plist("<data>\n\tYWJj\n\tZA==\n</data>"), Value(Data{"abcd"})},
    };
    for (const auto& row : rows) {
        const auto result = parse(row.bytes);
        ASSERT_TRUE(result.ok()) << row.what;
        EXPECT_EQ(*result, row.expected) << row.what;
    }
}

// What makes the whole file unreadable.
TEST(PropertyList, TheTableOfWhatIsRefused) {
    const std::vector<std::string> rows = {
        "",
        "{\"a\": 1}",
        "[1]",
        "[]",
        "{ a = 1 }",    // the last pair needs its semicolon too
        "{ a = 1; ",    // no end
        "{ a; } b",     // more behind the end
        "(a b)",        // no comma
        "(a, b",        // no end
        "(a,, b)",      // no value
        "<0a0>",        // half a byte
        "<0a 0b",       // no end
        "<0g>",         // no digit
        "\"abc",        // no closing quote
        "\"abc\\",      // nothing behind the backslash
        "hello world",  // two texts
        "a = 1; b = 2", // the same without braces
        "a = 1; }",     // a brace that nothing opened
        "{ = 1; }",     // no key
        "{ (a) = 1; }", // a key that is no text
        "; a = 1;",     // nothing before the semicolon
        "a = ;",        // no value
        "<dict>",
        "<plist>",
        "<plist/>",
        "<plist></plist>",
        "<plist><true/><false/></plist>",
        "<plist>words<true/></plist>",
        "<plist>words</plist>",
        "<plist><plist><true/></plist></plist>",
        "words <plist><true/></plist>",
        "<?xml version=\"1.0\"?> words <plist><true/></plist>",
        "<!-- nothing -->",
        "<html/>",
        "<plist><Dict/></plist>",
        "<plist><true></plist>",
        "<plist><true/>",
        plist("<true>yes</true>"),
        plist("<true><false/></true>"),
        plist("<integer> 5 </integer>"),
        plist("<integer>5 </integer>"),
        plist("<integer></integer>"),
        plist("<integer/>"),
        plist("<integer> </integer>"),
        plist("<integer>1.5</integer>"),
        plist("<integer>abc</integer>"),
        plist("<integer>0x</integer>"),
        plist("<integer>0xg</integer>"),
        plist("<integer>12ab</integer>"),
        plist("<integer>--1</integer>"),
        plist("<integer>-</integer>"),
        plist("<integer>18446744073709551616</integer>"),
        plist("<integer>-9223372036854775809</integer>"),
        plist("<integer>99999999999999999999999999999999</integer>"),
        plist("<dict><key>a</key><integer>abc</integer><key>b</key><true/></dict>"),
        plist("<real></real>"),
        plist("<real>abc</real>"),
        plist("<real>1.5x</real>"),
        plist("<real>1.5 </real>"),
        plist("<real>1,5</real>"),
        plist("<real>0x10</real>"),
        plist("<real>-nan</real>"),
        plist("<date>yesterday</date>"),
        plist("<date></date>"),
        plist("<date>2001-01-01</date>"),
        plist("<date>2001-01-01T00:00:00</date>"),
        plist("<date>2001-1-01T00:00:00Z</date>"),
        plist("<date>2001-13-01T00:00:00Z</date>"),
        plist("<date>2001-00-01T00:00:00Z</date>"),
        plist("<date>2001-02-29T00:00:00Z</date>"),
        plist("<date>2001-04-31T00:00:00Z</date>"),
        plist("<date>2001-04-00T00:00:00Z</date>"),
        plist("<date>2001-01-01T24:00:00Z</date>"),
        plist("<date>2001-01-01T00:60:00Z</date>"),
        plist("<date>2001-01-01T00:00:60Z</date>"),
        plist("<date>2001-01-01T00:00:00Zx</date>"),
        plist("<date>9999999999-01-01T00:00:00Z</date>"),
        plist("<string>a<b/>c</string>"),
        plist("<string>a<true/></string>"),
        plist("<string>&unknown;</string>"),
        plist("<string>a & b</string>"),
        plist("<string>&amp</string>"),
        plist("<string>&#;</string>"),
        plist("<string>&#x;</string>"),
        plist("<string>&#0;</string>"),
        plist("<string>&#xD800;</string>"),
        plist("<string>&#x110000;</string>"),
        plist("<string>&#99999999999999999999;</string>"),
        plist("<string>&#1a;</string>"),
        plist("<string>\xC3(</string>"),        // no UTF-8
        plist("<string>\xED\xA0\x80</string>"), // a surrogate
        plist("<string>"s + '\0' + "</string>"),
        plist("<dict><key>a</key></dict>"),
        plist("<dict><true/></dict>"),
        plist("<dict><key>a</key><key>b</key><true/></dict>"),
        plist("<dict><key>a</key><true/><true/></dict>"),
        plist("<dict><key>a</key><true/><key>b</key></dict>"),
        plist("<dict>words<key>a</key><true/></dict>"),
        plist("<dict><key>a</key>words<true/></dict>"),
        plist("<dict><![CDATA[ ]]></dict>"),
        plist("<array><key>a</key></array>"),
        plist("<array>words</array>"),
        plist("<array><true/></dict>"),
        plist("<key>a</key>"),
        "bplist00",
        "bplist00 = 1;",
        "bplist99" + std::string(40, '\0'),
    };
    for (const auto& row : rows) {
        expectRefused(row);
    }
}

TEST(PropertyList, NoEntityOfTheDocumentIsExpanded) {
    expectRefused("<?xml version=\"1.0\"?><!DOCTYPE plist [<!ENTITY a \"aaaaaaaaaa\">"
                  "<!ENTITY b \"&a;&a;&a;&a;&a;\">]><plist><string>&b;</string></plist>");
    expectRefused("<!DOCTYPE plist [<!ENTITY secret SYSTEM \"file:///etc/passwd\">]>"
                  "<plist><string>&secret;</string></plist>");
    EXPECT_EQ(parsed("<!DOCTYPE plist [<!ENTITY lt \"x\">]><plist><string>&lt;</string></plist>"), text("<"));
}

TEST(PropertyList, TheFormIsToldFromTheContentAndNotFromItsBeginningAlone) {
    // "bplis" is a word, a whole header announces a binary list.
    EXPECT_EQ(parsed("bplis"), text("bplis"));
    expectRefused("bplist01");
    // Data of the old form and an XML list begin with the same character.
    EXPECT_EQ(parsed("<da 7a>"), Value(Data{"\xDA\x7A"}));
    EXPECT_EQ(parsed("<data>2no=</data>"), Value(Data{"\xDA\x7A"}));
}

std::string utf16(const std::string& ascii, bool isLittle) {
    std::string bytes;
    for (const char c : ascii) {
        bytes += isLittle ? std::string{c, '\0'} : std::string{'\0', c};
    }
    return bytes;
}

TEST(PropertyList, Utf16IsReadInBothByteOrders) {
    const auto expected = dictionary({{"a", text("b")}});
    const std::string xml = "<plist><dict><key>a</key><string>b</string></dict></plist>";
    EXPECT_EQ(parsed("\xFF\xFE" + utf16(xml, true)), expected);
    EXPECT_EQ(parsed("\xFE\xFF" + utf16(xml, false)), expected);
    EXPECT_EQ(parsed(utf16(xml, true)), expected);
    EXPECT_EQ(parsed(utf16(xml, false)), expected);
    EXPECT_EQ(parsed("\xFF\xFE" + utf16("a = b;", true)), expected);
    EXPECT_EQ(parsed("\xFE\xFF" + utf16("a = b;", false)), expected);
}

TEST(PropertyList, TheDeclaredLatin1IsRead) {
    EXPECT_EQ(parsed("<?xml version='1.0' encoding='ISO-8859-1'?><plist><string>\xE9</string></plist>"),
              text("é"));
    expectRefused("<?xml version='1.0' encoding='UTF-8'?><plist><string>\xE9</string></plist>");
}

TEST(PropertyList, TheEscapesOfTheOldForm) {
    struct Row {
        const char* written;
        std::string meant;
    };
    const std::vector<Row> rows = {
        {R"("\a\b\f\n\r\t\v")", "\a\b\f\n\r\t\v"},
        {R"("\"\'\\\q")", "\"'\\q"},
        {R"('it"s')", "it\"s"},
        {R"("\101\60\0x")", "A0\0x"s},
        {R"("\200\376\377")", "\u00A0\uFFFD\uFFFD"},
        {R"("\341\373\256")", "\u00C6\u00DF\uFB01"},
        {R"("\U41\U0041B")", "A\u0041B"},
        {R"("\U20ac")", "€"},
        {R"("\Ud83d\Ude00")", "\xF0\x9F\x98\x80"},
        {R"("\Ud83dx\Ude00")", "\uFFFDx\uFFFD"},
        {R"("\Ud83d")", "\uFFFD"},
        {R"("\Ud83d\n")", "\uFFFD\n"},
        {"\"a\\\nb\"", "a\nb"},
        {"\"// no comment\"", "// no comment"},
        {"\"é\"", "é"},
        {"/a/b//c", "/a/b//c"},
    };
    for (const auto& row : rows) {
        const auto result = parse(row.written);
        ASSERT_TRUE(result.ok()) << row.written;
        EXPECT_EQ(*result, Value(row.meant)) << row.written;
    }
}

TEST(PropertyList, ADateIsReadWithinTheWholeCalendar) {
    const auto seconds = [](const std::string& date) {
        const auto value = parsed(plist("<date>" + date + "</date>"));
        return asDate(&value).value_or(Date{-1}).secondsSinceReferenceDate;
    };
    EXPECT_EQ(seconds("2001-01-02T00:00:00Z"), 86400);
    EXPECT_EQ(seconds("2000-12-31T23:59:59Z"), -1);
    EXPECT_EQ(seconds("2000-02-29T00:00:00Z"), -307.0 * 86400);
    EXPECT_EQ(seconds("1900-03-01T00:00:00Z") - seconds("1900-02-28T00:00:00Z"), 86400);
    EXPECT_EQ(seconds("-0001-01-01T00:00:00Z"), -63113904000 - 731.0 * 86400);
}

// --- binary lists ---

std::string binaryOf(std::string object) {
    BinaryListBuilder list;
    list.objects.push_back(std::move(object));
    return list.bytes();
}

TEST(PropertyListBinary, NumbersOfEachSize) {
    const auto number = [](std::uint64_t value, std::size_t size) {
        return BinaryListBuilder::number(value, size);
    };
    const auto minus = [](std::int64_t value) { return static_cast<std::uint64_t>(value); };
    EXPECT_EQ(parsed(binaryOf("\x10" + number(255, 1))), integer(255)); // without a sign
    EXPECT_EQ(parsed(binaryOf("\x11" + number(65535, 2))), integer(65535));
    EXPECT_EQ(parsed(binaryOf("\x12" + number(4294967295, 4))), integer(4294967295));
    EXPECT_EQ(parsed(binaryOf("\x13" + number(minus(-1), 8))), integer(-1)); // with a sign
    EXPECT_EQ(parsed(binaryOf("\x14" + number(0, 8) + number(5, 8))), integer(5));
    EXPECT_EQ(parsed(binaryOf("\x14" + number(0, 8) + number(minus(-1), 8))),
              Value(BigNumber{18446744073709551615U}));
    EXPECT_EQ(parsed(binaryOf("\x14" + number(minus(-1), 8) + number(minus(-5), 8))), integer(-5));
    expectRefused(binaryOf("\x14" + number(1, 8) + number(0, 8)));
    expectRefused(binaryOf("\x15" + std::string(32, '\0')));
}

TEST(PropertyListBinary, RealsOfBothSizes) {
    EXPECT_EQ(parsed(binaryOf("\x22" + BinaryListBuilder::number(std::bit_cast<std::uint32_t>(1.5F), 4))),
              Value(1.5));
    EXPECT_EQ(parsed(binaryOf("\x23" + BinaryListBuilder::number(std::bit_cast<std::uint64_t>(1.5), 8))),
              Value(1.5));
    expectRefused(binaryOf("\x21" + std::string(2, '\0')));
    expectRefused(binaryOf("\x32" + std::string(4, '\0')));
}

TEST(PropertyListBinary, TextsOfBothWidths) {
    EXPECT_EQ(parsed(binaryOf(BinaryListBuilder::text("abc"))), text("abc"));
    EXPECT_EQ(parsed(binaryOf("\x62\x20\xAC\x00\x41"s)), text("€A"));
    EXPECT_EQ(parsed(binaryOf("\x62\xD8\x3D\xDE\x00"s)), text("\xF0\x9F\x98\x80"));
    EXPECT_EQ(parsed(binaryOf("\x61\xD8\x3D")), text("\uFFFD"));
    expectRefused(binaryOf("\x52\xC3\xA9")); // no ASCII
    const std::string longer(300, 'x');
    EXPECT_EQ(parsed(binaryOf(BinaryListBuilder::text(longer))), Value(longer));
}

TEST(PropertyListBinary, AnEmbeddedNulIsKept) {
    EXPECT_EQ(parsed(binaryOf(BinaryListBuilder::text("a\0b"s))), Value("a\0b"s));
}

TEST(PropertyListBinary, WhatNoCastAcceptsIsOpaque) {
    EXPECT_EQ(parsed(binaryOf("\x00"s)), Value(Opaque{}));
    EXPECT_EQ(parsed(binaryOf("\x80\x05")), Value(Opaque{}));
    BinaryListBuilder list;
    list.objects = {"\xC1\x01", BinaryListBuilder::text("a")};
    EXPECT_EQ(parsed(list.bytes()), Value(Opaque{}));
    list.objects = {"\xC1\x01", "\x70"}; // a damaged value in a set is still damage
    expectRefused(list.bytes());
}

TEST(PropertyListBinary, ADuplicateKeyIsNoError) {
    BinaryListBuilder list;
    list.objects = {list.dictionary({1, 1}, {2, 3}), BinaryListBuilder::text("a"), "\x08", "\x09"};
    const auto value = parsed(list.bytes());
    ASSERT_NE(asDictionary(&value), nullptr);
    EXPECT_EQ(asDictionary(&value)->entries().size(), 1U);
}

TEST(PropertyListBinary, ADictionaryWithAKeyThatIsNoTextIsOpaqueAndTheRestIsRead) {
    const auto real = "\x22\x3F\x80\0\0"s;
    const auto date = "\x33" + BinaryListBuilder::number(0, 8);
    for (const auto& key : {"\x10\x05"s, "\x09"s, real, date, "\x41\xFF"s}) {
        BinaryListBuilder list;
        list.objects = {list.dictionary({1, 2}, {3, 4}),  BinaryListBuilder::text("a"),
                        BinaryListBuilder::text("b"),     list.dictionary({5, 1}, {4, 4}),
                        BinaryListBuilder::text("value"), key};
        EXPECT_EQ(parsed(list.bytes()), dictionary({{"a", Value(Opaque{})}, {"b", text("value")}}));
    }
}

TEST(PropertyListBinary, AtTheTopEveryKeyMustBeATextToBeADictionary) {
    BinaryListBuilder list;
    list.objects = {list.dictionary({1, 2}, {1, 1}), BinaryListBuilder::text("a"), "\x10\x05"};
    const auto value = parsed(list.bytes());
    EXPECT_EQ(value, Value(Opaque{}));
    EXPECT_EQ(asDictionary(&value), nullptr);
}

TEST(PropertyListBinary, DamageInADictionaryWithAKeyThatIsNoTextIsStillDamage) {
    BinaryListBuilder list;
    const auto refused = [&list](const std::string& key, const std::string& value) {
        list.objects = {list.dictionary({1, 2}, {3, 3}), "\x10\x05", key, value};
        expectRefused(list.bytes());
    };
    const std::string word = BinaryListBuilder::text("a");
    refused("\x70", word);         // a key of no known kind
    refused("\x15\x01", word);     // a number of an impossible size
    refused(list.array({}), word); // a key that holds others
    refused(list.dictionary({}, {}), word);
    refused(word, "\x70");                                        // a value of no known kind
    list.objects = {list.dictionary({1, 9}, {1, 1}), "\x10\x05"}; // a key that is not there
    expectRefused(list.bytes());
}

TEST(PropertyListBinary, ADictionaryInItselfIsRefusedWhateverItsKeys) {
    BinaryListBuilder list;
    list.objects = {list.dictionary({1}, {0}), "\x10\x05"};
    expectRefused(list.bytes());
}

TEST(PropertyListBinary, KeysThatAreNoTextCountAsValues) {
    BinaryListBuilder list;
    list.objects = {list.dictionary({1, 1}, {1, 1}), "\x10\x05"}; // two keys and two values, and itself
    EXPECT_TRUE(parse(list.bytes(), {.nodes = 5}).ok());
    EXPECT_FALSE(parse(list.bytes(), {.nodes = 4}).ok());
}

TEST(PropertyListBinary, AnObjectThatIsSharedStandsInEachPlace) {
    BinaryListBuilder list;
    list.objects = {list.array({1, 1, 2}), BinaryListBuilder::text("a"), list.array({1})};
    EXPECT_EQ(parsed(list.bytes()), Value(Array{text("a"), text("a"), Value(Array{text("a")})}));
}

TEST(PropertyListBinary, OffsetsAndReferencesMayTakeOneToEightBytes) {
    for (std::size_t size = 1; size <= 8; ++size) {
        BinaryListBuilder list;
        list.referenceSize = size;
        list.offsetSize = size;
        list.objects = {list.dictionary({1}, {2}), BinaryListBuilder::text("a"), "\x09"};
        EXPECT_EQ(parsed(list.bytes()), dictionary({{"a", Value(true)}})) << size;
    }
}

TEST(PropertyListBinary, ADamagedTrailerIsRefused) {
    struct Row {
        const char* what;
        std::uint64_t count;
        std::uint64_t top;
        std::uint64_t table;
        unsigned char offsetSize;
        unsigned char referenceSize;
    };
    constexpr std::uint64_t kAll = ~std::uint64_t{0};
    const std::string body = "bplist00\x09\x08"; // one object and a table of one byte
    const auto bytesOf = [&body](const Row& row) {
        BinaryListBuilder list;
        list.top = row.top;
        list.offsetSize = row.offsetSize;
        list.referenceSize = row.referenceSize;
        return body + list.trailer(row.count, row.table);
    };
    ASSERT_EQ(parsed(bytesOf({"whole", 1, 0, 9, 1, 1})), Value(true));
    const std::vector<Row> rows = {
        {"no objects", 0, 0, 9, 1, 1},
        {"more objects than the table", 2, 0, 9, 1, 1},
        {"countless objects", kAll, 0, 9, 1, 1},
        {"countless, wide", kAll / 8 + 1, 0, 9, 8, 1},
        {"top is no object", 1, 1, 9, 1, 1},
        {"top far off", 1, kAll, 9, 1, 1},
        {"table in the header", 1, 0, 8, 1, 1},
        {"table at 0", 1, 0, 0, 1, 1},
        {"table behind the end", 1, 0, 11, 1, 1},
        {"table far off", 1, 0, kAll, 1, 1},
        {"no offset size", 1, 0, 9, 0, 1},
        {"no reference size", 1, 0, 9, 1, 0},
        {"offset size", 1, 0, 9, 9, 1},
        {"reference size", 1, 0, 9, 1, 255},
    };
    for (const auto& row : rows) {
        const auto result = parse(bytesOf(row));
        EXPECT_FALSE(result.ok()) << row.what;
    }
}

TEST(PropertyListBinary, AnObjectLiesBetweenTheHeaderAndTheTable) {
    const auto withOffset = [](char offset) {
        BinaryListBuilder list;
        list.offsetSize = 1;
        return "bplist00\x09"s + offset + list.trailer(1, 9);
    };
    EXPECT_EQ(parsed(withOffset(8)), Value(true));
    for (const char offset : {'\0', '\1', '\7', '\x09', '\x0A', '\x7F'}) {
        expectRefused(withOffset(offset)); // the letters of the header would read as texts
    }
}

TEST(PropertyListBinary, WhatReachesOutOfTheObjectsIsRefused) {
    const auto number = [](std::uint64_t value, std::size_t size) {
        return BinaryListBuilder::number(value, size);
    };
    const std::string hugeCount = "\x13" + number(~std::uint64_t{0}, 8);
    for (const std::string& object : {"\x53"s + "ab",
                                      "\x62\x00\x41\x00"s,
                                      "\x13\x00"s,
                                      "\x23\x00"s,
                                      "\x33\x00"s,
                                      "\x44\x00"s,
                                      "\xA2\x00"s,
                                      "\xD1\x00"s,
                                      "\x81\x00"s,
                                      "\x5F"s,
                                      "\x5F\x10"s,
                                      "\x5F\x20\x01"s,
                                      "\x5F\x14"s + std::string(16, '\0'),
                                      "\x5F" + hugeCount,
                                      "\x6F" + hugeCount,
                                      "\x4F" + hugeCount,
                                      "\xAF" + hugeCount,
                                      "\xDF" + hugeCount,
                                      "\x6F\x13\x80\x00\x00\x00\x00\x00\x00\x00"s,
                                      "\xDF\x13\x80\x00\x00\x00\x00\x00\x00\x00"s,
                                      "\x0F"s,
                                      "\x07"s,
                                      "\x70"s,
                                      "\x90"s,
                                      "\xE0"s,
                                      "\xF0"s}) {
        expectRefused(binaryOf(object));
    }
    BinaryListBuilder list;
    list.objects = {list.array({9})};
    expectRefused(list.bytes());
}

TEST(PropertyListBinary, ACountWhoseBytesOverflowIsRefusedWhateverTheLimits) {
    Limits limits;
    limits.nodes = std::numeric_limits<std::size_t>::max();
    const auto half = BinaryListBuilder::number(std::uint64_t{1} << 63U, 8);
    EXPECT_FALSE(parse(binaryOf("\xDF\x13" + half), limits).ok());
    EXPECT_FALSE(parse(binaryOf("\x6F\x13" + half), limits).ok());
}

TEST(PropertyListBinary, ACycleIsRefused) {
    BinaryListBuilder list;
    list.objects = {list.array({0})};
    expectRefused(list.bytes());
    list.objects = {list.array({1}), list.array({0})};
    expectRefused(list.bytes());
    list.objects = {list.dictionary({1}, {0}), BinaryListBuilder::text("a")};
    expectRefused(list.bytes());
    list.objects = {list.array({0, 0, 0, 0})};
    expectRefused(list.bytes());
}

TEST(PropertyListBinary, AFewHundredBytesThatStandForBillionsOfValuesAreRefused) {
    BinaryListBuilder list;
    constexpr std::uint64_t kLevels = 40;
    for (std::uint64_t level = 0; level < kLevels; ++level) {
        list.objects.push_back(list.array({level + 1, level + 1, level + 1, level + 1}));
    }
    list.objects.push_back(list.array({}));
    ASSERT_LT(list.bytes().size(), 400U);
    expectRefused(list.bytes());
}

TEST(PropertyListBinary, ALongTextThatIsNamedManyTimesIsRefused) {
    BinaryListBuilder list;
    list.offsetSize = 4;
    list.objects = {list.array(std::vector<std::uint64_t>(1000, 1)),
                    BinaryListBuilder::text(std::string(std::size_t{1} << 17U, 'x'))};
    expectRefused(list.bytes()); // 128 MiB once written out
    list.objects[0] = list.array(std::vector<std::uint64_t>(100, 1));
    EXPECT_TRUE(parse(list.bytes()).ok());
    list.objects[0] =
        list.dictionary(std::vector<std::uint64_t>(1000, 1), std::vector<std::uint64_t>(1000, 2));
    list.objects.emplace_back("\x09");
    expectRefused(list.bytes()); // keys count as well
}

// --- limits ---

std::string nested(const std::string& open, const std::string& inner, const std::string& close,
                   std::size_t depth) {
    std::string bytes;
    for (std::size_t i = 0; i < depth; ++i) {
        bytes += open;
    }
    bytes += inner;
    for (std::size_t i = 0; i < depth; ++i) {
        bytes += close;
    }
    return bytes;
}

std::string nestedBinary(std::size_t depth) {
    BinaryListBuilder list;
    list.referenceSize = 4;
    list.offsetSize = 4;
    for (std::size_t i = 1; i < depth; ++i) {
        list.objects.push_back(list.array({i}));
    }
    list.objects.push_back(list.array({}));
    return list.bytes();
}

TEST(PropertyListLimits, TheDeepestNestingIsReadAndOneMoreIsNot) {
    const auto depth = Limits{}.depth;
    EXPECT_TRUE(parse(plist(nested("<array>", "", "</array>", depth))).ok());
    EXPECT_TRUE(parse(nested("(", "", ")", depth)).ok());
    EXPECT_TRUE(parse(nested("{a=", "b", ";}", depth)).ok());
    EXPECT_TRUE(parse(nestedBinary(depth)).ok());
    expectRefused(plist(nested("<array>", "", "</array>", depth + 1)));
    expectRefused(nested("(", "", ")", depth + 1));
    expectRefused(nested("{a=", "b", ";}", depth + 1));
    expectRefused(nestedBinary(depth + 1));
}

TEST(PropertyListLimits, NestingWithoutMeasureIsRefusedWithoutOverflow) {
    constexpr std::size_t kDepth = 300'000;
    expectRefused(nested("<array>", "", "</array>", kDepth));
    expectRefused(nested("<array>", "", "", kDepth));
    expectRefused(nested("<dict><key>a</key>", "<true/>", "</dict>", 50'000));
    expectRefused(nested("(", "", ")", kDepth));
    expectRefused(nested("{a=", "", "", kDepth));
    expectRefused(nested("a={", "", "", kDepth));
    expectRefused(nestedBinary(100'000));
}

TEST(PropertyListLimits, TheNumberOfValuesIsLimitedInEveryForm) {
    Limits limits;
    limits.nodes = 3; // the container and two values
    EXPECT_TRUE(parse("(a, b)", limits).ok());
    EXPECT_FALSE(parse("(a, b, c)", limits).ok());
    EXPECT_TRUE(parse("<array><true/><true/></array>", limits).ok());
    EXPECT_FALSE(parse("<array><true/><true/><true/></array>", limits).ok());
    BinaryListBuilder list;
    list.objects = {list.array({1, 1}), "\x09"};
    EXPECT_TRUE(parse(list.bytes(), limits).ok());
    list.objects[0] = list.array({1, 1, 1});
    EXPECT_FALSE(parse(list.bytes(), limits).ok());
}

TEST(PropertyListLimits, TheBytesOfTheDocumentAreLimited) {
    Limits limits;
    limits.bytes = 7;
    EXPECT_TRUE(parse("<true/>", limits).ok());
    EXPECT_FALSE(parse("<true/> ", limits).ok());
}

TEST(PropertyListLimits, TheBytesOfTextsKeysAndDataAreLimited) {
    Limits limits;
    limits.payload = 4;
    EXPECT_TRUE(parse("{ab=cd;}", limits).ok());
    EXPECT_FALSE(parse("{ab=cde;}", limits).ok());
    EXPECT_FALSE(parse("{abc=<0a0b>;}", limits).ok());
}

TEST(PropertyListLimits, ADocumentOfTagsAloneIsRefusedBeforeATreeIsMade) {
    std::string tags = "<array>";
    for (int i = 0; i < 1'000'000; ++i) {
        tags += "<a/>";
    }
    expectRefused(tags);
    std::string attributes = "<array ";
    for (int i = 0; i < 1'000'000; ++i) {
        attributes += "a='' ";
    }
    expectRefused(attributes + "/>");
}

// --- casts ---

TEST(PropertyListCasts, TheTableOfTheMac) {
    struct Row {
        const char* element;
        std::optional<bool> truth;
        std::optional<std::int64_t> number;
        std::optional<double> real;
        std::optional<std::string> words;
    };
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::vector<Row> rows = {
        {"<true/>", true, 1, 1.0, kNothing},
        {"<false/>", false, 0, 0.0, kNothing},
        {"<integer>1</integer>", true, 1, 1.0, kNothing},
        {"<integer>0</integer>", false, 0, 0.0, kNothing},
        {"<integer>2</integer>", kNothing, 2, 2.0, kNothing},
        {"<integer>-1</integer>", kNothing, -1, -1.0, kNothing},
        {"<integer>9007199254740993</integer>", kNothing, 9007199254740993, kNothing, kNothing},
        {"<integer>9223372036854775807</integer>", kNothing, kMostInt, kNothing, kNothing},
        {"<integer>-9223372036854775808</integer>", kNothing, kLeastInt, -9223372036854775808.0, kNothing},
        {"<integer>9223372036854775808</integer>", kNothing, kNothing, 9223372036854775808.0, kNothing},
        {"<integer>18446744073709551615</integer>", kNothing, kNothing, kNothing, kNothing},
        {"<real>1.0</real>", true, 1, 1.0, kNothing},
        {"<real>0.0</real>", false, 0, 0.0, kNothing},
        {"<real>60.0</real>", kNothing, 60, 60.0, kNothing},
        {"<real>60.5</real>", kNothing, kNothing, 60.5, kNothing},
        {"<real>0.5</real>", kNothing, kNothing, 0.5, kNothing},
        {"<real>-9223372036854775808</real>", kNothing, kLeastInt, -9223372036854775808.0, kNothing},
        {"<real>9223372036854775808</real>", kNothing, kNothing, 9223372036854775808.0, kNothing},
        {"<real>1e300</real>", kNothing, kNothing, 1e300, kNothing},
        {"<real>inf</real>", kNothing, kNothing, kInfinity, kNothing},
        {"<string>1</string>", kNothing, kNothing, kNothing, "1"},
        {"<string>true</string>", kNothing, kNothing, kNothing, "true"},
        {"<string></string>", kNothing, kNothing, kNothing, ""},
        {"<data>AQ==</data>", kNothing, kNothing, kNothing, kNothing},
        {"<date>2001-01-01T00:00:01Z</date>", kNothing, kNothing, kNothing, kNothing},
        {"<array/>", kNothing, kNothing, kNothing, kNothing},
        {"<dict/>", kNothing, kNothing, kNothing, kNothing},
    };
    for (const auto& row : rows) {
        const auto value = parsed(plist(row.element));
        EXPECT_EQ(asBool(&value), row.truth) << row.element;
        EXPECT_EQ(asInt(&value), row.number) << row.element;
        EXPECT_EQ(asDouble(&value), row.real) << row.element;
        EXPECT_EQ(asString(&value), row.words) << row.element;
    }
}

TEST(PropertyListCasts, WhatIsNoNumberIsARealAndNothingElse) {
    const auto value = parsed(plist("<real>nan</real>"));
    EXPECT_EQ(asBool(&value), kNothing);
    EXPECT_EQ(asInt(&value), kNothing);
    ASSERT_TRUE(asDouble(&value).has_value());
    EXPECT_TRUE(std::isnan(*asDouble(&value)));
}

TEST(PropertyListCasts, AnArrayOfTextsCastsAsAWholeOrNotAtAll) {
    const auto strings = [](const std::string& element) {
        const auto value = parsed(plist(element));
        return asStringArray(&value);
    };
    EXPECT_THAT(strings("<array><string>a</string><string>b</string></array>"),
                Optional(ElementsAre("a", "b")));
    EXPECT_EQ(strings("<array><string>a</string><integer>1</integer></array>"), kNothing);
    EXPECT_EQ(strings("<array><true/><string>a</string></array>"), kNothing);
    EXPECT_THAT(strings("<array/>"), Optional(ElementsAre()));
    EXPECT_EQ(strings("<string>a</string>"), kNothing);
}

TEST(PropertyListCasts, TheOtherKindsCastToThemselvesAlone) {
    const auto array = parsed("<array/>");
    const auto dict = parsed("<dict/>");
    const auto data = parsed("<data>AQ==</data>");
    const auto date = parsed("<date>2001-01-01T00:00:01Z</date>");
    EXPECT_NE(asArray(&array), nullptr);
    EXPECT_EQ(asArray(&dict), nullptr);
    EXPECT_NE(asDictionary(&dict), nullptr);
    EXPECT_EQ(asDictionary(&array), nullptr);
    ASSERT_NE(asData(&data), nullptr);
    EXPECT_EQ(asData(&data)->bytes, "\x01");
    EXPECT_EQ(asData(&date), nullptr);
    EXPECT_EQ(asDate(&date), Date{1});
    EXPECT_EQ(asDate(&data), kNothing);
}

TEST(PropertyListCasts, NothingCastsFromAMissingKey) {
    const auto value = parsed("{ a = 1; }");
    const auto* missing = asDictionary(&value)->find("b");
    EXPECT_EQ(missing, nullptr);
    EXPECT_EQ(asBool(missing), kNothing);
    EXPECT_EQ(asInt(missing), kNothing);
    EXPECT_EQ(asDouble(missing), kNothing);
    EXPECT_EQ(asString(missing), kNothing);
    EXPECT_EQ(asStringArray(missing), kNothing);
    EXPECT_EQ(asDate(missing), kNothing);
    EXPECT_EQ(asData(missing), nullptr);
    EXPECT_EQ(asArray(missing), nullptr);
    EXPECT_EQ(asDictionary(missing), nullptr);
}

TEST(PropertyListDictionary, FindsEveryKeyWhateverTheOrderInTheFile) {
    std::string bytes = "{";
    for (int i = 0; i < 500; ++i) {
        bytes += "key" + std::to_string(i * 7919 % 500) + "=v" + std::to_string(i * 7919 % 500) + ";";
    }
    const auto value = parsed(bytes + "}");
    const auto* dict = asDictionary(&value);
    ASSERT_NE(dict, nullptr);
    for (int i = 0; i < 500; ++i) {
        EXPECT_EQ(asString(dict->find("key" + std::to_string(i))), "v" + std::to_string(i));
    }
    EXPECT_EQ(dict->find("key"), nullptr);
    EXPECT_EQ(dict->find("key500"), nullptr);
    EXPECT_EQ(dict->find(""), nullptr);
}

// --- damage ---

class DamagedPropertyList : public testing::TestWithParam<std::string> {};

// Everything that a caller may do with a result, so that the sanitizers see it.
void use(const std::string& bytes) {
    // A copy of exactly this length, so that a read beyond the end is seen.
    const std::vector<char> exact(bytes.begin(), bytes.end());
    const auto result = parse({exact.data(), exact.size()});
    if (result.ok()) {
        const Value copy = *result;
        EXPECT_TRUE(asDictionary(&copy) == nullptr || asArray(&copy) == nullptr);
    } else {
        EXPECT_EQ(result.error().code, 3840);
    }
}

TEST_P(DamagedPropertyList, EveryPrefixIsReadOrRefused) {
    const auto whole = GetParam();
    EXPECT_TRUE(parse(whole).ok());
    for (std::size_t length = 0; length < whole.size(); ++length) {
        use(whole.substr(0, length));
    }
}

TEST_P(DamagedPropertyList, EveryByteMayBeAnyOther) {
    auto bytes = GetParam();
    for (auto& byte : bytes) {
        const char before = byte;
        for (const char other :
             {'\0', '\x7F', '\xFF', '<', '>', '&', '"', '}', ';', static_cast<char>(before + 1)}) {
            byte = other;
            use(bytes);
        }
        byte = before;
    }
}

TEST_P(DamagedPropertyList, RandomDamageDoesNoHarm) {
    std::mt19937 random(20010101); // the same every time
    const auto below = [&random](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    for (int round = 0; round < 2000; ++round) {
        auto bytes = GetParam();
        for (auto changes = 1 + below(8); changes > 0 && !bytes.empty(); --changes) {
            const auto at = below(bytes.size());
            switch (below(4)) {
            case 0:
                bytes[at] = static_cast<char>(below(256));
                break;
            case 1:
                bytes.erase(at, 1 + below(16));
                break;
            case 2:
                bytes.insert(at, 1 + below(4), static_cast<char>(below(256)));
                break;
            default:
                bytes.insert(at, bytes.substr(below(bytes.size()), below(32)));
                break;
            }
        }
        use(bytes);
    }
}

std::string formName(const testing::TestParamInfo<std::string>& info) {
    return info.param.starts_with("<") ? "Xml" : info.param.starts_with("bplist") ? "Binary" : "Text";
}

INSTANTIATE_TEST_SUITE_P(InEachForm, DamagedPropertyList,
                         testing::Values(everyKindInXml(), everyKindInBinary(), everyKindInText()), formName);

} // namespace
} // namespace quillane
