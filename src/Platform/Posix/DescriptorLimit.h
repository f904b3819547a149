#pragma once
#include <cstddef>

// How many files and folders this process may have open.
namespace quillane::DescriptorLimit {

// What walks, comparisons and searches may hold open together, with what the window needs; some systems begin with 256.
inline constexpr std::size_t kWanted = 4096;

// Raises the limit to what is wanted, or as far as the system lets us; one that is higher stays. Before other threads
// run. Returns how many there may be now.
std::size_t raise(std::size_t wanted = kWanted);

} // namespace quillane::DescriptorLimit
