#pragma once
#include <string>

class QWindow;

namespace quillane::WindowActivation {

// Brings a window that is shown before all others, with the keyboard. A desktop may let a program do so only for what
// its user has just done, and else marks the window: `token` is what it gave for that, empty for none. Main thread
// only.
void activate(QWindow& window, const std::string& token);

} // namespace quillane::WindowActivation
