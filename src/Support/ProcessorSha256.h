#pragma once
#include "Sha256Digest.h"
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quillane {

// A running SHA-256 by the instructions that x86 processors have for it. In one content each instruction waits for the
// one before; of several contents side by side one fills the waits of the other. Copies go on by themselves. One thread
// at a time.
class ProcessorSha256 {
  public:
    struct Part {
        ProcessorSha256* hash = nullptr;
        std::span<const std::byte> bytes;
    };

    // Whether this processor has them. Nothing below may be asked of one that has not. Cheap.
    static bool isThere();

    void update(std::span<const std::byte> bytes);
    // What comes next in several contents, each with a hash of its own.
    static void updateTogether(std::vector<Part> parts);
    // Of what came so far. More may come afterwards.
    Sha256Digest digest() const;

  private:
    static constexpr std::size_t kBlock = 64; // bytes that the algorithm takes at a time

    std::span<const std::byte> filled(std::span<const std::byte> bytes);
    void keep(std::span<const std::byte> bytes);

    // The algorithm's first: of the square roots of the first eight primes.
    std::array<std::uint32_t, 8> m_words = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                            0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::array<std::byte, kBlock> m_pending = {}; // what makes no whole block yet
    std::uint64_t m_length = 0;                   // bytes so far
};

} // namespace quillane
