#pragma once
#include <compare>
#include <string>
#include <string_view>
#include <vector>

// Comparisons of text as the platform does them in English. All take UTF-8; invalid bytes count as U+FFFD.
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

// Equal without regard to case, with no locale ("Straße" equals "STRASSE").
bool equalIgnoringCase(std::string_view a, std::string_view b);

} // namespace quillane::Text
