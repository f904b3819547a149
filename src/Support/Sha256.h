#pragma once
#include <cstddef>
#include <memory>
#include <span>
#include <string>

namespace quillane {

// A running SHA-256, by the library that each system keeps for it. Cheap to copy: a copy goes on from the same
// prefix and neither is told of what the other gets. One thread at a time. Throws std::bad_alloc only.
class Sha256 {
  public:
    // Of nothing so far.
    Sha256();
    Sha256(const Sha256& other);
    // What was moved from can only be destroyed or assigned to.
    Sha256(Sha256&& other) noexcept;
    Sha256& operator=(const Sha256& other);
    Sha256& operator=(Sha256&& other) noexcept;
    ~Sha256();

    // In whatever portions: only their sequence counts.
    void update(std::span<const std::byte> bytes);
    // The digest of what came so far, 64 lower-case hexadecimal digits. More may come afterwards.
    std::string hex() const;

  private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace quillane
