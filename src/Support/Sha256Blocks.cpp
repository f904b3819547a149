#include "Sha256Blocks.h"
#if defined(__x86_64__)
#include <cpuid.h>
#include <immintrin.h>
#include <utility>

// For functions that may use these instructions though the rest of the program must run without them.
#define QUILLANE_SHA __attribute__((target("sha,sse4.1,ssse3")))
#define QUILLANE_SHA_INLINE __attribute__((target("sha,sse4.1,ssse3"), always_inline)) inline
#endif

namespace quillane::Sha256Blocks {
#if defined(__x86_64__)
namespace {

using Register = __m128i;
constexpr std::size_t kBlock = 64;

// The algorithm's: of the cube roots of the first 64 primes.
constexpr std::array<std::uint32_t, 64> kRoundConstants = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

// What one content has in the processor. The eight words a to h stand as the instructions want them.
struct Working {
    Register abef;
    Register cdgh;
    std::array<Register, 4> message; // sixteen words of the message, from which the next ones come
};

QUILLANE_SHA_INLINE Register loaded(const void* bytes) {
    return _mm_loadu_si128(static_cast<const Register*>(bytes));
}

QUILLANE_SHA_INLINE void store(void* bytes, Register value) {
    _mm_storeu_si128(static_cast<Register*>(bytes), value);
}

QUILLANE_SHA_INLINE void begin(Working& own, const Lane& lane) {
    const auto badc = _mm_shuffle_epi32(loaded(lane.words->data()), 0xB1);
    const auto hgfe = _mm_shuffle_epi32(loaded(lane.words->data() + 4), 0x1B);
    own.abef = _mm_alignr_epi8(badc, hgfe, 8);
    own.cdgh = _mm_blend_epi16(hgfe, badc, 0xF0);
}

QUILLANE_SHA_INLINE void end(const Working& own, const Lane& lane) {
    const auto feba = _mm_shuffle_epi32(own.abef, 0x1B);
    const auto dchg = _mm_shuffle_epi32(own.cdgh, 0xB1);
    store(lane.words->data(), _mm_blend_epi16(feba, dchg, 0xF0));
    store(lane.words->data() + 4, _mm_alignr_epi8(dchg, feba, 8));
}

// The first sixteen words, whose bytes stand the other way round.
QUILLANE_SHA_INLINE void take(Working& own, const std::byte* block) {
    const auto reversed = _mm_set_epi64x(0x0C0D0E0F08090A0B, 0x0405060700010203);
    for (std::size_t i = 0; i < own.message.size(); ++i) {
        own.message[i] = _mm_shuffle_epi8(loaded(block + 16 * i), reversed);
    }
}

template <std::size_t kQuad>
QUILLANE_SHA_INLINE void fourRounds(Working& own) {
    auto& words = own.message[kQuad % 4];
    if constexpr (kQuad >= 4) {
        const auto& last = own.message[(kQuad + 3) % 4];
        const auto sevenBefore = _mm_alignr_epi8(last, own.message[(kQuad + 2) % 4], 4);
        words = _mm_sha256msg1_epu32(words, own.message[(kQuad + 1) % 4]);
        words = _mm_sha256msg2_epu32(_mm_add_epi32(words, sevenBefore), last);
    }
    const auto added = _mm_add_epi32(words, loaded(kRoundConstants.data() + 4 * kQuad));
    own.cdgh = _mm_sha256rnds2_epu32(own.cdgh, own.abef, added);
    own.abef = _mm_sha256rnds2_epu32(own.abef, own.cdgh, _mm_shuffle_epi32(added, 0x0E));
}

// The same four rounds of each content follow each other, so that one does not wait for itself.
template <std::size_t kQuad, std::size_t kLanes>
QUILLANE_SHA_INLINE void fourRoundsOfEach(std::array<Working, kLanes>& all) {
    for (auto& own : all) {
        fourRounds<kQuad>(own);
    }
}

template <std::size_t kLanes, std::size_t... kQuads>
QUILLANE_SHA_INLINE void allRounds(std::array<Working, kLanes>& all,
                                   std::index_sequence<kQuads...> /*rounds*/) {
    (fourRoundsOfEach<kQuads>(all), ...);
}

template <std::size_t kLanes>
QUILLANE_SHA void digestTogether(std::span<const Lane> lanes, std::size_t count) {
    std::array<Working, kLanes> all;
    for (std::size_t i = 0; i < kLanes; ++i) {
        begin(all[i], lanes[i]);
    }
    for (std::size_t block = 0; block < count; ++block) {
        const auto before = all;
        for (std::size_t i = 0; i < kLanes; ++i) {
            take(all[i], lanes[i].blocks + block * kBlock);
        }
        allRounds(all, std::make_index_sequence<kRoundConstants.size() / 4>());
        for (std::size_t i = 0; i < kLanes; ++i) {
            all[i].abef = _mm_add_epi32(all[i].abef, before[i].abef);
            all[i].cdgh = _mm_add_epi32(all[i].cdgh, before[i].cdgh);
        }
    }
    for (std::size_t i = 0; i < kLanes; ++i) {
        end(all[i], lanes[i]);
    }
}

} // namespace

bool canDigest() {
    unsigned int a = 0;
    unsigned int b = 0;
    unsigned int c = 0;
    unsigned int d = 0;
    constexpr auto kOfRegisters = static_cast<unsigned int>(bit_SSSE3 | bit_SSE4_1);
    if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & kOfRegisters) != kOfRegisters) {
        return false;
    }
    return __get_cpuid_count(7, 0, &a, &b, &c, &d) != 0 && (b & static_cast<unsigned int>(bit_SHA)) != 0;
}

void digest(std::span<const Lane> lanes, std::size_t count) {
    static_assert(kMostLanes == 4);
    switch (lanes.size()) {
    case 1:
        return digestTogether<1>(lanes, count);
    case 2:
        return digestTogether<2>(lanes, count);
    case 3:
        return digestTogether<3>(lanes, count);
    default:
        return digestTogether<4>(lanes, count);
    }
}
#else

bool canDigest() {
    return false;
}

void digest(std::span<const Lane> /*lanes*/, std::size_t /*count*/) {}
#endif

} // namespace quillane::Sha256Blocks
