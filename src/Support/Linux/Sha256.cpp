#include "Sha256.h"
#include "HexadecimalText.h"
#include <array>
#include <new>
#include <openssl/evp.h>
#include <utility>

namespace quillane {
namespace {

// Looked up once: a look-up costs more than the hashing of a small file. Never freed, as hashes may be made
// until the process ends.
const EVP_MD* algorithm() {
    static const EVP_MD* const kFetched = EVP_MD_fetch(nullptr, "SHA256", nullptr);
    return kFetched;
}

// The library fails for want of memory alone.
void require(int done) {
    if (done != 1) {
        throw std::bad_alloc();
    }
}

} // namespace

struct Sha256::State {
    State()
        : context(EVP_MD_CTX_new()) {
        if (context == nullptr) {
            throw std::bad_alloc();
        }
    }
    State(const State& other)
        : State() {
        take(other);
    }
    State& operator=(const State&) = delete;
    ~State() { EVP_MD_CTX_free(context); }

    void take(const State& other) { require(EVP_MD_CTX_copy_ex(context, other.context)); }

    EVP_MD_CTX* context;
};

Sha256::Sha256()
    : m_state(std::make_unique<State>()) {
    require(EVP_DigestInit_ex2(m_state->context, algorithm(), nullptr));
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
    require(EVP_DigestUpdate(m_state->context, bytes.data(), bytes.size()));
}

std::string Sha256::hex() const {
    const State finished(*m_state);
    std::array<unsigned char, 32> digest = {};
    require(EVP_DigestFinal_ex(finished.context, digest.data(), nullptr));
    return hexadecimalText(std::as_bytes(std::span(digest)));
}

} // namespace quillane
