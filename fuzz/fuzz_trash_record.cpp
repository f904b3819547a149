#include "TrashInfo.h"
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

using namespace quillane;

namespace {

void requireRoundTrip(std::string_view path) {
    if (TrashInfo::originalPath(TrashInfo::text(path, "2026-11-21T08:30:00")) != path) {
        std::abort();
    }
}

} // namespace

// The input is a record that was found, and a path that is to be recorded.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(bytes), size);
    if (const auto path = TrashInfo::originalPath(input)) {
        if (path->size() > input.size() || path->find('\0') != std::string::npos) {
            std::abort(); // an escape is longer than what it stands for, and no path holds a NUL
        }
        requireRoundTrip(*path);
    }
    requireRoundTrip(input.substr(0, input.find('\0')));
    return 0;
}
