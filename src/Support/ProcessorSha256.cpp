#include "ProcessorSha256.h"
#include "Sha256Blocks.h"
#include <algorithm>
#include <cstring>

namespace quillane {

bool ProcessorSha256::isThere() {
    static const bool kIsThere = Sha256Blocks::canDigest();
    return kIsThere;
}

void ProcessorSha256::update(std::span<const std::byte> bytes) {
    updateTogether(std::vector<Part>{{this, bytes}});
}

void ProcessorSha256::updateTogether(std::vector<Part> parts) {
    for (auto& [hash, bytes] : parts) {
        bytes = hash->filled(bytes);
    }
    while (true) {
        // Of those that still hold whole blocks as many as go side by side, as far as the shortest goes.
        std::array<Part*, Sha256Blocks::kMostLanes> chosen = {};
        std::array<Sha256Blocks::Lane, Sha256Blocks::kMostLanes> lanes = {};
        std::size_t count = 0;
        std::size_t blocks = 0;
        for (auto& part : parts) {
            const auto own = part.bytes.size() / kBlock;
            if (own == 0 || count == lanes.size()) {
                continue;
            }
            blocks = count == 0 ? own : std::min(blocks, own);
            chosen[count] = &part;
            lanes[count] = {&part.hash->m_words, part.bytes.data()};
            ++count;
        }
        if (count == 0) {
            break;
        }
        Sha256Blocks::digest(std::span(lanes).first(count), blocks);
        for (auto* const part : std::span(chosen).first(count)) {
            part->bytes = part->bytes.subspan(blocks * kBlock);
        }
    }
    for (const auto& [hash, bytes] : parts) {
        hash->keep(bytes);
    }
}

// Adds what is missing of a begun block, and gives what is left then.
std::span<const std::byte> ProcessorSha256::filled(std::span<const std::byte> bytes) {
    const auto pending = static_cast<std::size_t>(m_length % kBlock);
    m_length += bytes.size();
    if (pending == 0) {
        return bytes;
    }
    const auto missing = std::min(kBlock - pending, bytes.size());
    std::ranges::copy(bytes.first(missing), m_pending.begin() + static_cast<std::ptrdiff_t>(pending));
    if (pending + missing == kBlock) {
        const Sha256Blocks::Lane lane = {&m_words, m_pending.data()};
        Sha256Blocks::digest({&lane, 1}, 1);
    }
    return bytes.subspan(missing);
}

// For the next update: less than a block.
void ProcessorSha256::keep(std::span<const std::byte> bytes) {
    std::ranges::copy(bytes, m_pending.begin());
}

Sha256Digest ProcessorSha256::digest() const {
    // A single bit, zeros, and the length in bits at the end of the last block.
    constexpr std::size_t kLength = 8;
    auto finished = *this;
    std::array<std::byte, 2 * kBlock> padding = {std::byte{0x80}};
    const auto pending = static_cast<std::size_t>(m_length % kBlock);
    const auto bytes = (pending + 1 + kLength <= kBlock ? kBlock : 2 * kBlock) - pending;
    for (std::size_t i = 0; i < kLength; ++i) {
        padding.at(bytes - 1 - i) = static_cast<std::byte>(m_length * 8 >> 8 * i);
    }
    finished.update(std::span(padding).first(bytes));
    Sha256Digest digest = {};
    for (std::size_t i = 0; i < digest.size(); ++i) {
        digest[i] = static_cast<std::byte>(finished.m_words[i / 4] >> 8 * (3 - i % 4));
    }
    return digest;
}

} // namespace quillane
