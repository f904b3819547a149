#include "HtmlText.h"
#include "TextSink.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

std::string textOf(std::string_view bytes) {
    TextSink sink(100'000);
    HtmlText::add(bytes, sink);
    return sink.take();
}

TEST(HtmlText, IsWhatAReaderSees) {
    struct Row {
        const char* page;
        const char* text;
    };
    const Row rows[] = {
        {"<p>in<b>voice</b> of <i>May</i></p>", "invoice of May"},
        {"<td>a</td><td>b</td><tr>c<BR>d<li>e", "a b c d e"},
        {"<title>Title</title><body>text", "Title text"},
        {"a<script>if (a < b) { no(\"</p>\"); }</script>b", "a b"},
        {"a<SCRIPT>no</script >b<Style>no</STYLE>c", "a b c"},
        {"a<script>never ends", "a"},
        {"a<style></styles>no</style>b", "a b"},
        {"a<!-- no <p> -->b<!-->c<!DOCTYPE html>d", "abcd"},
        {"caf&eacute; &Auml;&szlig; &nbsp; &lt;p&gt; &#8364; &#x20ac; &#150; in&shy;voice",
         "caf\u00E9 \u00C4\u00DF <p> "
         "\u20AC \u20AC \u2013 invoice"},
        {"a & b &nosuch; &#xZZ; &#0; &; &#99999999999;", "a & b &nosuch; &#xZZ; &#0; &; &#99999999999;"},
        {"1 < 2 <3 a<", "1 < 2 <3 a<"},
        {"<a title=\"x > y\">link</a>", "link"},
        {"<a title=it's>link</a> and 'this'", "link and 'this'"},
        {"<img alt='x", ""},
        {"<p\nclass=a>one</p\n>two", "one two"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(textOf(row.page), row.text) << row.page;
    }
}

TEST(HtmlText, IsDecodedByWhatThePageSaysUnlessItsBytesSayMore) {
    EXPECT_EQ(textOf("<meta charset=\"koi8-r\"><p>\xD0\xC9\xD7\xCF"), "\u043F\u0438\u0432\u043E");
    EXPECT_EQ(textOf("<META CONTENT='text/html; Charset=windows-1250'><p>\xF8\xE8"), "\u0159\u010D");
    EXPECT_EQ(textOf("<meta charset=koi8-r><p>caf\u00E9"), "caf\u00E9") << "valid UTF-8";
    EXPECT_EQ(textOf("\xEF\xBB\xBF"
                     "caf\u00E9"),
              "caf\u00E9");
    EXPECT_EQ(textOf("<meta charset=nosuch><p>caf\xE9"), "caf\u00E9");
    EXPECT_EQ(textOf("<p>caf\xE9"), "caf\u00E9");
    EXPECT_EQ(textOf(std::string_view("\xFF\xFE<\0p\0>\0w\0i\0", 12)), "wi");
}

} // namespace
} // namespace quillane
