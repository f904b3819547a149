#include "ByteFilter.h"
#include <algorithm>
#include <array>

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

// The compiler lays the loops below over whole registers: bytes in, bytes out, no branch.
constexpr Byte isLetter(Byte byte, Byte letter) {
    return static_cast<Byte>(byte | 0x20U) == letter;
}

// Plain letters alone, and the bits of all bytes together.
struct Look {
    Byte found = 0;
    Byte bits = 0;
};

QUILLANE_ALWAYS_INLINE Look lookForLetters(const Byte* bytes, const Quad& quad) {
    const Byte first = quad[0];
    const Byte second = quad[1];
    const Byte third = quad[2];
    const Byte fourth = quad[3];
    Look look;
    for (std::size_t i = 0; i < kBlock; ++i) {
        look.found |= static_cast<Byte>(isLetter(bytes[i], first) & isLetter(bytes[i + 1], second) &
                                        isLetter(bytes[i + 2], third) & isLetter(bytes[i + 3], fourth));
        look.bits |= bytes[i];
    }
    for (std::size_t i = kBlock; i < kBlock + kReach; ++i) {
        look.bits |= bytes[i];
    }
    return look;
}

// With all that may stand for letters.
QUILLANE_ALWAYS_INLINE Byte lookForAll(const Byte* bytes, const Quad& quad) {
    std::array<Byte, kBlock + kReach> stands{};
    for (std::size_t i = 0; i < stands.size(); ++i) {
        stands[i] = standsForLetters(bytes[i]);
    }
    const Byte first = quad[0];
    const Byte second = quad[1];
    const Byte third = quad[2];
    const Byte fourth = quad[3];
    Byte found = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
        found |= static_cast<Byte>((isLetter(bytes[i], first) | stands[i]) &
                                   (isLetter(bytes[i + 1], second) | stands[i + 1]) &
                                   (isLetter(bytes[i + 2], third) | stands[i + 2]) &
                                   (isLetter(bytes[i + 3], fourth) | stands[i + 3]));
        const Byte byte = bytes[i];
        found |= static_cast<Byte>(static_cast<Byte>(byte > ' ') & static_cast<Byte>(byte < 0x80) &
                                   static_cast<Byte>(beginsRareMark(bytes[i + 1])));
    }
    return found;
}

} // namespace

QUILLANE_FOR_EACH_PROCESSOR
std::size_t firstBlock(const Byte* bytes, std::size_t blocks, const Quad& quad) {
    for (std::size_t block = 0; block < blocks; ++block) {
        const auto look = lookForLetters(bytes, quad);
        if (look.found != 0 || ((look.bits & 0x80U) != 0 && lookForAll(bytes, quad) != 0)) {
            return block;
        }
        bytes += kBlock;
    }
    return blocks;
}

namespace {

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
    bytes -= kReach;
    for (std::size_t i = 0; i < kBlock; ++i) {
        const Byte byte = bytes[i + 3];
        const Byte before = bytes[i + 2];
        const Byte isExpected = (before >= 0xC0) | (bytes[i + 1] >= 0xE0) | (bytes[i] >= 0xF0);
        const Byte continues = (byte & 0xC0U) == 0x80;
        wrong |= isExpected ^ continues;
        wrong |= ((byte == 0xC0) | (byte == 0xC1) | (byte >= 0xF5));
        wrong |= ((before == 0xE0) & (byte < 0xA0)) | ((before == 0xED) & (byte > 0x9F));
        wrong |= ((before == 0xF0) & (byte < 0x90)) | ((before == 0xF4) & (byte > 0x8F));
    }
    return wrong;
}

// Of blocks with kReach bytes before them: whether any has a fault. ASCII behind ASCII has none.
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
    std::array<Byte, kReach + kBlock + kBlock> padded{}; // what is cut misses its continuation in the zeros
    std::ranges::copy(before, padded.begin());
    std::ranges::copy(rest, padded.begin() + kReach);
    return haveFaults(padded.data() + kReach, 2);
}

} // namespace

bool isUtf8(std::string_view text) {
    if (text.size() < kBlock) {
        return !isFaultyEnd({}, text);
    }
    // The first block has no bytes before it; those of a copy are zeros.
    std::array<Byte, kReach + kBlock> first{};
    std::ranges::copy(text.substr(0, kBlock), first.begin() + kReach);
    const auto* const bytes = reinterpret_cast<const Byte*>(text.data());
    const auto blocks = text.size() / kBlock;
    const auto end = blocks * kBlock;
    return !haveFaults(first.data() + kReach, 1) && !haveFaults(bytes + kBlock, blocks - 1) &&
           !isFaultyEnd(text.substr(end - kReach, kReach), text.substr(end));
}

} // namespace quillane::ByteFilter
