#include "Ed25519.h"
#include <memory>
#include <openssl/evp.h>

namespace quillane::Ed25519 {
namespace {

const unsigned char* bytesOf(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

} // namespace

bool isSigned(std::string_view message, std::string_view signature, std::string_view publicKey) {
    if (publicKey.size() != kKeyBytes || signature.size() != kSignatureBytes) {
        return false;
    }
    const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(
        EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, bytesOf(publicKey), publicKey.size()),
        &EVP_PKEY_free);
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    // The algorithm hashes by itself: no digest is named.
    return key && context && EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, key.get()) == 1 &&
           EVP_DigestVerify(context.get(), bytesOf(signature), signature.size(), bytesOf(message),
                            message.size()) == 1;
}

} // namespace quillane::Ed25519
