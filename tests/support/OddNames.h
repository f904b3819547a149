#pragma once

// Parts of names for tests of what takes any bytes. Where the system's disks take any bytes, such as are no text; a disk
// of a Mac refuses those, and there characters of nobody's alphabet stand for them, which have no case and are composed
// of nothing.
namespace quillane::OddNames {

#ifdef __APPLE__
inline constexpr const char* kOne = "\uF8FF";
inline constexpr const char* kOther = "\uF8FE";
inline constexpr const char* kContinuation = "\uF8FF";
inline constexpr const char* kLostInLines = "\n\uF8FF";
#else
inline constexpr const char* kOne = "\xFF";
inline constexpr const char* kOther = "\xFE";
inline constexpr const char* kContinuation = "\x80"; // goes on with a letter that none begins
// What a program that prints a line for each path, as text, can't tell.
inline constexpr const char* kLostInLines = "\xFF";
#endif

} // namespace quillane::OddNames
