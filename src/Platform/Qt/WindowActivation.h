#pragma once
#include <string>

class QWindow;

namespace quillane::WindowActivation {

// Brings a window that is shown before all others, with the keyboard. A desktop may let a program do so only for what
// its user has just done, and else marks the window: `token` is what it gave for that, empty for none. On X11 the start
// that the token stands for, which another process may have been, is told to have come to its end. Main thread only.
void activate(QWindow& window, const std::string& token);

} // namespace quillane::WindowActivation
