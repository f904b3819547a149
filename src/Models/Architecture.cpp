#include "Architecture.h"

namespace quillane {

std::string_view rawValue(Architecture architecture) {
    switch (architecture) {
    case Architecture::universal:
        return "Universal";
    case Architecture::appleSilicon:
        return "Apple Silicon";
    case Architecture::intel:
        return "Intel";
    case Architecture::intel32:
        return "32-bit Intel";
    case Architecture::powerPC:
        return "PowerPC";
    case Architecture::unknown:
        return "Unknown";
    }
    __builtin_unreachable();
}

std::optional<Architecture> architectureFromRawValue(std::string_view text) {
    for (const auto architecture : kAllArchitectures) {
        if (rawValue(architecture) == text) {
            return architecture;
        }
    }
    return std::nullopt;
}

std::strong_ordering operator<=>(Architecture a, Architecture b) {
    return rawValue(a) <=> rawValue(b);
}

} // namespace quillane
