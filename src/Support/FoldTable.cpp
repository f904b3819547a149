#include "FoldTable.h"
#include "TextFolding.h"
#include "Utf8.h"
#include <algorithm>
#include <array>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/utf8.h>

namespace quillane::Text {
namespace {

constexpr std::size_t kPlane = 0x10000;
constexpr char32_t kFirstSpecial = 0xD800; // surrogates are no characters, so the table has them to spare
constexpr char32_t kLastSpecial = 0xDFFF;
constexpr char32_t kInvalidByte = 0xDC00; // as in folded()
constexpr Folding kNeitherCounts{.caseInsensitive = true, .diacriticInsensitive = true};

const icu::Normalizer2* composer() {
    UErrorCode status = U_ZERO_ERROR;
    const auto* const found = icu::Normalizer2::getNFCInstance(status);
    return U_SUCCESS(status) ? found : nullptr;
}

// Whether neither case nor composition has anything to do with it, but for what stands before a mark. Asks for no more
// than it must: of the plane most points are of scripts that have neither.
bool isPlain(UChar32 point, const icu::Normalizer2& normalizer, icu::UnicodeString& decomposition) {
    return u_hasBinaryProperty(point, UCHAR_CASED) == 0 &&
           normalizer.getDecomposition(point, decomposition) == 0;
}

// Syllables are taken apart and put together again.
bool isHangulSyllable(char32_t point) {
    return point >= 0xAC00 && point <= 0xD7A3;
}

// Ideographs, syllables of Yi and what is for private use: half of the plane, which nobody need be asked about.
bool isInPlaneAndFoldsToItself(char32_t point) {
    return (point >= 0x3400 && point <= 0xA48C) || (point >= 0xE000 && point <= 0xF8FF);
}

// Ideographs and pictures, by which text beyond the basic plane is made of little else.
bool isFarAndFoldsToItself(char32_t point) {
    return (point >= 0x1F000 && point <= 0x1FAFF) || (point >= 0x20000 && point <= 0x2EBEF);
}

} // namespace

const FoldTable& FoldTable::shared() {
    static const FoldTable table;
    return table;
}

FoldTable::FoldTable()
    : m_simple(kPlane) {
    const auto* const normalizer = composer();
    icu::UnicodeString decomposition;
    for (char32_t point = 0; point < kPlane; ++point) {
        m_simple[point] = static_cast<std::uint16_t>(point);
        const bool isSurrogate = point >= kFirstSpecial && point <= kLastSpecial;
        if (isSurrogate || isHangulSyllable(point) || isInPlaneAndFoldsToItself(point)) {
            continue;
        }
        const auto asked = static_cast<UChar32>(point);
        if (isPlain(asked, *normalizer, decomposition)) {
            if (u_charType(asked) == U_NON_SPACING_MARK) {
                addSpecial(point, {});
                continue;
            }
            if (normalizer->hasBoundaryBefore(asked)) {
                continue;
            }
        }
        auto made = special(point);
        if (made.points.size() == 1 && made.points.front() < kPlane && !made.composes) {
            m_simple[point] = static_cast<std::uint16_t>(made.points.front());
        } else {
            addSpecial(point, std::move(made));
        }
    }
}

// All accents share the place of the first one.
void FoldTable::addSpecial(char32_t point, Special special) {
    const auto same = std::ranges::find_if(m_special, [&](const Special& other) {
        return other.points == special.points && other.composes == special.composes;
    });
    m_simple[point] = static_cast<std::uint16_t>(kFirstSpecial + (same - m_special.begin()));
    if (same == m_special.end()) {
        m_special.push_back(std::move(special));
    }
}

FoldTable::Special FoldTable::special(char32_t point) {
    std::string bytes;
    Utf8::append(bytes, point);
    Special made{folded(bytes, kNeitherCounts)};
    made.composes = !made.points.empty() && u_getIntPropertyValue(static_cast<UChar32>(made.points.front()),
                                                                  UCHAR_NFC_QUICK_CHECK) == UNORM_MAYBE;
    return made;
}

char32_t* FoldTable::put(const Special& special, char32_t* begin, char32_t* end) {
    const auto* next = special.points.data();
    const auto* const last = next + special.points.size();
    if (special.composes && end != begin) {
        const auto joined =
            composer()->composePair(static_cast<UChar32>(end[-1]), static_cast<UChar32>(*next));
        if (joined >= 0) {
            end[-1] = static_cast<char32_t>(joined);
            ++next;
        }
    }
    return std::copy(next, last, end);
}

char32_t* FoldTable::put(char32_t point, char32_t* begin, char32_t* end) const {
    if (point >= kPlane) {
        if (!isFarAndFoldsToItself(point)) {
            return put(special(point), begin, end);
        }
    } else if (const char32_t simple = m_simple[point]; simple >= kFirstSpecial && simple <= kLastSpecial) {
        return put(m_special[simple - kFirstSpecial], begin, end);
    } else {
        point = simple;
    }
    *end = point;
    return end + 1;
}

void FoldTable::append(std::string_view text, std::u32string& points) const {
    const auto before = points.size();
    points.resize(before + text.size()); // no sequence of bytes folds to more points than it has bytes
    auto* const begin = points.data();
    auto* end = begin + before;
    const auto* const bytes = text.data();
    const auto size = static_cast<std::int32_t>(text.size());
    for (std::int32_t at = 0; at < size;) {
        const auto byte = static_cast<unsigned char>(bytes[at]);
        if (byte < 0x80) {
            *end++ = m_simple[byte];
            ++at;
            continue;
        }
        const auto sequence = at;
        UChar32 point = 0;
        U8_NEXT(bytes, at, size, point);
        if (point >= 0) {
            end = put(static_cast<char32_t>(point), begin, end);
            continue;
        }
        for (auto i = sequence; i < at; ++i) {
            *end++ = kInvalidByte + static_cast<unsigned char>(bytes[i]);
        }
    }
    points.resize(static_cast<std::size_t>(end - begin));
}

} // namespace quillane::Text
