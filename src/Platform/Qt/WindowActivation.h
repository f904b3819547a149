#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class QWindow;

namespace quillane::WindowActivation {

// Brings a window that is shown before all others, with the keyboard. A desktop may let a program do so only for what
// its user has just done, and else marks the window: `token` is what it gave along with the click or the start that
// asks for it; empty for none. Main thread only.
void activate(QWindow& window, const std::string& token);

// When the user did what a token of X11 stands for, in milliseconds of the display's own clock. Absent where the
// token does not tell: its end does, as in "dunst-1-quillane_TIME123456". Any thread.
std::optional<std::uint32_t> timeOf(std::string_view token);

} // namespace quillane::WindowActivation
