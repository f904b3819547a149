#include "TextComparison.h"
#include "UnicodeText.h"
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <numeric>
#include <unicode/brkiter.h>
#include <unicode/coll.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <utility>

namespace quillane::Text {
namespace {

constexpr UChar32 kZeroWidthJoiner = 0x200D;

// Only a library without memory or without its own data fails here, and nothing can be shown without them.
void require(UErrorCode status) {
    if (U_FAILURE(status)) {
        std::abort();
    }
}

icu::StringPiece piece(std::string_view text) {
    // Lengths are 32 bits wide in the library, and a text may grow fourfold in it.
    return {text.substr(0, std::numeric_limits<std::int32_t>::max() / 4)};
}

const icu::Collator* makeCollator(icu::Collator::ECollationStrength strength) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(icu::Locale::getUS(), status));
    require(status);
    collator->setAttribute(UCOL_ALTERNATE_HANDLING, UCOL_NON_IGNORABLE, status);
    collator->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
    collator->setAttribute(UCOL_NORMALIZATION_MODE, UCOL_ON, status);
    require(status);
    collator->setStrength(strength);
    return collator.release();
}

// Both collators are only ever asked through their const functions, which threads may share, and are never
// destroyed, since any thread may still use them while the process ends.

// Numbers by value; case and width make no difference, accents do.
const icu::Collator& caselessCollator() {
    static const icu::Collator* const collator = makeCollator(icu::Collator::SECONDARY);
    return *collator;
}

// The same, and then lower case before upper.
const icu::Collator& casedCollator() {
    static const icu::Collator* const collator = makeCollator(icu::Collator::TERTIARY);
    return *collator;
}

std::strong_ordering collate(const icu::Collator& collator, std::string_view a, std::string_view b) {
    UErrorCode status = U_ZERO_ERROR;
    const auto result = collator.compareUTF8(piece(a), piece(b), status);
    require(status);
    return static_cast<int>(result) <=> 0;
}

// The length of the next run of digits at or behind `position`, which moves behind the run; 0 when there is
// none.
int nextDigitRun(const icu::UnicodeString& text, std::int32_t& position) {
    int digits = 0;
    while (position < text.length()) {
        const UChar32 c = text.char32At(position);
        const bool isDigit = u_isdigit(c) != 0;
        if (!isDigit && digits > 0) {
            break;
        }
        digits += isDigit ? 1 : 0;
        position += U16_LENGTH(c);
    }
    return digits;
}

// "2" before "02": numbers of the same value by their length. Every script's digits count, as they do in the
// value. If only ASCII's did, "01x" < "１x" < "1X" < "01x" would go round in a circle.
std::strong_ordering compareDigitRuns(const icu::UnicodeString& a, const icu::UnicodeString& b) {
    std::int32_t positionA = 0;
    std::int32_t positionB = 0;
    while (true) {
        const int lengthA = nextDigitRun(a, positionA);
        const int lengthB = nextDigitRun(b, positionB);
        if (lengthA != lengthB) {
            return lengthA <=> lengthB;
        }
        if (lengthA == 0) {
            return std::strong_ordering::equal;
        }
    }
}

// What decides between texts that are the same without regard to case and width.
std::strong_ordering breakTie(std::string_view a, std::string_view b) {
    if (a == b) {
        return std::strong_ordering::equal;
    }
    const auto textA = readableUnicode(a);
    const auto textB = readableUnicode(b);
    if (const auto byRuns = compareDigitRuns(textA, textB); byRuns != 0) {
        return byRuns;
    }
    if (const auto byCase = collate(casedCollator(), a, b); byCase != 0) {
        return byCase;
    }
    if (const auto byUnits = textA.compare(textB) <=> 0; byUnits != 0) {
        return byUnits;
    }
    return a <=> b; // different invalid bytes
}

// The bytes whose order is that of the caseless collator, one run of bytes for each text.
class SortKeys {
  public:
    explicit SortKeys(const std::vector<std::string>& texts) {
        m_ends.reserve(texts.size());
        for (const auto& text : texts) {
            append(readableUnicode(text));
        }
    }

    std::string_view operator[](std::size_t i) const {
        const std::size_t begin = i == 0 ? 0 : m_ends[i - 1];
        return std::string_view(m_bytes).substr(begin, m_ends[i] - begin);
    }

  private:
    void append(const icu::UnicodeString& text) {
        const std::size_t begin = m_bytes.size();
        std::size_t room = 64;
        while (true) {
            m_bytes.resize(begin + room);
            const auto needed = static_cast<std::size_t>(
                caselessCollator().getSortKey(text, reinterpret_cast<std::uint8_t*>(m_bytes.data() + begin),
                                              static_cast<std::int32_t>(room)));
            if (needed <= room) {
                m_bytes.resize(begin + needed);
                break;
            }
            room = needed;
        }
        m_ends.push_back(m_bytes.size());
    }

    std::string m_bytes;
    std::vector<std::size_t> m_ends;
};

bool equalASCIICase(char a, char b) {
    return lowerAscii(a) == lowerAscii(b);
}

// ASCII whose characters are its bytes: only a carriage return joins with what follows it. Reads to the end in any
// case, which costs less than to look for it at each byte.
bool isPlain(std::string_view text) {
    unsigned char bits = 0;
    bool hasReturn = false;
    for (const char c : text) {
        bits |= static_cast<unsigned char>(c);
        hasReturn |= c == '\r';
    }
    return bits < 0x80 && !hasReturn;
}

// In plain text, for a needle in lower case.
bool containsLowerCase(std::string_view haystack, std::string_view needle) {
    if (haystack.size() < needle.size()) {
        return false;
    }
    const char* const end = haystack.data() + (haystack.size() - needle.size()) + 1;
    for (const char* at = haystack.data(); at != end; ++at) {
        if (lowerAscii(*at) == needle.front() &&
            std::equal(needle.begin() + 1, needle.end(), at + 1,
                       [](char wanted, char c) { return wanted == lowerAscii(c); })) {
            return true;
        }
    }
    return false;
}

const icu::Normalizer2& decomposition() {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* const nfd = icu::Normalizer2::getNFDInstance(status);
    require(status);
    return *nfd;
}

// Decomposed, without case, and decomposed again, since folding may compose.
icu::UnicodeString folded(const icu::UnicodeString& text) {
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString first = decomposition().normalize(text, status);
    icu::UnicodeString second = decomposition().normalize(first.foldCase(), status);
    require(status);
    return second;
}

// A folded text that remembers which of its places lie between two letters of the original: "ß" becomes
// "ss" and "é" an e with an accent, and no place within these is one.
struct FoldedText {
    static constexpr std::int32_t kNone = -1;

    explicit FoldedText(const icu::UnicodeString& original) {
        for (std::int32_t begin = 0; begin < original.length();) {
            std::int32_t end = original.moveIndex32(begin, 1);
            while (end < original.length() && !decomposition().hasBoundaryBefore(original.char32At(end))) {
                end = original.moveIndex32(end, 1);
            }
            text += folded(original.tempSubStringBetween(begin, end));
            places.push_back(begin);
            places.resize(static_cast<std::size_t>(text.length()), kNone);
            begin = end;
        }
        places.push_back(original.length());
    }

    std::int32_t originalPlace(std::int32_t place) const { return places[static_cast<std::size_t>(place)]; }

    icu::UnicodeString text;
    // For each place of `text` and its end, the place of the original, or kNone.
    std::vector<std::int32_t> places;
};

// A finder of letters and the text it looks at: it only points at that, so the two stay together.
struct LetterBreaks {
    LetterBreaks() {
        UErrorCode status = U_ZERO_ERROR;
        breaks.reset(icu::BreakIterator::createCharacterInstance(icu::Locale::getUS(), status));
        require(status);
    }

    icu::UnicodeString text;
    std::unique_ptr<icu::BreakIterator> breaks;
};

// Tells where the letters of a text begin and end, as a reader sees them. Looks only when asked. One at a
// time on each thread.
class Letters {
  public:
    explicit Letters(const icu::UnicodeString& text)
        : m_text(text) {}

    bool beginAt(std::int32_t place) {
        thread_local LetterBreaks ofThread; // looking changes it
        if (!m_isSet) {
            m_isSet = true;
            ofThread.text = m_text;
            ofThread.breaks->setText(ofThread.text);
        }
        return ofThread.breaks->isBoundary(place) != 0;
    }

    // Weaker than a new letter: what a joiner ties on, as in a family of emoji, is a part of its own. The
    // joiner itself has its own line because newer versions of Unicode count it among the extending marks.
    bool endAt(std::int32_t place) {
        if (place == m_text.length()) {
            return true;
        }
        const UChar32 next = m_text.char32At(place);
        if (next == kZeroWidthJoiner) {
            return true;
        }
        const int jamo = u_getIntPropertyValue(next, UCHAR_HANGUL_SYLLABLE_TYPE);
        if (jamo == U_HST_VOWEL_JAMO || jamo == U_HST_TRAILING_JAMO) {
            return beginAt(place); // a syllable is one letter also when it is written in parts
        }
        return u_hasBinaryProperty(next, UCHAR_GRAPHEME_EXTEND) == 0 &&
               u_hasBinaryProperty(next, UCHAR_EMOJI_MODIFIER) == 0;
    }

  private:
    const icu::UnicodeString& m_text;
    bool m_isSet = false;
};

bool containsFolded(const icu::UnicodeString& haystack, const icu::UnicodeString& needle) {
    const FoldedText text(haystack);
    Letters letters(haystack);
    for (std::int32_t at = text.text.indexOf(needle); at >= 0; at = text.text.indexOf(needle, at + 1)) {
        const auto begin = text.originalPlace(at);
        const auto end = text.originalPlace(at + needle.length());
        if (begin != FoldedText::kNone && end != FoldedText::kNone && letters.beginAt(begin) &&
            letters.endAt(end)) {
            return true;
        }
    }
    return false;
}

} // namespace

std::strong_ordering localizedStandardCompare(std::string_view a, std::string_view b) {
    if (a == b) {
        return std::strong_ordering::equal;
    }
    const auto order = collate(caselessCollator(), a, b);
    return order != 0 ? order : breakTie(a, b);
}

std::vector<std::size_t> localizedStandardOrder(const std::vector<std::string>& names) {
    const SortKeys keys(names);
    std::vector<std::size_t> order(names.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, [&](std::size_t a, std::size_t b) {
        if (const auto byKey = keys[a] <=> keys[b]; byKey != 0) {
            return byKey < 0;
        }
        const auto byRest = breakTie(names[a], names[b]);
        return byRest != 0 ? byRest < 0 : a < b;
    });
    return order;
}

bool localizedCaseInsensitiveContains(std::string_view haystack, std::string_view needle) {
    return Search(needle).isIn(haystack);
}

Search::Search(std::string_view needle) {
    const auto unicode = folded(readableUnicode(needle));
    m_folded.assign(unicode.getBuffer(), static_cast<std::size_t>(unicode.length()));
    if (std::ranges::all_of(m_folded, [](char16_t c) { return c < 0x80; })) { // "ß" is looked for as "ss"
        m_plain.emplace(m_folded.begin(), m_folded.end());
    }
}

bool Search::isIn(std::string_view haystack) const {
    if (isEmpty()) {
        return false;
    }
    if (isPlain(haystack)) {
        return m_plain && containsLowerCase(haystack, *m_plain);
    }
    const icu::UnicodeString needle(false, m_folded.data(), static_cast<std::int32_t>(m_folded.size()));
    return containsFolded(readableUnicode(haystack), needle);
}

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    return CaselessText(std::string(a)).equals(b);
}

CaselessText::CaselessText(std::string text)
    : m_text(std::move(text))
    , m_isAscii(isAscii(m_text)) {}

bool CaselessText::equals(std::string_view other) {
    const bool mayBeEqual =
        m_text.size() / kMostGrowth <= other.size() && other.size() / kMostGrowth <= m_text.size();
    if (!mayBeEqual) {
        return false;
    }
    const bool isOtherAscii = isAscii(other);
    if (m_isAscii && isOtherAscii) {
        return std::ranges::equal(m_text, other, equalASCIICase);
    }
    if (!m_folded) {
        const auto unicode = folded(exactUnicode(m_text));
        m_folded.emplace(unicode.getBuffer(), static_cast<std::size_t>(unicode.length()));
    }
    if (isOtherAscii) { // folds to itself in lower case
        return std::ranges::equal(*m_folded, other, {}, {}, [](char c) {
            return static_cast<char16_t>(static_cast<unsigned char>(lowerAscii(c)));
        });
    }
    const auto unicode = folded(exactUnicode(other));
    return std::u16string_view(unicode.getBuffer(), static_cast<std::size_t>(unicode.length())) == *m_folded;
}

} // namespace quillane::Text
