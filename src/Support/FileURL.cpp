#include "FileURL.h"
#include <algorithm>
#include <array>

namespace quillane {
namespace {

constexpr std::string_view kScheme = "file://";
constexpr std::string_view kUnescaped = "-._~!$&'()*+,=:@/;";

bool isUnescaped(unsigned char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           kUnescaped.find(static_cast<char>(c)) != std::string_view::npos;
}

int hexValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

// Characters that change the direction of text make a name lie about its extension.
bool holdsDirectionControl(std::string_view text) {
    static constexpr std::array<std::string_view, 12> kControls = {
        "\u061C", "\u200E", "\u200F", "\u202A", "\u202B", "\u202C",
        "\u202D", "\u202E", "\u2066", "\u2067", "\u2068", "\u2069"};
    return std::ranges::any_of(kControls,
                               [&](std::string_view c) { return text.find(c) != std::string_view::npos; });
}

} // namespace

std::string_view pathExtensionOf(std::string_view name) {
    const auto dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || dot + 1 == name.size()) {
        return {};
    }
    const auto stem = name.substr(0, dot);
    const auto extension = name.substr(dot + 1);
    if (stem == "." || stem == ".." || extension.find_first_of(" /") != std::string_view::npos ||
        holdsDirectionControl(extension)) {
        return {};
    }
    return extension;
}

FileURL::FileURL(std::string path) : m_path(std::move(path)) {
    while (m_path.size() > 1 && m_path.back() == '/') {
        m_path.pop_back();
    }
    if (m_path.empty()) {
        m_path = "/";
    }
}

std::string_view FileURL::lastPathComponent() const {
    if (m_path == "/") {
        return m_path;
    }
    return std::string_view(m_path).substr(m_path.rfind('/') + 1);
}

std::string_view FileURL::pathExtension() const {
    return pathExtensionOf(lastPathComponent());
}

FileURL FileURL::deletingPathExtension() const {
    const auto extension = pathExtension();
    if (extension.empty()) {
        return *this;
    }
    return FileURL(m_path.substr(0, m_path.size() - extension.size() - 1));
}

FileURL FileURL::deletingLastPathComponent() const {
    const auto slash = m_path.rfind('/');
    return FileURL(m_path.substr(0, std::max<std::size_t>(slash, 1)));
}

FileURL FileURL::appending(std::string_view component) const {
    const auto begin = std::min(component.find_first_not_of('/'), component.size());
    std::string path = m_path == "/" ? "" : m_path;
    path += '/';
    path += component.substr(begin);
    return FileURL(std::move(path));
}

std::string FileURL::absoluteString() const {
    static constexpr std::string_view kHex = "0123456789ABCDEF";
    std::string text(kScheme);
    text.reserve(text.size() + m_path.size());
    for (const char c : m_path) {
        const auto byte = static_cast<unsigned char>(c);
        if (isUnescaped(byte)) {
            text += c;
        } else {
            text += '%';
            text += kHex[byte >> 4];
            text += kHex[byte & 15];
        }
    }
    return text;
}

std::optional<FileURL> FileURL::fromAbsoluteString(std::string_view text) {
    if (!text.starts_with(kScheme)) {
        return std::nullopt;
    }
    text.remove_prefix(kScheme.size());
    if (text.starts_with("localhost/")) {
        text.remove_prefix(std::string_view("localhost").size());
    }
    if (!text.starts_with('/')) {
        return std::nullopt;
    }
    text = text.substr(0, text.find_first_of("?#"));
    std::string path;
    path.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 2 < text.size() && hexValue(text[i + 1]) >= 0 && hexValue(text[i + 2]) >= 0) {
            const int byte = hexValue(text[i + 1]) * 16 + hexValue(text[i + 2]);
            if (byte == 0) {
                return std::nullopt; // no path holds a NUL
            }
            path += static_cast<char>(byte);
            i += 2;
        } else if (text[i] == '\0') {
            return std::nullopt;
        } else {
            path += text[i];
        }
    }
    return FileURL(std::move(path));
}

} // namespace quillane
