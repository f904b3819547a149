#include "FileURL.h"
#include <algorithm>
#include <array>

namespace quillane {
namespace {

constexpr std::string_view kPrefix = "file://";
constexpr std::string_view kScheme = "file:";
constexpr std::string_view kLocalHost = "localhost";
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

// Removes `prefix`, which is in lower case, in whatever case it stands at the beginning of the text.
bool removePrefix(std::string_view& text, std::string_view prefix) {
    const auto equal = [](char c, char lower) {
        return c == lower || (lower >= 'a' && lower <= 'z' && c == lower - 'a' + 'A');
    };
    if (!std::ranges::equal(text.substr(0, prefix.size()), prefix, equal)) {
        return false;
    }
    text.remove_prefix(prefix.size());
    return true;
}

// The path behind percent signs; nothing when it holds a NUL, which no path does. A percent sign without two
// hexadecimal digits stands for itself.
std::optional<FileURL> decodedPath(std::string_view text) {
    std::string path;
    path.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (c == '%' && i + 2 < text.size() && hexValue(text[i + 1]) >= 0 && hexValue(text[i + 2]) >= 0) {
            c = static_cast<char>(hexValue(text[i + 1]) * 16 + hexValue(text[i + 2]));
            i += 2;
        }
        if (c == '\0') {
            return std::nullopt;
        }
        path += c;
    }
    return FileURL(std::move(path));
}

// Characters that change the direction of text make a name lie about its extension.
bool holdsDirectionControl(std::string_view text) {
    static constexpr std::array<std::string_view, 12> kControls = {"\u061C", "\u200E", "\u200F", "\u202A",
                                                                   "\u202B", "\u202C", "\u202D", "\u202E",
                                                                   "\u2066", "\u2067", "\u2068", "\u2069"};
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

FileURL::FileURL(std::string path)
    : m_path(std::move(path)) {
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
    std::string text(kPrefix);
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
    if (!removePrefix(text, kScheme)) {
        return std::nullopt;
    }
    if (removePrefix(text, "//")) {
        removePrefix(text, kLocalHost);
    }
    if (!text.starts_with('/')) {
        return std::nullopt;
    }
    return decodedPath(text.substr(0, text.find_first_of("?#")));
}

} // namespace quillane
