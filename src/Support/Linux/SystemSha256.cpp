#include "SystemSha256.h"
#include <array>
#include <bit>
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

struct SystemSha256::State {
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

SystemSha256::SystemSha256()
    : m_state(std::make_unique<State>()) {
    require(EVP_DigestInit_ex2(m_state->context, algorithm(), nullptr));
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
    require(EVP_DigestUpdate(m_state->context, bytes.data(), bytes.size()));
}

Sha256Digest SystemSha256::digest() const {
    const State finished(*m_state);
    std::array<unsigned char, std::tuple_size_v<Sha256Digest>> digest = {};
    require(EVP_DigestFinal_ex(finished.context, digest.data(), nullptr));
    return std::bit_cast<Sha256Digest>(digest);
}

} // namespace quillane
