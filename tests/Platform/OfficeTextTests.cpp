#include "OfficeText.h"
#include "TextSink.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

using OfficeText::Part;

std::string textOf(std::string_view xml, Part part) {
    TextSink sink(10'000);
    OfficeText::add(xml, part, sink);
    return sink.take();
}

struct Row {
    const char* xml;
    const char* text;
};

TEST(OfficeText, OfOpenXmlIsWhatStandsInItsRuns) {
    const Row rows[] = {
        {"<w:p><w:r><w:t>in</w:t></w:r><w:r><w:rPr><w:b/></w:rPr><w:t>voice</w:t></w:r></w:p>", "invoice"},
        {"<w:p><w:r><w:t>one</w:t></w:r></w:p><w:p><w:r><w:t>two</w:t></w:r></w:p>", "one two"},
        {"<w:tr><w:tc><w:t>a</w:t></w:tc><w:tc><w:t>b</w:t></w:tc></w:tr>", "a b"},
        {"<w:t>a</w:t><w:tab/><w:t>b</w:t><w:br w:type=\"page\"/><w:t>c</w:t><w:cr/><w:t>d</w:t>", "a b c d"},
        {"<w:t xml:space=\"preserve\">of </w:t><w:t>May</w:t>", "of May"},
        {"<w:t>e</w:t><w:noBreakHyphen/><w:t>mail</w:t><w:softHyphen/><w:t>box</w:t>", "e-mailbox"},
        {"<w:instrText>PAGEREF _Toc1</w:instrText><w:t>12</w:t><w:delText>gone</w:delText>", "12"},
        {"<wp:posOffset>1270</wp:posOffset><a:p><a:r><a:t>box</a:t></a:r></a:p>", "box"},
        {"<p:attrName>style.visibility</p:attrName><a:t>slide</a:t>", "slide"},
        {"<si><t>one</t></si><si><r><t>tw</t></r><r><t>o</t></r></si>", "one two"},
        {"<si><t>\u6771\u4EAC</t><rPh sb=\"0\"><t>\u30C8</t></rPh></si>", "\u6771\u4EAC"},
        {"<t>a &amp; b &lt;c&gt; &#233;&#xE9; &quot;d&apos; &unknown; &</t>",
         "a & b <c> \u00E9\u00E9 \"d' &unknown; &"},
        {"<t><![CDATA[a <b> &amp;]]></t>", "a <b> &amp;"},
        {"<t a='x>y' b = \"<t>\">z</t>", "z"},
        {"<!-- <t>no</t> --><?pi <t>no</t>?><!DOCTYPE t><t>yes</t>", "yes"},
        {"<x:t>other prefix</x:t>", "other prefix"},
        {"<t/>no<t>yes", "yes"},
        {"</t></t>no<t>yes</t>no", "yes"},
        {"\xEF\xBB\xBF<?xml version=\"1.0\"?><t>mark</t>", "mark"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(textOf(row.xml, Part::words), row.text) << row.xml;
    }
}

TEST(OfficeText, OfASheetIsWhatItsCellsHoldThemselves) {
    EXPECT_EQ(textOf("<row><c t=\"s\"><v>7</v></c><c t=\"inlineStr\"><is><t>due</t></is></c><c><f>SUM(A1)</f>"
                     "<v>42</v></c><c t=\"inlineStr\"><is><t>date</t></is></c></row>",
                     Part::sheet),
              "due date");
}

TEST(OfficeText, OfAnOpenDocumentIsWhatStandsInItsParagraphs) {
    const Row rows[] = {
        {"<text:p>in<text:span text:style-name=\"T1\">voice</text:span></text:p>", "invoice"},
        {"<text:h>Title</text:h><text:p>one</text:p><text:p>two</text:p>", "Title one two"},
        {"<text:p>a<text:s text:c=\"3\"/>b<text:tab/>c<text:line-break/>d</text:p>", "a b c d"},
        {"<table:table-cell><text:p>a</text:p></table:table-cell><table:table-cell><text:p>b</text:p>"
         "</table:table-cell>",
         "a b"},
        {"<number:text>/</number:text><text:p>only</text:p>", "only"},
        {"<text:p>be<office:annotation><dc:date>2024</dc:date><text:p>note</text:p></office:annotation>hind</"
         "text:p>",
         "be 2024 note hind"},
        {"<text:tracked-changes><text:p>gone</text:p></text:tracked-changes><text:p>here</text:p>", "here"},
        {"<text:p>line\n   of the file</text:p>", "line of the file"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(textOf(row.xml, Part::openDocument), row.text) << row.xml;
    }
}

TEST(OfficeText, OfABookIsThatOfItsPagesAndItsTitle) {
    EXPECT_EQ(textOf("<html><head><style>no</style></head><p>in<i>voice</i></p><p>of May", Part::page),
              "invoice of May");
    EXPECT_EQ(textOf("<metadata><dc:title>The &amp; Marsh</dc:title><dc:creator>A. Heron</dc:creator>"
                     "<dc:identifier>urn:1</dc:identifier></metadata><manifest><title>no</title></manifest>",
                     Part::package),
              "The & Marsh A. Heron");
}

TEST(OfficeText, IsReadInUtf16Too) {
    std::string little = "\xFF\xFE";
    std::string big = "\xFE\xFF";
    for (const char c : std::string_view("<t>wide</t>")) {
        little += {c, '\0'};
        big += {'\0', c};
    }
    EXPECT_EQ(textOf(little, Part::words), "wide");
    EXPECT_EQ(textOf(big, Part::words), "wide");
}

TEST(OfficeText, IsReadWithoutARegardToHowDeepElementsLie) {
    std::string xml;
    for (int i = 0; i < 200'000; ++i) {
        xml += "<text:p>";
    }
    EXPECT_EQ(textOf(xml + "deep", Part::openDocument), "deep");
}

TEST(OfficeText, LiesInThePartsWithWords) {
    for (const char* words :
         {"word/document.xml", "word/footnotes.xml", "word/endnotes.xml", "word/header1.xml",
          "word/footer.xml", "word/comments.xml", "ppt/slides/slide12.xml", "ppt/notesSlides/notesSlide1.xml",
          "xl/sharedStrings.xml"}) {
        EXPECT_EQ(OfficeText::partNamed(words), Part::words) << words;
    }
    EXPECT_EQ(OfficeText::partNamed("xl/worksheets/sheet1.xml"), Part::sheet);
    EXPECT_EQ(OfficeText::partNamed("content.xml"), Part::openDocument);
    for (const char* page : {"OEBPS/one.xhtml", "a.html", "text/b.htm"}) {
        EXPECT_EQ(OfficeText::partNamed(page), Part::page) << page;
    }
    EXPECT_EQ(OfficeText::partNamed("OEBPS/content.opf"), Part::package);
    for (const char* other : {"word/styles.xml", "word/theme/document.xml", "word/document.xml.rels",
                              "ppt/slides/_rels/slide1.xml.rels", "ppt/slideLayouts/slide1.xml", "styles.xml",
                              "Object 1/content.xml", "OEBPS/style.css", "toc.ncx", "cover.jpg",
                              "xl/worksheets/_rels/sheet1.xml", "document.xml", ""}) {
        EXPECT_EQ(OfficeText::partNamed(other), std::nullopt) << other;
    }
}

} // namespace
} // namespace quillane
