#include "PlainText.h"
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

// Less a last character that has begun and is not complete.
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

} // namespace

std::string decoded(std::string_view bytes) {
    if (bytes.starts_with(kUtf8Mark)) {
        return std::string(withoutCutCharacter(bytes.substr(kUtf8Mark.size())));
    }
    if (bytes.starts_with(kBigEndianMark)) {
        return Utf8::fromUtf16(bytes.substr(kBigEndianMark.size()), ByteOrder::bigEndian);
    }
    if (bytes.starts_with(kLittleEndianMark)) {
        return Utf8::fromUtf16(bytes.substr(kLittleEndianMark.size()), ByteOrder::littleEndian);
    }
    if (bytes.substr(0, kBytesLookedAt).find('\0') != std::string_view::npos) {
        const auto order = utf16Order(bytes);
        return order ? Utf8::fromUtf16(bytes, *order) : std::string();
    }
    const auto whole = withoutCutCharacter(bytes);
    return Utf8::isValid(whole) ? std::string(whole) : Utf8::fromLatin1(bytes);
}

} // namespace quillane::PlainText
