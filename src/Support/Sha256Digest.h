#pragma once
#include <array>
#include <cstddef>

namespace quillane {

// In the order in which it is spelled.
using Sha256Digest = std::array<std::byte, 32>;

} // namespace quillane
