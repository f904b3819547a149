#include "Bytes.h"
#include <cstdlib>

namespace quillane {

Bytes checkedSum(Bytes a, Bytes b) {
    Bytes sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        std::abort();
    }
    return sum;
}

} // namespace quillane
