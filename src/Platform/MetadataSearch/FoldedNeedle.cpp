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

} // namespace

FoldedNeedle::FoldedNeedle(std::u32string points)
    : m_points(std::move(points))
    , m_margin(m_points.size() * kMostBytesOfPoint + 32)
    , m_quad(rarestQuad(m_points)) {}

bool FoldedNeedle::occursIn(std::string_view text, Portion portion) const {
    const auto whole = withoutCutCharacters(text, portion);
    return m_quad ? occursByFilter(whole, isLast(portion),
                                   {ByteFilter::firstBlock, &FoldedNeedle::occursInFolded})
                  : occursInFolded(whole, isLast(portion));
}

bool FoldedNeedle::mayOccurInUnknown(std::string_view text, Portion portion) const {
    return !m_quad || occursByFilter(withoutCutCharacters(text, portion), isLast(portion),
                                     {ByteFilter::firstBlockOfUnknown, &FoldedNeedle::mayOccurInEither});
}

bool FoldedNeedle::occursByFilter(std::string_view text, bool isEnd, const Reading& reading) const {
    const auto blocks =
        text.size() < ByteFilter::kReach ? 0 : (text.size() - ByteFilter::kReach) / ByteFilter::kBlock;
    if (occursInRuns(text, blocks, isEnd, reading)) {
        return true;
    }
    // What is left is less than two blocks and gets the bytes beyond it that a block needs.
    const auto begin = blocks * ByteFilter::kBlock;
    std::array<unsigned char, 2 * ByteFilter::kBlock + ByteFilter::kReach> rest{};
    std::ranges::copy(text.substr(begin), rest.begin());
    return m_quad && reading.firstBlock(rest.data(), 2, *m_quad) < 2 &&
           occursAround(text, begin, text.size(), isEnd, reading);
}

// Blocks whose surroundings overlap are folded together, and each only once.
bool FoldedNeedle::occursInRuns(std::string_view text, std::size_t blocks, bool isEnd,
                                const Reading& reading) const {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
    const auto apart = 2 * m_margin / ByteFilter::kBlock + 1;
    const auto firstFrom = [&](std::size_t block, std::size_t count) {
        return block + reading.firstBlock(bytes + block * ByteFilter::kBlock, count, *m_quad);
    };
    for (auto begin = firstFrom(0, blocks); begin < blocks;) {
        auto end = begin + 1;
        while (end < blocks) {
            const auto near = std::min(apart, blocks - end);
            const auto next = firstFrom(end, near);
            if (next == end + near) {
                break;
            }
            end = next + 1;
        }
        if (occursAround(text, begin * ByteFilter::kBlock, end * ByteFilter::kBlock + ByteFilter::kReach,
                         isEnd, reading)) {
            return true;
        }
        const auto after = std::min(end + apart, blocks);
        begin = firstFrom(after, blocks - after);
    }
    return false;
}

bool FoldedNeedle::occursAround(std::string_view text, std::size_t begin, std::size_t end, bool isEnd,
                                const Reading& reading) const {
    const auto from = begin > m_margin ? borderFrom(text, begin - m_margin) : 0;
    const auto to = std::min(end + m_margin, text.size());
    return (this->*reading.occurs)(text.substr(from, borderFrom(text, to) - from),
                                   isEnd && to == text.size());
}

// What is broken as UTF-8 decides for the other one. In what is not, no letter of Latin-1 stands before a plain one, so
// of the four that were looked for at least two are ASCII.
bool FoldedNeedle::mayOccurInEither(std::string_view stretch, bool isEnd) const {
    if (!ByteFilter::isUtf8(stretch) || occursInFolded(stretch, isEnd)) {
        return true;
    }
    return (!m_quad || holdsPair(stretch, *m_quad)) && occursInFolded(Utf8::fromLatin1(stretch), isEnd);
}

constexpr std::size_t kMostKeptPoints = std::size_t{1} << 20U;

// The last point of what goes on may yet become another one, by what follows it.
bool FoldedNeedle::occursInFolded(std::string_view stretch, bool isEnd) const {
    thread_local std::u32string points;
    points.clear();
    Text::FoldTable::shared().append(stretch, points);
    if (!isEnd && !points.empty()) {
        points.pop_back();
    }
    const bool occurs = points.find(m_points) != std::u32string::npos;
    if (points.capacity() > kMostKeptPoints) {
        std::u32string().swap(points); // a thread of the pool lives as long as the program
    }
    return occurs;
}

} // namespace quillane
