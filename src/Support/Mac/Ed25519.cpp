#include "Ed25519.h"

namespace quillane::Ed25519 {

// The system's own library for this speaks Swift alone, and updates there are no matter of a feed of ours. So nothing
// is ever signed here: what can't be checked is not believed.
bool isSigned(std::string_view /*message*/, std::string_view /*signature*/, std::string_view /*publicKey*/) {
    return false;
}

} // namespace quillane::Ed25519
