#pragma once
#include "ByteFilter.h"
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillane {

// A text that is looked for in much other text, where neither case nor accents count. Finds exactly what folding
// all of it would, but mostly looks at bytes: only where four characters of the needle may stand, a stretch is folded
// and searched. What may be missed is an occurrence whose letters take more than nine bytes each, marks that fold
// away included. Immutable; any thread.
class FoldedNeedle {
  public:
    // Folded code points; not empty.
    explicit FoldedNeedle(std::u32string points);

    // What of a text a portion is.
    enum class Portion { whole, first, middle, last };

    // Whether it occurs in a portion of UTF-8, which begins with the last overlap() bytes of the portion before or
    // all of it; what would end with the portion is found in the next one.
    bool occursIn(std::string_view text, Portion portion = Portion::whole) const;
    // The same for text of which nobody has found out whether it is UTF-8 or Latin-1. False only where it does not
    // occur in either; where it may, that must be found out.
    bool mayOccurInUnknown(std::string_view text, Portion portion = Portion::whole) const;
    std::size_t overlap() const { return 2 * m_sought.margin + 2 * ByteFilter::kBlock; }

    // Whether bytes are looked at; otherwise all is folded, as for a needle without four ASCII characters in a row.
    bool hasFilter() const { return m_quad.has_value(); }

  private:
    // What is looked for in folded text, and how many bytes it may lie to each side of what the filter found.
    struct Sought {
        explicit Sought(std::u32string folded);
        std::u32string points;
        std::size_t margin;
    };
    // How bytes are looked at: first many at a time, then what was found there.
    struct Reading {
        std::size_t (*firstBlock)(const unsigned char*, std::size_t, const ByteFilter::Quad&);
        bool (FoldedNeedle::*occurs)(const Sought& sought, std::string_view stretch, bool isEnd) const;
    };
    // A text as it is looked at.
    struct Look {
        std::string_view text;
        bool isEnd;
        const Reading& reading;
    };
    // Blocks in a row.
    struct Run {
        std::size_t begin;
        std::size_t end;
    };

    bool occursByFilter(std::string_view text, bool isEnd, const Reading& reading) const;
    bool occursInFolded(const Sought& sought, std::string_view stretch, bool isEnd) const;
    bool mayOccurInEither(const Sought& sought, std::string_view stretch, bool isEnd) const;
    bool occursInRuns(const Look& look, std::size_t blocks) const;
    Run nextWithQuad(const Look& look, std::size_t begin, std::size_t end) const;
    bool occursAround(const Sought& sought, const Look& look, std::size_t begin, std::size_t end) const;

    Sought m_sought;
    std::optional<ByteFilter::Quad> m_quad;
    Sought m_soughtQuad; // its letters; empty where there is none
};

} // namespace quillane
