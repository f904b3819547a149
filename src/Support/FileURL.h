#pragma once
#include <compare>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillane {

// The location of a file or folder: an absolute path of bytes, never assumed to be valid UTF-8.
// Two locations are equal when their paths are the same bytes; nothing here looks at the disk.
class FileURL {
  public:
    FileURL()
        : m_path("/") {}
    // A trailing slash is dropped, except from "/". The path is otherwise kept as it stands.
    explicit FileURL(std::string path);

    // Without a trailing slash; "/" is the root.
    const std::string& path() const { return m_path; }
    // The text after the last slash; "/" for the root.
    std::string_view lastPathComponent() const;
    // What stands after the last dot of the last component, by the platform's rules; empty when there is
    // none (".app", "a.", "a.b c" have none).
    std::string_view pathExtension() const;
    // Removes exactly what pathExtension() reports and its dot.
    FileURL deletingPathExtension() const;
    // The folder that holds this; the root holds itself.
    FileURL deletingLastPathComponent() const;
    // One slash between; leading and trailing slashes of the component make no difference.
    FileURL appending(std::string_view component) const;

    // "file://" and the path, percent-encoded byte for byte.
    std::string absoluteString() const;
    // From the text of a file URL; nothing when it is not one. An empty host and "localhost" are accepted,
    // and so are unescaped bytes; a trailing slash makes no difference.
    static std::optional<FileURL> fromAbsoluteString(std::string_view text);

    friend bool operator==(const FileURL&, const FileURL&) = default;
    friend auto operator<=>(const FileURL&, const FileURL&) = default;

  private:
    std::string m_path;
};

// The pathExtension() rule for a bare name.
std::string_view pathExtensionOf(std::string_view name);

} // namespace quillane

template <>
struct std::hash<quillane::FileURL> {
    std::size_t operator()(const quillane::FileURL& url) const noexcept {
        return std::hash<std::string>{}(url.path());
    }
};
