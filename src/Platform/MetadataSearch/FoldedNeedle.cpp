#include "FoldedNeedle.h"
#include "FoldTable.h"
#include "Utf8.h"
#include <algorithm>
#include <array>

namespace quillane {
namespace {

// From the most frequent in texts of all kinds to the rarest; what is not named is rarer still.
constexpr std::string_view kFrequent = "etaoinsrhldcumfpgwybvk01.,2-3/94586:7()_=xzjq";

std::size_t rarity(char32_t point) {
    return std::min(kFrequent.find(static_cast<char>(point)), kFrequent.size());
}

bool isFilterable(char32_t point) {
    return point > U' ' && point < 0x7F;
}

std::optional<ByteFilter::Quad> rarestQuad(std::u32string_view points) {
    constexpr std::size_t kLength = std::tuple_size_v<ByteFilter::Quad>;
    std::optional<ByteFilter::Quad> rarest;
    std::size_t highest = 0;
    for (std::size_t i = 0; i + kLength <= points.size(); ++i) {
        const auto part = points.substr(i, kLength);
        std::size_t sum = 1;
        for (const auto point : part) {
            sum += rarity(point);
        }
        if (std::ranges::all_of(part, isFilterable) && sum > highest) {
            highest = sum;
            rarest.emplace();
            // Either case at once: the filter sets the bit in which they differ.
            std::ranges::transform(part, rarest->begin(),
                                   [](char32_t point) { return static_cast<unsigned char>(point | 0x20U); });
        }
    }
    return rarest;
}

// Whether the first two of the four letters stand somewhere side by side, in ASCII.
bool holdsPair(std::string_view text, const ByteFilter::Quad& quad) {
    unsigned found = 0;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        const auto first = static_cast<unsigned char>(text[i]) | 0x20U;
        const auto second = static_cast<unsigned char>(text[i + 1]) | 0x20U;
        found |= static_cast<unsigned>(first == quad[0]) & static_cast<unsigned>(second == quad[1]);
    }
    return found != 0;
}

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

// The nearest border between characters at or after this place; invalid text has none for long.
std::size_t borderFrom(std::string_view text, std::size_t at) {
    for (int i = 0; i < 3 && at < text.size() && continuesCharacter(text[at]); ++i) {
        ++at;
    }
    return at;
}

bool isLast(FoldedNeedle::Portion portion) {
    return portion == FoldedNeedle::Portion::whole || portion == FoldedNeedle::Portion::last;
}

std::string_view withoutCutCharacters(std::string_view text, FoldedNeedle::Portion portion) {
    if (portion == FoldedNeedle::Portion::middle || portion == FoldedNeedle::Portion::last) {
        text.remove_prefix(borderFrom(text, 0));
    }
    return isLast(portion) ? text : Utf8::withoutCutCharacter(text);
}

// A letter of three bytes and two marks that fold away, of three bytes each: pointed Hebrew, vocalised Arabic, Thai.
constexpr std::size_t kMostBytesOfPoint = 9;

// The next blocks that `next` tells, and those behind them that lie no farther apart than so many. `next` is asked for the
// next ones from here to there and tells what is empty and ends there where there are none.
template <class Next>
auto merged(const Next& next, std::size_t begin, std::size_t end, std::size_t apart) {
    auto run = next(begin, end);
    while (run.end < end) {
        const auto limit = std::min(run.end + apart, end);
        const auto more = next(run.end, limit);
        if (more.begin == limit) {
            break;
        }
        run.end = more.end;
    }
    return run;
}

// How far apart blocks must lie for their surroundings not to overlap.
std::size_t blocksApart(std::size_t margin) {
    return 2 * margin / ByteFilter::kBlock + 1;
}

std::u32string pointsOf(const std::optional<ByteFilter::Quad>& quad, std::u32string_view points) {
    const auto isOne = [&](char32_t point, unsigned char letter) { return (point | 0x20U) == letter; };
    const auto at = quad ? std::ranges::search(points, *quad, isOne).begin() : points.end();
    return quad ? std::u32string(at, at + quad->size()) : std::u32string();
}

} // namespace

FoldedNeedle::Sought::Sought(std::u32string folded)
    : points(std::move(folded))
    , margin(points.size() * kMostBytesOfPoint + 32) {}

FoldedNeedle::FoldedNeedle(std::u32string points)
    : m_sought(std::move(points))
    , m_quad(rarestQuad(m_sought.points))
    , m_soughtQuad(pointsOf(m_quad, m_sought.points)) {}

bool FoldedNeedle::occursIn(std::string_view text, Portion portion) const {
    const auto whole = withoutCutCharacters(text, portion);
    return m_quad ? occursByFilter(whole, isLast(portion),
                                   {ByteFilter::firstBlock, &FoldedNeedle::occursInFolded})
                  : occursInFolded(m_sought, whole, isLast(portion));
}

bool FoldedNeedle::mayOccurInUnknown(std::string_view text, Portion portion) const {
    return !m_quad || occursByFilter(withoutCutCharacters(text, portion), isLast(portion),
                                     {ByteFilter::firstBlockOfUnknown, &FoldedNeedle::mayOccurInEither});
}

bool FoldedNeedle::occursByFilter(std::string_view text, bool isEnd, const Reading& reading) const {
    const auto blocks =
        text.size() < ByteFilter::kReach ? 0 : (text.size() - ByteFilter::kReach) / ByteFilter::kBlock;
    const Look look{text, isEnd, reading};
    if (occursInRuns(look, blocks)) {
        return true;
    }
    // What is left is less than two blocks and gets the bytes beyond it that a block needs.
    const auto begin = blocks * ByteFilter::kBlock;
    std::array<unsigned char, 2 * ByteFilter::kBlock + ByteFilter::kReach> rest{};
    std::ranges::copy(text.substr(begin), rest.begin());
    return m_quad && reading.firstBlock(rest.data(), 2, *m_quad) < 2 &&
           occursAround(m_soughtQuad, look, begin, text.size()) &&
           occursAround(m_sought, look, begin, text.size());
}

// Blocks whose surroundings overlap are folded together, and each only once.
bool FoldedNeedle::occursInRuns(const Look& look, std::size_t blocks) const {
    const auto next = [&](std::size_t begin, std::size_t end) { return nextWithQuad(look, begin, end); };
    const auto apart = blocksApart(m_sought.margin);
    for (std::size_t at = 0; at < blocks;) {
        const auto run = merged(next, at, blocks, apart);
        if (run.begin < blocks && occursAround(m_sought, look, run.begin * ByteFilter::kBlock,
                                               run.end * ByteFilter::kBlock + ByteFilter::kReach)) {
            return true;
        }
        at = run.end + apart;
    }
    return false;
}

// The four letters are looked for in their own surroundings first, which are small: most of what may spell them does
// not. Empty, at the end, where there is nothing.
FoldedNeedle::Run FoldedNeedle::nextWithQuad(const Look& look, std::size_t begin, std::size_t end) const {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(look.text.data());
    const auto next = [&](std::size_t from, std::size_t to) {
        const auto found =
            from + look.reading.firstBlock(bytes + from * ByteFilter::kBlock, to - from, *m_quad);
        return Run{found, std::min(found + 1, to)};
    };
    const auto apart = blocksApart(m_soughtQuad.margin);
    while (begin < end) {
        const auto run = merged(next, begin, end, apart);
        if (run.begin < end && occursAround(m_soughtQuad, look, run.begin * ByteFilter::kBlock,
                                            run.end * ByteFilter::kBlock + ByteFilter::kReach)) {
            return run;
        }
        begin = run.end + apart;
    }
    return {end, end};
}

bool FoldedNeedle::occursAround(const Sought& sought, const Look& look, std::size_t begin,
                                std::size_t end) const {
    const auto text = look.text;
    const auto from = begin > sought.margin ? borderFrom(text, begin - sought.margin) : 0;
    const auto to = std::min(end + sought.margin, text.size());
    return (this->*look.reading.occurs)(sought, text.substr(from, borderFrom(text, to) - from),
                                        look.isEnd && to == text.size());
}

// What is broken as UTF-8 decides for the other one. In what is not, no letter of Latin-1 stands before a plain one, so
// of the four that were looked for at least two are ASCII.
bool FoldedNeedle::mayOccurInEither(const Sought& sought, std::string_view stretch, bool isEnd) const {
    if (!ByteFilter::isUtf8(stretch) || occursInFolded(sought, stretch, isEnd)) {
        return true;
    }
    return (!m_quad || holdsPair(stretch, *m_quad)) &&
           occursInFolded(sought, Utf8::fromLatin1(stretch), isEnd);
}

constexpr std::size_t kMostKeptPoints = std::size_t{1} << 20U;

// The last point of what goes on may yet become another one, by what follows it.
bool FoldedNeedle::occursInFolded(const Sought& sought, std::string_view stretch, bool isEnd) const {
    thread_local std::u32string points;
    points.clear();
    Text::FoldTable::shared().append(stretch, points);
    if (!isEnd && !points.empty()) {
        points.pop_back();
    }
    const bool occurs = points.find(sought.points) != std::u32string::npos;
    if (points.capacity() > kMostKeptPoints) {
        std::u32string().swap(points); // a thread of the pool lives as long as the program
    }
    return occurs;
}

} // namespace quillane
