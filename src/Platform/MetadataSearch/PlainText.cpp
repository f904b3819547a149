#include "PlainText.h"
#include "ByteFilter.h"
#include "Utf8.h"
#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace quillane::PlainText {
namespace {

using Utf8::ByteOrder;

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";
constexpr std::string_view kLittleEndianMark = "\xFF\xFE";

constexpr std::size_t kPairsLookedAt = std::size_t{2} << 10U; // for zeros at one parity: 4 KB
constexpr std::size_t kBytesLookedAt = std::size_t{8} << 10U; // for zeros that no text has
constexpr std::size_t kLeastPart = 4; // a quarter of the pairs with a zero, and all of these at one side

// Text in UTF-16 without a mark, by its ASCII characters, of which every European text has many.
std::optional<ByteOrder> utf16Order(std::string_view bytes) {
    const auto pairs = std::min(bytes.size() / 2, kPairsLookedAt);
    std::array<std::size_t, 2> zeros{};
    for (std::size_t i = 0; i < pairs * 2; ++i) {
        zeros[i % 2] += bytes[i] == '\0' ? 1 : 0;
    }
    if (zeros[0] != 0 && zeros[1] != 0) {
        return std::nullopt;
    }
    if (std::max(zeros[0], zeros[1]) * kLeastPart < std::max(pairs, std::size_t{1})) {
        return std::nullopt;
    }
    return zeros[0] != 0 ? ByteOrder::bigEndian : ByteOrder::littleEndian;
}

// White space, and with it what colours a terminal or strikes a letter twice.
bool isControl(char c) {
    constexpr std::string_view kOfTexts = "\b\t\n\v\f\r\x1B";
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 || byte == 0x7F) && kOfTexts.find(c) == std::string_view::npos;
}

Format declaredFormatOf(std::string_view start, bool isAll) {
    if (const auto marked = markedFormatOf(start)) {
        return *marked;
    }
    return {ByteFilter::isUtf8(isAll ? start : Utf8::withoutCutCharacter(start)) ? Encoding::utf8
                                                                                 : Encoding::latin1};
}

} // namespace

std::optional<Format> markedFormatOf(std::string_view start) {
    if (start.starts_with(kUtf8Mark)) {
        return Format{Encoding::utf8, kUtf8Mark.size()};
    }
    if (start.starts_with(kBigEndianMark)) {
        return Format{Encoding::utf16BigEndian, kBigEndianMark.size()};
    }
    if (start.starts_with(kLittleEndianMark)) {
        return Format{Encoding::utf16LittleEndian, kLittleEndianMark.size()};
    }
    if (start.substr(0, kBytesLookedAt).find('\0') != std::string_view::npos) {
        const auto order = utf16Order(start);
        if (!order) {
            return Format{};
        }
        return Format{*order == ByteOrder::bigEndian ? Encoding::utf16BigEndian
                                                     : Encoding::utf16LittleEndian};
    }
    return std::nullopt;
}

Format formatOf(std::string_view start, Claim claim, bool isAll) {
    const auto format = declaredFormatOf(start, isAll);
    if (claim == Claim::declared || format.encoding == Encoding::none) {
        return format;
    }
    const auto text = decoded(start.substr(format.mark, kBytesLookedAt), format.encoding);
    return std::ranges::any_of(text, isControl) ? Format{} : format;
}

std::string decoded(std::string_view part, Encoding encoding) {
    switch (encoding) {
    case Encoding::none:
        break;
    case Encoding::utf8:
        return std::string(part);
    case Encoding::utf16BigEndian:
        return Utf8::fromUtf16(part, ByteOrder::bigEndian);
    case Encoding::utf16LittleEndian:
        return Utf8::fromUtf16(part, ByteOrder::littleEndian);
    case Encoding::latin1:
        return Utf8::fromLatin1(part);
    }
    return {};
}

std::string decoded(std::string_view bytes, Claim claim) {
    const auto format = formatOf(bytes, claim);
    const auto part = bytes.substr(format.mark);
    return decoded(format.encoding == Encoding::utf8 ? Utf8::withoutCutCharacter(part) : part,
                   format.encoding);
}

} // namespace quillane::PlainText
