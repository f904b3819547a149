#include "VendorPrefix.h"
#include "Characters.h"
#include <cstddef>
#include <utility>

namespace quillane {

std::optional<std::string> vendorPrefix(std::string_view identifier) {
    std::string prefix;
    std::size_t parts = 0;
    std::size_t begin = 0;
    const auto take = [&](std::size_t end) {
        if (end > begin) {
            prefix += parts == 0 ? "" : ".";
            prefix += identifier.substr(begin, end - begin);
            ++parts;
        }
        begin = end + 1;
    };
    for (const auto dot : Text::fullStops(identifier)) {
        take(dot);
        if (parts == 2) {
            return prefix;
        }
    }
    take(identifier.size());
    return parts == 2 ? std::optional(std::move(prefix)) : std::nullopt;
}

} // namespace quillane
