#pragma once

// What the system brings of its own. One file for each system says.
namespace quillane::SystemLook {

// The system's own style and palette are kept, and only what paints itself reads the tokens.
bool isNative();
// Menus stand in a bar outside the window.
bool hasMenuBar();
// Whether what lies behind a window shows through where the window is transparent. If not, it is black there.
bool blendsWindows();

} // namespace quillane::SystemLook
