#include "ActivationToken.h"
#include <charconv>

namespace quillane::ActivationToken {

std::optional<std::uint32_t> timeOf(std::string_view token) {
    constexpr std::string_view kMark = "_TIME";
    const auto mark = token.rfind(kMark);
    if (mark == std::string_view::npos) {
        return std::nullopt;
    }
    const auto digits = token.substr(mark + kMark.size());
    std::uint32_t time = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), time);
    const bool isWhole = error == std::errc() && end == digits.data() + digits.size();
    return isWhole && time != 0 ? std::optional(time) : std::nullopt; // 0 asks not to come to the front
}

std::string endOfStart(std::string_view token) {
    if (token.empty() || token.find('\0') != std::string_view::npos) {
        return {};
    }
    std::string text = "remove: ID=\"";
    for (const char character : token) {
        if (character == '"' || character == '\\') {
            text += '\\';
        }
        text += character;
    }
    return text += '"';
}

} // namespace quillane::ActivationToken
