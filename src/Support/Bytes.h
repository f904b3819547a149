#pragma once
#include <cstdint>

namespace quillane {

// A count of bytes on disk. Signed, so that differences can be told; never negative where it is a size.
using Bytes = std::int64_t;

// The one addition for byte counts. An overflow is a programming error and stops the process.
Bytes checkedSum(Bytes a, Bytes b);

// The sum of `bytesOf(element)` over a range; 0 when it is empty.
template <class Range, class Projection>
Bytes sumOfBytes(const Range& range, Projection bytesOf) {
    Bytes sum = 0;
    for (const auto& element : range) {
        sum = checkedSum(sum, bytesOf(element));
    }
    return sum;
}

} // namespace quillane
