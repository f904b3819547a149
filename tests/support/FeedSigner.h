#pragma once
#include <memory>
#include <openssl/evp.h>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quillane {

// Signs announcements of versions as those who make them do, by a key that is made of one byte. For systems whose
// library checks signatures.
class FeedSigner {
  public:
    explicit FeedSigner(unsigned char seed = 1)
        : m_key(EVP_PKEY_new_raw_private_key(EVP_PKEY_ED25519, nullptr,
                                             reinterpret_cast<const unsigned char*>(
                                                 std::string(kSeedBytes, static_cast<char>(seed)).data()),
                                             kSeedBytes),
                &EVP_PKEY_free) {}

    std::string publicKey() const {
        std::string bytes(kSeedBytes, '\0');
        std::size_t size = bytes.size();
        require(
            EVP_PKEY_get_raw_public_key(m_key.get(), reinterpret_cast<unsigned char*>(bytes.data()), &size));
        return bytes;
    }
    // The announcement below the line with its signature.
    std::string feed(std::string_view announcement) const {
        return base64(signature(announcement)) + '\n' + std::string(announcement);
    }
    static std::string base64(std::string_view bytes) {
        std::string text((bytes.size() + 2) / 3 * 4 + 1, '\0'); // the library writes an end of its own
        EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()),
                        reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<int>(bytes.size()));
        text.pop_back();
        return text;
    }

  private:
    static constexpr std::size_t kSeedBytes = 32;
    static constexpr std::size_t kSignatureBytes = 64;

    static void require(int done) {
        if (done != 1) {
            throw std::runtime_error("the library does not sign");
        }
    }
    std::string signature(std::string_view text) const {
        const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(),
                                                                              &EVP_MD_CTX_free);
        require(EVP_DigestSignInit(context.get(), nullptr, nullptr, nullptr, m_key.get()));
        std::string bytes(kSignatureBytes, '\0');
        std::size_t size = bytes.size();
        require(EVP_DigestSign(context.get(), reinterpret_cast<unsigned char*>(bytes.data()), &size,
                               reinterpret_cast<const unsigned char*>(text.data()), text.size()));
        return bytes;
    }

    std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> m_key;
};

} // namespace quillane
