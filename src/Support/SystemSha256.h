#pragma once
#include "Sha256Digest.h"
#include <cstddef>
#include <memory>
#include <span>

namespace quillane {

// A running SHA-256 by the library that each system keeps for it. A copy goes on from the same prefix and neither is
// told of what the other gets. One thread at a time. Throws std::bad_alloc only.
class SystemSha256 {
  public:
    // Of nothing so far.
    SystemSha256();
    SystemSha256(const SystemSha256& other);
    // What was moved from can only be destroyed or assigned to.
    SystemSha256(SystemSha256&& other) noexcept;
    SystemSha256& operator=(const SystemSha256& other);
    SystemSha256& operator=(SystemSha256&& other) noexcept;
    ~SystemSha256();

    void update(std::span<const std::byte> bytes);
    // Of what came so far. More may come afterwards.
    Sha256Digest digest() const;

  private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace quillane
