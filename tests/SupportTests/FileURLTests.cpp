#include "FileURL.h"
#include <unordered_set>

namespace quillane {
namespace {

TEST(FileURL, ATrailingSlashIsNeverKept) {
    EXPECT_EQ(FileURL("/a/").path(), "/a");
    EXPECT_EQ(FileURL("/a//").path(), "/a");
    EXPECT_EQ(FileURL("/").path(), "/");
    EXPECT_EQ(FileURL("//").path(), "/");
    EXPECT_EQ(FileURL("").path(), "/");
    EXPECT_EQ(FileURL().path(), "/");
    EXPECT_EQ(FileURL("/a/"), FileURL("/a"));
}

TEST(FileURL, TheExtensionStandsBehindTheLastDot) {
    struct Row {
        std::string name;
        std::string extension;
        std::string stem;
    };
    const std::vector<Row> rows = {
        {"App.app", "app", "App"},
        {".app", "", ".app"},
        {"a.", "", "a."},
        {"a.b.c", "c", "a.b"},
        {"a.APP", "APP", "a"},
        {"a b.app", "app", "a b"},
        {" .app", "app", " "},
        {".hidden", "", ".hidden"},
        {".hidden.txt", "txt", ".hidden"},
        {"a..b", "b", "a."},
        {"..b", "", "..b"},
        {"a.b.", "", "a.b."},
        {"...", "", "..."},
        {"a..", "", "a.."},
        {"a.tar.gz", "gz", "a.tar"},
        {"a.(1)", "(1)", "a"},
        {"a._", "_", "a"},
        {"a.-", "-", "a"},
        {"a.b c", "", "a.b c"},
        {"a. b", "", "a. b"},
        {"a .b", "b", "a "},
        {"Report.pdf copy", "", "Report.pdf copy"},
        {"v1.2", "2", "v1"},
        {"foo-1.2.3", "3", "foo-1.2"},
        {"com.example.tool", "tool", "com.example"},
        {"Foo.app/", "app", "Foo"},
        {"plain", "", "plain"},
        {"...b", "", "...b"},
        {"é.ü", "ü", "é"},
        {"\xff.\xfe", "\xfe", "\xff"},
    };
    for (const auto& row : rows) {
        const FileURL url("/some.dir/" + row.name);
        EXPECT_EQ(url.pathExtension(), row.extension) << row.name;
        EXPECT_EQ(url.deletingPathExtension().path(), "/some.dir/" + row.stem) << row.name;
    }
}

TEST(FileURL, AnExtensionThatTurnsTheDirectionOfTextIsNone) {
    for (const char* control : {"\u061C", "\u200E", "\u200F", "\u202A", "\u202B", "\u202C", "\u202D",
                                "\u202E", "\u2066", "\u2067", "\u2068", "\u2069"}) {
        const std::string name = std::string("a.") + control + "txt";
        EXPECT_EQ(pathExtensionOf(name), "") << name;
        EXPECT_EQ(FileURL("/" + name).deletingPathExtension().path(), "/" + name);
    }
    EXPECT_EQ(pathExtensionOf("a\u202E.txt"), "txt"); // before the dot it does no harm
    EXPECT_EQ(pathExtensionOf("a.\u200Btxt"), "\u200Btxt");
}

TEST(FileURL, AFolderWithADotLendsNoExtension) {
    EXPECT_EQ(FileURL("/a.b/c").pathExtension(), "");
    EXPECT_EQ(FileURL("/").pathExtension(), "");
    EXPECT_EQ(FileURL("/").deletingPathExtension(), FileURL("/"));
}

TEST(FileURL, TheLastComponentOfTheRootIsTheRoot) {
    EXPECT_EQ(FileURL("/").lastPathComponent(), "/");
    EXPECT_EQ(FileURL("/a").lastPathComponent(), "a");
    EXPECT_EQ(FileURL("/a/b c/").lastPathComponent(), "b c");
}

TEST(FileURL, TheRootHoldsItself) {
    EXPECT_EQ(FileURL("/a/b").deletingLastPathComponent(), FileURL("/a"));
    EXPECT_EQ(FileURL("/a").deletingLastPathComponent(), FileURL("/"));
    EXPECT_EQ(FileURL("/").deletingLastPathComponent(), FileURL("/"));
}

TEST(FileURL, OneSlashStandsBeforeWhatIsAppended) {
    struct Row {
        std::string component;
        std::string path;
    };
    const std::vector<Row> rows = {
        {"b", "/a/b"},       {"/b", "/a/b"},        {"b/", "/a/b"},      {"//b//", "/a/b"}, {"b/c", "/a/b/c"},
        {"b c#", "/a/b c#"}, {"b%20c", "/a/b%20c"}, {"../b", "/a/../b"}, {"", "/a"},        {"/", "/a"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FileURL("/a").appending(row.component).path(), row.path) << row.component;
    }
    EXPECT_EQ(FileURL("/").appending("b").path(), "/b");
    EXPECT_EQ(FileURL("/").appending("").path(), "/");
}

struct TextRow {
    std::string path;
    std::string text;
};

const std::vector<TextRow>& textRows() {
    static const std::vector<TextRow> rows = {
        {"/", "file:///"},
        {"/a b", "file:///a%20b"},
        {"/a%b", "file:///a%25b"},
        {"/a%20b", "file:///a%2520b"},
        {"/a;b", "file:///a;b"},
        {"/\u00E9", "file:///%C3%A9"},
        {"/e\u0301", "file:///e%CC%81"},
        {"/a#b", "file:///a%23b"},
        {"/a?b", "file:///a%3Fb"},
        {"/\u4E2D\u6587", "file:///%E4%B8%AD%E6%96%87"},
        {"/\U0001F600", "file:///%F0%9F%98%80"},
        {"/a:b", "file:///a:b"},
        {"/a&b=c", "file:///a&b=c"},
        {"/a+b", "file:///a+b"},
        {"/a'b", "file:///a'b"},
        {"/a(b)", "file:///a(b)"},
        {"/a!b$c,d@e~f*g", "file:///a!b$c,d@e~f*g"},
        {"/a-b._c", "file:///a-b._c"},
        {"/a[b]", "file:///a%5Bb%5D"},
        {"/a|b", "file:///a%7Cb"},
        {"/a\\b", "file:///a%5Cb"},
        {"/a\"b", "file:///a%22b"},
        {"/a<b>", "file:///a%3Cb%3E"},
        {"/a^b`c{d}", "file:///a%5Eb%60c%7Bd%7D"},
        {"/a\nb", "file:///a%0Ab"},
        {"/\x01", "file:///%01"},
        {"/\xff", "file:///%FF"},
        {"/tmp", "file:///tmp"},
        {"/tmp/", "file:///tmp"},
        {"/Zz09", "file:///Zz09"},
    };
    return rows;
}

TEST(FileURL, ThePathIsEncodedByteForByte) {
    for (const auto& row : textRows()) {
        EXPECT_EQ(FileURL(row.path).absoluteString(), row.text);
    }
}

TEST(FileURL, TheTextOfAURLGivesItBack) {
    for (const auto& row : textRows()) {
        EXPECT_EQ(FileURL::fromAbsoluteString(row.text), FileURL(row.path));
    }
    std::string every = "/";
    for (int byte = 1; byte < 256; ++byte) {
        every += static_cast<char>(byte);
    }
    EXPECT_EQ(FileURL::fromAbsoluteString(FileURL(every).absoluteString()), FileURL(every));
}

TEST(FileURL, LooselyWrittenTextIsAccepted) {
    const std::vector<TextRow> rows = {
        {"/a b", "file:///a b"},
        {"/a%zz", "file:///a%zz"},
        {"/a%", "file:///a%"},
        {"/a%2", "file:///a%2"},
        {"/a%zA ", "file:///a%zA%20"},
        {"/\u00E9", "file:///\u00E9"},
        {"/\u00E9", "file:///%c3%a9"},
        {"/x", "file://localhost/x"},
        {"/x", "file://LOCALHOST/x"},
        {"/x", "FILE:///x"},
        {"/x", "file:/x"},
        {"/a", "file:///a/"},
        {"/", "file:////"},
        {"/a", "file:///a?query"},
        {"/a", "file:///a#fragment"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FileURL::fromAbsoluteString(row.text), FileURL(row.path)) << row.text;
    }
}

TEST(FileURL, WhatIsNoFileURLGivesNothing) {
    using namespace std::string_view_literals;
    for (const auto text : {"/a/b"sv, ""sv, "file:"sv, "file://"sv, "file:a"sv, "file://host/a"sv,
                            "file://localhost"sv, "http://["sv, "http:///a"sv, "files:///a"sv, "a"sv,
                            " file:///a"sv, "file:///a%00b"sv, "file:///a\0b"sv}) {
        EXPECT_EQ(FileURL::fromAbsoluteString(text), std::nullopt) << text;
    }
}

TEST(FileURL, EqualityAndHashAreByTheBytesOfThePath) {
    EXPECT_NE(FileURL("/\u00E9"), FileURL("/e\u0301"));
    EXPECT_NE(FileURL("/a"), FileURL("/A"));
    EXPECT_LT(FileURL("/Z"), FileURL("/a"));
    const std::unordered_set<FileURL> urls = {FileURL("/a"), FileURL("/a/"), FileURL("/b")};
    EXPECT_EQ(urls.size(), 2U);
}

} // namespace
} // namespace quillane
