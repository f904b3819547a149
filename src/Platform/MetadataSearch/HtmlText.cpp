#include "HtmlText.h"
#include "Charset.h"
#include "MarkupReader.h"
#include "PlainText.h"
#include "TextSink.h"
#include "Utf8.h"
#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

namespace quillane::HtmlText {
namespace {

constexpr std::string_view kSkipped[] = {"script", "style", "template"};

// What stands within a word or a line. All other elements part the words.
constexpr std::string_view kInline[] = {
    "a",     "abbr", "acronym", "b",      "bdi", "bdo", "big",   "cite", "code", "data", "del",
    "dfn",   "em",   "font",    "i",      "ins", "kbd", "label", "mark", "q",    "s",    "samp",
    "small", "span", "strike",  "strong", "sub", "sup", "time",  "tt",   "u",    "var",  "wbr"};

class LoweredName {
  public:
    explicit LoweredName(std::string_view name) {
        m_size = std::min(name.size(), m_characters.size());
        std::transform(name.begin(), name.begin() + static_cast<std::ptrdiff_t>(m_size), m_characters.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    }
    bool isOneOf(auto& names) const {
        return std::ranges::find(names, std::string_view(m_characters.data(), m_size)) != std::end(names);
    }

  private:
    std::array<char, 16> m_characters{}; // longer than all that is looked for
    std::size_t m_size = 0;
};

// What the page says of its encoding, as in <meta charset="koi8-r">.
std::string_view declaredCharset(std::string_view bytes) {
    constexpr std::size_t kLookedAt = 1024;
    constexpr std::string_view kWord = "charset=";
    const auto head = bytes.substr(0, kLookedAt);
    const auto found = std::ranges::search(
        head, kWord, [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; });
    auto name = head.substr(static_cast<std::size_t>(found.end() - head.begin()));
    name.remove_prefix(std::min(name.find_first_not_of("\"' "), name.size()));
    return name.substr(0, name.find_first_of("\"' ;/>"));
}

std::string decoded(std::string_view bytes) {
    constexpr std::size_t kLookedAt = std::size_t{8} << 10U; // for zeros, which only wider characters have
    const bool hasMark =
        bytes.starts_with("\xEF\xBB\xBF") || bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE");
    if (hasMark || bytes.substr(0, kLookedAt).find('\0') != std::string_view::npos) {
        return PlainText::decoded(bytes);
    }
    if (Utf8::isValid(bytes)) {
        return std::string(bytes);
    }
    if (auto text = Charset::decoded(bytes, declaredCharset(bytes))) {
        return std::move(*text);
    }
    return Charset::decoded(bytes, "windows-1252").value_or(std::string());
}

} // namespace

void add(std::string_view bytes, TextSink& sink) {
    addDecoded(decoded(bytes), sink);
}

void addDecoded(std::string_view html, TextSink& sink) {
    using Token = MarkupReader::Token;
    MarkupReader reader(html);
    for (auto token = reader.next(); token != Token::end && !sink.isFull(); token = reader.next()) {
        if (token == Token::text) {
            addWithReferences(reader.text(), sink);
            continue;
        }
        if (token == Token::verbatim) {
            sink.add(reader.text());
            continue;
        }
        const LoweredName name(reader.name());
        if (!name.isOneOf(kInline)) {
            sink.endWord();
        }
        if (token == Token::beginTag && name.isOneOf(kSkipped)) {
            reader.skipElement();
        }
    }
    sink.endWord();
}

} // namespace quillane::HtmlText
