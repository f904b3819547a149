#include "Sha256.h"
#include "HexadecimalText.h"
#include <vector>

namespace quillane {

Sha256::Sha256() {
    if (!ProcessorSha256::isThere()) {
        m_hash.emplace<SystemSha256>();
    }
}

void Sha256::update(std::span<const std::byte> bytes) {
    std::visit([&](auto& hash) { hash.update(bytes); }, m_hash);
}

void Sha256::updateTogether(std::span<const Part> parts) {
    std::vector<ProcessorSha256::Part> together;
    together.reserve(parts.size());
    for (const auto& part : parts) {
        if (auto* const hash = std::get_if<ProcessorSha256>(&part.hash->m_hash)) {
            together.push_back({hash, part.bytes});
        } else {
            part.hash->update(part.bytes);
        }
    }
    ProcessorSha256::updateTogether(together);
}

Sha256Digest Sha256::digest() const {
    return std::visit([](const auto& hash) { return hash.digest(); }, m_hash);
}

std::string Sha256::hex() const {
    return hexadecimalText(digest());
}

} // namespace quillane
