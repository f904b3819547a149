#include "SystemSha256.h"
#include <CommonCrypto/CommonDigest.h>
#include <algorithm>
#include <array>
#include <bit>
#include <limits>

namespace quillane {

struct SystemSha256::State {
    CC_SHA256_CTX context = {};
};

SystemSha256::SystemSha256()
    : m_state(std::make_unique<State>()) {
    CC_SHA256_Init(&m_state->context);
}

SystemSha256::SystemSha256(const SystemSha256& other)
    : m_state(std::make_unique<State>(*other.m_state)) {}

SystemSha256::SystemSha256(SystemSha256&& other) noexcept = default;

SystemSha256& SystemSha256::operator=(const SystemSha256& other) {
    if (this != &other) {
        m_state = std::make_unique<State>(*other.m_state);
    }
    return *this;
}

SystemSha256& SystemSha256::operator=(SystemSha256&& other) noexcept = default;
SystemSha256::~SystemSha256() = default;

void SystemSha256::update(std::span<const std::byte> bytes) {
    while (!bytes.empty()) { // a length there has 32 bits
        const auto portion =
            bytes.first(std::min<std::size_t>(bytes.size(), std::numeric_limits<CC_LONG>::max()));
        CC_SHA256_Update(&m_state->context, portion.data(), static_cast<CC_LONG>(portion.size()));
        bytes = bytes.subspan(portion.size());
    }
}

Sha256Digest SystemSha256::digest() const {
    State finished(*m_state);
    std::array<unsigned char, CC_SHA256_DIGEST_LENGTH> digest = {};
    CC_SHA256_Final(digest.data(), &finished.context);
    return std::bit_cast<Sha256Digest>(digest);
}

} // namespace quillane
