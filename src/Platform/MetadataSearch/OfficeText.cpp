#include "OfficeText.h"
#include "HtmlText.h"
#include "MarkupReader.h"
#include "TextSink.h"
#include "Utf8.h"
#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

namespace quillane::OfficeText {
namespace {

// The elements by their names without prefix.
struct Vocabulary {
    std::span<const std::string_view> content;  // only what stands in them is text
    std::span<const std::string_view> partings; // words end where they begin or end
    std::string_view skipped;                   // with all it holds
};

constexpr std::string_view kOpenXmlContent[] = {"t"};
constexpr std::string_view kOpenXmlPartings[] = {"p", "si", "c", "is", "tc", "tab", "br", "cr", "ptab"};
constexpr std::string_view kOpenDocumentContent[] = {"p", "h"};
constexpr std::string_view kOpenDocumentPartings[] = {"p",          "h",          "s",   "tab",
                                                      "line-break", "annotation", "note"};

constexpr std::string_view kPackageContent[] = {"title", "creator", "description"};

constexpr Vocabulary kOpenXml = {kOpenXmlContent, kOpenXmlPartings, "rPh"}; // how Japanese text is spoken
constexpr Vocabulary kOpenDocument = {kOpenDocumentContent, kOpenDocumentPartings, "tracked-changes"};
constexpr Vocabulary kPackage = {kPackageContent, kPackageContent, "manifest"};

bool holds(std::span<const std::string_view> names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

void addMarkup(std::string_view xml, const Vocabulary& vocabulary, TextSink& sink) {
    using Token = MarkupReader::Token;
    MarkupReader reader(xml);
    std::size_t depth = 0; // of elements with text within one another, as a note lies in its paragraph
    for (auto token = reader.next(); token != Token::end && !sink.isFull(); token = reader.next()) {
        if (token == Token::text || token == Token::verbatim) {
            if (depth > 0) {
                token == Token::text ? addWithReferences(reader.text(), sink) : sink.add(reader.text());
            }
            continue;
        }
        const auto name = reader.localName();
        if (token == Token::beginTag && name == vocabulary.skipped) {
            reader.skipElement();
            continue;
        }
        if (holds(vocabulary.partings, name)) {
            sink.endWord();
        }
        if (name == "noBreakHyphen") {
            sink.add(token == Token::beginTag ? "-" : "");
        } else if (holds(vocabulary.content, name) && !reader.isEmptyElement()) {
            depth = token == Token::beginTag ? depth + 1 : depth - std::min<std::size_t>(depth, 1);
        }
    }
    sink.endWord();
}

bool isXmlIn(std::string_view member, std::string_view folder, std::string_view begin) {
    if (!member.starts_with(folder) || !member.ends_with(".xml")) {
        return false;
    }
    member.remove_prefix(folder.size());
    return member.starts_with(begin) && member.find('/') == std::string_view::npos;
}

const Vocabulary& vocabularyOf(OfficeText::Part part) {
    return part == Part::openDocument ? kOpenDocument : part == Part::package ? kPackage : kOpenXml;
}

} // namespace

std::optional<Part> partNamed(std::string_view member) {
    if (member == "content.xml") {
        return Part::openDocument;
    }
    if (isXmlIn(member, "xl/worksheets/", "")) {
        return Part::sheet;
    }
    if (member.ends_with(".xhtml") || member.ends_with(".html") || member.ends_with(".htm")) {
        return Part::page;
    }
    if (member.ends_with(".opf")) {
        return Part::package;
    }
    constexpr std::string_view kWordParts[] = {"document.xml", "footnotes.xml", "endnotes.xml",
                                               "comments.xml", "header",        "footer"};
    const bool isOfWords = std::ranges::any_of(
        kWordParts, [&](std::string_view begin) { return isXmlIn(member, "word/", begin); });
    return isOfWords || isXmlIn(member, "ppt/slides/", "slide") || isXmlIn(member, "ppt/notesSlides/", "") ||
                   member == "xl/sharedStrings.xml"
               ? std::optional(Part::words)
               : std::nullopt;
}

void add(std::string_view xml, Part part, TextSink& sink) {
    if (part == Part::page) {
        HtmlText::add(xml, sink);
        return;
    }
    const auto& vocabulary = vocabularyOf(part);
    const bool isBigEndian = xml.starts_with("\xFE\xFF");
    if (isBigEndian || xml.starts_with("\xFF\xFE")) {
        const auto order = isBigEndian ? Utf8::ByteOrder::bigEndian : Utf8::ByteOrder::littleEndian;
        addMarkup(Utf8::fromUtf16(xml.substr(2), order), vocabulary, sink);
    } else {
        addMarkup(xml, vocabulary, sink);
    }
}

} // namespace quillane::OfficeText
