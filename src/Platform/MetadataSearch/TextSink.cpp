#include "TextSink.h"
#include "Utf8.h"
#include <algorithm>

namespace quillane {
namespace {

constexpr char kLatinLead = '\xC2'; // of U+0080 to U+00BF
constexpr char kFixedSpace = '\xA0';
constexpr char kSoftHyphen = '\xAD';

bool isBlankOrControl(char c) {
    return static_cast<unsigned char>(c) <= 0x20;
}

// Less a character that the end cuts.
std::string_view wholeCharacters(std::string_view text, std::size_t most) {
    std::size_t end = std::min(text.size(), most);
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80) {
        ++end;
    }
    return text.substr(0, end);
}

} // namespace

void TextSink::append(std::string_view characters) {
    if (characters.empty() || isFull()) {
        return;
    }
    if (m_isApart && !m_text.empty()) {
        m_text += ' ';
    }
    m_isApart = false;
    m_text += wholeCharacters(characters, m_mostBytes - std::min(m_mostBytes, m_text.size()));
}

void TextSink::add(std::string_view text) {
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size() && !isFull(); ++i) {
        const bool isBlank = isBlankOrControl(text[i]);
        const char next = text[i] == kLatinLead && i + 1 < text.size() ? text[i + 1] : '\0';
        if (!isBlank && next != kFixedSpace && next != kSoftHyphen) {
            continue;
        }
        append(text.substr(begin, i - begin));
        m_isApart = m_isApart || next != kSoftHyphen;
        i += isBlank ? 0 : 1;
        begin = i + 1;
    }
    append(text.substr(std::min(begin, text.size())));
}

void TextSink::addCodePoint(std::uint32_t codePoint) {
    std::string character;
    Utf8::append(character, codePoint);
    add(character);
}

} // namespace quillane
