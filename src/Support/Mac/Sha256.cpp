#include "Sha256.h"
#include "HexadecimalText.h"
#include <CommonCrypto/CommonDigest.h>
#include <algorithm>
#include <array>
#include <limits>

namespace quillane {

struct Sha256::State {
    CC_SHA256_CTX context = {};
};

Sha256::Sha256()
    : m_state(std::make_unique<State>()) {
    CC_SHA256_Init(&m_state->context);
}

Sha256::Sha256(const Sha256& other)
    : m_state(std::make_unique<State>(*other.m_state)) {}

Sha256::Sha256(Sha256&& other) noexcept = default;

Sha256& Sha256::operator=(const Sha256& other) {
    if (this != &other) {
        m_state = std::make_unique<State>(*other.m_state);
    }
    return *this;
}

Sha256& Sha256::operator=(Sha256&& other) noexcept = default;
Sha256::~Sha256() = default;

void Sha256::update(std::span<const std::byte> bytes) {
    while (!bytes.empty()) { // a length there has 32 bits
        const auto portion =
            bytes.first(std::min<std::size_t>(bytes.size(), std::numeric_limits<CC_LONG>::max()));
        CC_SHA256_Update(&m_state->context, portion.data(), static_cast<CC_LONG>(portion.size()));
        bytes = bytes.subspan(portion.size());
    }
}

std::string Sha256::hex() const {
    State finished(*m_state);
    std::array<unsigned char, CC_SHA256_DIGEST_LENGTH> digest = {};
    CC_SHA256_Final(digest.data(), &finished.context);
    return hexadecimalText(std::as_bytes(std::span(digest)));
}

} // namespace quillane
