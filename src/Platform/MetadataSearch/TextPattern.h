#pragma once
#include "FoldedNeedle.h"
#include "TextFolding.h"
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quillane {

// A value of a query: text with wildcards, and what does not count when it is compared.
class TextPattern {
  public:
    struct Modifiers {
        Text::Folding folding;
        bool wordwise = false; // whole words anywhere, instead of the whole text
        friend bool operator==(const Modifiers&, const Modifiers&) = default;
    };

    // `written` is what stood between the quotes: "*" is any run of characters, "?" one character, and a
    // backslash makes the next character stand for itself.
    TextPattern(std::string_view written, Modifiers modifiers);

    // Whether all of `text` fits, or, wordwise, a part of it that begins and ends with words. Without
    // wildcards the cost is that of the text; with them at worst its length by the pattern's.
    bool matches(std::string_view text) const;
    // The same, but a pattern without wildcards is looked for as words: how written content is searched.
    bool occursIn(std::string_view text) const;
    // Only "*": whether there is a value at all is what it asks.
    bool matchesEverything() const;
    bool hasWildcards() const { return m_hasWildcards; }
    // Not null for a pattern that only asks whether a text occurs anywhere, whatever its case and accents are:
    // that text, which is then all that there is to look for in written content.
    const FoldedNeedle* needle() const { return m_needle.get(); }

  private:
    std::u32string contained() const;
    std::optional<bool> matchesAscii(std::string_view text) const;
    bool matchesWords(std::string_view text) const;

    Modifiers m_modifiers;
    std::u32string m_points; // folded; wildcards are values beyond all code points
    bool m_hasWildcards = false;
    bool m_isAscii = false;
    std::shared_ptr<const FoldedNeedle> m_needle;
};

} // namespace quillane
