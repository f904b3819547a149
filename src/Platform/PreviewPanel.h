#pragma once
#include "FileURL.h"
#include <cstdint>
#include <functional>

namespace quillane {

// The system's own panel in which a file is looked at without opening it, where the system has one. There is one of it
// for the whole program. Main thread only.
class PreviewPanel {
  public:
    virtual ~PreviewPanel() = default;

    // What moves in the list behind the panel.
    enum class Key { up, down, home, end };

    struct Handlers {
        // Somebody else than `hide` has closed it, or has taken it over. At a later turn.
        std::function<void()> closed;
        // A key was pressed in the panel, with Shift or without. False where it went nowhere, and so is the panel's own.
        // Inside the system's call.
        std::function<bool(Key, bool withShift)> pressed;
    };

    // False where the system has none: then nothing else of this does anything.
    virtual bool isThere() const = 0;
    // Empty functions for nobody.
    virtual void setHandlers(Handlers handlers) = 0;
    // Shows this file in place of any other, and opens the panel where it is closed. For a window, by what the system
    // knows its content by: an NSView* on a Mac. The window stays until `hide`.
    virtual void show(const FileURL& url, std::uintptr_t window) = 0;
    // Nothing happens where it is closed.
    virtual void hide() = 0;
    // Whether it is to be seen with what `show` was asked for.
    virtual bool isShown() const = 0;
};

} // namespace quillane
