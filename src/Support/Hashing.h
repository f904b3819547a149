#pragma once
#include <cstddef>
#include <functional>
#include <vector>

namespace quillane {

inline std::size_t hashCombine(std::size_t seed, std::size_t value) {
    return seed ^ (value + 0x9e3779b97f4a7c15ULL + (seed << 6) + (seed >> 2));
}

// One hash of several values in their order.
template <class... Values>
std::size_t hashOf(const Values&... values) {
    std::size_t seed = 0;
    ((seed = hashCombine(seed, std::hash<Values>{}(values))), ...);
    return seed;
}

template <class T>
std::size_t hashOfRange(const std::vector<T>& values) {
    std::size_t seed = values.size();
    for (const auto& value : values) {
        seed = hashCombine(seed, std::hash<T>{}(value));
    }
    return seed;
}

} // namespace quillane
