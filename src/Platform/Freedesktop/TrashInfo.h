#pragma once
#include <optional>
#include <string>
#include <string_view>

// The record that the freedesktop.org Trash keeps beside each item: where it came from and when it went.
namespace quillane::TrashInfo {

// What the name of a record has behind that of its item.
inline constexpr std::string_view kSuffix = ".trashinfo";

// The text of a record. The path is bytes and is percent-encoded; the time is the machine's local time as
// "2026-11-21T08:30:00".
std::string text(std::string_view originalPath, std::string_view localTime);

// The path of a record; nothing when the text is no record, or when its path holds a NUL, which no path does.
std::optional<std::string> originalPath(std::string_view text);

} // namespace quillane::TrashInfo
