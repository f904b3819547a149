#pragma once
#include "ByteFilter.h"
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillane {

// A text that is looked for in much other text, where neither case nor accents count. Finds exactly what folding
// all of it would, but mostly looks at bytes: only where four characters of the needle may stand, a stretch is folded
// and searched. What may be missed is told at ByteFilter::firstBlock(), and an occurrence in which letters carry so
// many accents that it is longer than overlap(). Immutable; any thread.
class FoldedNeedle {
  public:
    // Folded code points; not empty.
    explicit FoldedNeedle(std::u32string points);

    // What of a text a portion is.
    enum class Portion { whole, first, middle, last };

    // Whether it occurs in a portion of UTF-8, which begins with the last overlap() bytes of the portion before or
    // all of it; what would end with the portion is found in the next one.
    bool occursIn(std::string_view text, Portion portion = Portion::whole) const;
    std::size_t overlap() const { return 2 * m_margin + 2 * ByteFilter::kBlock; }

    // Whether bytes are looked at; otherwise all is folded, as for a needle without four ASCII characters in a row.
    bool hasFilter() const { return m_quad.has_value(); }

  private:
    bool occursInFolded(std::string_view stretch, bool isEnd) const;
    bool occursInRuns(std::string_view text, std::size_t blocks, bool isEnd) const;
    bool occursAround(std::string_view text, std::size_t begin, std::size_t end, bool isEnd) const;

    std::u32string m_points;
    std::size_t m_margin; // bytes that an occurrence may lie to each side of what the filter found
    std::optional<ByteFilter::Quad> m_quad;
};

} // namespace quillane
