#include "MachOInspector.h"
#include <cstddef>
#include <cstdint>

using namespace quillane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const auto architecture = MachOInspector::architectureOfHead({bytes, size});
    // Fewer than eight bytes tell nothing.
    if (size < 8 && architecture != Architecture::unknown) {
        __builtin_trap();
    }
    return 0;
}
