#include "MessageText.h"
#include "Base64.h"
#include "Charset.h"
#include "HtmlText.h"
#include "MailEncoding.h"
#include "PlainText.h"
#include "RtfText.h"
#include "TextSink.h"
#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace quillane::MessageText {
namespace {

constexpr std::size_t kMostHeaders = std::size_t{256} << 10U; // bytes of the headers of a part

std::string lowered(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return lower;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

// Takes a line with its end off the front.
std::string_view takeLine(std::string_view& text) {
    const auto line = text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1);
    text.remove_prefix(line.size());
    return line;
}

bool isEmptyLine(std::string_view line) {
    return line == "\n" || line == "\r\n";
}

// A value such as `text/html; charset="utf-8"`.
class Field {
  public:
    explicit Field(std::string_view value)
        : m_rest(value)
        , m_value(lowered(trimmed(value.substr(0, value.find(';'))))) {}

    const std::string& value() const { return m_value; }

    // As it is written; empty when it is not there.
    std::string_view parameter(std::string_view name) const {
        auto rest = m_rest;
        while (true) {
            rest.remove_prefix(std::min(rest.find(';'), rest.size()));
            if (rest.empty()) {
                return {};
            }
            rest.remove_prefix(1);
            const auto equal = rest.find_first_of("=;");
            if (equal == std::string_view::npos || rest[equal] == ';') {
                continue;
            }
            const bool isIt = lowered(trimmed(rest.substr(0, equal))) == name;
            rest.remove_prefix(equal + 1);
            const auto value = takeValue(rest);
            if (isIt) {
                return value;
            }
        }
    }

  private:
    static std::string_view takeValue(std::string_view& rest) {
        rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
        if (!rest.starts_with('"')) {
            return trimmed(rest.substr(0, rest.find(';')));
        }
        rest.remove_prefix(1);
        const auto value = rest.substr(0, rest.find('"'));
        rest.remove_prefix(value.size());
        return value;
    }

    std::string_view m_rest;
    std::string m_value;
};

struct Headers {
    std::string type = "text/plain";
    std::string encoding;
    std::string people; // and the subject, as they are written
};

class Reader {
  public:
    explicit Reader(TextSink& sink)
        : m_sink(sink) {}

    void readPart(std::string_view part, bool isMessage, int depth) {
        if (depth > kDeepest || m_sink.isFull()) {
            return;
        }
        const auto headers = takeHeaders(part);
        if (isMessage) {
            m_sink.add(MailEncoding::header(headers.people));
            m_sink.endWord();
        }
        const Field type(headers.type);
        if (type.value().starts_with("multipart/")) {
            readParts(part, type.parameter("boundary"), depth);
        } else if (type.value() == "message/rfc822") {
            readPart(decoded(part, headers.encoding), true, depth + 1);
        } else if (type.value().starts_with("text/")) {
            readText(decoded(part, headers.encoding), type);
        }
        m_sink.endWord();
    }

  private:
    static Headers takeHeaders(std::string_view& part) {
        Headers headers;
        const auto begin = part;
        while (!part.empty() && begin.size() - part.size() < kMostHeaders) {
            std::string header(takeLine(part).substr(0, kMostHeaders));
            if (isEmptyLine(header)) {
                break;
            }
            while ((part.starts_with(' ') || part.starts_with('\t')) && header.size() < kMostHeaders) {
                header += takeLine(part).substr(0, kMostHeaders);
            }
            note(header, headers);
        }
        return headers;
    }

    static void note(std::string_view header, Headers& headers) {
        const auto colon = header.find(':');
        if (colon == std::string_view::npos) {
            return;
        }
        const auto name = lowered(trimmed(header.substr(0, colon)));
        const auto value = header.substr(colon + 1);
        if (name == "content-type") {
            headers.type = value;
        } else if (name == "content-transfer-encoding") {
            headers.encoding = lowered(trimmed(value));
        } else if (name == "subject" || name == "from" || name == "to" || name == "cc") {
            headers.people += value;
        }
    }

    static std::string decoded(std::string_view body, std::string_view encoding) {
        return encoding == "base64"             ? Base64::decoded(body)
               : encoding == "quoted-printable" ? MailEncoding::quotedPrintable(body)
                                                : std::string(body);
    }

    void readParts(std::string_view body, std::string_view boundary, int depth) {
        const auto delimiter = "--" + std::string(boundary);
        std::optional<std::string_view> open; // from the begin of a part to the end of all
        while (!body.empty() && !boundary.empty() && !m_sink.isFull()) {
            const auto atLine = body;
            const auto line = takeLine(body);
            if (!line.starts_with(delimiter)) {
                continue;
            }
            if (open) {
                readPart(open->substr(0, open->size() - atLine.size()), false, depth + 1);
            }
            if (line.substr(delimiter.size()).starts_with("--")) {
                return;
            }
            open = body;
        }
        if (open) {
            readPart(*open, false, depth + 1); // a mail that is cut has no last line
        }
    }

    void readText(std::string bytes, const Field& type) {
        const auto charset = type.parameter("charset");
        const bool isBare = lowered(charset) == "us-ascii"; // what is not to be said of bytes that are more
        if (auto text = isBare ? std::nullopt : Charset::decoded(bytes, charset)) {
            bytes = std::move(*text);
        }
        if (type.value() == "text/html") {
            HtmlText::add(bytes, m_sink);
        } else if (type.value() == "text/rtf") {
            RtfText::add(bytes, m_sink);
        } else {
            m_sink.add(PlainText::decoded(bytes));
        }
    }

    TextSink& m_sink;
};

// Of the form that says so in its first line.
std::string_view withoutCount(std::string_view bytes) {
    std::size_t count = 0;
    const char* const begin = bytes.data();
    const char* const end = begin + std::min<std::size_t>(bytes.size(), 12);
    const auto [stop, failure] = std::from_chars(begin, end, count);
    const auto rest = bytes.substr(static_cast<std::size_t>(stop - begin));
    const auto blanks = std::min(rest.find_first_not_of(" \r"), rest.size());
    if (failure != std::errc() || !rest.substr(blanks).starts_with('\n')) {
        return bytes;
    }
    return rest.substr(blanks + 1, count);
}

} // namespace

void add(std::string_view bytes, TextSink& sink) {
    Reader(sink).readPart(withoutCount(bytes), true, 0);
}

} // namespace quillane::MessageText
