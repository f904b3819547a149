#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

// The inner part of SHA-256, on whole blocks of 64 bytes, by the instructions that x86 processors have for it.
namespace quillane::Sha256Blocks {

inline constexpr std::size_t kMostLanes = 4;

// One content: the eight words that stand for what came so far, and its next blocks.
struct Lane {
    std::array<std::uint32_t, 8>* words = nullptr;
    const std::byte* blocks = nullptr;
};

// Whether this processor can. Asks it anew each time.
bool canDigest();

// One to kMostLanes contents side by side, `count` blocks of each. Only where it can.
void digest(std::span<const Lane> lanes, std::size_t count);

} // namespace quillane::Sha256Blocks
