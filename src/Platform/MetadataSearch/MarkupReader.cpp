#include "MarkupReader.h"
#include "TextSink.h"
#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>

namespace quillane {
namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool endsName(char c) {
    return isBlank(c) || c == '/' || c == '>';
}

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isEqualWithoutCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, [](char x, char y) { return lowered(x) == lowered(y); });
}

// The length of a tag up to and with its ">", which a value between quotes may hold too; all of the text when there
// is none.
std::size_t lengthOfTag(std::string_view text) {
    char before = '\0';
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '>') {
            return i + 1;
        }
        if ((c == '"' || c == '\'') && before == '=') {
            i = std::min(text.find(c, i + 1), text.size());
        }
        before = isBlank(c) ? before : c;
    }
    return text.size();
}

// U+00A0 to U+00FF, in order.
constexpr std::array<std::string_view, 96> kLatinNames = {
    "nbsp",   "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",   "uml",    "copy",
    "ordf",   "laquo",  "not",    "shy",    "reg",    "macr",   "deg",    "plusmn", "sup2",   "sup3",
    "acute",  "micro",  "para",   "middot", "cedil",  "sup1",   "ordm",   "raquo",  "frac14", "frac12",
    "frac34", "iquest", "Agrave", "Aacute", "Acirc",  "Atilde", "Auml",   "Aring",  "AElig",  "Ccedil",
    "Egrave", "Eacute", "Ecirc",  "Euml",   "Igrave", "Iacute", "Icirc",  "Iuml",   "ETH",    "Ntilde",
    "Ograve", "Oacute", "Ocirc",  "Otilde", "Ouml",   "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",
    "Uuml",   "Yacute", "THORN",  "szlig",  "agrave", "aacute", "acirc",  "atilde", "auml",   "aring",
    "aelig",  "ccedil", "egrave", "eacute", "ecirc",  "euml",   "igrave", "iacute", "icirc",  "iuml",
    "eth",    "ntilde", "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide", "oslash", "ugrave",
    "uacute", "ucirc",  "uuml",   "yacute", "thorn",  "yuml"};

struct NamedCharacter {
    std::string_view name;
    std::uint32_t codePoint;
};

constexpr NamedCharacter kNamedCharacters[] = {
    {"amp", '&'},       {"lt", '<'},        {"gt", '>'},       {"quot", '"'},     {"apos", '\''},
    {"ndash", 0x2013},  {"mdash", 0x2014},  {"lsquo", 0x2018}, {"rsquo", 0x2019}, {"sbquo", 0x201A},
    {"ldquo", 0x201C},  {"rdquo", 0x201D},  {"bdquo", 0x201E}, {"bull", 0x2022},  {"hellip", 0x2026},
    {"euro", 0x20AC},   {"trade", 0x2122},  {"OElig", 0x152},  {"oelig", 0x153},  {"Scaron", 0x160},
    {"scaron", 0x161},  {"Yuml", 0x178},    {"ensp", ' '},     {"emsp", ' '},     {"thinsp", ' '},
    {"lsaquo", 0x2039}, {"rsaquo", 0x203A}, {"minus", 0x2212}, {"rarr", 0x2192},  {"larr", 0x2190},
};

// What pages that name characters by number mean by 128 to 159.
constexpr std::array<std::uint16_t, 32> kWindowsCharacters = {
    0x20AC, 0x81,   0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021, 0x2C6,  0x2030, 0x160,
    0x2039, 0x152,  0x8D,   0x17D,  0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x2DC,  0x2122, 0x161,  0x203A, 0x153,  0x9D,   0x17E,  0x178};

std::optional<std::uint32_t> numbered(std::string_view digits) {
    const bool isHexadecimal = digits.starts_with('x') || digits.starts_with('X');
    digits.remove_prefix(isHexadecimal ? 1 : 0);
    std::uint32_t value = 0;
    const auto* const end = digits.data() + digits.size();
    const auto [stop, failure] = std::from_chars(digits.data(), end, value, isHexadecimal ? 16 : 10);
    if (failure != std::errc() || stop != end || value == 0) {
        return std::nullopt;
    }
    return value >= 0x80 && value < 0xA0 ? kWindowsCharacters.at(value - 0x80) : value;
}

std::optional<std::uint32_t> referred(std::string_view name) {
    if (name.starts_with('#')) {
        return numbered(name.substr(1));
    }
    if (const auto* const found = std::ranges::find(kNamedCharacters, name, &NamedCharacter::name);
        found != std::end(kNamedCharacters)) {
        return found->codePoint;
    }
    const auto* const latin = std::ranges::find(kLatinNames, name);
    return latin == kLatinNames.end()
               ? std::nullopt
               : std::optional(0xA0U + static_cast<std::uint32_t>(latin - kLatinNames.begin()));
}

} // namespace

MarkupReader::Token MarkupReader::next() {
    while (!m_rest.empty()) {
        if (m_rest.front() == '<' && m_rest.size() > 1) {
            if (isLetter(m_rest[1]) || m_rest[1] == '/') {
                return tag();
            }
            if (m_rest[1] == '!' || m_rest[1] == '?') {
                if (declaration() == Token::verbatim) {
                    return Token::verbatim;
                }
                continue;
            }
        }
        const auto end = std::min(m_rest.find('<', 1), m_rest.size());
        m_text = m_rest.substr(0, end);
        m_rest.remove_prefix(end);
        return Token::text;
    }
    return Token::end;
}

MarkupReader::Token MarkupReader::tag() {
    const bool isEnd = m_rest[1] == '/';
    const auto whole = m_rest.substr(0, lengthOfTag(m_rest));
    m_rest.remove_prefix(whole.size());
    m_name = whole.substr(isEnd ? 2 : 1);
    m_name =
        m_name.substr(0, static_cast<std::size_t>(std::ranges::find_if(m_name, endsName) - m_name.begin()));
    m_isEmptyElement = !isEnd && whole.ends_with("/>");
    return isEnd ? Token::endTag : Token::beginTag;
}

// Gives the section where it is one of verbatim text, and `end` for everything that is passed over.
MarkupReader::Token MarkupReader::declaration() {
    constexpr std::string_view kVerbatim = "<![CDATA[";
    if (m_rest.starts_with(kVerbatim)) {
        m_rest.remove_prefix(kVerbatim.size());
        m_text = m_rest.substr(0, m_rest.find("]]>"));
        skipBehind("]]>");
        return Token::verbatim;
    }
    if (m_rest.starts_with("<!--")) {
        m_rest.remove_prefix(2); // "<!-->" is a whole comment
        skipBehind("-->");
    } else {
        skipBehind(m_rest.starts_with("<?") ? "?>" : ">");
    }
    return Token::end;
}

void MarkupReader::skipBehind(std::string_view end) {
    const auto at = m_rest.find(end);
    m_rest.remove_prefix(at == std::string_view::npos ? m_rest.size() : at + end.size());
}

void MarkupReader::skipElement() {
    if (m_isEmptyElement) {
        return;
    }
    while (!m_rest.empty()) {
        const auto at = std::min(m_rest.find("</"), m_rest.size());
        m_rest.remove_prefix(at);
        const auto behind = m_rest.substr(std::min<std::size_t>(2, m_rest.size()));
        if (isEqualWithoutCase(behind.substr(0, m_name.size()), m_name) &&
            (behind.size() == m_name.size() || endsName(behind[m_name.size()]))) {
            m_rest.remove_prefix(lengthOfTag(m_rest));
            return;
        }
        m_rest.remove_prefix(std::min<std::size_t>(2, m_rest.size()));
    }
}

void addWithReferences(std::string_view text, TextSink& sink) {
    constexpr std::size_t kLongestReference = 10; // "&#x10FFFF;"
    while (!text.empty()) {
        const auto at = std::min(text.find('&'), text.size());
        sink.add(text.substr(0, at));
        text.remove_prefix(at);
        const auto end = text.substr(0, kLongestReference).find(';');
        const auto character =
            end == std::string_view::npos ? std::nullopt : referred(text.substr(1, end - 1));
        if (character) {
            sink.addCodePoint(*character);
            text.remove_prefix(end + 1);
        } else {
            sink.add(text.substr(0, 1));
            text.remove_prefix(std::min<std::size_t>(1, text.size()));
        }
    }
}

} // namespace quillane
