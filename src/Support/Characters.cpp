#include "Characters.h"
#include "UnicodeText.h"
#include <algorithm>
#include <cstdint>
#include <memory>
#include <unicode/brkiter.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

namespace quillane::Text {
namespace {

bool isUppercase(const icu::UnicodeString& character) {
    if (character.countChar32() == 1 && u_hasBinaryProperty(character.char32At(0), UCHAR_UPPERCASE)) {
        return true;
    }
    auto upper = character;
    auto lower = character;
    upper.toUpper(icu::Locale::getRoot());
    lower.toLower(icu::Locale::getRoot());
    return upper != lower && upper == character;
}

bool isNumber(const icu::UnicodeString& character) {
    return u_getNumericValue(character.char32At(0)) != U_NO_NUMERIC_VALUE;
}

// Whether the text begins with what belongs to the character before it: an accent or a joiner.
bool continuesCharacter(std::string_view text) {
    if (text.empty() || static_cast<unsigned char>(text.front()) < 0x80) {
        return false;
    }
    constexpr std::size_t kLongestCodePoint = 4;
    const auto first = readableUnicode(text.substr(0, kLongestCodePoint)).char32At(0);
    switch (u_getIntPropertyValue(first, UCHAR_GRAPHEME_CLUSTER_BREAK)) {
    case U_GCB_EXTEND:
    case U_GCB_SPACING_MARK:
    case U_GCB_ZWJ:
        return true;
    default:
        return false;
    }
}

// Where the characters of a text begin and end, which must outlive this; null only for want of memory or data.
std::unique_ptr<icu::BreakIterator> charactersOf(const icu::UnicodeString& text) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> characters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status)) {
        return nullptr;
    }
    characters->setText(text);
    return characters;
}

} // namespace

bool isUppercaseOrNumbers(std::string_view text, std::size_t count) {
    if (isAscii(text)) {
        if (text.size() != count) {
            return false;
        }
        for (const char c : text) {
            if (!((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'))) {
                return false;
            }
        }
        return true;
    }
    const auto unicode = readableUnicode(text);
    const auto characters = charactersOf(unicode);
    if (!characters) {
        return false;
    }
    std::size_t found = 0;
    for (int32_t begin = characters->first(), end = characters->next(); end != icu::BreakIterator::DONE;
         begin = end, end = characters->next()) {
        const auto character = unicode.tempSubStringBetween(begin, end);
        if (++found > count || (!isUppercase(character) && !isNumber(character))) {
            return false;
        }
    }
    return found == count;
}

std::size_t characterCount(std::string_view text) {
    if (isAscii(text) && text.find('\r') == std::string_view::npos) { // a line's two ends are one character
        return text.size();
    }
    const auto unicode = readableUnicode(text);
    const auto characters = charactersOf(unicode);
    if (!characters) {
        return text.size();
    }
    std::size_t count = 0;
    while (characters->next() != icu::BreakIterator::DONE) {
        ++count;
    }
    return count;
}

std::vector<std::size_t> fullStops(std::string_view text) {
    std::vector<std::size_t> found;
    for (auto at = text.find('.'); at != std::string_view::npos; at = text.find('.', at + 1)) {
        if (!continuesCharacter(text.substr(at + 1))) {
            found.push_back(at);
        }
    }
    return found;
}

std::string lowercased(std::string_view text) {
    if (isAscii(text)) {
        std::string lower(text);
        std::ranges::transform(lower, lower.begin(), lowerAscii);
        return lower;
    }
    // Letter by letter: a sigma is the same at the end of a word as inside it.
    const auto original = exactUnicode(text);
    icu::UnicodeString unicode;
    for (int32_t at = 0; at < original.length(); at = original.moveIndex32(at, 1)) {
        unicode += icu::UnicodeString(original.char32At(at)).toLower(icu::Locale::getRoot());
    }
    UErrorCode status = U_ZERO_ERROR;
    const auto* const composer = icu::Normalizer2::getNFCInstance(status);
    if (U_SUCCESS(status)) {
        unicode = composer->normalize(unicode, status);
    }
    return bytesOf(unicode);
}

std::string lowercasedLettersAndNumbers(std::string_view text) {
    const auto lower = readableUnicode(lowercased(text));
    icu::UnicodeString kept;
    bool isKept = false;
    for (int32_t at = 0; at < lower.length(); at = lower.moveIndex32(at, 1)) {
        const auto point = lower.char32At(at);
        if ((U_GET_GC_MASK(point) & U_GC_M_MASK) == 0) { // a mark goes with what it stands on
            isKept = u_isUAlphabetic(point) || u_getNumericValue(point) != U_NO_NUMERIC_VALUE;
        }
        if (isKept) {
            kept += point;
        }
    }
    std::string result;
    kept.toUTF8String(result);
    return result;
}

std::string_view trimmed(std::string_view text) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto length = static_cast<int32_t>(text.size());
    int32_t begin = 0;
    int32_t end = length;
    UChar32 point = 0;
    for (int32_t next = 0; next < length;) {
        U8_NEXT(bytes, next, length, point);
        if (!u_isUWhiteSpace(point)) {
            break;
        }
        begin = next;
    }
    for (int32_t before = length; before > begin;) {
        U8_PREV(bytes, begin, before, point);
        if (!u_isUWhiteSpace(point)) {
            break;
        }
        end = before;
    }
    return text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
}

std::string repairedUtf8(std::string_view bytes) {
    std::string repaired;
    readableUnicode(bytes).toUTF8String(repaired);
    return repaired;
}

} // namespace quillane::Text
