#include "RecentlyUsed.h"
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace quillane;

// The input is the desktop's register, which any program of the user writes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(bytes), size);
    for (const auto& [url, date] : RecentlyUsed::parse(input)) {
        // Between the years 0 and 9999, which four digits can tell.
        if (!url.path().starts_with('/') || date < Date::fromUnix(-62'167'219'200) ||
            date > Date::fromUnix(253'402'300'800)) {
            std::abort();
        }
    }
    return 0;
}
