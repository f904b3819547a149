#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// What a desktop gives along with a click or a start, so that a window may come to the front for it.
namespace quillane::ActivationToken {

// When the user did what a token of X11 stands for, in milliseconds of the display's own clock. Absent where the
// token does not tell: its end does, as in "server-1-quillane_TIME123456". Any thread.
std::optional<std::uint32_t> timeOf(std::string_view token);

// What is told to all of an X11 display when the start that a token stands for has come to its end, so that the
// pointer does not go on telling of it; empty for what can be no token. Any thread.
std::string endOfStart(std::string_view token);

} // namespace quillane::ActivationToken
