#pragma once
#include <compare>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Comparisons of text as the platform does them in English. All take UTF-8. What sorts and searches takes invalid
// bytes for U+FFFD, as they are shown; what tells whether two texts are the same takes them for themselves alone.
// Any thread.
namespace quillane::Text {

// The Finder's order: numbers by value, case and width ignored at first, then every difference decides.
// Equal only for identical strings.
std::strong_ordering localizedStandardCompare(std::string_view a, std::string_view b);

// The permutation that sorts `names` by localizedStandardCompare, stable. Precomputes keys, so it is far
// cheaper than a sort that compares pairs.
std::vector<std::size_t> localizedStandardOrder(const std::vector<std::string>& names);

// True when `needle` occurs in `haystack` without regard to case. An empty needle is never contained;
// accents and width count; a match ends and begins at whole characters.
bool localizedCaseInsensitiveContains(std::string_view haystack, std::string_view needle);

// A text that is looked for in many others, made ready once.
class Search {
  public:
    explicit Search(std::string_view needle);
    bool isEmpty() const { return m_folded.empty(); }
    // As localizedCaseInsensitiveContains().
    bool isIn(std::string_view haystack) const;

  private:
    std::u16string m_folded;
    std::optional<std::string> m_plain; // the same where it is ASCII; no plain text holds anything else
};

// Equal without regard to case, with no locale ("Straße" equals "STRASSE"). An invalid byte equals only itself.
bool equalIgnoringCase(std::string_view a, std::string_view b);

// A text that many others are held against. Its length is of no account where the others are short: it is folded
// once, and only when another is of a length at which the two could be equal. One thread at a time.
class CaselessText {
  public:
    explicit CaselessText(std::string text);
    // As equalIgnoringCase().
    bool equals(std::string_view other);

    // Texts that are equal without regard to case differ in length by no more than this factor: a code point has 1
    // to 4 bytes, and folds to 1 to 4 code points.
    static constexpr std::size_t kMostGrowth = 16;

  private:
    std::string m_text;
    bool m_isAscii;
    std::optional<std::u16string> m_folded;
};

} // namespace quillane::Text
