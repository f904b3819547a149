#include "RtfText.h"
#include "Charset.h"
#include "TextSink.h"
#include "Utf8.h"
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillane::RtfText {
namespace {

constexpr std::size_t kDeepest = 1000;

// Groups whose content is no text. What begins with "\*" is none either.
constexpr std::string_view kSkipped[] = {"fonttbl", "colortbl", "stylesheet", "pict", "fldinst"};
constexpr std::string_view kPartings[] = {"par",  "line",   "tab",      "cell",    "row",     "sect",
                                          "page", "column", "nestcell", "nestrow", "emspace", "enspace"};

struct NamedCharacter {
    std::string_view name;
    std::uint32_t codePoint;
};
constexpr NamedCharacter kCharacters[] = {{"emdash", 0x2014},   {"endash", 0x2013}, {"bullet", 0x2022},
                                          {"lquote", 0x2018},   {"rquote", 0x2019}, {"ldblquote", 0x201C},
                                          {"rdblquote", 0x201D}};

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::optional<unsigned> hexadecimalDigit(char c) {
    if (isDigit(c)) {
        return static_cast<unsigned>(c - '0');
    }
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? std::optional(static_cast<unsigned>(lower - 'a') + 10U)
                                        : std::nullopt;
}

std::string charsetOfCodePage(int page) {
    constexpr int kMacintosh = 10000;
    constexpr int kJapanese = 932;
    if (page == kMacintosh) {
        return "macintosh";
    }
    if (page == kJapanese) {
        return "windows-31j";
    }
    constexpr int kFirstOfWindows = 1250;
    constexpr int kLastOfWindows = 1258;
    const bool isWindows = (page >= kFirstOfWindows && page <= kLastOfWindows) || page == 874 ||
                           page == 936 || page == 949 || page == 950;
    return (isWindows ? "windows-" : "cp") + std::to_string(page);
}

class Parser {
  public:
    Parser(std::string_view bytes, TextSink& sink)
        : m_rest(bytes)
        , m_sink(sink) {}

    void read() {
        while (!m_rest.empty() && !m_sink.isFull() && step()) {
        }
        flush();
        m_sink.endWord();
    }

  private:
    // What a group takes over from the one around it.
    struct Group {
        std::size_t fallback = 1; // characters behind "\u" that stand for those who don't know it
        bool isSkipped = false;
    };

    // False where the text ends.
    bool step() {
        const char c = m_rest.front();
        m_rest.remove_prefix(1);
        switch (c) {
        case '{':
            m_passing = 0;
            m_groups.push_back(m_groups.back());
            return m_groups.size() <= kDeepest;
        case '}':
            m_passing = 0;
            m_groups.pop_back();
            return !m_groups.empty();
        case '\\':
            control();
            return true;
        case '\r':
        case '\n':
            return true; // of the file and not of the text
        default:
            addByte(c);
            return true;
        }
    }

    void control() {
        if (m_rest.empty()) {
            return;
        }
        if (isLetter(m_rest.front())) {
            word();
            return;
        }
        const char symbol = m_rest.front();
        m_rest.remove_prefix(1);
        if (symbol == '\'') {
            hexadecimalByte();
        } else if (symbol == '\\' || symbol == '{' || symbol == '}') {
            addByte(symbol);
        } else if (symbol == '~' || symbol == '\r' ||
                   symbol == '\n') { // an end of line is a way to write "\par"
            endWord();
        } else if (symbol == '_') {
            addByte('-');
        } else if (symbol == '*') {
            m_groups.back().isSkipped = true;
        }
    }

    void word() {
        const auto name = take(isLetter);
        const bool isNegative = m_rest.starts_with('-');
        m_rest.remove_prefix(isNegative ? 1 : 0);
        const auto number = numberOf(take(isDigit));
        if (m_rest.starts_with(' ')) {
            m_rest.remove_prefix(1);
        }
        obey(name, number && isNegative ? -*number : number.value_or(kNoNumber));
    }

    void obey(std::string_view name, int number) {
        if (name == "bin") {
            m_rest.remove_prefix(std::min(static_cast<std::size_t>(std::max(number, 0)), m_rest.size()));
        } else if (name == "u") {
            unicode(number);
        } else if (name == "uc") {
            m_groups.back().fallback = static_cast<std::size_t>(std::max(number, 0));
        } else if (name == "ansicpg") {
            setCharset(charsetOfCodePage(number));
        } else if (name == "mac") {
            setCharset("macintosh");
        } else if (std::ranges::find(kSkipped, name) != std::end(kSkipped)) {
            m_groups.back().isSkipped = true;
        } else if (std::ranges::find(kPartings, name) != std::end(kPartings)) {
            endWord();
        } else if (const auto* const found = std::ranges::find(kCharacters, name, &NamedCharacter::name);
                   found != std::end(kCharacters)) {
            addCodePoint(found->codePoint);
        }
    }

    void hexadecimalByte() {
        const auto high = m_rest.size() >= 2 ? hexadecimalDigit(m_rest[0]) : std::nullopt;
        const auto low = high ? hexadecimalDigit(m_rest[1]) : std::nullopt;
        if (low) {
            m_rest.remove_prefix(2);
            addByte(static_cast<char>(*high << 4U | *low));
        }
    }

    // A number of 16 bits, written with a sign; characters beyond them are two.
    void unicode(int number) {
        if (number == kNoNumber) {
            return;
        }
        flushBytes();
        if (!m_groups.back().isSkipped) {
            m_units.add(static_cast<std::uint16_t>(static_cast<unsigned>(number) & 0xFFFFU));
        }
        m_passing = m_groups.back().fallback;
    }

    // Bytes wait for those that follow: some encodings have two for a character.
    void addByte(char c) {
        if (m_passing > 0) {
            --m_passing;
        } else if (!m_groups.back().isSkipped) {
            flushUnits();
            m_bytes += c;
        }
    }

    void addCodePoint(std::uint32_t codePoint) {
        if (m_passing > 0) {
            --m_passing;
        } else if (!m_groups.back().isSkipped) {
            flush();
            m_sink.addCodePoint(codePoint);
        }
    }

    void endWord() {
        if (!m_groups.back().isSkipped) {
            flush();
            m_sink.endWord();
        }
    }

    void flush() {
        flushBytes();
        flushUnits();
    }

    // Of what stands behind it. Opened when the first text needs it, and left open for all the others.
    void setCharset(std::string name) {
        if (name != m_charset) {
            flushBytes();
            m_charset = std::move(name);
            m_decoder.reset();
        }
    }

    std::optional<std::string> decoded(std::string_view bytes) {
        if (!m_decoder) {
            m_decoder.emplace(m_charset);
        }
        return m_decoder->decoded(bytes);
    }

    void flushBytes() {
        if (m_bytes.empty()) {
            return;
        }
        const bool isAscii =
            std::ranges::all_of(m_bytes, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
        const auto text = isAscii ? std::nullopt : decoded(m_bytes);
        m_sink.add(text ? *text : isAscii ? m_bytes : Utf8::fromLatin1(m_bytes));
        m_bytes.clear();
    }

    void flushUnits() {
        m_units.flush();
        m_sink.add(m_fromUnits);
        m_fromUnits.clear();
    }

    std::string_view take(bool (*belongs)(char)) {
        const auto end = std::ranges::find_if_not(m_rest, belongs);
        const auto taken = m_rest.substr(0, static_cast<std::size_t>(end - m_rest.begin()));
        m_rest.remove_prefix(taken.size());
        return taken;
    }

    static std::optional<int> numberOf(std::string_view digits) {
        constexpr std::size_t kMostDigits = 9;
        if (digits.empty() || digits.size() > kMostDigits) {
            return std::nullopt;
        }
        int number = 0;
        for (const char digit : digits) {
            number = number * 10 + (digit - '0');
        }
        return number;
    }

    static constexpr int kNoNumber = -1'000'000'000;

    std::string_view m_rest;
    TextSink& m_sink;
    std::vector<Group> m_groups = {{}};
    std::string m_charset = "windows-1252";
    std::optional<Charset::Decoder> m_decoder;
    std::size_t m_passing = 0; // of the characters that stand for one that was given by its number
    std::string m_bytes;
    std::string m_fromUnits;
    Utf8::Utf16Joiner m_units{m_fromUnits};
};

} // namespace

void add(std::string_view bytes, TextSink& sink) {
    if (bytes.starts_with("{\\rtf")) {
        Parser(bytes, sink).read();
    }
}

} // namespace quillane::RtfText
