#include "Utf8.h"
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

namespace quillane::Utf8 {

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

unsigned char byteAt(std::string_view text, std::size_t index) {
    return static_cast<unsigned char>(text[index]);
}

bool isHighSurrogate(std::uint32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(std::uint32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// The first index at or after `index` whose byte is not ASCII. Eight at a time: most texts are ASCII.
std::size_t endOfAscii(std::string_view text, std::size_t index) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080ULL;
    while (text.size() - index >= sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + index, sizeof word);
        if ((word & kHighBits) != 0) {
            break;
        }
        index += sizeof word;
    }
    while (index < text.size() && byteAt(text, index) < 0x80) {
        ++index;
    }
    return index;
}

// The length of the well-formed sequence at `index`, whose first byte is not ASCII; 0 when there is none.
std::size_t sequenceLength(std::string_view text, std::size_t index) {
    const auto lead = byteAt(text, index);
    if (lead < 0xC2 || lead > 0xF4) {
        return 0;
    }
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (text.size() - index < length) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(text, index + i) & 0xC0) != 0x80) {
            return 0;
        }
    }
    // The second byte decides about overlong forms, surrogates and what lies above U+10FFFF.
    const auto second = byteAt(text, index + 1);
    const bool bad = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
                     (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
    return bad ? 0 : length;
}

} // namespace

bool isValid(std::string_view text) {
    std::size_t index = endOfAscii(text, 0);
    while (index < text.size()) {
        const std::size_t length = sequenceLength(text, index);
        if (length == 0) {
            return false;
        }
        index = endOfAscii(text, index + length);
    }
    return true;
}

std::string_view withoutCutCharacter(std::string_view bytes) {
    constexpr std::size_t kLongestCut = 3;
    for (std::size_t back = 1; back <= std::min(kLongestCut, bytes.size()); ++back) {
        const auto byte = static_cast<unsigned char>(bytes[bytes.size() - back]);
        if (byte < 0x80) {
            break;
        }
        if (byte >= 0xC0) {
            const std::size_t length = byte >= 0xF0 ? 4 : (byte >= 0xE0 ? 3 : 2);
            return length > back ? bytes.substr(0, bytes.size() - back) : bytes;
        }
    }
    return bytes;
}

void append(std::string& text, std::uint32_t codePoint) {
    if (codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) {
        codePoint = kReplacement;
    }
    const auto put = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    const auto putTail = [&put, codePoint](int shift) { put(0x80U | ((codePoint >> shift) & 0x3FU)); };
    if (codePoint < 0x80) {
        put(codePoint);
    } else if (codePoint < 0x800) {
        put(0xC0U | (codePoint >> 6));
        putTail(0);
    } else if (codePoint < 0x10000) {
        put(0xE0U | (codePoint >> 12));
        putTail(6);
        putTail(0);
    } else {
        put(0xF0U | (codePoint >> 18));
        putTail(12);
        putTail(6);
        putTail(0);
    }
}

std::string fromUtf16(std::string_view bytes, ByteOrder order) {
    std::string text;
    text.reserve(bytes.size() / 2);
    Utf16Joiner joiner(text);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        unsigned high = byteAt(bytes, i);
        unsigned low = byteAt(bytes, i + 1);
        if (order == ByteOrder::littleEndian) {
            std::swap(high, low);
        }
        joiner.add(static_cast<std::uint16_t>(high << 8U | low));
    }
    joiner.flush();
    return text;
}

std::string fromLatin1(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        append(text, static_cast<unsigned char>(byte));
    }
    return text;
}

void Utf16Joiner::add(std::uint16_t unit) {
    if (m_high && isLowSurrogate(unit)) {
        const std::uint32_t high = *m_high;
        m_high.reset();
        append(m_text, 0x10000U + ((high - 0xD800U) << 10U) + (unit - 0xDC00U));
        return;
    }
    flush();
    if (isHighSurrogate(unit)) {
        m_high = unit;
    } else {
        append(m_text, unit);
    }
}

void Utf16Joiner::flush() {
    if (m_high) {
        m_high.reset();
        append(m_text, kReplacement);
    }
}

} // namespace quillane::Utf8
