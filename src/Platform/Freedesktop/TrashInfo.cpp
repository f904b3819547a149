#include "TrashInfo.h"
#include <utility>

namespace quillane::TrashInfo {
namespace {

constexpr std::string_view kHeader = "[Trash Info]";
constexpr std::string_view kPathKey = "Path=";
constexpr std::string_view kUnescaped =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.!~*'()/";

int hexValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string encoded(std::string_view path) {
    static constexpr std::string_view kHex = "0123456789ABCDEF";
    std::string out;
    for (const char c : path) {
        if (kUnescaped.find(c) != std::string_view::npos) {
            out += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            out += '%';
            out += kHex[byte >> 4];
            out += kHex[byte & 15];
        }
    }
    return out;
}

std::string decoded(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 2 < text.size() && hexValue(text[i + 1]) >= 0 &&
            hexValue(text[i + 2]) >= 0) {
            out += static_cast<char>(hexValue(text[i + 1]) * 16 + hexValue(text[i + 2]));
            i += 2;
        } else {
            out += text[i];
        }
    }
    return out;
}

} // namespace

std::string text(std::string_view originalPath, std::string_view localTime) {
    std::string out(kHeader);
    out += "\nPath=" + encoded(originalPath) + "\nDeletionDate=";
    out += localTime;
    out += "\n";
    return out;
}

std::optional<std::string> originalPath(std::string_view text) {
    if (!text.starts_with(kHeader)) {
        return std::nullopt;
    }
    for (auto line = text.find('\n'); line != std::string_view::npos; line = text.find('\n', line + 1)) {
        const auto rest = text.substr(line + 1);
        if (rest.starts_with(kPathKey)) {
            const auto lineEnd = rest.find('\n');
            const auto value = rest.substr(0, lineEnd).substr(kPathKey.size());
            auto path = decoded(value);
            return path.find('\0') == std::string::npos ? std::optional(std::move(path)) : std::nullopt;
        }
    }
    return std::nullopt;
}

} // namespace quillane::TrashInfo
