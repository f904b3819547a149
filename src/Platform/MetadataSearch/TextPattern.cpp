#include "TextPattern.h"
#include <algorithm>
#include <optional>
#include <utility>

namespace quillane {
namespace {

constexpr char32_t kAnyRun = 0x110000;
constexpr char32_t kAnyOne = 0x110001;

enum class Fit {
    yes,
    notHere, // a later beginning may fit
    never    // a run was tried up to the end of the text, so no later beginning fits either
};

// Walks along pattern and text from `begin` at once. At a mismatch, the last run of any length takes one
// character more; earlier runs never need to be tried again. Where the pattern is used up, `endsAt` says
// whether it may end there.
template <class EndsAt>
Fit fitAt(std::size_t begin, std::u32string_view pattern, std::u32string_view text, EndsAt endsAt) {
    std::size_t p = 0;
    std::size_t t = begin;
    std::optional<std::size_t> afterRun;
    std::size_t runEnd = 0;
    while (true) {
        if (p < pattern.size() && pattern[p] == kAnyRun) {
            afterRun = ++p;
            runEnd = t;
        } else if (p == pattern.size() && endsAt(t)) {
            return Fit::yes;
        } else if (p < pattern.size() && t < text.size() &&
                   (pattern[p] == kAnyOne || pattern[p] == text[t])) {
            ++p;
            ++t;
        } else if (afterRun && runEnd < text.size()) {
            p = *afterRun;
            t = ++runEnd;
        } else {
            return afterRun ? Fit::never : Fit::notHere;
        }
    }
}

} // namespace

TextPattern::TextPattern(std::string_view written, Modifiers modifiers)
    : m_modifiers(modifiers) {
    std::string literal;
    const auto endLiteral = [&] {
        m_points += Text::folded(literal, m_modifiers.folding);
        literal.clear();
    };
    for (std::size_t i = 0; i < written.size(); ++i) {
        if (written[i] == '\\' && i + 1 < written.size()) {
            literal += written[++i];
        } else if (written[i] == '*' || written[i] == '?') {
            endLiteral();
            m_points += written[i] == '*' ? kAnyRun : kAnyOne;
            m_hasWildcards = true;
        } else {
            literal += written[i];
        }
    }
    endLiteral();
    m_isAscii = std::ranges::all_of(m_points, [](char32_t point) { return point < 0x80; });
    if (auto text = contained(); !text.empty()) {
        m_needle = std::make_shared<const FoldedNeedle>(std::move(text));
    }
}

// What stands between two runs of any length that are the only wildcards; empty for every other pattern.
std::u32string TextPattern::contained() const {
    const auto [ignoresCase, ignoresAccents] = m_modifiers.folding;
    const bool isBetweenRuns =
        m_points.size() > 2 && m_points.front() == kAnyRun && m_points.back() == kAnyRun;
    if (!isBetweenRuns || !ignoresCase || !ignoresAccents || m_modifiers.wordwise) {
        return {};
    }
    auto text = m_points.substr(1, m_points.size() - 2);
    return std::ranges::any_of(text, [](char32_t point) { return point >= kAnyRun; }) ? std::u32string()
                                                                                      : text;
}

bool TextPattern::matchesEverything() const {
    return !m_points.empty() &&
           std::ranges::all_of(m_points, [](char32_t point) { return point == kAnyRun; });
}

bool TextPattern::matches(std::string_view text) const {
    if (m_modifiers.wordwise) {
        return matchesWords(text);
    }
    if (const auto answer = matchesAscii(text)) {
        return *answer;
    }
    const auto points = Text::folded(text, m_modifiers.folding);
    if (!m_hasWildcards) {
        return points == m_points;
    }
    return fitAt(0, m_points, points, [&](std::size_t end) { return end == points.size(); }) == Fit::yes;
}

// Most names and all identifiers are ASCII and are compared with a plain word: no need to lay out code points.
std::optional<bool> TextPattern::matchesAscii(std::string_view text) const {
    if (!m_isAscii ||
        std::ranges::any_of(text, [](char c) { return static_cast<unsigned char>(c) >= 0x80; })) {
        return std::nullopt;
    }
    const bool ignoresCase = m_modifiers.folding.caseInsensitive;
    return std::ranges::equal(text, m_points, [&](char c, char32_t point) {
        return static_cast<char32_t>(ignoresCase && c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c) == point;
    });
}

bool TextPattern::occursIn(std::string_view text) const {
    return m_hasWildcards ? matches(text) : matchesWords(text);
}

bool TextPattern::matchesWords(std::string_view text) const {
    if (m_points.empty()) {
        return false; // no words, so they occur nowhere
    }
    const auto words = Text::foldedWords(text, m_modifiers.folding);
    const auto endsAt = [&](std::size_t end) { return words.ends[end]; };
    auto fit = Fit::notHere;
    for (std::size_t begin = 0; begin < words.text.size() && fit == Fit::notHere; ++begin) {
        if (words.begins[begin]) {
            fit = fitAt(begin, m_points, words.text, endsAt);
        }
    }
    return fit == Fit::yes;
}

} // namespace quillane
