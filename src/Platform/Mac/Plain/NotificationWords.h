#pragma once
#include <cstddef>
#include <string>

namespace quillane::NotificationWords {

// Characters of a title or a body; what is longer ends in "…". Labels come from outside.
inline constexpr std::size_t kMost = 2'000;

// What a person is to read, whatever a label from outside holds: in one line, with what would deceive the eye made
// visible, as in the window. Any thread.
std::string shown(const std::string& text);

} // namespace quillane::NotificationWords
