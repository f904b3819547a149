#include "SampleDocuments.h"
#include "LittleEndian.h"
#include "SampleArchives.h"
#include <cstdint>
#include <fmt/format.h>
#include <utility>

namespace quillane::SampleDocuments {
namespace {

constexpr char32_t kLastOfLatin1 = 0xFF;

// The characters of valid UTF-8.
std::u32string charactersOf(std::string_view text) {
    std::u32string characters;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            characters += static_cast<char32_t>(byte);
        } else if (byte < 0xC0) {
            characters.back() = (characters.back() << 6U) | (byte & 0x3FU);
        } else {
            characters += static_cast<char32_t>(byte < 0xE0   ? byte & 0x1FU
                                                : byte < 0xF0 ? byte & 0x0FU
                                                              : byte & 0x07U);
        }
    }
    return characters;
}

// PDF

std::string stream(std::string_view dictionary, const std::string& content) {
    return fmt::format("<< {} /Length {} >>\nstream\n", dictionary, content.size()) + content + "\nendstream";
}

std::string literal(std::string_view text) {
    std::string escaped = "(";
    for (const char c : latin1(text)) {
        if (c == '(' || c == ')' || c == '\\') {
            escaped += '\\';
        }
        escaped += c;
    }
    return escaped + ")";
}

std::string drawing(const Page& page) {
    if (!page.jpeg.empty()) {
        return "q 595 0 0 842 0 0 cm /Picture Do Q";
    }
    std::string text = "BT /Text 12 Tf 16 TL 72 760 Td\n";
    for (const auto& line : page.lines) {
        text += literal(line) + " Tj T*\n";
    }
    return text + "ET";
}

// The objects of a document, each numbered by its place, and where each begins.
class PdfFile {
  public:
    // The number that the next object will have.
    std::size_t next() const { return m_offsets.size() + 1; }
    void add(const std::string& object) {
        m_offsets.push_back(m_bytes.size());
        m_bytes += fmt::format("{} 0 obj\n", m_offsets.size()) + object + "\nendobj\n";
    }
    std::string finished() {
        const auto table = m_bytes.size();
        m_bytes += fmt::format("xref\n0 {}\n0000000000 65535 f \n", next());
        for (const auto offset : m_offsets) {
            m_bytes += fmt::format("{:010} 00000 n \n", offset);
        }
        m_bytes += fmt::format("trailer\n<< /Size {} /Root 1 0 R >>\nstartxref\n{}\n%%EOF\n", next(), table);
        return std::move(m_bytes);
    }

  private:
    std::string m_bytes = "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n";
    std::vector<std::size_t> m_offsets;
};

constexpr std::size_t kFirstPage = 4; // after the catalogue, the list of pages and the font
constexpr std::size_t kObjectsOfPage = 3;

void addPage(PdfFile& file, const Page& page) {
    const auto number = file.next();
    file.add(fmt::format("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents {} 0 R "
                         "/Resources << /Font << /Text 3 0 R >> /XObject << /Picture {} 0 R >> >> >>",
                         number + 1, number + 2));
    file.add(stream("", drawing(page)));
    if (page.jpeg.empty()) {
        file.add("null");
        return;
    }
    file.add(stream(fmt::format("/Type /XObject /Subtype /Image /Width {} /Height {} /ColorSpace /DeviceRGB "
                                "/BitsPerComponent 8 /Filter /DCTDecode",
                                page.width, page.height),
                    page.jpeg));
}

// Office

std::string xmlEscaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

// Not within a character.
std::size_t middleOf(std::string_view text) {
    auto at = text.size() / 2;
    while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80) {
        ++at;
    }
    return at;
}

constexpr const char* kXml = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";

std::string quotedPrintable(const std::string& line) {
    constexpr std::size_t kLongestLine = 60;
    std::string text;
    std::size_t length = 0;
    for (const char c : line) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isPlain = byte >= 0x20 && byte < 0x7F && c != '=';
        const auto told = isPlain ? std::string(1, c) : fmt::format("={:02X}", byte);
        if (length + told.size() > kLongestLine) {
            text += "=\r\n";
            length = 0;
        }
        text += told;
        length += told.size();
    }
    return text;
}

} // namespace

std::string pdf(const std::vector<Page>& pages) {
    PdfFile file;
    std::string kids;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        kids += fmt::format("{} 0 R ", kFirstPage + i * kObjectsOfPage);
    }
    file.add("<< /Type /Catalog /Pages 2 0 R >>");
    file.add(fmt::format("<< /Type /Pages /Kids [{}] /Count {} >>", kids, pages.size()));
    file.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>");
    for (const auto& page : pages) {
        addPage(file, page);
    }
    return file.finished();
}

std::string docx(const Lines& paragraphs) {
    std::string body;
    for (const auto& paragraph : paragraphs) {
        const auto middle = middleOf(paragraph);
        body += "<w:p><w:r><w:t xml:space=\"preserve\">" + xmlEscaped(paragraph.substr(0, middle)) +
                "</w:t></w:r><w:r><w:rPr><w:b/></w:rPr><w:t xml:space=\"preserve\">" +
                xmlEscaped(paragraph.substr(middle)) + "</w:t></w:r></w:p>";
    }
    const std::string kPackage = "http://schemas.openxmlformats.org/package/2006/";
    const std::string kOffice = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
    const std::string kType =
        "application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml";
    return SampleArchives::zip(
        {{"[Content_Types].xml",
          kXml + ("<Types xmlns=\"" + kPackage) +
              "content-types\"><Default Extension=\"rels\" "
              "ContentType=\"application/vnd.openxmlformats-package."
              "relationships+xml\"/><Override PartName=\"/word/document.xml\" ContentType=\"" +
              kType + "\"/></Types>"},
         {"_rels/.rels", kXml + ("<Relationships xmlns=\"" + kPackage) +
                             "relationships\"><Relationship Id=\"rId1\" Type=\"" + kOffice +
                             "officeDocument\" Target=\"word/document.xml\"/></Relationships>"},
         {"word/document.xml",
          kXml +
              std::string(
                  "<w:document xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\">"
                  "<w:body>") +
              body + "</w:body></w:document>"}});
}

std::string odt(const Lines& paragraphs) {
    std::string body;
    for (const auto& paragraph : paragraphs) {
        body += "<text:p>" + xmlEscaped(paragraph) + "</text:p>";
    }
    const std::string kNames = "urn:oasis:names:tc:opendocument:xmlns:";
    const std::string kType = "application/vnd.oasis.opendocument.text";
    return SampleArchives::zip(
        {{"mimetype", kType}, // first, so that the file tells its kind by its beginning
         {"META-INF/manifest.xml",
          kXml + ("<manifest:manifest xmlns:manifest=\"" + kNames) +
              "manifest:1.0\" manifest:version=\"1.2\"><manifest:file-entry manifest:full-path=\"/\" "
              "manifest:media-type=\"" +
              kType +
              "\"/><manifest:file-entry manifest:full-path=\"content.xml\" manifest:media-type=\"text/xml\"/>"
              "</manifest:manifest>"},
         {"content.xml", kXml + ("<office:document-content xmlns:office=\"" + kNames) +
                             "office:1.0\" xmlns:text=\"" + kNames +
                             "text:1.0\" office:version=\"1.2\"><office:body><office:text>" + body +
                             "</office:text></office:body></office:document-content>"}});
}

std::string rtf(const Lines& paragraphs) {
    std::string text = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0 Times New Roman;}}\n\\f0\\fs24 ";
    for (const auto& paragraph : paragraphs) {
        for (const auto c : charactersOf(paragraph)) {
            if (c < 0x80) {
                text +=
                    (c == '{' || c == '}' || c == '\\' ? "\\" : "") + std::string(1, static_cast<char>(c));
            } else if (c <= kLastOfLatin1) {
                text += fmt::format("\\'{:02x}", static_cast<unsigned>(c));
            } else {
                text += fmt::format("\\u{}?", static_cast<std::int16_t>(c));
            }
        }
        text += "\\par\n";
    }
    return text + "}\n";
}

std::string html(std::string_view title, const Lines& paragraphs, std::string_view script) {
    std::string text = fmt::format(
        "<!DOCTYPE html>\n<html><head><title>{}</title>\n<script>{}</script></head>\n<body>", title, script);
    for (const auto& paragraph : paragraphs) {
        text += "<p>";
        for (const auto c : charactersOf(xmlEscaped(paragraph))) {
            text += c < 0x80 ? std::string(1, static_cast<char>(c))
                             : fmt::format("&#{};", static_cast<unsigned>(c));
        }
        text += "</p>\n";
    }
    return text + "</body></html>\n";
}

std::string mail(std::string_view from, std::string_view subject, const Lines& paragraphs) {
    auto text = fmt::format("From: {}\r\nTo: Alex <alex@example.org>\r\nSubject: {}\r\n"
                            "Date: Wed, 01 May 2024 09:30:00 +0000\r\nMIME-Version: 1.0\r\n"
                            "Content-Type: text/plain; charset=utf-8\r\n"
                            "Content-Transfer-Encoding: quoted-printable\r\n\r\n",
                            from, subject);
    for (const auto& paragraph : paragraphs) {
        text += quotedPrintable(paragraph) + "\r\n";
    }
    return text;
}

std::string utf16(std::string_view text) {
    std::string bytes = "\xFF\xFE";
    for (const auto c : charactersOf(text)) {
        if (c > 0xFFFF) {
            appendLittleEndian16(bytes, 0xD800U + ((c - 0x10000U) >> 10U));
        }
        appendLittleEndian16(bytes, c > 0xFFFF ? 0xDC00U + (c & 0x3FFU) : c);
    }
    return bytes;
}

std::string latin1(std::string_view text) {
    std::string bytes;
    for (const auto c : charactersOf(text)) {
        bytes += c <= kLastOfLatin1 ? static_cast<char>(static_cast<unsigned char>(c)) : '?';
    }
    return bytes;
}

} // namespace quillane::SampleDocuments
