#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Text made comparable: what should not count is taken out of both sides, and then code points decide. All
// take UTF-8; an invalid byte counts as itself, U+DC80 to U+DCFF, which no valid text holds. Any thread.
namespace quillane::Text {

// What does not count. Canonically equivalent spellings (an accent of its own, or one that is part of its
// letter) are always the same.
struct Folding {
    bool caseInsensitive = false;      // full folding without a locale: "Straße" is "STRASSE"
    bool diacriticInsensitive = false; // "é" is "e"; letters that hold no accent, such as "ø", stay
    friend bool operator==(const Folding&, const Folding&) = default;
};

// The code points that count, in composed form.
std::u32string folded(std::string_view text, Folding folding);

// A folded text that still knows where the words of the original began and ended. A word is a run of letters,
// accents and digits; a lower case letter before an upper case one ends a word too ("MyWindow" is two).
struct FoldedWords {
    std::u32string text;
    std::vector<bool> begins; // at [i]: a word begins before code point i; one more than the text is long
    std::vector<bool> ends;   // at [i]: a word ends before code point i; one more than the text is long
};
FoldedWords foldedWords(std::string_view text, Folding folding);

} // namespace quillane::Text
