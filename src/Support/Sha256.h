#pragma once
#include "ProcessorSha256.h"
#include "Sha256Digest.h"
#include "SystemSha256.h"
#include <cstddef>
#include <span>
#include <string>
#include <variant>

namespace quillane {

// A running SHA-256, by the processor's own instructions where it has them and by the system's library elsewhere. Cheap
// to copy: a copy goes on from the same prefix and neither is told of what the other gets. What was moved from can only
// be destroyed or assigned to. One thread at a time. Throws std::bad_alloc only.
class Sha256 {
  public:
    // What comes next in a content, in whatever portions: only their sequence counts.
    struct Part {
        Sha256* hash = nullptr;
        std::span<const std::byte> bytes;
    };

    // Of nothing so far.
    Sha256();

    void update(std::span<const std::byte> bytes);
    // The same for several contents, each by a hash of its own: for long parts it takes the processor less time than
    // one after the other.
    static void updateTogether(std::span<const Part> parts);
    // Of what came so far. More may come afterwards.
    Sha256Digest digest() const;
    // The digest as 64 lower-case hexadecimal digits.
    std::string hex() const;

  private:
    std::variant<ProcessorSha256, SystemSha256> m_hash;
};

} // namespace quillane
