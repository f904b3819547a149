#pragma once
#include <functional>

class QWidget;

namespace quillane {

// One section of the window, put together. The widgets are handed to whoever asked for them.
struct Screen {
    QWidget* content = nullptr; // the middle column below its first row; takes the focus for its main control
    QWidget* detail = nullptr;  // the right column, its first row included
    // The number in the sidebar; 0 shows none. Reads the library and is observed.
    std::function<int()> badge;
};

} // namespace quillane
