#pragma once
#include <cstddef>
#include <string_view>

// Signatures by Ed25519 (RFC 8032, of the text itself and not of its hash), by the library that each system keeps for
// them. They are only checked here: no key that signs is ever in the program. Any thread.
namespace quillane::Ed25519 {

inline constexpr std::size_t kKeyBytes = 32;
inline constexpr std::size_t kSignatureBytes = 64;

// Whether the holder of this public key has signed these bytes. False for a key or a signature of any other length, and
// whenever it can't be told.
bool isSigned(std::string_view message, std::string_view signature, std::string_view publicKey);

} // namespace quillane::Ed25519
