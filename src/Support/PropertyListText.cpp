// The old text form: { key = value; } ( a, b ) <0a0b> "quoted" unquoted, with comments as in C. A dictionary
// at the top may go without its braces, as files of localized texts do.
#include "PropertyListBuilder.h"
#include "Utf8.h"
#include <algorithm>
#include <array>

namespace quillane::PropertyList::Detail {

namespace {

// What the octal escapes from \200 on mean: the upper half of the NeXTSTEP character set.
constexpr std::array<std::uint16_t, 128> kNextStep = {
    0x00A0, 0x00C0, 0x00C1, 0x00C2, 0x00C3, 0x00C4, 0x00C5, 0x00C7, 0x00C8, 0x00C9, 0x00CA, 0x00CB, 0x00CC,
    0x00CD, 0x00CE, 0x00CF, 0x00D0, 0x00D1, 0x00D2, 0x00D3, 0x00D4, 0x00D5, 0x00D6, 0x00D9, 0x00DA, 0x00DB,
    0x00DC, 0x00DD, 0x00DE, 0x00B5, 0x00D7, 0x00F7, 0x00A9, 0x00A1, 0x00A2, 0x00A3, 0x2044, 0x00A5, 0x0192,
    0x00A7, 0x00A4, 0x2019, 0x201C, 0x00AB, 0x2039, 0x203A, 0xFB01, 0xFB02, 0x00AE, 0x2013, 0x2020, 0x2021,
    0x00B7, 0x00A6, 0x00B6, 0x2022, 0x201A, 0x201E, 0x201D, 0x00BB, 0x2026, 0x2030, 0x00AC, 0x00BF, 0x00B9,
    0x02CB, 0x00B4, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9, 0x00A8, 0x00B2, 0x02DA, 0x00B8, 0x00B3, 0x02DD,
    0x02DB, 0x02C7, 0x2014, 0x00B1, 0x00BC, 0x00BD, 0x00BE, 0x00E0, 0x00E1, 0x00E2, 0x00E3, 0x00E4, 0x00E5,
    0x00E7, 0x00E8, 0x00E9, 0x00EA, 0x00EB, 0x00EC, 0x00C6, 0x00ED, 0x00AA, 0x00EE, 0x00EF, 0x00F0, 0x00F1,
    0x0141, 0x00D8, 0x0152, 0x00BA, 0x00F2, 0x00F3, 0x00F4, 0x00F5, 0x00F6, 0x00E6, 0x00F9, 0x00FA, 0x00FB,
    0x0131, 0x00FC, 0x00FD, 0x0142, 0x00F8, 0x0153, 0x00DF, 0x00FE, 0x00FF, 0xFFFD, 0xFFFD};

bool isUnquoted(char c) {
    constexpr std::string_view kOthers = "_$/:.-";
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           kOthers.find(c) != std::string_view::npos;
}

bool isOctal(char c) {
    return c >= '0' && c <= '7';
}

// Takes tokens from the front of a text.
class Scanner {
  public:
    explicit Scanner(std::string_view text)
        : m_rest(text) {}

    // Whether anything but blanks and comments is left.
    bool atEnd() {
        skipBlanks();
        return m_rest.empty();
    }

    // Takes `c` if it comes next, behind blanks and comments.
    bool take(char c) {
        if (!isNext(c)) {
            return false;
        }
        m_rest.remove_prefix(1);
        return true;
    }

    bool isNext(char c) {
        skipBlanks();
        return m_rest.starts_with(c);
    }

    bool isStringNext() {
        return isNext('"') || isNext('\'') || (!m_rest.empty() && isUnquoted(m_rest.front()));
    }

    // Nothing for a text that has no end, and for what is no text.
    std::optional<std::string> string() {
        if (!isStringNext()) {
            return std::nullopt;
        }
        if (m_rest.front() == '"' || m_rest.front() == '\'') {
            return quotedString();
        }
        const auto length =
            static_cast<std::size_t>(std::ranges::find_if_not(m_rest, isUnquoted) - m_rest.begin());
        std::string text(m_rest.substr(0, length));
        m_rest.remove_prefix(length);
        return text;
    }

    // The bytes up to the closing bracket, whose opening one has been taken.
    std::optional<std::string> data() {
        std::string bytes;
        while (!m_rest.empty()) {
            if (skipIf(isBlank)) {
                continue;
            }
            if (m_rest.front() == '>') {
                m_rest.remove_prefix(1);
                return bytes;
            }
            const auto high = hexDigit(m_rest.front());
            const auto low = m_rest.size() > 1 ? hexDigit(m_rest[1]) : std::nullopt;
            if (!high || !low) {
                return std::nullopt;
            }
            bytes += static_cast<char>(*high << 4U | *low);
            m_rest.remove_prefix(2);
        }
        return std::nullopt;
    }

  private:
    bool skipIf(bool (*belongs)(char)) {
        const bool skips = !m_rest.empty() && belongs(m_rest.front());
        if (skips) {
            m_rest.remove_prefix(1);
        }
        return skips;
    }

    // Up to and with `end`, or to the end of the text when there is none.
    void skipThrough(std::string_view end) {
        const auto at = m_rest.find(end);
        m_rest.remove_prefix(at == std::string_view::npos ? m_rest.size() : at + end.size());
    }

    void skipBlanks() {
        while (true) {
            if (skipIf(isBlank)) {
                continue;
            }
            if (m_rest.starts_with("\u2028") || m_rest.starts_with("\u2029")) {
                m_rest.remove_prefix(3);
            } else if (m_rest.starts_with("//")) {
                m_rest.remove_prefix(std::min(m_rest.find_first_of("\n\r"), m_rest.size()));
            } else if (m_rest.starts_with("/*")) {
                m_rest.remove_prefix(2);
                skipThrough("*/");
            } else {
                return;
            }
        }
    }

    std::optional<std::string> quotedString() {
        const char quote = m_rest.front();
        const std::array<char, 2> stops = {quote, '\\'};
        m_rest.remove_prefix(1);
        std::string text;
        Utf8::Utf16Joiner joiner(text);
        while (true) {
            const auto length = m_rest.find_first_of(std::string_view(stops.data(), stops.size()));
            if (length == std::string_view::npos) {
                return std::nullopt;
            }
            if (length > 0 || m_rest.front() == quote) {
                joiner.flush();
            }
            text += m_rest.substr(0, length);
            const bool ends = m_rest[length] == quote;
            m_rest.remove_prefix(length + 1);
            if (ends) {
                return text;
            }
            if (m_rest.empty()) {
                return std::nullopt;
            }
            addEscape(text, joiner);
        }
    }

    // What stands behind a backslash; something does.
    void addEscape(std::string& text, Utf8::Utf16Joiner& joiner) {
        const char c = m_rest.front();
        if (c == 'U') {
            m_rest.remove_prefix(1);
            joiner.add(hexEscape());
        } else if (isOctal(c)) {
            joiner.add(octalEscape());
        } else {
            joiner.flush();
            text += plainEscape(c);
            m_rest.remove_prefix(1);
        }
    }

    // At most four digits.
    std::uint16_t hexEscape() {
        unsigned unit = 0;
        for (int i = 0; i < 4 && !m_rest.empty(); ++i) {
            const auto digit = hexDigit(m_rest.front());
            if (!digit) {
                break;
            }
            unit = unit << 4U | *digit;
            m_rest.remove_prefix(1);
        }
        return static_cast<std::uint16_t>(unit);
    }

    // At most three digits; one byte of the NeXTSTEP character set.
    std::uint16_t octalEscape() {
        unsigned byte = 0;
        for (int i = 0; i < 3 && !m_rest.empty() && isOctal(m_rest.front()); ++i) {
            byte = byte << 3U | static_cast<unsigned>(m_rest.front() - '0');
            m_rest.remove_prefix(1);
        }
        byte &= 0xFFU;
        return byte < 0x80 ? static_cast<std::uint16_t>(byte) : kNextStep.at(byte - 0x80U);
    }

    static char plainEscape(char c) {
        switch (c) {
        case 'a':
            return '\a';
        case 'b':
            return '\b';
        case 'f':
            return '\f';
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        case 'v':
            return '\v';
        default:
            return c;
        }
    }

    std::string_view m_rest;
};

// Reads without recursion: what may come next is kept here, what is open in the builder.
class Reader {
  public:
    Reader(std::string_view text, const Limits& limits)
        : m_scanner(text)
        , m_builder(limits) {}

    // One value and nothing behind it.
    std::optional<Value> readValue() { return readFrom(Next::value); }

    // A dictionary without its braces.
    std::optional<Value> readBareDictionary() {
        m_isBare = true;
        return m_builder.openDictionary() ? readFrom(Next::keyOrEnd) : std::nullopt;
    }

  private:
    enum class Next { value, valueOrEnd, keyOrEnd, separatorOrEnd };

    std::optional<Value> readFrom(Next next) {
        m_next = next;
        while (!isFinished()) {
            if (!step()) {
                return std::nullopt;
            }
        }
        return m_scanner.atEnd() ? m_builder.take() : std::nullopt;
    }

    bool isFinished() const { return m_next == Next::separatorOrEnd && m_builder.depth() == 0; }

    bool step() {
        switch (m_next) {
        case Next::valueOrEnd:
            return m_scanner.take(')') ? end() : readLeafOrOpen();
        case Next::value:
            return readLeafOrOpen();
        case Next::keyOrEnd:
            return endsDictionary() ? end() : readKey();
        case Next::separatorOrEnd:
            return readSeparatorOrEnd();
        }
        return false;
    }

    bool go(Next next) {
        m_next = next;
        return true;
    }

    bool end() { return m_builder.close() && go(Next::separatorOrEnd); }

    // A dictionary without braces ends with the text.
    bool endsDictionary() {
        const bool isOutermost = m_isBare && m_builder.depth() == 1;
        return isOutermost ? m_scanner.atEnd() : m_scanner.take('}');
    }

    bool readLeafOrOpen() {
        if (m_scanner.take('{')) {
            return m_builder.openDictionary() && go(Next::keyOrEnd);
        }
        if (m_scanner.take('(')) {
            return m_builder.openArray() && go(Next::valueOrEnd);
        }
        if (m_scanner.take('<')) {
            auto bytes = m_scanner.data();
            return bytes && m_builder.addData(*std::move(bytes)) && go(Next::separatorOrEnd);
        }
        auto text = m_scanner.string();
        return text && m_builder.addString(*std::move(text)) && go(Next::separatorOrEnd);
    }

    bool readKey() {
        auto key = m_scanner.string();
        if (!key) {
            return false;
        }
        if (m_scanner.take('=')) {
            return m_builder.key(*std::move(key)) && go(Next::value);
        }
        // A key alone stands for itself.
        return m_scanner.isNext(';') && m_builder.key(*key) && m_builder.addString(*std::move(key)) &&
               go(Next::separatorOrEnd);
    }

    // Every pair of a dictionary has its semicolon, the last one too; an array may end with a comma.
    bool readSeparatorOrEnd() {
        if (m_builder.inDictionary()) {
            return m_scanner.take(';') && go(Next::keyOrEnd);
        }
        return m_scanner.take(',') ? go(Next::valueOrEnd) : m_scanner.take(')') && end();
    }

    Scanner m_scanner;
    Builder m_builder;
    Next m_next = Next::value;
    bool m_isBare = false;
};

} // namespace

std::optional<Value> readText(std::string_view text, const Limits& limits) {
    Scanner scanner(text);
    if (scanner.atEnd()) {
        return Value(Dictionary());
    }
    if (auto value = Reader(text, limits).readValue()) {
        return value;
    }
    return scanner.isStringNext() ? Reader(text, limits).readBareDictionary() : std::nullopt;
}

} // namespace quillane::PropertyList::Detail
