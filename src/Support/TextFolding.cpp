#include "TextFolding.h"
#include "UnicodeText.h"
#include <algorithm>
#include <optional>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace quillane::Text {
namespace {

char32_t foldedAscii(char c, bool caseInsensitive) {
    return static_cast<char32_t>(caseInsensitive ? lowerAscii(c) : c);
}

std::u32string codePoints(const icu::UnicodeString& text) {
    std::u32string points;
    points.reserve(static_cast<std::size_t>(text.length()));
    for (std::int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        points += static_cast<char32_t>(text.char32At(i));
    }
    return points;
}

void removeAccents(icu::UnicodeString& decomposed) {
    icu::UnicodeString kept;
    for (std::int32_t i = 0; i < decomposed.length(); i = decomposed.moveIndex32(i, 1)) {
        const UChar32 point = decomposed.char32At(i);
        if (u_charType(point) != U_NON_SPACING_MARK) {
            kept.append(point);
        }
    }
    decomposed = std::move(kept);
}

std::u32string foldedUnicode(icu::UnicodeString text, Folding folding) {
    UErrorCode status = U_ZERO_ERROR;
    const auto* const decomposer = icu::Normalizer2::getNFDInstance(status);
    const auto* const composer = icu::Normalizer2::getNFCInstance(status);
    if (U_FAILURE(status)) {
        return codePoints(text);
    }
    if (folding.caseInsensitive) {
        text.foldCase();
    }
    text = decomposer->normalize(text, status);
    if (folding.diacriticInsensitive) {
        removeAccents(text);
    }
    return codePoints(composer->normalize(text, status));
}

bool isWordCharacter(UChar32 point) {
    return u_isalnum(point) != 0 || (U_GET_GC_MASK(point) & U_GC_M_MASK) != 0;
}

// Appends one stretch of the original, whose inside holds no border between words.
void append(FoldedWords& words, const icu::UnicodeString& stretch, bool isWord, Folding folding) {
    const auto text = foldedUnicode(stretch, folding);
    if (isWord && !text.empty()) {
        words.begins[words.text.size()] = true;
    }
    words.text += text;
    words.begins.resize(words.text.size() + 1, false);
    words.ends.resize(words.text.size() + 1, false);
    if (isWord && !text.empty()) {
        words.ends[words.text.size()] = true;
    }
}

} // namespace

std::u32string folded(std::string_view text, Folding folding) {
    if (!isAscii(text)) {
        return foldedUnicode(exactUnicode(text), folding);
    }
    std::u32string points(text.size(), U'\0');
    std::ranges::transform(text, points.begin(),
                           [&](char c) { return foldedAscii(c, folding.caseInsensitive); });
    return points;
}

FoldedWords foldedWords(std::string_view text, Folding folding) {
    const auto unicode = exactUnicode(text);
    FoldedWords words{{}, {false}, {false}};
    std::int32_t begin = 0;
    while (begin < unicode.length()) {
        UChar32 previous = unicode.char32At(begin);
        const bool isWord = isWordCharacter(previous);
        std::int32_t end = unicode.moveIndex32(begin, 1);
        while (end < unicode.length()) {
            const UChar32 next = unicode.char32At(end);
            const bool turnsUpper = u_islower(previous) != 0 && u_isupper(next) != 0;
            if (isWordCharacter(next) != isWord || turnsUpper) {
                break;
            }
            previous = next;
            end = unicode.moveIndex32(end, 1);
        }
        append(words, unicode.tempSubStringBetween(begin, end), isWord, folding);
        begin = end;
    }
    return words;
}

} // namespace quillane::Text
