#include "ByteFilter.h"
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

// The same loop for the wide registers of newer processors, chosen at the start of the program. Sanitizers instrument
// what makes the choice, which runs before they do.
#if defined(__x86_64__) && defined(__ELF__) && !__has_feature(address_sanitizer) &&                          \
    !__has_feature(thread_sanitizer)
#define QUILLANE_FOR_EACH_PROCESSOR __attribute__((target_clones("avx2", "default")))
#else
#define QUILLANE_FOR_EACH_PROCESSOR
#endif
// Into the loop that is made for each processor.
#define QUILLANE_ALWAYS_INLINE [[gnu::always_inline]] inline

namespace quillane::ByteFilter {
namespace {

using Byte = unsigned char;

enum class Encoding { utf8, unknown };

// Bytes side by side, and the answers to questions about them: all bits set for yes. Half a block is what the wide
// registers hold; elsewhere the compiler takes several. Never handed from function to function, as processors differ in
// how they do that.
constexpr std::size_t kLane = 32;
using Lane = signed char __attribute__((vector_size(kLane)));
using Octets = unsigned char __attribute__((vector_size(kLane))); // as the characters of UTF-8 count them
using Words = std::uint64_t __attribute__((vector_size(kLane)));

// Bytes as the lanes count them: first those that continue a character, then those that begin one, then ASCII.
constexpr signed char counted(int byte) {
    return static_cast<signed char>(byte < 0x80 ? byte : byte - 0x100);
}
constexpr auto kBegin = counted(0xC0);
constexpr auto kCaseBit = counted(0x20);
constexpr auto kLigature = counted(0xEF); // with which those begin that stand for ASCII letters...
constexpr auto kOfLatin = counted(0xAC);  // ...and what follows then

template <class Any>
QUILLANE_ALWAYS_INLINE void load(Any& lane, const Byte* bytes) {
    std::memcpy(&lane, bytes, sizeof lane);
}

template <class Answers>
QUILLANE_ALWAYS_INLINE bool isAny(const Answers& answers) {
    return __builtin_reduce_or(__builtin_bit_cast(Words, answers)) != 0;
}

QUILLANE_ALWAYS_INLINE bool isAnyHigh(const Lane& bytes) {
    constexpr std::uint64_t kHigh = 0x8080808080808080;
    return __builtin_reduce_or(__builtin_bit_cast(Words, bytes) & kHigh) != 0;
}

// Whether characters begin that can be part of letters.
QUILLANE_ALWAYS_INLINE void addSpelling(Lane& answers, const Lane& at, const Lane& next) {
    answers |= (at >= kBegin) & (at <= counted(0xCD));
    answers |= (at == counted(0xE1)) | (at == counted(0xE2)) | ((at == kLigature) & (next == kOfLatin));
}

// Whether a character of another script begins behind ASCII. The highest bit answers.
QUILLANE_ALWAYS_INLINE void addMarking(Lane& answers, const Lane& at, const Lane& next) {
    answers |= (at > counted(' ')) & (next >= counted(0xD2)) & next;
}

// Whether a character begins that does not go on, as letters of Latin-1 do not. The highest bit answers.
QUILLANE_ALWAYS_INLINE void addBroken(Lane& answers, const Lane& at, const Lane& next) {
    answers |= (at >= kBegin) & at & (next >= kBegin);
}

// What is there beside ASCII: characters that can be part of letters, and marks or what is broken, of which the highest
// bit answers. Text of other scripts has neither.
template <Encoding encoding>
QUILLANE_ALWAYS_INLINE void lookForOthers(const Byte* bytes, Lane& spelling, Lane& marking) {
    for (std::size_t i = 0; i < kBlock; i += kLane) {
        Lane at;
        Lane next;
        load(at, bytes + i);
        load(next, bytes + i + 1);
        addSpelling(spelling, at, next);
        addMarking(marking, at, next);
        if constexpr (encoding == Encoding::unknown) {
            addBroken(marking, at, next);
        }
    }
}

// Three of the four letters in ASCII.
QUILLANE_ALWAYS_INLINE void lookForLetters(const Byte* bytes, const Quad& quad, Lane& found) {
    for (std::size_t i = 0; i < kBlock; i += kLane) {
        Lane at;
        Lane next;
        Lane afterNext;
        load(at, bytes + i);
        load(next, bytes + i + 1);
        load(afterNext, bytes + i + 2);
        found |= ((at | kCaseBit) == counted(quad[0])) & ((next | kCaseBit) == counted(quad[1])) &
                 ((afterNext | kCaseBit) == counted(quad[2]));
    }
}

// What the loops below gather of a block, with fewer steps than an answer for each byte would take. Each begins with
// what stands for no.
constexpr Byte kWithoutCase = 0xDF;

// Zero where three of the four letters stand in ASCII.
QUILLANE_ALWAYS_INLINE void gatherLetters(const Byte* bytes, const Quad& quad, Octets& least) {
    Octets at;
    Octets next;
    Octets afterNext;
    load(at, bytes);
    load(next, bytes + 1);
    load(afterNext, bytes + 2);
    least = __builtin_elementwise_min(least, ((at ^ quad[0]) | (next ^ quad[1]) | (afterNext ^ quad[2])) &
                                                 Octets(Octets{} + kWithoutCase));
}

// At most kMostOfWide where four letters may begin, as mayHoldWidely() tells.
constexpr Byte kMostOfWide = 0x80;
QUILLANE_ALWAYS_INLINE void gatherWide(const Byte* bytes, const Quad& quad, Octets& least) {
    Octets four = {};
    for (std::size_t j = 0; j < quad.size(); ++j) {
        Octets at;
        load(at, bytes + j);
        const Byte other =
            quad[j] ^ 0x80U; // what is not ASCII comes out lower than a letter, and all else higher
        four = __builtin_elementwise_max(four, (at ^ other) & kWithoutCase);
    }
    least = __builtin_elementwise_min(least, four);
}

// At most kMostOfTwo where characters of two bytes begin that can be part of letters.
constexpr Byte kFirstOfTwo = 0xC0;
constexpr Byte kMostOfTwo = 0xCD - kFirstOfTwo;
QUILLANE_ALWAYS_INLINE void gatherSpelling(const Octets& at, Octets& least) {
    least = __builtin_elementwise_min(least, at - kFirstOfTwo);
}

// This bit where a character begins that does not go on.
constexpr Byte kIsBroken = 0x40;
QUILLANE_ALWAYS_INLINE void gatherBroken(const Octets& at, const Octets& next, Octets& bits) {
    const Octets begins = __builtin_elementwise_sub_sat(at, Octets(Octets{} + Byte{0x80}));
    bits |= __builtin_elementwise_min(begins, next ^ Byte{0x80});
}

// What is gathered of a block that is not all ASCII. Without initialisers: the constructor of a class would not be made
// for each processor.
struct Gathered {
    Octets letters;  // the least
    Octets spelling; // the least
    Octets highest;
    Octets broken; // the bits of all
};

template <Encoding encoding>
QUILLANE_ALWAYS_INLINE void gatherOthers(const Byte* bytes, Gathered& gathered) {
    Octets at;
    load(at, bytes);
    gatherSpelling(at, gathered.spelling);
    gathered.highest = __builtin_elementwise_max(gathered.highest, at);
    if constexpr (encoding == Encoding::unknown) {
        Octets next;
        load(next, bytes + 1);
        gatherBroken(at, next, gathered.broken);
    }
}

// From here on bytes begin marks, or characters of three bytes and more.
constexpr Byte kFirstOfMany = 0xD2;

// The next block with three of the letters, or with anything beside ASCII in it or right behind it: a mark that begins
// the next block belongs to the letter before it.
QUILLANE_ALWAYS_INLINE std::size_t skipPlain(const Byte* bytes, std::size_t block, std::size_t blocks,
                                             const Quad& quad) {
    for (; block < blocks; ++block) {
        const auto* const begin = bytes + block * kBlock;
        Octets letters = ~Octets{};
        Lane bits = {};
        for (std::size_t i = 0; i < kBlock; i += kLane) {
            Lane at;
            load(at, begin + i);
            bits |= at;
            gatherLetters(begin + i, quad, letters);
        }
        if (isAnyHigh(bits | (letters == 0)) || (begin[kBlock] & 0x80U) != 0) {
            break;
        }
    }
    return block;
}

// The next block with three of the letters, with what can be part of letters, with a mark or with what is broken.
template <Encoding encoding>
QUILLANE_ALWAYS_INLINE std::size_t skipForeign(const Byte* bytes, std::size_t block, std::size_t blocks,
                                               const Quad& quad) {
    for (; block < blocks; ++block) {
        const auto* const begin = bytes + block * kBlock;
        Gathered gathered{~Octets{}, ~Octets{}, {}, {}};
        for (std::size_t i = 0; i < kBlock; i += kLane) {
            gatherLetters(begin + i, quad, gathered.letters);
            gatherOthers<encoding>(begin + i, gathered);
        }
        if (isAny((gathered.letters == 0) | (gathered.spelling <= kMostOfTwo) |
                  ((gathered.broken & kIsBroken) != 0))) {
            break;
        }
        if (isAny(gathered.highest >= kFirstOfMany) || begin[kBlock] >= kFirstOfMany) {
            Lane others = {};
            Lane marking = {};
            lookForOthers<encoding>(begin, others, marking);
            if (isAnyHigh(others | marking)) {
                break;
            }
        }
    }
    return block;
}

// Whether four letters may begin here, were every byte that is not ASCII a part of any letter.
QUILLANE_ALWAYS_INLINE bool mayHoldWidely(const Byte* bytes, const Quad& quad) {
    Lane found = {}; // the highest bit answers
    for (std::size_t i = 0; i < kBlock; i += kLane) {
        Lane four = Lane{} - counted(1);
        for (std::size_t j = 0; j < quad.size(); ++j) {
            Lane at;
            load(at, bytes + i + j);
            four &= ((at | kCaseBit) == counted(quad[j])) | at;
        }
        found |= four;
    }
    return isAnyHigh(found);
}

// The same for the bytes that do stand for letters. In Latin-1 only the last of the four can be another one unless
// something is broken; the sharp s, which is two letters, counts as a mark.
template <Encoding encoding>
QUILLANE_ALWAYS_INLINE bool mayHoldNarrowly(const Byte* bytes, const Quad& quad) {
    Lane found = {};
    for (std::size_t i = 0; i < kBlock; i += kLane) {
        Lane four = Lane{} - counted(1);
        for (std::size_t j = 0; j < quad.size(); ++j) {
            Lane at;
            Lane next;
            load(at, bytes + i + j);
            load(next, bytes + i + j + 1);
            if constexpr (encoding == Encoding::unknown) {
                found |= j == 3 ? four & (at < counted(0)) : Lane{};
            }
            four &= ((at | kCaseBit) == counted(quad[j])) | (at <= counted(0xCD)) | (at == counted(0xE1)) |
                    (at == counted(0xE2)) | ((at == kLigature) & (next == kOfLatin));
        }
        found |= four;
    }
    return isAny(found);
}

// Adds to the answers whether bytes begin a mark of another script.
QUILLANE_ALWAYS_INLINE void addRareMarks(Lane& answers, const Byte* bytes) {
    Lane at;
    load(at, bytes);
    answers |= (at >= counted(0xD2)) & (at <= counted(0xE0));
    answers |= (at == counted(0xE3)) | ((at >= counted(0xEA)) & (at < counted(0)));
}

// A mark of another script behind a printed character of ASCII, or behind one of two or three bytes that can be part of
// letters.
QUILLANE_ALWAYS_INLINE bool holdsRareMark(const Byte* bytes) {
    Lane found = {};
    for (std::size_t i = 0; i < kBlock; i += kLane) {
        Lane at;
        Lane next;
        load(at, bytes + i);
        load(next, bytes + i + 1);
        Lane behindOne = {};
        Lane behindTwo = {};
        Lane behindThree = {};
        addRareMarks(behindOne, bytes + i + 1);
        addRareMarks(behindTwo, bytes + i + 2);
        addRareMarks(behindThree, bytes + i + 3);
        Lane spelling = {};
        addSpelling(spelling, at, next);
        found |= (at > counted(' ')) & behindOne;
        found |= spelling & (behindTwo | behindThree);
    }
    return isAny(found);
}

// Where a search for blocks stands.
struct Place {
    std::size_t next = 0;    // the block that comes next
    bool isSpelling = false; // what may spell letters begins in the block before it
    bool isLookedAt = true;  // that block need not be looked at again
};

// How many blocks are looked at for more than ASCII before ASCII alone is expected again.
constexpr std::size_t kAWhile = 32;
constexpr std::size_t kAfterSpelling = 8;

// Goes behind blocks that are no reason for a closer look, among such that can be part of letters: their neighbours need
// no second look. Stops where there is none of those for long.
template <Encoding encoding>
QUILLANE_ALWAYS_INLINE void skipSpelt(const Byte* bytes, std::size_t blocks, const Quad& quad, Place& place) {
    for (std::size_t plain = 0; place.next < blocks && plain < kAfterSpelling; ++place.next) {
        const auto* const begin = bytes + place.next * kBlock;
        Gathered gathered{~Octets{}, ~Octets{}, {}, {}};
        for (std::size_t i = 0; i < kBlock; i += kLane) {
            gatherWide(begin + i, quad, gathered.letters);
            gatherOthers<encoding>(begin + i, gathered);
        }
        if (isAny((gathered.letters <= kMostOfWide) | (gathered.highest >= kFirstOfMany) |
                  ((gathered.broken & kIsBroken) != 0)) ||
            begin[kBlock] >= kFirstOfMany) {
            break;
        }
        place.isLookedAt = true;
        place.isSpelling = isAny(gathered.spelling <= kMostOfTwo);
        plain = place.isSpelling ? 0 : plain + 1;
    }
}

// Goes behind blocks that are no reason for a closer look, nor for one at their neighbours.
template <Encoding encoding>
QUILLANE_ALWAYS_INLINE void skip(const Byte* bytes, std::size_t blocks, const Quad& quad, Place& place) {
    if (place.isSpelling) {
        skipSpelt<encoding>(bytes, blocks, quad, place);
    }
    if (!place.isSpelling) {
        auto next = skipPlain(bytes, place.next, blocks, quad);
        next = skipForeign<encoding>(bytes, next, std::min(blocks, next + kAWhile), quad);
        place.isLookedAt = place.isLookedAt && next == place.next;
        place.next = next;
    }
}

// The next block that is worth a closer look; `blocks` where there is none. A character lies in two blocks at most, and
// so do four letters: what may spell letters in one block is a reason to look at its neighbours too.
template <Encoding encoding>
QUILLANE_ALWAYS_INLINE std::size_t nextWorthALook(const Byte* bytes, std::size_t blocks, const Quad& quad,
                                                  Place& place) {
    while (true) {
        skip<encoding>(bytes, blocks, quad, place);
        if (place.next >= blocks) {
            return blocks;
        }
        const auto* const block = bytes + place.next * kBlock;
        Lane letters = {};
        Lane spelling = {};
        Lane marking = {};
        lookForLetters(block, quad, letters);
        lookForOthers<encoding>(block, spelling, marking);
        if (!place.isSpelling && !isAnyHigh(letters | spelling | marking)) {
            place.isLookedAt = false;
            ++place.next;
            continue;
        }
        const bool isSpelling = isAny(spelling);
        if (isSpelling && !place.isLookedAt && mayHoldWidely(block - kBlock, quad)) {
            place.isLookedAt = true;
            return place.next - 1;
        }
        place.isLookedAt = isSpelling || place.isSpelling || isAny(letters);
        place.isSpelling = isSpelling;
        ++place.next;
        if (isAnyHigh(marking) || (place.isLookedAt && mayHoldWidely(block, quad))) {
            place.isLookedAt = true;
            return place.next - 1;
        }
    }
}

// The closer look.
template <Encoding encoding>
QUILLANE_ALWAYS_INLINE bool mayHold(const Byte* bytes, const Quad& quad) {
    Lane broken = {};
    if constexpr (encoding == Encoding::unknown) {
        for (std::size_t i = 0; i < kBlock; i += kLane) {
            Lane at;
            Lane next;
            load(at, bytes + i);
            load(next, bytes + i + 1);
            addBroken(broken, at, next);
        }
    }
    return isAnyHigh(broken) || holdsRareMark(bytes) || mayHoldNarrowly<encoding>(bytes, quad);
}

// The functions that are made for each processor.
struct Functions {
    std::size_t (*nextWorthALook)(const Byte*, std::size_t, const Quad&, Place&);
    bool (*mayHold)(const Byte*, const Quad&);
};

QUILLANE_FOR_EACH_PROCESSOR
std::size_t nextOfUtf8(const Byte* bytes, std::size_t blocks, const Quad& quad, Place& place) {
    return nextWorthALook<Encoding::utf8>(bytes, blocks, quad, place);
}

QUILLANE_FOR_EACH_PROCESSOR
std::size_t nextOfUnknown(const Byte* bytes, std::size_t blocks, const Quad& quad, Place& place) {
    return nextWorthALook<Encoding::unknown>(bytes, blocks, quad, place);
}

QUILLANE_FOR_EACH_PROCESSOR
bool mayHoldUtf8(const Byte* bytes, const Quad& quad) {
    return mayHold<Encoding::utf8>(bytes, quad);
}

QUILLANE_FOR_EACH_PROCESSOR
bool mayHoldUnknown(const Byte* bytes, const Quad& quad) {
    return mayHold<Encoding::unknown>(bytes, quad);
}

bool continues(Byte byte) {
    return (byte & 0xC0U) == 0x80;
}

std::size_t firstBlockOf(const Byte* bytes, std::size_t blocks, const Quad& quad,
                         const Functions& functions) {
    Place place{.isSpelling = blocks > 0 && continues(bytes[0])};
    while (true) {
        const auto block = functions.nextWorthALook(bytes, blocks, quad, place);
        if (block == blocks) {
            break;
        }
        if (functions.mayHold(bytes + block * kBlock, quad)) {
            return block;
        }
    }
    const auto* const rest = bytes + blocks * kBlock;
    const bool isUnseen = !place.isLookedAt && ((rest[0] | rest[1] | rest[2]) & 0x80U) != 0;
    return isUnseen && functions.mayHold(rest - kBlock, quad) ? blocks - 1 : blocks;
}

} // namespace

std::size_t firstBlock(const Byte* bytes, std::size_t blocks, const Quad& quad) {
    return firstBlockOf(bytes, blocks, quad, {nextOfUtf8, mayHoldUtf8});
}

std::size_t firstBlockOfUnknown(const Byte* bytes, std::size_t blocks, const Quad& quad) {
    return firstBlockOf(bytes, blocks, quad, {nextOfUnknown, mayHoldUnknown});
}

namespace {

// How many bytes before a block decide on it too.
constexpr std::size_t kBefore = 3;

QUILLANE_ALWAYS_INLINE Byte bitsOf(const Byte* bytes) {
    Byte bits = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
        bits |= bytes[i];
    }
    return bits;
}

// What is wrong with these bytes, each looked at with the three before it: a byte that continues nothing or is
// missing, and second bytes of overlong forms, surrogates and points beyond the last. Not zero when anything is.
QUILLANE_ALWAYS_INLINE Byte faults(const Byte* bytes) {
    Byte wrong = 0;
    bytes -= kBefore;
    for (std::size_t i = 0; i < kBlock; ++i) {
        const Byte byte = bytes[i + 3];
        const Byte before = bytes[i + 2];
        const Byte isExpected = (before >= 0xC0) | (bytes[i + 1] >= 0xE0) | (bytes[i] >= 0xF0);
        wrong |= isExpected ^ static_cast<Byte>((byte & 0xC0U) == 0x80);
        wrong |= ((byte == 0xC0) | (byte == 0xC1) | (byte >= 0xF5));
        wrong |= ((before == 0xE0) & (byte < 0xA0)) | ((before == 0xED) & (byte > 0x9F));
        wrong |= ((before == 0xF0) & (byte < 0x90)) | ((before == 0xF4) & (byte > 0x8F));
    }
    return wrong;
}

// Of blocks with kBefore bytes before them: whether any has a fault. ASCII behind ASCII has none.
QUILLANE_FOR_EACH_PROCESSOR
bool haveFaults(const Byte* bytes, std::size_t blocks) {
    bool mayContinue = true;
    for (std::size_t block = 0; block < blocks; ++block, bytes += kBlock) {
        const bool hasOthers = (bitsOf(bytes) & 0x80U) != 0;
        if ((hasOthers || mayContinue) && faults(bytes) != 0) {
            return true;
        }
        mayContinue = hasOthers;
    }
    return false;
}

// Whether these bytes, at most a block, are faulty behind the three before them or end within a character.
bool isFaultyEnd(std::string_view before, std::string_view rest) {
    std::array<Byte, kBefore + kBlock + kBlock> padded{}; // what is cut misses its continuation in the zeros
    std::ranges::copy(before, padded.begin());
    std::ranges::copy(rest, padded.begin() + kBefore);
    return haveFaults(padded.data() + kBefore, 2);
}

} // namespace

bool isUtf8(std::string_view text) {
    if (text.size() < kBlock) {
        return !isFaultyEnd({}, text);
    }
    // The first block has no bytes before it; those of a copy are zeros.
    std::array<Byte, kBefore + kBlock> first{};
    std::ranges::copy(text.substr(0, kBlock), first.begin() + kBefore);
    const auto* const bytes = reinterpret_cast<const Byte*>(text.data());
    const auto blocks = text.size() / kBlock;
    const auto end = blocks * kBlock;
    return !haveFaults(first.data() + kBefore, 1) && !haveFaults(bytes + kBlock, blocks - 1) &&
           !isFaultyEnd(text.substr(end - kBefore, kBefore), text.substr(end));
}

} // namespace quillane::ByteFilter
