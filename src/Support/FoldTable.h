#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillane::Text {

// What folded() gives where neither case nor accents count, one code point at a time and by a table: for much text,
// a tenth of the time. Points that compose with the one before them, such as the parts of a Korean syllable, do so
// here too. Differs from folded() only where several marks that are no accents follow one letter in an order that is
// not the canonical one, as they do in music. Immutable; any thread.
class FoldTable {
  public:
    // Made at the first call, which takes milliseconds.
    static const FoldTable& shared();

    // Appends the folded code points of UTF-8; an invalid byte is a point of its own, as in folded(). The text
    // counts as the continuation of what stands in `points`.
    void append(std::string_view text, std::u32string& points) const;

  private:
    FoldTable();

    // What a point that is not simply another one becomes.
    struct Special {
        std::u32string points;
        bool composes = false; // the first of them may join the point before it
    };

    void addSpecial(char32_t point, Special special);
    char32_t* put(char32_t point, char32_t* begin, char32_t* end) const;
    static Special special(char32_t point);
    static char32_t* put(const Special& special, char32_t* begin, char32_t* end);

    std::vector<std::uint16_t>
        m_simple; // of the basic plane: the point, or a surrogate that counts m_special
    std::vector<Special> m_special;
};

} // namespace quillane::Text
