#pragma once
#include <array>
#include <compare>
#include <optional>
#include <string_view>

namespace quillane {

// Which processors an application's main executable serves.
enum class Architecture { universal, appleSilicon, intel, intel32, powerPC, unknown };

inline constexpr std::array kAllArchitectures = {Architecture::universal, Architecture::appleSilicon,
                                                 Architecture::intel,     Architecture::intel32,
                                                 Architecture::powerPC,   Architecture::unknown};

// The words shown to the user, such as "Apple Silicon".
std::string_view rawValue(Architecture architecture);
std::optional<Architecture> architectureFromRawValue(std::string_view text);

// True for code that no current macOS can run at all.
constexpr bool isDead(Architecture architecture) {
    return architecture == Architecture::intel32 || architecture == Architecture::powerPC;
}

// Ordered by the words, not by declaration.
std::strong_ordering operator<=>(Architecture a, Architecture b);

} // namespace quillane
