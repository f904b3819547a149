#include "Characters.h"
#include <memory>
#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace quillane::Text {
namespace {

// The fast road for what nearly all names are made of.
bool isAscii(std::string_view text) {
    for (const char c : text) {
        if (static_cast<unsigned char>(c) >= 0x80) {
            return false;
        }
    }
    return true;
}

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
    const auto unicode =
        icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> characters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status)) {
        return false;
    }
    characters->setText(unicode);
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

std::string repairedUtf8(std::string_view bytes) {
    std::string repaired;
    icu::UnicodeString::fromUTF8(icu::StringPiece(bytes.data(), static_cast<int32_t>(bytes.size())))
        .toUTF8String(repaired);
    return repaired;
}

} // namespace quillane::Text
